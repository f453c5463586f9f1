// The radio's general settings: 64 bytes at 0x0020..0x005F, kept as four lines of 32 digits. Byte j
// of line k is address 0x0020 + 16 * k + j.
//
// Bytes without a control are carried through as they were read (0.3, 1.7, 1.10, 1.11, 1.13, 1.14,
// 2.8-2.15, 3.0-3.11, 3.14, 3.15) or are always written with a fixed value (0.0 A5; 0.1, 0.7, 1.3,
// 1.5, 1.6 00; 1.15 01). The check boxes without a byte (chkAutoProg, chkCharge, chkFlg1) are none
// of this codec's business.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "radio/settings_table.h"

namespace q40 {

inline constexpr int kSettingsLines = 4;
// 0x0020, 0x0030, 0x0040, 0x0050: 32 digits each, or empty before anything was loaded.
using SettingsLines = std::array<std::string, kSettingsLines>;

// Line 0 byte 4 is computed: the channel with which channel mode starts, or the band's code without it.
inline constexpr int kStartChannelByte = 4;

// Reads the four lines. A list or slider byte outside its range gives 0, and the line is repaired
// to "00" at once; only cmbTOTP leaves its line alone (intended).
SettingsValues DecodeSettings(SettingsLines& lines);

// Rebuilds the four lines from the values, the first memory channel in use (line 0 byte 4: channel
// mode starts with it; 210 when there is none) and the bytes that are carried through. A byte that
// is missing in a short or empty line reads as "00".
void EncodeSettings(const SettingsValues& values, int first_used_channel, SettingsLines& lines);

// The line with the two digits of byte `index` (0..15) replaced. Any other index: the line as it
// is.
std::string ReplaceByte(std::string_view line, std::string_view byte_text, int index);

}  // namespace q40
