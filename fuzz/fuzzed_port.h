// A port whose other end does what an input says, in fake time. One step of the input for every
// command that is sent; behind its end the radio answers properly, or not at all.
#pragma once

#include "base/hex.h"
#include "support/fake_link.h"
#include "target.h"

namespace q40::fuzz {

using test::milliseconds;

// One command and what was heard until the next one.
struct Exchange {
  std::string sent;
  std::string heard;
  std::string reply;  // `heard` up to the piece with which it was complete as a reply to a command

  [[nodiscard]] bool Is(std::string_view command) const { return sent.starts_with(command); }
  [[nodiscard]] bool Is(char direction) const {
    constexpr std::size_t kDirectionAt = 8;  // "KX~F0200R"
    return Is("KX~F") && sent.size() > kDirectionAt && sent[kDirectionAt] == direction;
  }
  [[nodiscard]] Address At() const {
    return static_cast<Address>(HexByteValue(sent, 4) * 256 + HexByteValue(sent, 6));
  }
  void Hear(std::string_view bytes) {
    constexpr std::size_t kShortestAnswer = 4;
    heard += bytes;
    if (reply.size() < sent.size() + kShortestAnswer || !reply.ends_with('\n')) reply += bytes;
  }
};

class FuzzedPort final : public Port {
 public:
  // Both must outlive the port.
  FuzzedPort(Input& input, test::FakeTime& time) : input_(input), time_(time) {
    model_ = static_cast<char>('0' + input.Below(3));
    answers_behind_input_ = input.Flag();
    opens_ = input.Byte() != 1;
    time.pump.next_arrival = [this] { return arrivals_.Next(time_.clock.now); };
  }

  bool Open() override { return open_ = opens_; }
  [[nodiscard]] bool IsOpen() const override { return open_; }
  void Close() override { open_ = false; }
  bool Write(std::string_view text) override {
    Check(open_, "nothing is sent to a closed port");
    // The End command reaches a radio that has everything.
    Check(!time_.pump.stop || text.starts_with("KX~E"),
          "nothing else is sent after a stop request");
    exchanges_.push_back({std::string(text), {}, {}});
    return Step() || Lose();
  }
  std::optional<std::string> ReadAvailable() override {
    if (dies_at_read_ >= 0 && dies_at_read_-- == 0) {
      Lose();
      return std::nullopt;
    }
    std::string text = arrivals_.Take(time_.clock.now);
    if (!exchanges_.empty()) exchanges_.back().Hear(text);
    return text;
  }
  [[nodiscard]] PortProblem Problem() const override {
    return {PortProblem::Kind::kLost, "the port is lost", ""};
  }

  [[nodiscard]] const std::vector<Exchange>& exchanges() const { return exchanges_; }
  // How many commands had been sent each time the port was lost.
  [[nodiscard]] const std::vector<std::size_t>& losses() const { return losses_; }

 private:
  bool Lose() {
    losses_.push_back(exchanges_.size());
    arrivals_.Clear();
    return open_ = false;
  }
  void Arrive(std::string_view bytes, int after_ms) {
    arrivals_.Add(std::string(bytes), milliseconds(after_ms), time_.clock.now);
  }
  std::size_t Length() { return static_cast<std::size_t>(input_.Byte()); }

  [[nodiscard]] std::string ProperReply(std::string_view data) const;
  bool Step();
  void Talk();

  Input& input_;
  test::FakeTime& time_;
  char model_;
  bool answers_behind_input_;
  bool opens_;
  bool open_ = false;
  int dies_at_read_ = -1;
  std::vector<std::size_t> losses_;
  test::Arrivals arrivals_;
  std::vector<Exchange> exchanges_;
};

// What a radio would answer, echo included; `data` is what it reads from its memory.
inline std::string FuzzedPort::ProperReply(std::string_view data) const {
  const Exchange& exchange = exchanges_.back();
  std::string reply = exchange.sent;
  if (exchange.Is("KX~WHO")) return reply + "RXQ40x" + model_ + "A.\r\n";
  if (!exchange.Is('R')) return reply + "OK\r\n";
  std::string digits;
  for (const char byte : data) digits += HexByteText(static_cast<unsigned char>(byte));
  digits.resize(kUnitDigits, '0');
  return reply + digits + "\r\n";
}

// A device that does not stop: the same bytes again and again, for longer than anybody waits.
inline void FuzzedPort::Talk() {
  constexpr int kLongEnoughMs = 3000;
  const std::string_view piece = input_.Text(Length());
  const int gap_ms = 1 + input_.Byte();
  for (int ms = 0; ms < kLongEnoughMs; ms += gap_ms) Arrive(piece, gap_ms);
}

// One step of the input: what comes of the command that was just sent. False: the write fails.
inline bool FuzzedPort::Step() {
  enum : int {
    kProper,
    kData,
    kPieces,
    kPatched,
    kOtherLength,
    kOnlyText,
    kTextBefore,
    kTalk,
    kSilence,
    kWriteFails,
    kReadFails,
    kStop,
    kSteps
  };
  const bool behind_input = input_.Empty();
  const int step =
      behind_input ? (answers_behind_input_ ? kProper : kSilence) : input_.Below(kSteps);
  std::string reply = ProperReply(step == kData ? input_.Text(kUnitSize) : std::string_view());
  switch (step) {
    case kPieces: {
      const std::size_t at = Length() % reply.size();
      Arrive(reply.substr(0, at), 1);
      reply.erase(0, at);
      Arrive(reply, 10 * input_.Byte());
      return true;
    }
    case kPatched: {
      const std::size_t at = Length() % reply.size();
      reply[at] = static_cast<char>(input_.Byte());
      break;
    }
    case kOtherLength: {
      const bool framed = input_.Flag();
      reply.resize(Length(), '0');
      if (framed) reply += "\r\n";
      break;
    }
    case kOnlyText: reply = input_.Text(Length()); break;
    case kTextBefore: reply.insert(0, input_.Text(Length())); break;
    case kTalk: Talk(); return true;
    case kSilence: return true;
    case kWriteFails: return false;
    case kReadFails: dies_at_read_ = input_.Below(4); break;
    case kStop: time_.pump.stop = true; break;
    default: break;
  }
  Arrive(reply, 1);
  return true;
}

}  // namespace q40::fuzz
