// The link without time and without a wire: a clock that moves only when somebody waits, and a port
// that follows a script.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "link/link.h"

namespace q40::test {

using std::chrono::milliseconds;
using TimePoint = std::chrono::steady_clock::time_point;

struct FakeClock {
  TimePoint now{};
  [[nodiscard]] long Ms() const {
    return std::chrono::duration_cast<milliseconds>(now.time_since_epoch()).count();
  }
};

class FakeTimer final : public OneShotTimer {
 public:
  explicit FakeTimer(FakeClock& clock) : clock_(clock) {}
  void Start(milliseconds interval) override { due_ = clock_.now + interval; }
  void Stop() override { due_.reset(); }
  [[nodiscard]] bool IsRunning() const override { return due_ && clock_.now < *due_; }
  [[nodiscard]] std::optional<TimePoint> Due() const { return IsRunning() ? due_ : std::nullopt; }

 private:
  FakeClock& clock_;
  std::optional<TimePoint> due_;
};

// Jumps to the next thing that can happen. A wait with nothing to wait for would hang: it fails.
class FakePump final : public EventPump {
 public:
  FakePump(FakeClock& clock, std::vector<FakeTimer*> timers)
      : clock_(clock), timers_(std::move(timers)) {}

  std::function<std::optional<TimePoint>()> next_arrival = [] { return std::nullopt; };
  std::function<void()> on_wait;
  bool stop = false;

  void WaitForEvents() override {
    if (on_wait) on_wait();
    std::optional<TimePoint> next = next_arrival();
    for (const FakeTimer* timer : timers_) {
      if (const auto due = timer->Due()) next = std::min(next.value_or(*due), *due);
    }
    if (!next) {
      FAIL() << "waits without an end";
    }
    clock_.now = std::max(clock_.now, *next);
  }
  [[nodiscard]] bool StopRequested() const override { return stop; }

 private:
  FakeClock& clock_;
  std::vector<FakeTimer*> timers_;
};

// Bytes on their way to the program.
class Arrivals {
 public:
  // `after` the bytes before them, or after `now` when there are none.
  void Add(std::string bytes, milliseconds after, TimePoint now) {
    const TimePoint from = coming_.empty() ? now : std::max(now, coming_.back().at);
    coming_.push_back({std::move(bytes), from + after});
  }
  std::string Take(TimePoint now) {
    std::string text;
    while (!coming_.empty() && coming_.front().at <= now) {
      text += coming_.front().bytes;
      coming_.pop_front();
    }
    return text;
  }
  // The next ones in the future: what has arrived is no event any more, read or not.
  [[nodiscard]] std::optional<TimePoint> Next(TimePoint now) const {
    for (const Arrival& arrival : coming_) {
      if (arrival.at > now) return arrival.at;
    }
    return std::nullopt;
  }
  void Clear() { coming_.clear(); }

 private:
  struct Arrival {
    std::string bytes;
    TimePoint at;
  };
  std::deque<Arrival> coming_;
};

// Answers each write with the next reply of its script, which may come in pieces and late.
class ScriptedPort final : public Port {
 public:
  struct Piece {
    std::string bytes;
    milliseconds after{0};
  };
  using Reply = std::vector<Piece>;
  struct Sent {
    std::string bytes;
    long at_ms;
  };

  explicit ScriptedPort(FakeClock& clock) : clock_(clock) {}

  std::function<Reply(const std::string& sent)> reply;
  std::vector<Sent> sent;
  bool can_open = true;
  int dies_at_write = -1;  // number of the write (from 0) that fails
  bool dies_at_read = false;

  bool Open() override { return open_ = can_open; }
  [[nodiscard]] bool IsOpen() const override { return open_; }
  void Close() override { open_ = false; }
  bool Write(std::string_view text) override {
    if (static_cast<int>(sent.size()) == dies_at_write) return open_ = false;
    sent.push_back({std::string(text), clock_.Ms()});
    if (!reply) return true;
    Leave(reply(sent.back().bytes));
    return true;
  }
  std::optional<std::string> ReadAvailable() override {
    if (dies_at_read) {
      open_ = false;
      return std::nullopt;
    }
    return arrivals_.Take(clock_.now);
  }
  [[nodiscard]] PortProblem Problem() const override {
    return {PortProblem::Kind::kMissing, "the scripted port is closed", ""};
  }
  void LeaveOver(std::string bytes) { Leave({{std::move(bytes)}}); }
  void Leave(const Reply& pieces) {
    for (const Piece& piece : pieces) arrivals_.Add(piece.bytes, piece.after, clock_.now);
  }
  [[nodiscard]] std::optional<TimePoint> NextArrival() const { return arrivals_.Next(clock_.now); }

 private:
  FakeClock& clock_;
  Arrivals arrivals_;
  bool open_ = false;
};

// A link over any port with fake time.
struct FakeTime {
  FakeClock clock;
  FakeTimer timer1{clock};
  FakeTimer timer2{clock};
  FakeTimer timer3{clock};
  FakeTimer deadline{clock};
  FakePump pump{clock, {&timer1, &timer2, &timer3}};  // nothing may depend on the deadline's event
  [[nodiscard]] LinkTimers Timers() { return {timer1, timer2, timer3, deadline}; }
};

struct ScriptedLink : FakeTime {
  ScriptedPort port{clock};
  Link link{port, Timers(), pump};
  ScriptedLink() {
    pump.next_arrival = [this] { return port.NextArrival(); };
  }
};

}  // namespace q40::test
