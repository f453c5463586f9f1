// Message boxes with given texts and English buttons, whatever the locale.
#pragma once

#include <QMessageBox>

namespace q40 {

// The question before a channel is emptied.
inline constexpr const char* kClearTitle = "CLEAR OK";
inline constexpr const char* kClearText =
    "Are you sure that you want to do the clear?\r\nClear cannot be undone.";

// Shows a box and returns the button that closed it; Esc and the close box count as Cancel where
// there is one. Line ends in `text` may be CR LF.
QMessageBox::StandardButton ShowMessage(QWidget* parent, QMessageBox::Icon icon, const char* title,
                                        const char* text,
                                        QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                        QMessageBox::StandardButton preset = QMessageBox::Ok);

// OK or Cancel before something is destroyed; Cancel is the default.
bool Confirmed(QWidget* parent, const char* title, const char* text);

}  // namespace q40
