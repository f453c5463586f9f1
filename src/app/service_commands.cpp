#include "app/service_commands.h"

#include "app/session.h"
#include "base/hex.h"

namespace q40 {

void ServiceCommands::ReadBlock(const QString& digits) {
  if (session_.IsBusy()) return;
  session_.SetBusy(Session::Busy::kTalking);
  emit readingChanged(true);
  emit replied({});
  // The digits go out as they were typed, and whatever comes back is shown.
  session_.link().OpenPort();
  session_.link().ServiceRead(
      "KX~F" + digits.toStdString() + "R\r", [this](const std::string& reply) {
        emit replied(QString::fromLatin1(reply.data(), static_cast<qsizetype>(reply.size())));
      });
  emit readingChanged(false);
  session_.SetBusy(Session::Busy::kNo);
}

void ServiceCommands::Dump() {
  constexpr int kBlocks = 256;
  constexpr std::size_t kShown = 34;  // 32 digits and the line end
  session_.SetBusy(Session::Busy::kTalking);
  emit dumpingChanged(true);
  session_.link().OpenPort();
  for (int block = 0; block < kBlocks && !session_.StopRequested(); ++block) {
    const std::string number = HexByteText(block);
    const auto reply = session_.link().ServiceRead("KX~F0" + number + "0R\r", {});
    if (!reply) break;
    const std::string tail = reply->substr(reply->size() - std::min(reply->size(), kShown));
    emit dumped(QString::fromStdString(std::string(number).append("\t").append(tail)));
  }
  emit dumpingChanged(false);
  session_.SetBusy(Session::Busy::kNo);
}

}  // namespace q40
