// Port numbers 1 to 14 and the devices behind them. The table is fixed: a number never moves
// because another cable was plugged in.
//
//   1 .. 8     /dev/ttyUSB0 .. 7
//   9 .. 10    /dev/ttyACM0 .. 1
//   11 .. 14   /dev/ttyS0 .. 3
//
// The environment variable RXQ40_COM<n> names another device for number n.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace q40 {

inline constexpr int kComPortCount = 14;

// Device of port 1..14.
std::string ComDevice(int number);

// A serial device that is plugged in.
struct PresentPort {
  std::string device;         // "/dev/ttyUSB0"
  std::string description;    // "FT232R USB UART, FTDI, serial number A50285BI"; may be empty
  std::string stable_path{};  // of the same adapter whenever it is plugged in; may be empty
};

// The path in a folder of links, such as /dev/serial/by-id, that leads to a device; empty without one.
std::string StablePath(const std::string& device, const std::string& folder);

// Those that have a plug: no chips of the board, which are there whether a cable is or not.
std::vector<PresentPort> Adapters(std::vector<PresentPort> plugged_in);

struct ComPortState {
  int number = 0;
  std::string device;
  bool present = false;
  std::string description;
  std::string stable_path{};
};
// The ports 1 to 14 with what is plugged in there. A device that is no serial adapter but is there (a
// pseudo-terminal behind a link) is present too.
std::vector<ComPortState> ComPortStates(const std::vector<PresentPort>& plugged_in);

// Device of what a user writes for a port: a number 1..14, or any path, which stands for itself.
// No value for another number, for an empty text, and for a name that only resembles a port.
std::optional<std::string> DeviceOf(std::string_view port);

// What to write instead of a port that has no device: "did you mean 1?" for "com1".
std::string PortAdvice(std::string_view port);

}  // namespace q40
