#include "dialogs/dlg_modify.h"

#include <algorithm>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShowEvent>

#include "widgets/filtered_edit.h"
#include "widgets/option_group.h"

namespace q40 {
namespace {

constexpr int kSplitOption = 3;
constexpr int kJumpAfterFrequencyKeys = 3;
constexpr int kJumpAfterOffsetKeys = 2;
constexpr int kFrequencyLength = 3;
constexpr int kLongestWidgetText = 32767;

struct Variant {
  const char* title;
  const char* mode;
};
constexpr Variant kMemoryVariant = {"Modify Memory Channel Parameter", "Memory"};
// The titles differ in style on purpose, odd spelling included.
constexpr std::array<Variant, kSpecialChannelCount> kSpecialVariants = {
    {{"Modify VFO Parameters", "VFO"},
     {"Modify Call Channel Parameters", "Call"},
     {"Modifi Repeater Access Parameters", "Repeater"},
     {"Modify PH Parameters", "PH"},
     {"Modify PL Channel Parameters", "PL"}}};

// Hint "(UHF: 400.000-511.995MHz)" from the range text "(400.000-511.995MHz)".
QString Hint(const char* band, std::string_view range) {
  range = range.substr(std::min<std::size_t>(1, range.size()));
  return QStringLiteral("(%1: ").arg(QLatin1String(band)) +
         QString::fromUtf8(range.data(), static_cast<qsizetype>(range.size()));
}

}  // namespace

dlgModify::dlgModify(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("dlgModify"));
  MakeControls();
  ConnectFields();
}

bool dlgModify::RepeaterRow() const {
  return target_.kind == ChannelKind::kSpecial && target_.index == kRptRow;
}

OptionGroup& dlgModify::Options(Field field) const {
  const auto group = std::find_if(groups_.begin(), groups_.end(),
                                  [&](const Group& g) { return g.field == field; });
  return *group->buttons;
}

void dlgModify::Prepare(const ModifyTarget& target) {
  target_ = target;
  ShowTexts();
  ShowVariant();
  const bool empty = target_.kind == ChannelKind::kMemory && !target_.in_use;
  if (empty && chkHold_->isChecked() && held_) {
    SetValues(*held_);
  } else {
    SetValues(ValuesOf(empty ? target_.fresh : target_.record, target_.kind, RepeaterRow()));
  }
}

void dlgModify::ShowTexts() {
  const bool memory = target_.kind == ChannelKind::kMemory;
  const Variant& variant =
      memory ? kMemoryVariant : kSpecialVariants[static_cast<std::size_t>(target_.index)];
  setWindowTitle(QString::fromUtf8(variant.title));
  lblMode_->setText(QString::fromUtf8(variant.mode));
  const QString band =
      target_.band == Band::kUhf ? QStringLiteral("(UHF)") : QStringLiteral("(VHF)");
  lblCH_->setText(memory ? QString::fromStdString(DialogCaption(target_.index)) : band);
  const auto range = [&](Band of) {
    return BandTableOf(of).BandText(target_.model, target_.range);
  };
  lblVMHz_->setText(Hint("VHF", range(Band::kVhf)));
  lblUMHz_->setText(Hint("UHF", range(Band::kUhf)));
  const std::string_view shown = range(target_.band);
  lblMHz_->setText(QString::fromUtf8(shown.data(), static_cast<qsizetype>(shown.size())));
}

