#include "serial/driver_latency.h"

#ifdef __linux__
#include <linux/serial.h>
#include <sys/ioctl.h>
#endif

namespace q40 {

#ifdef __linux__

namespace {
// The kernel's flags are an int, its names of them unsigned.
constexpr int kLowLatency = ASYNC_LOW_LATENCY;
}  // namespace

std::optional<bool> DriverLatency::IsLow() {
  serial_struct line{};
  if (ioctl(handle_, TIOCGSERIAL, &line) != 0) return std::nullopt;
  return (line.flags & kLowLatency) != 0;
}

// All else goes back as it was read: who is not root may change nothing but this.
bool DriverLatency::SetLow(bool low) {
  serial_struct line{};
  if (ioctl(handle_, TIOCGSERIAL, &line) != 0) return false;
  line.flags = low ? line.flags | kLowLatency : line.flags & ~kLowLatency;
  return ioctl(handle_, TIOCSSERIAL, &line) == 0;
}

#else

std::optional<bool> DriverLatency::IsLow() { return std::nullopt; }
bool DriverLatency::SetLow(bool /*low*/) { return handle_ < 0; }

#endif

}  // namespace q40
