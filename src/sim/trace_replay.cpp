#include "sim/trace_replay.h"

#include <algorithm>

namespace q40 {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLongestDelay{3000};
constexpr milliseconds kBackAfter{1000};

}  // namespace

TraceReplay::TraceReplay(const std::vector<TraceEvent>& events) {
  milliseconds from = events.empty() ? milliseconds(0) : events.front().at;
  for (const TraceEvent& event : events) {
    const bool lost = event.kind == TraceEvent::Kind::kPort && event.bytes.starts_with(kTraceLost);
    if (event.kind == TraceEvent::Kind::kSent) {
      steps_.push_back({event.bytes, event.line, {}});
      from = event.at;
    } else if (lost || event.kind == TraceEvent::Kind::kArrived) {
      auto& parts = steps_.empty() ? before_ : steps_.back().parts;
      parts.push_back({std::min(event.at - from, kLongestDelay), lost ? "" : event.bytes});
    }
  }
  Play(before_, std::chrono::steady_clock::time_point());
}

void TraceReplay::Play(const std::vector<Part>& parts, TimePoint from) {
  coming_.clear();
  for (const Part& part : parts) coming_.push_back({from + part.after, part.bytes});
}

void TraceReplay::Receive(std::string_view bytes, TimePoint now) {
  received_ += bytes;
  while (!hung_up_ && !received_.empty() && !IsOver()) {
    if (next_ == steps_.size()) return Differ();
    const Step& step = steps_[next_];
    if (step.command.starts_with(received_) && step.command != received_) return;
    // A line end that goes on belongs to the command before it, which is another one then.
    const bool goes_on =
        received_.size() > step.command.size() && received_[step.command.size()] == '\n';
    if (goes_on || !received_.starts_with(step.command)) return Differ();
    received_.erase(0, step.command.size());
    Play(step.parts, now);
    ++next_;
  }
}

void TraceReplay::Differ() {
  const std::string got = TraceText(received_);
  coming_.clear();
  if (next_ == steps_.size()) {
    difference_.what = "the trace has ended, and another command came: " + got;
    return;
  }
  difference_.line = steps_[next_].line;
  difference_.what =
      "another command came: " + got + " instead of " + TraceText(steps_[next_].command);
  const auto later = std::find_if(steps_.begin() + static_cast<std::ptrdiff_t>(next_), steps_.end(),
                                  [&](const Step& step) { return step.command == received_; });
  if (later != steps_.end()) {
    difference_.what += ", which the trace has later, in line " + std::to_string(later->line);
  }
}

std::optional<FileProblem> TraceReplay::Difference() const {
  if (IsOver()) return difference_;
  if (next_ == steps_.size()) return std::nullopt;
  FileProblem problem{FileProblem::Kind::kBadData, {}, steps_[next_].line, {}};
  const std::string expected = TraceText(steps_[next_].command);
  problem.what = received_.empty() ? "the command did not come: " + expected
                                   : "the command did not come whole: " + TraceText(received_) +
                                         " instead of " + expected;
  return problem;
}

std::string TraceReplay::Take(TimePoint now) {
  std::string due;
  while (!coming_.empty() && coming_.front().at <= now && !hung_up_) {
    hung_up_ = coming_.front().bytes.empty() && due.empty();
    if (coming_.front().bytes.empty() && !hung_up_) break;  // first what came before
    due += coming_.front().bytes;
    coming_.pop_front();
  }
  return due;
}

std::optional<FarEnd::TimePoint> TraceReplay::NextDue() const {
  return coming_.empty() ? std::nullopt : std::optional(coming_.front().at);
}

std::optional<milliseconds> TraceReplay::ComesBackAfter() const {
  return next_ < steps_.size() ? std::optional(kBackAfter) : std::nullopt;
}

void TraceReplay::Reconnect() {
  hung_up_ = false;
  received_.clear();
}

}  // namespace q40
