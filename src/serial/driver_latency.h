// The latency of a serial line as its driver keeps it.
#pragma once

#include "link/low_latency.h"

namespace q40 {

// Of an open device. Elsewhere than on Linux no driver is asked.
class DriverLatency final : public LatencyControl {
 public:
  explicit DriverLatency(int handle) : handle_(handle) {}
  std::optional<bool> IsLow() override;
  bool SetLow(bool low) override;

 private:
  int handle_;
};

}  // namespace q40
