#include "link/com_ports.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "image/digits.h"

namespace q40 {
namespace {

struct DeviceRow {
  int first_number;
  std::string_view prefix;
  int first_suffix;
};

#if defined(_WIN32)
constexpr DeviceRow kDevices[] = {{1, "COM", 1}};
#elif defined(__APPLE__)
constexpr DeviceRow kDevices[] = {
    {11, "/dev/cu.serial", 0}, {9, "/dev/cu.usbmodem", 0}, {1, "/dev/cu.usbserial", 0}};
#else
constexpr DeviceRow kDevices[] = {
    {11, "/dev/ttyS", 0}, {9, "/dev/ttyACM", 0}, {1, "/dev/ttyUSB", 0}};
#endif

}  // namespace

std::string ComDevice(int number) {
  const std::string variable = "RXQ40_COM" + std::to_string(number);
  const char* named = std::getenv(variable.c_str());
  if (named != nullptr && *named != '\0') return named;
  const auto* const row =
      std::find_if(std::begin(kDevices), std::end(kDevices),
                   [&](const DeviceRow& r) { return number >= r.first_number; });
  return std::string(row->prefix) + std::to_string(number - row->first_number + row->first_suffix);
}

std::optional<std::string> DeviceOf(std::string_view port) {
  if (port.empty()) return std::nullopt;
  if (!AreDigits(port)) return std::string(port);
  for (int n = 1; n <= kComPortCount; ++n) {
    if (port == std::to_string(n)) return ComDevice(n);
  }
  return std::nullopt;
}

std::vector<ComPortState> ComPortStates(const std::vector<PresentPort>& plugged_in) {
  std::vector<ComPortState> states;
  for (int number = 1; number <= kComPortCount; ++number) {
    ComPortState state{number, ComDevice(number), false, {}};
    std::error_code error;
    const auto resolved = std::filesystem::canonical(state.device, error);
    const std::string device = error ? state.device : resolved.string();
    const auto found = std::find_if(plugged_in.begin(), plugged_in.end(),
                                    [&](const PresentPort& p) { return p.device == device; });
    if (found != plugged_in.end()) state.description = found->description;
    const bool listed_only = device.starts_with("/dev/ttyS");  // the nodes exist without a chip
    state.present = found != plugged_in.end() ||
                    (!listed_only && std::filesystem::is_character_file(device, error));
    states.push_back(std::move(state));
  }
  return states;
}

}  // namespace q40
