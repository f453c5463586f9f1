// What the link waits with. Nothing sleeps and nothing spins: a wait hands the thread to the event
// pump, which blocks until something has happened, and every wait has a timer that ends it.
#pragma once

#include <chrono>

namespace q40 {

// Runs out once, by an event that the pump delivers.
class OneShotTimer {
 public:
  OneShotTimer() = default;
  virtual ~OneShotTimer() = default;
  OneShotTimer(const OneShotTimer&) = delete;
  OneShotTimer& operator=(const OneShotTimer&) = delete;

  virtual void Start(std::chrono::milliseconds interval) = 0;  // again when it is running
  virtual void Stop() = 0;
  [[nodiscard]] virtual bool IsRunning() const = 0;
};

class EventPump {
 public:
  EventPump() = default;
  virtual ~EventPump() = default;
  EventPump(const EventPump&) = delete;
  EventPump& operator=(const EventPump&) = delete;

  // Handles what is pending; when nothing is, blocks until bytes arrive, a timer runs out or the
  // user does something.
  virtual void WaitForEvents() = 0;
  // The user wants the program to stop (an interrupt). The exchange in flight is finished, and the
  // running sequence ends before the next one.
  [[nodiscard]] virtual bool StopRequested() const = 0;
};

// The timers of the link.
struct LinkTimers {
  OneShotTimer& Timer1;    // 500 ms:  one attempt of RxBlock, TxBlock or a service read
  OneShotTimer& Timer2;    // 2000 ms: one TxCommand
  OneShotTimer& Timer3;    // Wait
  OneShotTimer& Deadline;  // of a whole sequence
};

}  // namespace q40
