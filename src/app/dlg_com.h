// The dialog in which the serial port is chosen.
#pragma once

#include <QDialog>

class QButtonGroup;

namespace q40 {

class dlgCOM final : public QDialog {  // NOLINT: the dialog's given name
  Q_OBJECT

 public:
  // `number`: the port that is set, 1..14.
  dlgCOM(int number, QWidget* parent);

  // The first option that is set, as a port number; `number` when none is.
  [[nodiscard]] int Number() const;

 private:
  int number_;
  QButtonGroup* options_;
};

}  // namespace q40