// Which controls the target shows, and which of them it can change.
void dlgModify::ShowVariant() {
  const bool memory = target_.kind == ChannelKind::kMemory;
  for (QWidget* widget : {static_cast<QWidget*>(chkSkip_), static_cast<QWidget*>(chkHold_),
                          static_cast<QWidget*>(lblName_), static_cast<QWidget*>(txtName_),
                          static_cast<QWidget*>(lblVMHz_), static_cast<QWidget*>(lblUMHz_)}) {
    widget->setVisible(memory);
  }
  lblMHz_->setVisible(!memory);
  lblCH_->setVisible(memory || target_.index == kVfoRow);

  const bool repeater = RepeaterRow();
  for (QLabel* label : frequency_labels_) label->setEnabled(!repeater);
  const auto enabled = [&](Field field) { return !repeater || !DisabledInRepeaterRow(field); };
  for (const Group& group : groups_) {
    group.frame->setEnabled(enabled(group.field));
    for (QAbstractButton* button : group.buttons->buttons()) {
      button->setEnabled(enabled(group.field));
    }
  }
  Options(Field::kShift).button(kSplitOption)->setEnabled(memory || target_.index < kRptRow);
  for (const List& list : lists_) list.box->setEnabled(enabled(list.field));
  for (const Box& box : boxes_) box.box->setEnabled(enabled(box.field));
  for (FilteredEdit* edit : {txtFreq_, txtFreq1_}) {
    edit->setEnabled(!repeater);
    edit->setAlignment(Qt::AlignLeft);
  }
  txtFreq_->SetLongest(repeater ? kLongestWidgetText : kFrequencyLength);
}

void dlgModify::SetValues(const DialogValues& values) {
  for (const Group& group : groups_) group.buttons->Choose(values[group.field]);
  for (const List& list : lists_) list.box->setCurrentIndex(values[list.field]);
  for (const Box& box : boxes_) box.box->setChecked(values[box.field] == 1);
  txtFreq_->ShowText(QString::fromStdString(values.mhz));
  txtFreq1_->ShowText(QString::fromStdString(values.fraction));
  txtShift_->ShowText(QString::fromStdString(values.offset_mhz));
  txtShift1_->ShowText(QString::fromStdString(values.offset_fraction));
  txtName_->ShowText(QString::fromStdString(values.name));
}

DialogValues dlgModify::Values() const {
  DialogValues values;
  for (const Group& group : groups_) values[group.field] = group.buttons->checkedId();
  for (const List& list : lists_) values[list.field] = list.box->currentIndex();
  for (const Box& box : boxes_) values[box.field] = box.box->isChecked() ? 1 : 0;
  values.mhz = txtFreq_->text().toStdString();
  values.fraction = txtFreq1_->text().toStdString();
  values.offset_mhz = txtShift_->text().toStdString();
  values.offset_fraction = txtShift1_->text().toStdString();
  values.name = txtName_->text().toStdString();
  return values;
}

ChannelRecord dlgModify::Result() const {
  return RecordOf(Values(), target_.kind, RepeaterRow(), target_.record);
}

void dlgModify::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (event->spontaneous()) return;
  if (offset_) ComeBack();
  keys_.Reset();
  if (RepeaterRow()) {
    Options(Field::kTone).Focus(Qt::OtherFocusReason);
  } else {
    JumpTo(*txtFreq_);
  }
}

// To where the user has left it, beside the window that may have been moved, but never out of sight.
void dlgModify::ComeBack() {
  const QRect room = screen()->availableVirtualGeometry();
  const QPoint place = parentWidget()->window()->pos() + *offset_;
  const auto within = [](int first, int wanted, int last) {
    return std::max(first, std::min(wanted, last));
  };
  move(within(room.left(), place.x(), room.right() - frameGeometry().width()),
       within(room.top(), place.y(), room.bottom() - frameGeometry().height()));
}

void dlgModify::accept() {
  RunPendingCheck();
  QDialog::accept();
}

void dlgModify::done(int result) {
  if (target_.kind == ChannelKind::kMemory) held_ = Values();
  offset_ = pos() - parentWidget()->window()->pos();
  QDialog::done(result);
}

void dlgModify::JumpTo(FilteredEdit& edit) {
  if (!edit.isEnabled()) return;
  edit.setFocus();
  edit.selectAll();
}

