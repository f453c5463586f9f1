#include "pages/settings_page2.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "document/edit_rules.h"
#include "widgets/filtered_edit.h"

namespace q40 {
namespace {

using V = SettingsValues;

constexpr int kStart = kDialCount - 1;  // "St"

QString DialText(const QString& text) {
  return QString::fromStdString(DialCharacters(text.toStdString()));
}

// The box shows what the document gets, also of a text from a file that held other characters.
void KeepDialCharacters(FilteredEdit::Change& change) {
  change = {DialText(change.before), DialText(change.text), DialText(change.after)};
}

}  // namespace

SettingsPage2::SettingsPage2(QWidget* parent) : SettingsPage(parent) {
  auto* left = new QVBoxLayout;
  left->addWidget(MakeDtmf());
  left->addStretch();
  auto* frames = new QHBoxLayout;
  frames->addLayout(left);
  frames->addWidget(MakeDialer(), 1);
  frames->addWidget(MakeAccess());

  auto* note = new QHBoxLayout;
  note->addWidget(new QLabel(QStringLiteral("NOTE:"), this));
  note->addWidget(new QLabel(
      QStringLiteral("Auto Dialer function and DTMF function cannot be used with RX-P20."), this));
  note->addStretch();

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(MakeCloneButton("cmbRxData2", " Read Settings", &SettingsPage::readRequested));
  buttons->addWidget(
      MakeCloneButton("cmbTxData2", " Write Settings", &SettingsPage::writeRequested));
  buttons->addStretch();

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(frames);
  layout->addLayout(note);
  layout->addLayout(buttons);
  layout->addStretch();
  EnableLocks();
}

QWidget* SettingsPage2::MakeDtmf() {
  auto* frame = new QGroupBox(QStringLiteral("DTMF"), this);
  auto* grid = new QGridLayout(frame);
  int row = 0;
  for (const Setting& setting : Settings()) {
    if (setting.group != SettingsGroup::kDtmf) continue;
    QComboBox* box = MakeList(setting.value);
    grid->addWidget(MakeLabel(setting.value), row, 0);
    grid->addWidget(box, row, 1);
    grid->addWidget(MakeUnit(setting.value), row, 2);
    ++row;
  }
  return frame;
}

QWidget* SettingsPage2::MakeDialer() {
  auto* frame = new QGroupBox(QStringLiteral("Auto Dialer"), this);
  auto* grid = new QGridLayout(frame);
  for (int index = 0; index < kDialCount; ++index) {
    const auto at = static_cast<std::size_t>(index);
    auto* edit = new FilteredEdit(DialKey, static_cast<int>(kDialLength), frame);
    edit->SetRepair(KeepDialCharacters);
    edit->setObjectName(QStringLiteral("txtDial_%1").arg(index));
    const QString title = QString::fromUtf8(kDialTitles[at].data());
    edit->setAccessibleName(tr("Auto dialer %1").arg(title));
    auto* label = new QLabel(title, frame);
    label->setBuddy(edit);
    grid->addWidget(label, index, 0);
    grid->addWidget(edit, index, 1);
    edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance(QLatin1Char('8')) * 18);
    edit->setMaximumWidth(2 * edit->minimumWidth());
    connect(edit, &FilteredEdit::entered, [this, index] { EnterPressed(index); });
    connect(edit, &FilteredEdit::left, this, &SettingsPage2::FillStart);
    connect(edit, &FilteredEdit::left, edit, &FilteredEdit::ForgetTyping);
    connect(edit, &FilteredEdit::textChanged, [this, index](const QString& text) {
      if (!loading_dial_) emit dialEdited(index, text.toStdString());
    });
    txtDial_[at] = edit;
  }
  grid->setColumnStretch(2, 1);
  return frame;
}

QWidget* SettingsPage2::MakeAccess() {
  auto* widget = new QWidget(this);
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(0, 0, 0, 0);
  chkChannel_ = MakeBox(&V::chkChannel);
  connect(chkChannel_, &QCheckBox::clicked, [this] { EnableLocks(); });
  column->addWidget(chkChannel_);

  frmChannel_ = new QGroupBox(QStringLiteral("Allow the access to :"), widget);
  frmChannel_->setObjectName(QStringLiteral("frmChannel"));
  auto* boxes = new QVBoxLayout(frmChannel_);
  for (const Setting& setting : Settings()) {
    const bool is_lock = setting.group == SettingsGroup::kAccess && setting.value != &V::chkChannel;
    if (is_lock) boxes->addWidget(MakeBox(setting.value));
  }
  column->addWidget(frmChannel_);
  return widget;
}

// From M1 to M9 and round again; never into "St" (intended).
void SettingsPage2::EnterPressed(int index) {
  const int next = index < kStart - 1 ? index + 1 : 0;
  txtDial_[static_cast<std::size_t>(next)]->setFocus();
}

void SettingsPage2::FillStart() {
  if (txtDial_[kStart]->text().isEmpty()) txtDial_[kStart]->ShowText(QStringLiteral("1"));
}

void SettingsPage2::LeaveDialer() {
  const bool entered = std::any_of(txtDial_.begin(), txtDial_.end(),
                                   [](const FilteredEdit* edit) { return edit->IsEntered(); });
  if (entered) FillStart();
}

void SettingsPage2::SetDialText(int index, const std::string& text) {
  loading_dial_ = true;
  txtDial_[static_cast<std::size_t>(index)]->ShowText(QString::fromStdString(text));
  loading_dial_ = false;
}

// The ticks stay, whether they can be changed or not.
void SettingsPage2::EnableLocks() {
  const bool enabled = chkChannel_->isChecked();
  frmChannel_->setEnabled(enabled);
  for (QCheckBox* box : frmChannel_->findChildren<QCheckBox*>()) box->setEnabled(enabled);
}

}  // namespace q40
