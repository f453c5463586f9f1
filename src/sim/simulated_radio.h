// A radio without hardware: it answers the whole clone protocol, at the speed of the wire or as
// fast as it can, and does on purpose what a bad radio or cable does by accident.
//
// Every byte comes back as an echo, then the answer follows. A line that ends with CR LF is a
// 32-byte command, one that ends with CR alone a 16-byte command; since both may read alike, the
// radio decides by whether an LF follows the CR within the time that a character takes on the wire.
// Further LFs are echoed and ignored.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/far_end.h"
#include "sim/fault.h"
#include "sim/radio_memory.h"

namespace q40 {

class SimulatedRadio final : public FarEnd {
 public:
  struct Options {
    int model = 0;       // 0..2
    char version = '0';  // the letter it reports
    int baud = 0;        // speed of the wire; 0: no pacing
    std::vector<Fault> faults;
    std::function<void(std::string_view)>
        on_command{};  // told of each command line, without its end
  };

  explicit SimulatedRadio(Options options) : options_(std::move(options)) {}

  [[nodiscard]] RadioMemory& memory() { return memory_; }
  [[nodiscard]] const RadioMemory& memory() const { return memory_; }
  [[nodiscard]] const Options& options() const { return options_; }

  void Receive(std::string_view bytes, TimePoint now) override;
  // At wire speed the bytes arrive in bursts of up to 16, as from the buffer of a serial chip.
  std::string Take(TimePoint now) override;
  [[nodiscard]] std::optional<TimePoint> NextDue() const override;

  // A hang-up fault has happened.
  [[nodiscard]] bool HungUp() const override { return hung_up_; }
  [[nodiscard]] std::optional<std::chrono::milliseconds> ComesBackAfter() const override {
    return comes_back_after_;
  }
  void Reconnect() override;

  // Complete command lines received.
  [[nodiscard]] int Exchanges() const { return exchanges_; }

 private:
  struct Burst {
    std::string bytes;
    TimePoint due;  // of its last byte
  };
  // The answer to one command; faults change it before it is spoken.
  struct Answer {
    bool echo = true;
    bool bad_echo = false;  // its last character before the line end is another
    std::string text;       // with its line ends; empty: no answer
    std::chrono::milliseconds delay{0};
    std::chrono::milliseconds gap{0};  // between pieces of ten characters; 0: in one piece
    // A write stores this when it is answered.
    Address store_at = 0;
    std::string to_store;
  };

  void TakeLines(TimePoint now);
  void FinishLine(std::size_t length, bool with_line_feed);
  void EchoLine(std::size_t length);
  [[nodiscard]] Answer AnswerTo(std::string_view command, bool with_line_feed) const;
  [[nodiscard]] Answer AnswerToAccess(std::string_view command, bool with_line_feed) const;
  void Spoil(Answer& answer, std::string_view command, bool with_line_feed);
  void Speak(const Answer& answer);
  void Queue(std::string_view bytes, TimePoint from);

  Options options_;
  RadioMemory memory_;
  std::string line_;        // received and not yet answered
  std::size_t echoed_ = 0;  // characters of line_ whose echo is out already
  TimePoint line_time_{};   // when line_ grew last
  bool undecided_ = false;  // what follows line_, and when, decides what it is
  std::deque<Burst> out_;
  TimePoint wire_free_{};  // when the last queued byte has left the wire
  int exchanges_ = 0;
  bool hung_up_ = false;
  std::optional<std::chrono::milliseconds> comes_back_after_;
};

}  // namespace q40