// The counter belongs to both MHz fields, as the cursor's jump does.
void dlgModify::ConnectFields() {
  ConnectPair(*txtFreq_, *txtFreq1_);
  ConnectPair(*txtShift_, *txtShift1_);
  connect(txtFreq_, &FilteredEdit::typed, [this](char key, bool dropped) {
    if (keys_.Typed(key, dropped, kJumpAfterFrequencyKeys)) JumpTo(*txtFreq1_);
  });
  connect(txtShift_, &FilteredEdit::typed, [this](char key, bool dropped) {
    if (keys_.Typed(key, dropped, kJumpAfterOffsetKeys)) JumpTo(*txtShift1_);
  });
  connect(txtFreq_, &FilteredEdit::gotFocus, [this] { keys_.Reset(); });
  connect(txtShift_, &FilteredEdit::left, [this] { keys_.ForgetTyping(); });
  connect(txtFreq_, &FilteredEdit::left, [this] { CheckFrequency(); });
  connect(txtFreq1_, &FilteredEdit::left, [this] { TuneFraction(*txtFreq1_); });
  connect(txtShift1_, &FilteredEdit::left, [this] { TuneFraction(*txtShift1_); });
}

// A whole frequency that comes in at once fills both boxes, and the one that does not have the
// focus counts as left. One whose MHz do not fit is no frequency for these boxes.
void dlgModify::ConnectPair(FilteredEdit& mhz, FilteredEdit& fraction) {
  const auto whole = [&mhz](FilteredEdit::Change& change) {
    auto found = WholeFrequency(change.text.toStdString());
    if (found && found->mhz.size() > static_cast<std::size_t>(mhz.longest())) {
      change.text.clear();
      found.reset();
    }
    return found;
  };
  mhz.SetRepair([this, &fraction, whole](FilteredEdit::Change& change) {
    if (const auto frequency = whole(change)) {
      fraction.ShowText(QString::fromStdString(frequency->fraction));
      TuneFraction(fraction);
      change = {{}, QString::fromStdString(frequency->mhz), {}};
    } else {
      change.text = QString::fromStdString(Digits(change.text.toStdString()));
    }
  });
  fraction.SetRepair([this, &mhz, whole](FilteredEdit::Change& change) {
    if (const auto frequency = whole(change)) {
      mhz.ShowText(QString::fromStdString(frequency->mhz));
      if (&mhz == txtFreq_) CheckFrequency();
      change = {{}, QString::fromStdString(frequency->fraction), {}};
    } else if (change.before.isEmpty()) {
      const std::string text = change.text.toStdString();
      change.text = QString::fromStdString(std::string(WithoutPoint(text)));
    }
  });
}

void dlgModify::CheckFrequency() {
  if (RepeaterRow()) return;
  const std::string typed = txtFreq_->text().toStdString();
  const std::string current = target_.record.cellText[0];
  txtFreq_->ShowText(QString::fromStdString(
      target_.kind == ChannelKind::kSpecial
          ? CheckedSpecialMhz(typed, target_.band, target_.model, target_.range, current)
          : CheckedMemoryMhz(typed, target_.model, target_.range, target_.in_use, current)));
}

// The step follows the fraction, also that of the offset (intended). The repeater-access row has no
// step.
void dlgModify::TuneFraction(FilteredEdit& edit) {
  const TunedFraction tuned = q40::TuneFraction(edit.text().toStdString());
  edit.ShowText(QString::fromStdString(tuned.digits));
  if (!RepeaterRow()) Options(Field::kStep).Choose(tuned.step);
}

// OK by the Enter key does not take the focus from a field, so its check is still to come.
void dlgModify::RunPendingCheck() {
  const QWidget* focus = focusWidget();
  if (focus == txtFreq_) CheckFrequency();
  if (focus == txtFreq1_) TuneFraction(*txtFreq1_);
  if (focus == txtShift1_) TuneFraction(*txtShift1_);
}

}  // namespace q40
