// The about box.
#pragma once

#include <QDialog>

namespace q40 {

class frmAbout final : public QDialog {  // NOLINT: the dialog's given name
  Q_OBJECT

 public:
  // `port` names the port and its device for the system information.
  frmAbout(QString port, QWidget* parent);

 private:
  void ShowSystemInfo();

  QString port_;
};

}  // namespace q40
