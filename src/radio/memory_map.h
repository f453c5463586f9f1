// Where the radio keeps what. 16-bit addresses; channels and settings move as 32-byte units.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "radio/models.h"

namespace q40 {

using Address = std::uint16_t;

inline constexpr int kMemorySize = 0x2000;  // 8 KiB
inline constexpr int kUnitSize = 32;
inline constexpr int kBlockSize = 16;
inline constexpr std::size_t kUnitDigits = 64;   // of 32 bytes
inline constexpr std::size_t kBlockDigits = 32;  // of 16 bytes: one line of a clone file

inline constexpr int kMemoryChannelCount = 210;
inline constexpr int kFirstDChannel = 200;  // channels 200..209 are called D0..D9
inline constexpr int kSpecialChannelCount = 5;
inline constexpr int kDialCount = 10;
inline constexpr int kDialUnitCount = 5;  // two dialer memories a unit
inline constexpr int kSettingsUnitCount = 2;

// Rows of a special-channel set, in the order of grid, file and wire. Not the order of addresses.
inline constexpr int kVfoRow = 0;
inline constexpr int kCallRow = 1;
inline constexpr int kRptRow = 2;
inline constexpr int kPhRow = 3;
inline constexpr int kPlRow = 4;
inline constexpr std::array<std::string_view, kSpecialChannelCount> kSpecialRowTitles = {
    "VFO", "CALL", "RPT", "PH", "PL"};

inline constexpr std::array<Address, kSettingsUnitCount> kSettingsAddress = {0x0020, 0x0040};

constexpr Address SpecialChannelAddress(Band band, int k) {
  constexpr std::array<Address, kSpecialChannelCount> kVhf = {0x00C0, 0x0180, 0x01A0, 0x0120,
                                                              0x0100};
  constexpr std::array<Address, kSpecialChannelCount> kUhf = {0x00E0, 0x01C0, 0x01E0, 0x0160,
                                                              0x0140};
  return (band == Band::kVhf ? kVhf : kUhf)[static_cast<std::size_t>(k)];
}

constexpr Address MemoryChannelAddress(int n) { return static_cast<Address>(0x0200 + 0x20 * n); }
constexpr Address DialAddress(int unit) { return static_cast<Address>(0x1D00 + 0x20 * unit); }

// Channel 0..209 as the radio and the grids call it: "0".."199", "D0".."D9".
std::string ChannelTitle(int n);

// What lives in a unit.
struct UnitContent {
  enum class Kind : std::uint8_t { kNothing, kSettings, kSpecial, kDial, kMemory };
  Kind kind = Kind::kNothing;
  Band band = Band::kVhf;  // of kSpecial
  int number = 0;  // settings area 0, 1; row 0..4; pair of dialer memories 0..4; channel 0..209
};
// kNothing where no unit begins.
UnitContent ContentAt(Address address);

// What lives at an address, in words: "memory channel D3", "VHF special channel CALL".
std::string UnitName(Address address);

}  // namespace q40
