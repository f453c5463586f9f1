#include "sim/simulated_radio.h"

#include <algorithm>

#include "base/hex.h"
#include "link/link.h"

namespace q40 {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr char kCr = '\r';
constexpr char kLf = '\n';
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kOk = "OK\r\n";
constexpr std::string_view kAccess = "KX~F";

// An LF that belongs to its CR follows within the time of a character, 1.04 ms at 9600 baud.
constexpr milliseconds kLineFeedGap{2};
constexpr std::size_t kBurstBytes = 16;
constexpr std::size_t kPieceBytes = 10;
constexpr std::size_t kLongestLine = 256;
constexpr std::size_t kAddressDigits = 4;

nanoseconds WireTime(std::size_t bytes, int baud) {
  if (baud <= 0) return nanoseconds(0);
  constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
  return nanoseconds(static_cast<std::int64_t>(bytes) * kBitsPerByte * kNanosecondsPerSecond /
                     baud);
}

bool IsHex(std::string_view text) { return std::all_of(text.begin(), text.end(), IsHexDigit); }

// An access command, "KX~F0200R" or "KX~F0200W" and digits.
struct Access {
  Address address = 0;
  char verb = 'R';
  std::string_view digits;
};

std::optional<Access> ParseAccess(std::string_view command) {
  const std::size_t verb_at = kAccess.size() + kAddressDigits;
  if (!command.starts_with(kAccess) || command.size() <= verb_at) return std::nullopt;
  const std::string_view address = command.substr(kAccess.size(), kAddressDigits);
  if (!IsHex(address)) return std::nullopt;
  const int value = HexByteValue(address, 0) * 256 + HexByteValue(address, 2);
  return Access{static_cast<Address>(value), command[verb_at], command.substr(verb_at + 1)};
}

// The name by which a fault refers to a command.
std::string NameOf(std::string_view command) {
  if (command == "KX~WHO") return "WHO";
  if (command == "KX~E") return "END";
  if (ParseAccess(command)) return UpperCase(command.substr(kAccess.size(), kAddressDigits));
  return std::string(command);
}

}  // namespace

// ---- what comes in

void SimulatedRadio::Receive(std::string_view bytes, TimePoint now) {
  // No command is longer than a line, so what does not end is taken in pieces.
  for (; !hung_up_ && !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), kLongestLine))) {
    line_ += bytes.substr(0, kLongestLine);
    line_time_ = now;
    TakeLines(now);
    if (line_.size() > kLongestLine) EchoLine(line_.size());
  }
}

// Answers every line whose end is known. A CR at the very end stays until it is clear that no LF
// follows it.
void SimulatedRadio::TakeLines(TimePoint now) {
  const bool waited = now >= line_time_ + kLineFeedGap;
  while (!line_.empty() && !hung_up_) {
    const std::size_t end = line_.find_first_of(kLineEnd);
    if (end == 0 && line_[0] == kLf) {
      EchoLine(1);  // an LF too many
    } else if (end == std::string::npos || (end + 1 == line_.size() && line_[end] == kCr)) {
      if (!waited) break;
      if (end != std::string::npos) {
        FinishLine(end + 1, false);
      } else {
        // Broken off: the echo goes out, the rest of the command may still follow.
        Queue(std::string_view(line_).substr(echoed_), line_time_);
        echoed_ = line_.size();
        break;
      }
    } else {
      const bool with_line_feed = line_[end] == kCr && line_[end + 1] == kLf;
      FinishLine(end + (with_line_feed ? 2 : 1), with_line_feed);
    }
  }
  undecided_ = !line_.empty() && echoed_ < line_.size() && !hung_up_;
}

void SimulatedRadio::EchoLine(std::size_t length) {
  if (length > echoed_)
    Queue(std::string_view(line_).substr(echoed_, length - echoed_), line_time_);
  line_.erase(0, length);
  echoed_ = 0;
}

void SimulatedRadio::FinishLine(std::size_t length, bool with_line_feed) {
  // The whole of what was sent comes back before the answer does, doubled LFs included.
  while (length < line_.size() && line_[length] == kLf) ++length;
  const std::string command = line_.substr(0, line_.find_first_of(kLineEnd));
  ++exchanges_;
  if (options_.on_command) options_.on_command(command);
  Answer answer = AnswerTo(command, with_line_feed);
  Spoil(answer, command, with_line_feed);
  if (answer.bad_echo && !command.empty()) line_[command.size() - 1] = '?';
  if (answer.echo) {
    EchoLine(length);
  } else {
    line_.erase(0, length);
    echoed_ = 0;
  }
  if (!hung_up_) Speak(answer);
}

// ---- what the radio says

SimulatedRadio::Answer SimulatedRadio::AnswerTo(std::string_view command,
                                                bool with_line_feed) const {
  Answer answer;
  if (command == "KX~WHO") {
    answer.text = "RXQ40-" + std::to_string(options_.model) + options_.version + '-';
    answer.text += kLineEnd;
  } else if (command == "RXQ40" || command == "KX~E") {
    answer.text = kOk;
  } else {
    answer = AnswerToAccess(command, with_line_feed);
  }
  return answer;
}

