#include "app/tables/settings_items.h"

#include <algorithm>
#include <cassert>

namespace q40 {
namespace {

using std::string_view;

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

using enum SettingsGroup;

constexpr SettingsItem kItems[] = {
    {"cmbStb", "Standby", "", kGeneral, kStandby},
    {"cmbVod", "VOX On Delay", "", kGeneral, kVoxDelay},
    {"cmbBat", "Battery Type", "", kGeneral, kBattery},
    {"cmbLamp", "Lamp", "", kGeneral, kLamp},
    {"cmbScan", "Scan Type", "", kGeneral, kScan},
    {"cmbTB", "Tone Burst", "(Hz)", kGeneral, kToneBurst},
    {"cmbTOT", "TOT", "(sec)", kGeneral, kTimeOut},
    {"cmbTOTP", "Penalty Time", "(sec)", kGeneral, kPenalty},
    {"chkBeep", "Beep", "", kGeneral},
    {"chkAPO", "Auto Power Off", "", kGeneral},
    {"chkLock", "Keylock", "", kGeneral},
    {"Slider1", "Volume", "", kGeneral},
    {"Slider2", "Squelch", "", kGeneral},
    {"cmbDFirst", " First Burst", "(msec)", kDtmf, kBurst},
    {"cmbDOther", " Other Burst", "(msec)", kDtmf, kBurst},
    {"cmbDWait", " Wait Time", "(msec)", kDtmf, kDtmfWait},
    {"cmbDBurst", " Interval", "(msec)", kDtmf, kBurst},
    {"chkChannel", "Channel Mode", "", kAccess},
    {"chkReverseEn", "Reverse", "", kAccess},
    {"chkAlertEn", "Alert", "", kAccess},
    {"chkVoxEn", "VOX", "", kAccess},
    {"chkNameEn", "Name Opration", "", kAccess},
    {"chkBurstEn", "Tone Burst Output", "", kAccess},
    {"chkToneEn", "CTCSS / DCS", "", kAccess},
    {"chkMoniEn", "Monitor Function", "", kAccess},
    {"chkLockEn", "Key Lock", "", kAccess},
    {"chkPowerEn", "TX Power", "", kAccess},
    {"chkScanEn", "Scan Start", "", kAccess},
};

}  // namespace

std::span<const SettingsItem> SettingsItems() { return kItems; }

const SettingsItem& SettingsItemOf(string_view control) {
  const auto* const item =
      std::find_if(std::begin(kItems), std::end(kItems),
                   [&](const SettingsItem& i) { return i.control == control; });
  assert(item != std::end(kItems));
  return item != std::end(kItems) ? *item : kItems[0];
}

}  // namespace q40
