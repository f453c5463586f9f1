// The dialog in which the serial port is chosen.
#pragma once

#include <functional>
#include <vector>

#include <QDialog>

#include "link/com_ports.h"

class QButtonGroup;
class QLabel;

namespace q40 {

class dlgCOM final : public QDialog {  // NOLINT: the dialog's given name
  Q_OBJECT

 public:
  // Tells what is behind the 14 numbers; called again and again while the dialog is open.
  using States = std::function<std::vector<ComPortState>()>;

  // `number`: the port that is set, 1..14.
  dlgCOM(int number, States states, QWidget* parent);

  // The first option that is set, as a port number; `number` when none is.
  [[nodiscard]] int Number() const;

 private:
  void ShowStates();

  int number_;
  States states_;
  QButtonGroup* options_;
  std::vector<QLabel*> devices_;
  std::vector<QLabel*> plugged_in_;
};

}  // namespace q40