SimulatedRadio::Answer SimulatedRadio::AnswerToAccess(std::string_view command,
                                                      bool with_line_feed) const {
  Answer answer;
  const auto access = ParseAccess(command);
  if (!access) return answer;
  const int size = with_line_feed ? kUnitSize : kBlockSize;
  const auto old = memory_.Read(access->address, size);
  if (!old) return answer;
  if (access->verb == 'R' && access->digits.empty()) {
    answer.text = *old;
    answer.text += kLineEnd;
  } else if (access->verb == 'W' && access->digits.size() == old->size() && IsHex(access->digits)) {
    answer.text = kOk;
    answer.store_at = access->address;
    answer.to_store = access->digits;
  }
  if (!with_line_feed && !answer.text.empty()) answer.text.insert(0, kLineEnd);
  return answer;
}

void SimulatedRadio::Spoil(Answer& answer, std::string_view command, bool with_line_feed) {
  const std::string name = NameOf(command);
  const std::size_t start = !with_line_feed && answer.text.starts_with(kLineEnd) ? 2 : 0;
  const std::size_t end = answer.text.size() - std::min(answer.text.size(), kLineEnd.size());
  for (Fault& fault : options_.faults) {
    if (!Happens(fault, exchanges_, name)) continue;
    switch (fault.kind) {
      case FaultKind::kSilence:
        answer.echo = false;
        answer.text.clear();
        break;
      case FaultKind::kEchoOnly: answer.text.clear(); break;
      case FaultKind::kNoEcho: answer.echo = false; break;
      case FaultKind::kBadEcho: answer.bad_echo = true; break;
      case FaultKind::kShort:
        if (end > start) answer.text.erase(end - 1, 1);
        break;
      case FaultKind::kLong: answer.text.insert(end, 1, 'X'); break;
      case FaultKind::kNonHex:
        if (const std::size_t at = start + 2 * static_cast<std::size_t>(fault.number);
            answer.to_store.empty() && end > start + 2 && at + 2 <= end) {
          answer.text.replace(at, 2, "ZZ");
        }
        break;
      case FaultKind::kNotGood:
        if (const auto at = answer.text.find("OK"); at != std::string::npos) {
          answer.text.replace(at, 2, "NG");
        }
        break;
      case FaultKind::kPieces: answer.gap = milliseconds(fault.number); break;
      case FaultKind::kLate: answer.delay = milliseconds(fault.number); break;
      case FaultKind::kStray:
        answer.text.insert(0, static_cast<std::size_t>(fault.number), '?');
        break;
      case FaultKind::kOtherAddress: {
        const auto access = ParseAccess(command);
        if (!access || access->verb != 'R') break;
        const int next = access->address + (with_line_feed ? kUnitSize : kBlockSize);
        const auto other = AddressText(static_cast<Address>(next));
        answer = AnswerTo(std::string(kAccess) + other + 'R', with_line_feed);
        break;
      }
      case FaultKind::kNotStored: answer.to_store.clear(); break;
      case FaultKind::kHangUp:
        hung_up_ = true;
        comes_back_after_.reset();
        if (!fault.stays) comes_back_after_ = milliseconds(fault.number);
        break;
      case FaultKind::kWrongIdentity:
        if (name == "WHO") answer.text.replace(start, end - start, fault.text);
        break;
    }
  }
}

void SimulatedRadio::Speak(const Answer& answer) {
  if (!answer.to_store.empty()) memory_.Write(answer.store_at, answer.to_store);
  const std::size_t piece = answer.gap.count() > 0 ? kPieceBytes : answer.text.size();
  TimePoint from = std::max(wire_free_, line_time_) + answer.delay;
  for (std::size_t at = 0; at < answer.text.size(); at += piece) {
    Queue(std::string_view(answer.text).substr(at, piece), from);
    from = wire_free_ + answer.gap;
  }
}

// ---- the wire back

void SimulatedRadio::Queue(std::string_view bytes, TimePoint from) {
  wire_free_ = std::max(wire_free_, from);
  const std::size_t burst = options_.baud > 0 ? kBurstBytes : bytes.size();
  while (!bytes.empty()) {
    const std::string_view head = bytes.substr(0, burst);
    wire_free_ += WireTime(head.size(), options_.baud);
    // What is due at once goes out at once: echo and answer in one piece.
    if (!out_.empty() && options_.baud <= 0 && out_.back().due >= wire_free_) {
      out_.back().bytes += head;
    } else {
      out_.push_back({std::string(head), wire_free_});
    }
    bytes.remove_prefix(head.size());
  }
}

std::string SimulatedRadio::Take(TimePoint now) {
  if (undecided_) TakeLines(now);
  std::string due;
  while (!out_.empty() && out_.front().due <= now) {
    due += out_.front().bytes;
    out_.pop_front();
  }
  return due;
}

std::optional<SimulatedRadio::TimePoint> SimulatedRadio::NextDue() const {
  std::optional<TimePoint> next;
  if (!out_.empty()) next = out_.front().due;
  if (undecided_) next = std::min(next.value_or(TimePoint::max()), line_time_ + kLineFeedGap);
  return next;
}

void SimulatedRadio::Reconnect() {
  hung_up_ = false;
  comes_back_after_.reset();
  line_.clear();
  echoed_ = 0;
  undecided_ = false;
  out_.clear();
}

}  // namespace q40
