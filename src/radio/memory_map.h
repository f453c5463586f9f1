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

// Channel 0..209 as the radio and the grids call it: "0".."199", "D0".."D9".
std::string ChannelTitle(int n);

}  // namespace q40
