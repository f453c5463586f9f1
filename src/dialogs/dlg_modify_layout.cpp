// The controls of the channel edit dialog and their places.
#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>

#include "dialogs/dlg_modify.h"
#include "radio/channel_fields.h"
#include "widgets/filtered_edit.h"
#include "widgets/option_group.h"

namespace q40 {
namespace {

constexpr int kMhzLength = 3;
constexpr int kOffsetMhzLength = 2;
constexpr int kFractionLength = 4;

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QLabel* MakeLabel(QWidget* parent, const char* name, const char* text) {
  auto* label = new QLabel(QString::fromUtf8(text), parent);
  label->setObjectName(QLatin1String(name));
  return label;
}

// Wide enough for `characters` digits and no wider.
void FitTo(QLineEdit& edit, int characters) {
  const int digit = edit.fontMetrics().horizontalAdvance(QLatin1Char('8'));
  edit.setFixedWidth(digit * (characters + 1) + 16);
}

}  // namespace

QGroupBox* dlgModify::MakeGroup(Field field, const char* name, const char* caption,
                                std::initializer_list<const char*> options, int columns) {
  auto* frame = new QGroupBox(QString::fromUtf8(caption), this);
  auto* layout = new QGridLayout(frame);
  auto* buttons = new OptionGroup(frame);
  int index = 0;
  for (const char* option : options) {
    auto* button = new QRadioButton(QString::fromUtf8(option), frame);
    button->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index));
    button->setAccessibleName(QStringLiteral("%1 %2").arg(QString::fromUtf8(caption),
                                                          QString::fromUtf8(option).trimmed()));
    buttons->Add(*button, index);
    layout->addWidget(button, index / columns, index % columns);
    ++index;
  }
  groups_.push_back({field, buttons, frame});
  return frame;
}

QComboBox* dlgModify::MakeList(Field field, const char* name, const char* label) {
  auto* box = new QComboBox(this);
  box->setObjectName(QLatin1String(name));
  box->setAccessibleName(QString::fromUtf8(label));
  for (const std::string_view item : IndexListOf(field)) box->addItem(Text(item));
  lists_.push_back({field, box});
  return box;
}

QCheckBox* dlgModify::MakeBox(Field field, const char* name, const char* caption) {
  auto* box = new QCheckBox(QString::fromUtf8(caption), this);
  box->setObjectName(QLatin1String(name));
  boxes_.push_back({field, box});
  return box;
}

FilteredEdit* dlgModify::MakeEdit(const char* name, const char* label,
                                  std::optional<char> (*filter)(char), int longest) {
  auto* edit = new FilteredEdit(filter, longest, this);
  edit->setObjectName(QLatin1String(name));
  edit->setAccessibleName(QString::fromUtf8(label));
  return edit;
}

void dlgModify::LayOutFrequency(QGridLayout& grid) {
  lblMode_ = MakeLabel(this, "lblMode", "Memory");
  lblCH_ = MakeLabel(this, "lblCH", "CH0");
  QFont bold = lblMode_->font();
  bold.setBold(true);
  lblMode_->setFont(bold);
  lblCH_->setFont(bold);
  txtFreq_ = MakeEdit("txtFreq", "Frequency, MHz", FrequencyKey, kMhzLength);
  txtFreq1_ = MakeEdit("txtFreq1", "Frequency, fraction", nullptr, kFractionLength);
  FitTo(*txtFreq_, 8);  // "Repeater"
  FitTo(*txtFreq1_, kFractionLength);
  lblMHz_ = MakeLabel(this, "lblMHz", "(118.000-141.995MHz)");
  lblVMHz_ = MakeLabel(this, "lblVMHz", "(VHF: 118.000-141.995MHz)");
  lblUMHz_ = MakeLabel(this, "lblUMHz", "(UHF: 400.000-511.995MHz)");

  auto* frequency = new QHBoxLayout;
  // As wide for every channel, so that the frequency stays in its place.
  auto* channel = new QWidget(this);
  auto* captions = new QHBoxLayout(channel);
  captions->setContentsMargins(0, 0, 0, 0);
  captions->addWidget(lblMode_);
  captions->addWidget(lblCH_);
  captions->addStretch();
  channel->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(QStringLiteral("Memory CH199 ")));
  frequency->addWidget(channel);
  auto* label = new QLabel(tr("&Frequency"), this);
  label->setBuddy(txtFreq_);
  frequency_labels_ = {label, new QLabel(QStringLiteral("."), this), new QLabel(tr("MHz"), this)};
  frequency->addWidget(label);
  frequency->addWidget(txtFreq_);
  frequency->addWidget(frequency_labels_[1]);
  frequency->addWidget(txtFreq1_);
  frequency->addWidget(frequency_labels_[2]);
  frequency->addSpacing(12);
  for (QLabel* hint : {lblMHz_, lblVMHz_, lblUMHz_}) frequency->addWidget(hint);
  frequency->addStretch();
  grid.addLayout(frequency, 0, 0, 1, 4);
  grid.addWidget(MakeGroup(Field::kStep, "optStep", "Tuning Step",
                           {"5KHz", "10KHz", "12.5KHz", "15KHz", "20KHz", "25KHz", "30KHz"}, 7),
                 1, 0, 1, 4);
}

