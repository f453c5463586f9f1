// The radio's general settings: one row each, with its byte in the radio, its control on the settings
// pages and its words.
//
// Leading blanks are part of the texts; they right-align the numbers.
#pragma once

#include <array>
#include <span>
#include <string_view>

namespace q40 {

// What the controls of the two settings pages hold: a list its item index from 0, a check box 0 or 1, a
// slider its position. The members carry the names of the controls.
struct SettingsValues {
  int chkChannel = 0;
  int Slider1 = 0;  // volume 0..30
  int Slider2 = 0;  // squelch 0..10
  int cmbDWait = 0;
  int cmbDFirst = 0;
  int cmbDOther = 0;
  int cmbDBurst = 0;
  int cmbTB = 0;
  int cmbTOT = 0;
  int cmbTOTP = 0;
  int chkLock = 0;
  int chkAPO = 0;
  int chkBeep = 0;
  int cmbScan = 0;
  int cmbLamp = 0;
  int cmbBat = 0;
  int cmbVod = 0;
  int cmbStb = 0;
  int chkScanEn = 0;
  int chkPowerEn = 0;
  int chkLockEn = 0;
  int chkMoniEn = 0;
  int chkToneEn = 0;
  int chkBurstEn = 0;
  int chkNameEn = 0;
  int chkVoxEn = 0;
  int chkAlertEn = 0;
  int chkReverseEn = 0;

  bool operator==(const SettingsValues&) const = default;
};

// How a byte stands for a control.
enum class SettingRule : unsigned char {
  kExactText,  // check box: only the text "01" is checked; written 01 / 00
  kExactOne,   // check box: only the value 1 is checked; written 01 / 00
  kNonzero,    // check box: any value but 0 is checked; written 01 / 00
  kLockFlag,   // check box: any value but 0 is checked; written AA / 00
  kRange,      // list or slider: 0..top, anything else is repaired to 0
  kRangeTotp,  // as kRange, but the line keeps the byte that is out of range
  kScan,       // list: 0, 1, anything else is item 2
  kTwoItems,   // list: 0, anything else is item 1
  kBit6,       // list: bit 6 of the byte; the other bits stay
};

enum class SettingsGroup : unsigned char { kGeneral, kDtmf, kAccess };

struct Setting {
  std::string_view control;  // its name; also the object name in the window
  int SettingsValues::*value;
  int line;  // byte `byte` of line `line` is address 0x0020 + 16 * line + byte
  int byte;
  SettingRule rule;
  int top;                   // largest value that a read gives
  std::string_view caption;  // its label, or the caption of a check box
  std::string_view unit;     // "(sec)", or empty
  SettingsGroup group;
  // Whether a change of it alone makes the program ask before the settings are let go. Intended: four
  // of them do not.
  bool counts;
  std::span<const std::string_view> items{};  // of a list; empty for check boxes and sliders
};

// Every setting that has a byte in the radio, in the order in which the pages show them.
std::span<const Setting> Settings();

// The row of a member. Every member has exactly one; the compiler holds the table to that.
const Setting& SettingOf(int SettingsValues::*value);

}  // namespace q40
