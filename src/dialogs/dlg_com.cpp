#include "dialogs/dlg_com.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include "widgets/paths.h"

namespace q40 {
namespace {

constexpr std::chrono::milliseconds kLookAgain{1000};
constexpr int kColumnGap = 18;

QString PresenceText(const ComPortState& state) {
  if (!state.present) return dlgCOM::tr("not present");
  const QString description = QString::fromStdString(state.description);
  return description.isEmpty() ? dlgCOM::tr("present") : description;
}

}  // namespace

dlgCOM::dlgCOM(int number, States states, QWidget* parent)
    : QDialog(parent),
      number_(number),
      states_(std::move(states)),
      options_(new QButtonGroup(this)) {
  setObjectName(QStringLiteral("dlgCOM"));
  setWindowTitle(QStringLiteral("COM Port Setup"));
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(kColumnGap);
  grid->setVerticalSpacing(2);
  for (int index = 0; index < kComPortCount; ++index) {
    // A single digit has two blanks in front.
    auto* option = new QRadioButton(QStringLiteral("COM %1").arg(index + 1, 2), this);
    option->setObjectName(QStringLiteral("opbCom_%1").arg(index));
    options_->addButton(option, index);
    devices_.push_back(new QLabel(this));
    devices_.back()->setTextFormat(Qt::PlainText);
    plugged_in_.push_back(new QLabel(this));
    plugged_in_.back()->setObjectName(QStringLiteral("lblCom_%1").arg(index));
    grid->addWidget(option, index, 0);
    grid->addWidget(devices_.back(), index, 1);
    grid->addWidget(plugged_in_.back(), index, 2);
  }
  grid->setColumnStretch(2, 1);
  ShowStates();
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

  auto* timer = new QTimer(this);
  connect(timer, &QTimer::timeout, this, &dlgCOM::ShowStates);
  timer->start(kLookAgain);
}

// What is not present can be chosen all the same: the cable may be plugged in later.
void dlgCOM::ShowStates() {
  for (const ComPortState& state : states_()) {
    const auto at = static_cast<std::size_t>(state.number - 1);
    const QString device = Shown(state.device);
    devices_[at]->setText(device);
    plugged_in_[at]->setText(PresenceText(state));
    QAbstractButton* option = options_->button(state.number - 1);
    option->setToolTip(PlainToolTip(device));
    option->setAccessibleDescription(device + QStringLiteral(", ") + PresenceText(state));
  }
}

int dlgCOM::Number() const {
  const int index = options_->checkedId();
  return index >= 0 ? index + 1 : number_;
}

}  // namespace q40
