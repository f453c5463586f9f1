#include "link/com_ports.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "base/digits.h"
#include "base/hex.h"

namespace q40 {
namespace {

struct DeviceRow {
  int first_number;
  std::string_view prefix;
  int first_suffix;
  bool has_plug;  // a USB adapter, as opposed to a chip of the board
};

constexpr DeviceRow kDevices[] = {
    {11, "/dev/ttyS", 0, false}, {9, "/dev/ttyACM", 0, true}, {1, "/dev/ttyUSB", 0, true}};

// What is meant by a name under which there is no file: "1" for "com1", "/dev/ttyUSB0" for "ttyUSB0".
// Empty for a text that resembles no port.
std::string Meant(std::string_view port) {
  constexpr std::string_view kCom = "COM";
  constexpr std::string_view kFolder = "/dev/";
  std::error_code error;
  if (port.empty() || port.find('/') != std::string_view::npos ||
      std::filesystem::exists(std::filesystem::symlink_status(port, error))) {
    return {};
  }
  if (UpperCase(port.substr(0, kCom.size())) == kCom) {
    const std::string_view rest = port.substr(kCom.size());
    const std::string_view number =
        rest.substr(std::min(rest.find_first_not_of(" 0"), rest.size()));
    if (AreDigits(number)) return DeviceOf(number) ? std::string(number) : "1 to 14";
  }
  const std::string device = std::string(kFolder) + std::string(port);
  const bool named = std::any_of(std::begin(kDevices), std::end(kDevices),
                                 [&](auto& row) { return device.starts_with(row.prefix); });
  return named || std::filesystem::is_character_file(device, error) ? device : std::string();
}

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
  if (!AreDigits(port))
    return Meant(port).empty() ? std::optional(std::string(port)) : std::nullopt;
  for (int n = 1; n <= kComPortCount; ++n) {
    if (port == std::to_string(n)) return ComDevice(n);
  }
  return std::nullopt;
}

std::string PortAdvice(std::string_view port) {
  const std::string meant = Meant(port);
  return meant.empty() ? "use 1 to 14, the path of a device, or auto"
                       : "did you mean " + meant + '?';
}

std::string StablePath(const std::string& device, const std::string& folder) {
  std::vector<std::string> paths;
  std::error_code error;
  for (std::filesystem::directory_iterator link(folder, error), end; !error && link != end;
       link.increment(error)) {
    std::error_code broken;
    if (std::filesystem::canonical(link->path(), broken) == device && !broken) {
      paths.push_back(link->path().string());
    }
  }
  std::sort(paths.begin(), paths.end());
  return paths.empty() ? std::string() : paths.front();
}

std::vector<PresentPort> Adapters(std::vector<PresentPort> plugged_in) {
  std::erase_if(plugged_in, [](const PresentPort& port) {
    return port.stable_path.empty() &&
           std::none_of(std::begin(kDevices), std::end(kDevices), [&](const DeviceRow& row) {
             return row.has_plug && port.device.starts_with(row.prefix);
           });
  });
  return plugged_in;
}

std::vector<ComPortState> ComPortStates(const std::vector<PresentPort>& plugged_in) {
  std::vector<ComPortState> states;
  for (int number = 1; number <= kComPortCount; ++number) {
    ComPortState state{number, ComDevice(number), false, {}, {}};
    std::error_code error;
    const auto resolved = std::filesystem::canonical(state.device, error);
    const std::string device = error ? state.device : resolved.string();
    const auto found = std::find_if(plugged_in.begin(), plugged_in.end(),
                                    [&](const PresentPort& p) { return p.device == device; });
    if (found != plugged_in.end()) {
      state.description = found->description;
      state.stable_path = found->stable_path;
    }
    const bool listed_only = device.starts_with("/dev/ttyS");  // the nodes exist without a chip
    state.present = found != plugged_in.end() ||
                    (!listed_only && std::filesystem::is_character_file(device, error));
    states.push_back(std::move(state));
  }
  return states;
}

}  // namespace q40
