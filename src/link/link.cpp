#include "link/link.h"

#include <algorithm>

#include "base/hex.h"

namespace q40 {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kBlockAcknowledged = "\r\nOK\r\n";

// No reply is longer than 79 characters. After this many a device that keeps talking is ignored: what
// it says can never become a reply, and reading it would only keep the processor busy.
constexpr std::size_t kLongestReply = 4096;

constexpr std::size_t kShortestAnswer = 5;   // of a command with LF, beyond the command itself
constexpr std::size_t kReadBlockReply = 36;  // CR LF, 32 digits, CR LF
// The two limits of a 16-byte write differ, and that is intended: the wait goes on until more than
// 46 characters are there, the check afterwards takes 46.
constexpr std::size_t kWriteBlockReply = 46;

constexpr int kBitmapBlocks[] = {214, 215};

std::string_view Tail(std::string_view text, std::size_t length) {
  return text.substr(text.size() - std::min(text.size(), length));
}

bool ReadBlockComplete(const std::string& reply) {
  return reply.size() >= kReadBlockReply && reply.ends_with(kLineEnd);
}

}  // namespace

void Link::StartDeadline(int exchanges) {
  timers_.Deadline.Start(exchanges * (kCommandTimeout + std::chrono::milliseconds(kPauseMs)) +
                         kDeadlineMargin);
  has_deadline_ = true;
}

void Link::StopDeadline() {
  timers_.Deadline.Stop();
  has_deadline_ = false;
}

bool Link::DeadlineIsOver() const { return has_deadline_ && !timers_.Deadline.IsRunning(); }

bool Link::OpenPort() {
  const bool was_open = port_.IsOpen();
  if (!was_open && !port_.Open()) return false;
  const auto lay_there = port_.ReadAvailable();
  if (lay_there && !(was_open && lay_there->empty())) Drain();
  return port_.IsOpen();
}

// Ends early on a line that was lost, and on one with more than any radio says: it will not be quiet.
void Link::Drain() {
  timers_.Timer1.Start(kLongestDrain);
  timers_.Timer3.Start(kQuietLine);
  std::size_t thrown_away = 0;
  while (timers_.Timer3.IsRunning() && timers_.Timer1.IsRunning() && !pump_.StopRequested()) {
    pump_.WaitForEvents();
    const auto arrived = port_.ReadAvailable();
    if (!arrived) break;
    thrown_away += arrived->size();
    if (thrown_away >= kLongestReply) break;
    if (!arrived->empty()) timers_.Timer3.Start(kQuietLine);
  }
  timers_.Timer3.Stop();
  timers_.Timer1.Stop();
}

bool Link::Send(std::string_view text) {
  reply_.clear();
  was_sent_ = port_.ReadAvailable().has_value();
  return was_sent_ && port_.Write(text);
}

// Appends what arrives to reply_ until it is complete or the timer has run out. What arrived together
// with the end of the time still counts. False: the port failed.
bool Link::Collect(OneShotTimer& timer, std::chrono::milliseconds limit, const Complete& complete,
                   const Pass& on_pass) {
  timer.Start(limit);
  while (true) {
    if (reply_.size() < kLongestReply) {
      const auto arrived = port_.ReadAvailable();
      if (!arrived) break;
      reply_ += *arrived;
      if (on_pass) on_pass(reply_);
      if (reply_.size() < kLongestReply && complete(reply_)) {
        timer.Stop();
        return true;
      }
    } else if (!port_.IsOpen()) {
      break;
    }
    if (!timer.IsRunning() || DeadlineIsOver()) return true;
    pump_.WaitForEvents();
  }
  timer.Stop();
  return false;
}

std::string Link::TxCommand(std::string_view command) {
  was_sent_ = false;
  return pump_.StopRequested() ? std::string(kStopped) : Exchange(command);
}

std::string Link::Exchange(std::string_view command) {
  const auto complete = [&](const std::string& reply) {
    return reply.size() >= command.size() + kShortestAnswer && reply.back() == '\n';
  };
  reply_.clear();
  if (DeadlineIsOver()) return std::string(kNoReply);
  if (!port_.IsOpen() || !Send(std::string(command) + '\n') ||
      !Collect(timers_.Timer2, kCommandTimeout, complete, {})) {
    return std::string(kPortFailed);
  }
  return reply_.size() < kLongestReply && complete(reply_) ? reply_ : std::string(kNoReply);
}

