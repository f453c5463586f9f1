// A simulated radio, or what plays one, in place of a serial port, inside the program.
#pragma once

#include <functional>
#include <string>

#include "link/port.h"
#include "sim/far_end.h"

namespace q40 {

class SimulatedPort final : public Port {
 public:
  using TimePoint = FarEnd::TimePoint;

  // `now` is the clock; `wake_at` is asked to wake the event pump at that time, because bytes will
  // then have arrived. The radio must outlive the port.
  SimulatedPort(FarEnd& radio, std::function<TimePoint()> now,
                std::function<void(TimePoint)> wake_at)
      : radio_(radio), now_(std::move(now)), wake_at_(std::move(wake_at)) {}

  bool Open() override;
  [[nodiscard]] bool IsOpen() const override { return open_; }
  void Close() override { open_ = false; }
  bool Write(std::string_view text) override;
  std::optional<std::string> ReadAvailable() override;
  [[nodiscard]] PortProblem Problem() const override { return problem_; }

 private:
  bool Lost();
  void Arm();

  FarEnd& radio_;
  std::function<TimePoint()> now_;
  std::function<void(TimePoint)> wake_at_;
  bool open_ = false;
  PortProblem problem_;
};

}  // namespace q40
