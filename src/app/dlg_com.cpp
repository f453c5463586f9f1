#include "app/dlg_com.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QPushButton>
#include <QRadioButton>

#include "link/com_ports.h"

namespace q40 {

dlgCOM::dlgCOM(int number, QWidget* parent)
    : QDialog(parent), number_(number), options_(new QButtonGroup(this)) {
  setObjectName(QStringLiteral("dlgCOM"));
  setWindowTitle(QStringLiteral("COM Port Setup"));
  auto* grid = new QGridLayout;
  constexpr int kRows = kComPortCount / 2;
  for (int index = 0; index < kComPortCount; ++index) {
    // A single digit has two blanks in front.
    auto* option = new QRadioButton(QStringLiteral("COM %1").arg(index + 1, 2), this);
    option->setObjectName(QStringLiteral("opbCom_%1").arg(index));
    option->setToolTip(QString::fromStdString(ComDevice(index + 1)));
    options_->addButton(option, index);
    grid->addWidget(option, index % kRows, index / kRows);
  }
  if (QAbstractButton* option = options_->button(number - 1)) {
    option->setChecked(true);
    option->setFocus();
  }
  auto* ok = new QPushButton(QStringLiteral("OK"), this);
  ok->setObjectName(QStringLiteral("OKButton"));
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ok);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addLayout(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

int dlgCOM::Number() const {
  const int index = options_->checkedId();
  return index >= 0 ? index + 1 : number_;
}

}  // namespace q40
