// Port numbers 1 to 14 and the devices behind them. The table is fixed: a number never moves
// because another cable was plugged in.
//
//              Linux              macOS                   Windows
//   1 .. 8     /dev/ttyUSB0 .. 7  /dev/cu.usbserial0 ..   COM1 .. COM14
//   9 .. 10    /dev/ttyACM0 .. 1  /dev/cu.usbmodem0 ..
//   11 .. 14   /dev/ttyS0 .. 3    /dev/cu.serial0 ..
//
// The environment variable RXQ40_COM<n> names another device for number n.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace q40 {

inline constexpr int kComPortCount = 14;

// Device of port 1..14.
std::string ComDevice(int number);

// Device of what a user writes for a port: a number 1..14, or any path, which stands for itself.
// No value for another number and for an empty text.
std::optional<std::string> DeviceOf(std::string_view port);

}  // namespace q40
