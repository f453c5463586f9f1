// The ten auto-dialer memories and their form in the radio: 16 bytes a memory, one byte a character
// from the first byte on, the rest 00. "0".."9" 30..39, "A".."D" 3A..3D, "*" 3E, "#" 3F.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "radio/memory_map.h"

namespace q40 {

inline constexpr std::size_t kDialLength = 16;
inline constexpr std::array<std::string_view, kDialCount> kDialTitles = {
    "M1", "M2", "M3", "M4", "M5", "M6", "M7", "M8", "M9", "St"};

// Memories M1 to M9, then St.
using DialTexts = std::array<std::string, kDialCount>;

// The 32 digits of memory `index`. Characters that the radio does not know are left out; what does
// not fit into 16 bytes is cut, so that a write command keeps its length.
std::string MakeDialData(const DialTexts& texts, int index);

// Sets memory `index` from 32 digits. A byte that stands for no character (00 padding, FF of an
// erased block) adds nothing, and reading goes on behind it.
void UpDateDialData(DialTexts& texts, std::string_view block, int index);

}  // namespace q40
