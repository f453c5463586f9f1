// The page "Settings 2": DTMF timing, the auto dialer and the access locks.
#pragma once

#include <array>

#include "pages/settings_page.h"
#include "radio/dial_text.h"

class QGroupBox;

namespace q40 {

class FilteredEdit;

class SettingsPage2 : public SettingsPage {
  Q_OBJECT

 public:
  explicit SettingsPage2(QWidget* parent);

  // Shows a memory's text, cut to the 16 characters that a box takes. Never reports an edit.
  void SetDialText(int index, const std::string& text);
  // Treats the dialer as left if the user is in it. Before the document is saved or written.
  void LeaveDialer();

 signals:
  // The user changed a dialer memory, or left the dialer with "St" empty, which sets it to "1".
  void dialEdited(int index, const std::string& text);

 protected:
  void ValuesShown() override { EnableLocks(); }

 private:
  QWidget* MakeDtmf();
  QWidget* MakeDialer();
  QWidget* MakeAccess();
  void EnterPressed(int index);
  void FillStart();
  void EnableLocks();

  std::array<FilteredEdit*, kDialCount> txtDial_{};
  QCheckBox* chkChannel_ = nullptr;
  QGroupBox* frmChannel_ = nullptr;
  bool loading_dial_ = false;
};

}  // namespace q40
