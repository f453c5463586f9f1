// Whether a device can be used, and why not.
#pragma once

#include <optional>
#include <string>

#include "link/port.h"

namespace q40 {

// A descriptor of the device that is held beside the serial port's own while that is open. It exists
// because Qt tells a busy port and a forbidden one by the same error, takes no flock, and reconfigures
// the line before anybody could ask whether it is free.
class DeviceGuard {
 public:
  DeviceGuard() = default;
  ~DeviceGuard() { Release(); }
  DeviceGuard(const DeviceGuard&) = delete;
  DeviceGuard& operator=(const DeviceGuard&) = delete;

  // No value: the device is a free serial line, and taken. Lock files that were left do not count here.
  [[nodiscard]] std::optional<PortProblem> Take(const std::string& device);
  void Release();
  // The other end of a device that was taken is gone.
  [[nodiscard]] bool HungUp() const;

 private:
  int handle_ = -1;
};

// Why a device that was taken could not be locked all the same. `reason` is used when there is no lock
// file that would tell.
PortProblem LockProblem(const std::string& device, const std::string& reason);

// Why a device could not be opened for another reason.
PortProblem CannotOpen(const std::string& device, const std::string& reason);

}  // namespace q40
