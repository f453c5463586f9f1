#include "pages/settings_page1.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>

#include "widgets/option_group.h"

namespace q40 {
namespace {

using V = SettingsValues;

QRadioButton* AddOption(QBoxLayout& layout, OptionGroup& group, const QString& name, int index,
                        std::string_view caption) {
  auto* option =
      new QRadioButton(QString::fromUtf8(caption.data(), static_cast<qsizetype>(caption.size())));
  option->setObjectName(QStringLiteral("%1_%2").arg(name).arg(index));
  group.Add(*option, index);
  layout.addWidget(option);
  return option;
}

}  // namespace

SettingsPage1::SettingsPage1(QWidget* special_channels, QWidget* parent) : SettingsPage(parent) {
  auto* upper = new QGridLayout;
  upper->addWidget(MakeLists(), 0, 0, 3, 1);
  upper->addWidget(MakeTimeOut(), 0, 1);
  upper->addWidget(MakeLevel(&V::Slider1, "lblVol", "Volume"), 1, 1);
  upper->addWidget(MakeLevel(&V::Slider2, "lblSql", "Squelch"), 2, 1);
  upper->addWidget(MakeBoxes(), 0, 2, 3, 1);
  upper->addWidget(MakeModel(), 0, 3, 2, 1);
  upper->addWidget(MakeBand(), 2, 3);
  upper->setColumnStretch(1, 1);
  upper->setRowStretch(1, 1);
  upper->setRowStretch(2, 1);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(MakeCloneButton("cmbRxData1", " Read Settings", &SettingsPage::readRequested));
  buttons->addWidget(
      MakeCloneButton("cmbTxData1", " Write Settings", &SettingsPage::writeRequested));
  buttons->addStretch();

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(upper);
  layout->addWidget(special_channels);
  layout->addLayout(buttons);
  layout->addStretch();
  // In reading order: the grid with its button stands above the clone buttons.
  QWidget* last = optBand_->button(1);
  for (const char* name : {"MSFlexGrid2", "cmdClear", "cmbRxData1"}) {
    auto* next = findChild<QWidget*>(QLatin1String(name));
    setTabOrder(last, next);
    last = next;
  }
}

QWidget* SettingsPage1::MakeLists() {
  auto* widget = new QWidget(this);
  auto* grid = new QGridLayout(widget);
  grid->setContentsMargins(0, 0, 0, 0);
  int row = 0;
  for (const Value value :
       {&V::cmbStb, &V::cmbVod, &V::cmbBat, &V::cmbLamp, &V::cmbScan, &V::cmbTB}) {
    QComboBox* list = MakeList(value);
    grid->addWidget(MakeLabel(value), row, 0);
    grid->addWidget(list, row, 1);
    if (!SettingOf(value).unit.empty()) grid->addWidget(MakeUnit(value), row, 2);
    ++row;
  }
  findChild<QWidget*>(QStringLiteral("cmbTB"))
      ->setToolTip(tr("A saved 1450 is read back as 1750: the radio knows only four bursts."));
  grid->setRowStretch(row, 1);
  return widget;
}

QWidget* SettingsPage1::MakeTimeOut() {
  auto* frame = new QGroupBox(QStringLiteral("Time Out Timer"), this);
  auto* grid = new QGridLayout(frame);
  int row = 0;
  for (const Value value : {&V::cmbTOT, &V::cmbTOTP}) {
    QComboBox* list = MakeList(value);
    grid->addWidget(MakeLabel(value), row, 0);
    grid->addWidget(list, row, 1);
    grid->addWidget(MakeUnit(value), row, 2);
    ++row;
  }
  grid->setColumnStretch(1, 1);
  return frame;
}

QWidget* SettingsPage1::MakeBoxes() {
  auto* widget = new QWidget(this);
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(6, 0, 6, 0);
  for (const Value value : {&V::chkBeep, &V::chkAPO, &V::chkLock})
    column->addWidget(MakeBox(value));
  // No byte of the radio stands behind these.
  const struct {
    const char* name;
    const char* caption;
  } loose[] = {{"chkAutoProg", "Auto Program"},
               {"chkCharge", "Battery Charge"},
               {"chkFlg1_0", "Keylock"},
               {"chkFlg1_1", "Battery Save"},
               {"chkFlg1_2", "DoReMi"}};
  for (const auto& box : loose) {
    QCheckBox* made = MakeLooseBox(QLatin1String(box.name), box.caption);
    made->setToolTip(tr("Not part of the data that the radio stores."));
    made->setAccessibleName(tr("%1, not stored").arg(QLatin1String(box.caption)));
    column->addWidget(made);
  }
  column->addStretch();
  return widget;
}

QWidget* SettingsPage1::MakeModel() {
  auto* frame = new QGroupBox(QStringLiteral("Model"), this);
  auto* column = new QVBoxLayout(frame);
  opbModel_ = new OptionGroup(this);
  for (int model = 0; model < kModelCount; ++model) {
    AddOption(*column, *opbModel_, QStringLiteral("opbModel"), model, ModelName(model));
  }
  ShowModel(0);
  connect(opbModel_, &OptionGroup::idClicked, this, &SettingsPage1::modelChosen);
  cmdAuto_ = new QPushButton(QStringLiteral("Auto Select"), frame);
  cmdAuto_->setObjectName(QStringLiteral("cmdAuto"));
  cmdAuto_->setAutoDefault(false);
  connect(cmdAuto_, &QPushButton::clicked, this, &SettingsPage1::autoSelectRequested);
  column->addWidget(cmdAuto_);
  return frame;
}

QWidget* SettingsPage1::MakeBand() {
  auto* frame = new QGroupBox(QStringLiteral("Band"), this);
  auto* row = new QHBoxLayout(frame);
  optBand_ = new OptionGroup(this);
  AddOption(*row, *optBand_, QStringLiteral("optBand"), 0, "VHF")->setChecked(true);
  AddOption(*row, *optBand_, QStringLiteral("optBand"), 1, "UHF");
  connect(optBand_, &OptionGroup::idClicked,
          [this](int index) { emit bandChosen(index == 1 ? Band::kUhf : Band::kVhf); });
  return frame;
}

QWidget* SettingsPage1::MakeLevel(Value slider, const char* label, const char* caption) {
  auto* frame = new QGroupBox(QString::fromUtf8(caption), this);
  auto* row = new QHBoxLayout(frame);
  auto* value = new QLabel(frame);
  value->setObjectName(QLatin1String(label));
  row->addWidget(MakeSlider(slider, value), 1);
  row->addWidget(value);
  return frame;
}

void SettingsPage1::ShowModel(int model) { opbModel_->Choose(model); }

void SettingsPage1::ShowBand(Band band) { optBand_->Choose(band == Band::kUhf ? 1 : 0); }

int SettingsPage1::ChosenModel() const {
  const int chosen = opbModel_->checkedId();
  return chosen >= 0 ? chosen : kModelCount - 1;
}

void SettingsPage1::SetAutoSelectEnabled(bool enabled) { cmdAuto_->setEnabled(enabled); }

}  // namespace q40
