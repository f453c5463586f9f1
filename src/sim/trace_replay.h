// A radio that a trace tells of: it answers the commands of the trace as they were answered then, and
// no others.
//
// What the trace has between two commands comes as long after the first as it did then, but at most
// 3 seconds, when no program waits for it any more. What has not come when the next command does is
// dropped: then, the program threw it away. A port that was lost is lost again, and back after a second
// when the trace goes on.
#pragma once

#include <deque>
#include <vector>

#include "link/trace_line.h"
#include "sim/far_end.h"

namespace q40 {

class TraceReplay final : public FarEnd {
 public:
  explicit TraceReplay(const std::vector<TraceEvent>& events);

  void Receive(std::string_view bytes, TimePoint now) override;
  std::string Take(TimePoint now) override;
  [[nodiscard]] std::optional<TimePoint> NextDue() const override;
  [[nodiscard]] bool HungUp() const override { return hung_up_; }
  [[nodiscard]] std::optional<std::chrono::milliseconds> ComesBackAfter() const override;
  void Reconnect() override;
  // A command came that is not the next one of the trace.
  [[nodiscard]] bool IsOver() const override { return !difference_.what.empty(); }

  [[nodiscard]] std::size_t Answered() const { return next_; }
  [[nodiscard]] std::size_t Commands() const { return steps_.size(); }
  // How the commands differ from those of the trace, also by an end that came too early; no value when
  // they do not. With the line of the trace, 0 behind its end; without a path.
  [[nodiscard]] std::optional<FileProblem> Difference() const;

 private:
  struct Part {
    std::chrono::milliseconds after{0};  // the command
    std::string bytes;                   // empty: the line is lost
  };
  // A command and what came before the next one.
  struct Step {
    std::string command;
    int line = 0;
    std::vector<Part> parts;
  };
  struct Due {
    TimePoint at;
    std::string bytes;
  };

  void Differ();
  void Play(const std::vector<Part>& parts, TimePoint from);

  std::vector<Part> before_;  // what came before the first command
  std::vector<Step> steps_;
  std::size_t next_ = 0;  // the command that is expected
  std::string received_;  // and not yet answered
  std::deque<Due> coming_;
  bool hung_up_ = false;
  FileProblem difference_;
};

}  // namespace q40
