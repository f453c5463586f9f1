// What the controls of the two settings pages hold.
#pragma once

namespace q40 {

// A list holds its item index from 0, a check box 0 or 1, a slider its position. The members carry
// the names of the controls; settings_codec.h says which byte of the radio each one stands for.
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

}  // namespace q40