// Everything has been moved: even somebody who wants to stop wants the radio to leave its clone
// mode.
void Link::TxEnd() {
  Exchange(kEndCommand);
  Wait(kPauseMs);
}

void Link::Wait(std::int16_t milliseconds) {
  timers_.Timer3.Start(std::chrono::milliseconds(milliseconds));
  while (timers_.Timer3.IsRunning() && !pump_.StopRequested()) pump_.WaitForEvents();
}

std::string Link::RxBlock(std::string_view command) {
  if (!OpenPort() || !Send(command) ||
      !Collect(timers_.Timer1, kBlockTimeout, ReadBlockComplete, {})) {
    return std::string(kBlockPortFailed);
  }
  if (reply_.size() < kReadBlockReply) return std::string(kBlockNoReply);
  const std::string_view answer = Tail(reply_, kReadBlockReply);
  const bool framed = answer.starts_with(kLineEnd) && answer.ends_with(kLineEnd);
  return std::string(framed ? answer : kBlockBadReply);
}

int Link::TxBlock(std::string_view command) {
  const auto complete = [](const std::string& reply) {
    return reply.size() > kWriteBlockReply && reply.ends_with(kLineEnd);
  };
  if (!OpenPort() || !Send(command) || !Collect(timers_.Timer1, kBlockTimeout, complete, {})) {
    return kTxBlockPortFailed;
  }
  if (reply_.size() < kWriteBlockReply) return kTxBlockNoReply;
  return Tail(reply_, kBlockAcknowledged.size()) == kBlockAcknowledged ? kTxBlockDone
                                                                       : kTxBlockRefused;
}

std::optional<std::string> Link::ServiceRead(std::string_view command, const Pass& on_pass) {
  if (!port_.IsOpen() || !Send(command) ||
      !Collect(timers_.Timer1, kBlockTimeout, ReadBlockComplete, on_pass)) {
    return std::nullopt;
  }
  return reply_;
}

BlockOutcome ReadBlockChecked(Link& link, int block, std::string& digits) {
  const std::string command = ReadCommand(static_cast<Address>(block * kBlockSize));
  for (int sends = 0; sends < kBlockSends; ++sends) {
    const std::string reply = link.RxBlock(command);
    if (reply == kBlockPortFailed) return BlockOutcome::kPortError;
    if (reply == kBlockNoReply || reply == kBlockBadReply) continue;
    digits = reply.substr(kLineEnd.size(), kBlockDigits);
    return BlockOutcome::kDone;
  }
  return BlockOutcome::kCommunicationError;
}

BlockOutcome WriteBlockChecked(Link& link, int block, std::string_view digits) {
  const std::string command = WriteCommand(static_cast<Address>(block * kBlockSize), digits);
  for (int sends = 0; sends < kBlockSends; ++sends) {
    const int result = link.TxBlock(command);
    if (result == kTxBlockPortFailed) return BlockOutcome::kPortError;
    if (result == kTxBlockDone) return BlockOutcome::kDone;
  }
  return BlockOutcome::kCommunicationError;
}

BlockOutcome ReadChannelBitmap(Link& link, std::string& digits) {
  digits.clear();
  for (const int block : kBitmapBlocks) {
    std::string half;
    const BlockOutcome outcome = ReadBlockChecked(link, block, half);
    if (outcome != BlockOutcome::kDone) return outcome;
    digits += half;
  }
  return BlockOutcome::kDone;
}

BlockOutcome WriteChannelBitmap(Link& link, std::string_view digits) {
  for (const int block : kBitmapBlocks) {
    const BlockOutcome outcome = WriteBlockChecked(link, block, digits.substr(0, kBlockDigits));
    if (outcome != BlockOutcome::kDone) return outcome;
    digits.remove_prefix(kBlockDigits);
  }
  return BlockOutcome::kDone;
}

std::string AddressText(Address address) {
  return HexByteText(address >> 8) + HexByteText(address);
}

std::string BlockText(int block) {
  const std::string digits = AddressText(static_cast<Address>(block));
  return digits.substr(block > 0xFF ? 1 : 2);
}

std::string ReadCommand(Address address) { return "KX~F" + AddressText(address) + "R\r"; }

std::string WriteCommand(Address address, std::string_view digits) {
  return "KX~F" + AddressText(address) + "W" + std::string(digits) + '\r';
}

}  // namespace q40
