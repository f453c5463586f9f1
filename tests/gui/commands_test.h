// What the tests of the window's commands share.
#pragma once

#include "gui/window_test.h"

namespace q40::test {

inline constexpr auto kYes = QMessageBox::Yes;
inline constexpr auto kNo = QMessageBox::No;
inline constexpr auto kCancel = QMessageBox::Cancel;
inline constexpr auto kOk = QMessageBox::Ok;
inline const QString kPlainTitle = QStringLiteral("Korvex RX-Q40 Clone Utility");

class Commands : public Window {
 protected:
  void Save(QMessageBox::StandardButton press) { answers_.Box(kSaveTitle, kSaveText, press); }
  void Error(const char* text) { answers_.Box("ERROR", text, kOk); }
  QString Title() { return window_->windowTitle(); }
  bool Checked(const QString& name) { return Find<QAbstractButton>(name).isChecked(); }
  QString File(const char* name) { return QString::fromStdString(folder_ / name); }
};

}  // namespace q40::test
