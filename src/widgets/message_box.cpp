#include "widgets/message_box.h"

namespace q40 {

QMessageBox::StandardButton ShowMessage(QWidget* parent, QMessageBox::Icon icon, const char* title,
                                        const char* text, QMessageBox::StandardButtons buttons,
                                        QMessageBox::StandardButton preset) {
  QString plain = QString::fromUtf8(text);
  plain.replace(QLatin1String("\r\n"), QLatin1String("\n"));  // a CR may be drawn as a box
  QMessageBox box(icon, QString::fromUtf8(title), plain, buttons, parent);
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(preset);
  if (buttons.testFlag(QMessageBox::Cancel)) box.setEscapeButton(QMessageBox::Cancel);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

bool Confirmed(QWidget* parent, const char* title, const char* text) {
  return ShowMessage(parent, QMessageBox::Warning, title, text,
                     QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel) == QMessageBox::Ok;
}

}  // namespace q40
