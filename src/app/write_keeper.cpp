#include "app/write_keeper.h"

#include <utility>

#include <QDateTime>

#include "app/prompts.h"
#include "app/session.h"
#include "link/write_plan.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

std::string Now() {
  return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss")).toStdString();
}

UnfinishedWork::End EndOf(const WriteResult& result) {
  using End = UnfinishedWork::End;
  if (result.last.outcome == Outcome::kDone) return End::kDone;
  return result.TouchedRadio() ? End::kBrokeOff : End::kUntouched;
}

}  // namespace

WriteKeeper::WriteKeeper(Session& session, Prompts& prompts, std::string folder, QObject* parent)
    : QObject(parent), session_(session), prompts_(prompts), folder_(std::move(folder)) {}

void WriteKeeper::Plan(int model, std::vector<UnitData> planned) {
  model_ = model;
  planned_ = std::move(planned);
  writes_ = true;
  backup_.clear();
  not_kept_.clear();
}

WriteNet WriteKeeper::Net(bool back_up, bool verify) {
  WriteNet net{.keep_backup = {}, .verify = verify};
  if (back_up) {
    net.keep_backup = [this](const RadioCopy& radio) {
      backup_ = KeepBackup(radio);
      return !backup_.empty();
    };
  }
  return net;
}

// Data that is none is not sent, so there is nothing to finish.
void WriteKeeper::BeforeFirstByte() {
  const std::vector<UnitData> planned = std::exchange(planned_, {});
  if (planned.empty() || FirstBadUnit(planned)) return;
  const bool known = session_.radio().model() == model_;
  UnfinishedWrite write{model_, Now(), {}};
  for (const UnitData& target : planned) {
    write.swaps.push_back({target, {}});
    if (known) write.swaps.back().known = session_.radio().At(target.unit);
  }
  not_kept_ = session_.unfinished().Begin(std::move(write));
}

void WriteKeeper::Finish(const WriteResult& result) {
  // The radio held all of it already: nothing was sent, and what had broken off is settled.
  if (EndOf(result) == UnfinishedWork::End::kDone) BeforeFirstByte();
  session_.unfinished().Finish(EndOf(result));
  planned_.clear();
  writes_ = false;
}

std::string WriteKeeper::WayBack() const {
  const auto& pending = session_.unfinished().pending();
  return pending ? LastWholeBackup(folder_, pending->model) : backup_;
}

BackupReason WriteKeeper::ReasonOf(const RadioCopy& radio) const {
  const auto& pending = session_.unfinished().pending();
  if (pending && pending->model == radio.model) return BackupReason::kAfterBrokenWrite;
  return writes_ ? BackupReason::kBeforeWrite : BackupReason::kByHand;
}

std::string WriteKeeper::KeepBackup(const RadioCopy& radio) {
  std::string path;
  if (const auto problem = q40::KeepBackup(folder_, radio, Now(), ReasonOf(radio), path)) {
    prompts_.ShowError((writes_ ? tr("The backup could not be kept, so nothing was written.\n")
                                : tr("The backup could not be kept.\n")) +
                       Shown(problem->Message()));
    return {};
  }
  emit backupKept();
  return path;
}

}  // namespace q40
