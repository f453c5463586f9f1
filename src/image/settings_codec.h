// The radio's general settings: 64 bytes at 0x0020..0x005F, kept as four lines of 32 digits. Byte j
// of line k is address 0x0020 + 16 * k + j.
//
// Bytes without a control are carried through as they were read (0.3, 1.7, 1.10, 1.11, 1.13, 1.14,
// 2.8-2.15, 3.0-3.11, 3.14, 3.15) or are always written with a fixed value (0.0 A5; 0.1, 0.7, 1.3,
// 1.5, 1.6 00; 1.15 01). The check boxes without a byte (chkAutoProg, chkCharge, chkFlg1) are none
// of this codec's business.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "image/clone_image.h"
#include "image/settings_values.h"

namespace q40 {

// How a byte stands for a control.
enum class SettingRule : unsigned char {
  kExactText,  // check box: only the text "01" is checked; written 01 / 00
  kExactOne,   // check box: only the value 1 is checked; written 01 / 00
  kNonzero,    // check box: any value but 0 is checked; written 01 / 00
  kAccess,     // check box: any value but 0 is checked; written AA / 00
  kRange,      // list or slider: 0..top, anything else is repaired to 0
  kRangeTotp,  // as kRange, but the line keeps the byte that is out of range
  kScan,       // list: 0, 1, anything else is item 2
  kTwoItems,   // list: 0, anything else is item 1
  kBit6,       // list: bit 6 of the byte; the other bits stay
};

struct SettingsField {
  std::string_view control;  // name of the control
  int SettingsValues::*value;
  int line;
  int byte;
  SettingRule rule;
  int top = 1;  // largest value that a read gives
};

// Line 0 byte 4 is computed: the channel with which channel mode starts, or the band's code without it.
inline constexpr int kStartChannelByte = 4;

// Every control that has a byte, in the order in which they are loaded.
std::span<const SettingsField> SettingsFields();

// The row of a control; the control must exist.
const SettingsField& SettingsFieldOf(std::string_view control);

// Reads the four lines. A list or slider byte outside its range gives 0, and the line is repaired
// to "00" at once; only cmbTOTP leaves its line alone (intended).
SettingsValues DecodeSettings(CloneImage& image);

// Rebuilds the four lines from the values, the in-use flags (line 0 byte 4: the channel that
// channel mode starts with) and the bytes that are carried through. A byte that is missing in a
// short or empty line reads as "00".
void EncodeSettings(const SettingsValues& values, CloneImage& image);

// The line with the two digits of byte `index` (0..15) replaced. Any other index: the line as it
// is.
std::string ReplaceByte(std::string_view line, std::string_view byte_text, int index);

}  // namespace q40