void dlgModify::LayOutTone(QGridLayout& grid) {
  QGroupBox* frame =
      MakeGroup(Field::kTone, "optTone", "Tone / TSQ / DCS", {"None", "Tone", "TSQ", "DCS"}, 4);
  auto* lists = new QGridLayout;
  const struct {
    Field field;
    const char* name;
    const char* label;
    int row, column;
  } rows[] = {{Field::kTxTone, "cmbTxTone", "TX Tone", 0, 0},
              {Field::kRxTone, "cmbRxTone", "RX Tone", 1, 0},
              {Field::kTxDcs, "cmbTxDCS", "TX DCS No", 0, 2},
              {Field::kRxDcs, "cmbRxDCS", "RX DCS No", 1, 2}};
  for (const auto& row : rows) {
    QComboBox* box = MakeList(row.field, row.name, row.label);
    auto* label = new QLabel(QString::fromUtf8(row.label), frame);
    label->setBuddy(box);
    lists->addWidget(label, row.row, row.column);
    lists->addWidget(box, row.row, row.column + 1);
  }
  static_cast<QGridLayout*>(frame->layout())->addLayout(lists, 1, 0, 1, 4);
  grid.addWidget(frame, 2, 0, 1, 2);
}

void dlgModify::LayOutShift(QGridLayout& grid) {
  QGroupBox* frame =
      MakeGroup(Field::kShift, "optSift", "Shift", {"None", "-Shift", "+Shift", "Split"}, 4);
  txtShift_ = MakeEdit("txtShift", "Offset Freq., MHz", FrequencyKey, kOffsetMhzLength);
  txtShift1_ = MakeEdit("txtShift1", "Offset Freq., fraction", nullptr, kFractionLength);
  FitTo(*txtShift_, kOffsetMhzLength);
  FitTo(*txtShift1_, kFractionLength);
  auto* offset = new QHBoxLayout;
  auto* label = new QLabel(QStringLiteral("Offset Freq."), frame);
  label->setBuddy(txtShift_);
  offset->addWidget(label);
  offset->addWidget(txtShift_);
  offset->addWidget(new QLabel(QStringLiteral("."), frame));
  offset->addWidget(txtShift1_);
  offset->addWidget(new QLabel(QStringLiteral("MHz"), frame));
  offset->addStretch();
  auto* layout = static_cast<QGridLayout*>(frame->layout());
  layout->addLayout(offset, 1, 0, 1, 4);
  layout->addWidget(MakeBox(Field::kRpt, "chkRpt", "Repeat"), 2, 0, 1, 4);
  grid.addWidget(frame, 2, 2, 1, 2);
}

