#include "radio/settings_table.h"

#include <algorithm>
#include <cassert>

namespace q40 {
namespace {

using std::string_view;

namespace list {
constexpr string_view kStandby[] = {"Off", "Beep", "DTMF"};
constexpr string_view kVoxDelay[] = {"Off", "On"};
constexpr string_view kBattery[] = {"Ni", "Li", "Al", "Ni+"};
constexpr string_view kLamp[] = {"5 second", "Permanent on"};
constexpr string_view kScan[] = {"Timer-1", "Timer-2", "Busy"};
constexpr string_view kToneBurst[] = {"1750", "2100", "C-All", "1000", "1450"};
constexpr string_view kTimeOut[] = {"OFF", " 30", " 60", " 90", "120", "150", "180", "210",
                                    "240", "270", "300", "330", "360", "390", "420", "450"};
constexpr string_view kPenalty[] = {"  0", "  1", "  2", "  3", "  4", "  5", "  6", "  7",
                                    "  8", "  9", " 10", " 11", " 12", " 13", " 14", " 15"};
constexpr string_view kBurst[] = {"  20", "  40", "  60", "  80", " 100",
                                  " 120", " 140", " 160", " 180", " 200"};
constexpr string_view kDtmfWait[] = {" 100", " 200", " 300", " 400", " 500",
                                     " 600", " 700", " 800", " 900", "1000"};
}  // namespace list

using V = SettingsValues;
using enum SettingRule;
using enum SettingsGroup;

// clang-format off
constexpr Setting kSettings[] = {
    // control        value       line byte  rule         top  caption              unit      group   counts  items
    {"cmbStb",       &V::cmbStb,      1,  9, kRange,       2, "Standby",           "",       kGeneral,  true, list::kStandby},
    {"cmbVod",       &V::cmbVod,      1,  8, kBit6,        1, "VOX On Delay",      "",       kGeneral,  true, list::kVoxDelay},
    {"cmbBat",       &V::cmbBat,      1,  4, kRange,       3, "Battery Type",      "",       kGeneral,  true, list::kBattery},
    {"cmbLamp",      &V::cmbLamp,     1,  2, kTwoItems,    1, "Lamp",              "",       kGeneral,  true, list::kLamp},
    {"cmbScan",      &V::cmbScan,     1,  1, kScan,        2, "Scan Type",         "",       kGeneral,  true, list::kScan},
    // Its fifth item is written but not read back: intended.
    {"cmbTB",        &V::cmbTB,       0, 11, kRange,       3, "Tone Burst",        "(Hz)",   kGeneral,  true, list::kToneBurst},
    {"cmbTOT",       &V::cmbTOT,      0, 12, kRange,      15, "TOT",               "(sec)",  kGeneral,  true, list::kTimeOut},
    {"cmbTOTP",      &V::cmbTOTP,     0, 13, kRangeTotp,  15, "Penalty Time",      "(sec)",  kGeneral,  true, list::kPenalty},
    {"chkBeep",      &V::chkBeep,     1,  0, kExactOne,    1, "Beep",              "",       kGeneral,  true},
    {"chkAPO",       &V::chkAPO,      0, 15, kNonzero,     1, "Auto Power Off",    "",       kGeneral,  true},
    {"chkLock",      &V::chkLock,     0, 14, kNonzero,     1, "Keylock",           "",       kGeneral,  true},
    {"Slider1",      &V::Slider1,     0,  5, kRange,      30, "Volume",            "",       kGeneral,  true},
    {"Slider2",      &V::Slider2,     0,  6, kRange,      10, "Squelch",           "",       kGeneral,  true},
    {"cmbDFirst",    &V::cmbDFirst,   0,  9, kRange,       9, " First Burst",      "(msec)", kDtmf,     true, list::kBurst},
    {"cmbDOther",    &V::cmbDOther,   0, 10, kRange,       9, " Other Burst",      "(msec)", kDtmf,     false, list::kBurst},
    {"cmbDWait",     &V::cmbDWait,    0,  8, kRange,       9, " Wait Time",        "(msec)", kDtmf,     true, list::kDtmfWait},
    {"cmbDBurst",    &V::cmbDBurst,   1, 12, kRange,       9, " Interval",         "(msec)", kDtmf,     true, list::kBurst},
    {"chkChannel",   &V::chkChannel,  0,  2, kExactText,   1, "Channel Mode",      "",       kAccess,   true},
    {"chkReverseEn", &V::chkReverseEn, 3, 13, kLockFlag,    1, "Reverse",           "",       kAccess,   false},
    {"chkAlertEn",   &V::chkAlertEn,  3, 12, kLockFlag,    1, "Alert",             "",       kAccess,   false},
    {"chkVoxEn",     &V::chkVoxEn,    2,  7, kLockFlag,    1, "VOX",               "",       kAccess,   false},
    {"chkNameEn",    &V::chkNameEn,   2,  6, kLockFlag,    1, "Name Opration",     "",       kAccess,   true},
    {"chkBurstEn",   &V::chkBurstEn,  2,  5, kLockFlag,    1, "Tone Burst Output", "",       kAccess,   true},
    {"chkToneEn",    &V::chkToneEn,   2,  4, kLockFlag,    1, "CTCSS / DCS",       "",       kAccess,   true},
    {"chkMoniEn",    &V::chkMoniEn,   2,  3, kLockFlag,    1, "Monitor Function",  "",       kAccess,   true},
    {"chkLockEn",    &V::chkLockEn,   2,  2, kLockFlag,    1, "Key Lock",          "",       kAccess,   true},
    {"chkPowerEn",   &V::chkPowerEn,  2,  1, kLockFlag,    1, "TX Power",          "",       kAccess,   true},
    {"chkScanEn",    &V::chkScanEn,   2,  0, kLockFlag,    1, "Scan Start",        "",       kAccess,   true},
};
// clang-format on

// Each member of SettingsValues has one row, and each row a member.
constexpr bool IsComplete() {
  for (const Setting& setting : kSettings) {
    const auto same = [&](const Setting& s) { return s.value == setting.value; };
    if (std::count_if(std::begin(kSettings), std::end(kSettings), same) != 1) return false;
  }
  return std::size(kSettings) * sizeof(int) == sizeof(SettingsValues);
}
static_assert(IsComplete());

}  // namespace

std::span<const Setting> Settings() { return kSettings; }

const Setting& SettingOf(int SettingsValues::*value) {
  const auto* const row = std::find_if(std::begin(kSettings), std::end(kSettings),
                                       [&](const Setting& s) { return s.value == value; });
  assert(row != std::end(kSettings));
  return *row;
}

}  // namespace q40