void dlgModify::LayOutRest(QGridLayout& grid) {
  QGroupBox* power = MakeGroup(Field::kPower, "optPw", "Power", {"Lo", "Mid", "Hi"}, 3);
  QComboBox* mid = MakeList(Field::kMid, "cmbMid", "Mid power level");
  auto* mid_label = new QLabel(tr("Mid power &level"), power);
  mid_label->setBuddy(mid);
  auto* mid_row = new QHBoxLayout;
  mid_row->addWidget(mid_label);
  mid_row->addWidget(mid);
  mid_row->addStretch();
  static_cast<QGridLayout*>(power->layout())->addLayout(mid_row, 1, 0, 1, 3);
  grid.addWidget(power, 3, 0);
  grid.addWidget(MakeGroup(Field::kAtt, "optATT", "Attenuator", {"Off", "10dB", "20dB"}, 3), 3, 1);
  grid.addWidget(
      MakeGroup(Field::kBatterySave, "optBs", "Battery Save", {"Off", "BS-1", "BS-2"}, 3), 3, 2);
  grid.addWidget(MakeGroup(Field::kBandwidth, "optBw", "Bandwidth", {" Narrow", "Normal"}, 2), 3,
                 3);

  auto* boxes = new QHBoxLayout;
  boxes->addWidget(MakeBox(Field::kClock, "chkClock", "Clock Shift"));
  boxes->addWidget(MakeBox(Field::kBclo, "chkBCLO", "Busy Channel Lock Out"));
  chkSkip_ = MakeBox(Field::kSkip, "chkSkip", "Skip");
  boxes->addWidget(chkSkip_);
  boxes->addStretch();
  lblName_ = new QLabel(QStringLiteral("Name"), this);
  txtName_ = MakeEdit("txtName", "Name", NameKey, static_cast<int>(kNameLength));
  txtName_->setToolTip(
      tr("Six characters: A to Z (type them in lower case), 0 to 9, blank and # $ ( ) * + - / = \\ "
         "_.\n"
         "The radio keeps a ) as a (."));
  FitTo(*txtName_, static_cast<int>(kNameLength) + 2);
  lblName_->setBuddy(txtName_);
  boxes->addWidget(lblName_);
  boxes->addWidget(txtName_);
  grid.addLayout(boxes, 4, 0, 1, 4);

  // Has no field in the record; kept out of sight.
  auto* unused = new QCheckBox(QStringLiteral("Hi Power"), this);
  unused->setObjectName(QStringLiteral("chkPower"));
  unused->hide();

  chkHold_ = new QCheckBox(QStringLiteral("Hold"), this);
  chkHold_->setObjectName(QStringLiteral("chkHold"));
  chkHold_->setToolTip(tr("Start the next empty channel with the values of this one."));
  ok_ = new QPushButton(QStringLiteral("OK"), this);
  ok_->setObjectName(QStringLiteral("OKButton"));
  ok_->setDefault(true);
  auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
  cancel->setObjectName(QStringLiteral("CancelButton"));
  connect(ok_, &QPushButton::clicked, this, &dlgModify::accept);
  connect(cancel, &QPushButton::clicked, this, &dlgModify::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(chkHold_);
  buttons->addStretch();
  buttons->addWidget(ok_);
  buttons->addWidget(cancel);
  grid.addLayout(buttons, 5, 0, 1, 4);
}

// The captions are given texts without mnemonics; the frames, and the name, have keys all the same.
void dlgModify::AddKeys() {
  const struct {
    Field field;
    const char* key;
    const char* hint;
  } keys[] = {
      {Field::kStep, "Alt+S",
       "A memory channel keeps 5 and 12.5 kHz: 25 kHz is read back as 12.5 kHz, others as 5 "
       "kHz."},
      {Field::kTone, "Alt+T", ""},
      {Field::kShift, "Alt+H",
       "A memory channel does not keep Split. Of an offset of 10 MHz or more the tens are "
       "lost."},
      {Field::kPower, "Alt+P", ""},
      {Field::kAtt, "Alt+A", ""},
      {Field::kBatterySave, "Alt+B", ""},
      {Field::kBandwidth, "Alt+W", ""}};
  const auto add = [this](QWidget* owner, const QString& hint, const char* key, auto go) {
    const QKeySequence sequence(QLatin1String{key});
    QStringList tip = {hint, sequence.toString(QKeySequence::NativeText)};
    tip.removeAll(QString());
    owner->setToolTip(tip.join(QLatin1Char('\n')));
    connect(new QShortcut(sequence, owner), &QShortcut::activated, this, go);
  };
  for (const auto& row : keys) {
    const auto group = std::find_if(groups_.begin(), groups_.end(),
                                    [&](const Group& g) { return g.field == row.field; });
    add(group->frame, QString::fromUtf8(row.hint), row.key,
        [buttons = group->buttons] { buttons->Focus(Qt::ShortcutFocusReason); });
  }
  add(txtName_, txtName_->toolTip(), "Alt+N", [this] { JumpTo(*txtName_); });
}

// How the four boxes of the frequencies repair what is typed: nothing there is refused with a
// message.
void dlgModify::AddBoxTips() {
  const QString paste = tr("A whole frequency, 145.6125, can be pasted: it fills both boxes.");
  const QString falls = tr("Falls to the next lower multiple of 5 or 12.5 kHz.");
  const struct {
    FilteredEdit* box;
    QString hint;
  } tips[] = {
      {txtFreq_, tr("Whole MHz. Out of range, it goes back to what it was; in an empty channel it "
                    "becomes 145, 435 or 445.")},
      {txtFreq1_, falls + QLatin1Char(' ') + tr("The tuning step follows.")},
      {txtShift_, tr("Whole MHz. A memory channel does not keep the tens.")},
      {txtShift1_, falls + QLatin1Char(' ') + tr("The tuning step follows this one too.")}};
  for (const auto& tip : tips) tip.box->setToolTip(tip.hint + QLatin1Char('\n') + paste);
}

void dlgModify::MakeControls() {
  auto* grid = new QGridLayout(this);
  LayOutFrequency(*grid);
  LayOutTone(*grid);
  LayOutShift(*grid);
  LayOutRest(*grid);
  AddKeys();
  AddBoxTips();
  grid->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace q40
