#include "pages/settings_page.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

namespace q40 {
namespace {

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

void SettingsPage::Bound::Show(int value) const {
  if (list != nullptr) list->setCurrentIndex(value);
  if (slider != nullptr) slider->setValue(value);
  if (box != nullptr) box->setChecked(value != 0);
}

void SettingsPage::SetValues(const SettingsValues& values) {
  loading_ = true;
  for (const Bound& control : controls_) control.Show(values.*control.setting->value);
  loading_ = false;
  ValuesShown();
}

void SettingsPage::SetCloneButtonsEnabled(bool enabled) {
  for (QPushButton* button : clone_buttons_) button->setEnabled(enabled);
}

QComboBox* SettingsPage::MakeList(Value value) {
  const Setting& setting = SettingOf(value);
  auto* list = new QComboBox(this);
  list->setObjectName(Text(setting.control));
  list->setAccessibleName(Text(setting.caption).trimmed());
  for (const std::string_view text : setting.items) list->addItem(Text(text));
  connect(list, &QComboBox::activated,
          [this, &setting](int item) { emit settingChosen(setting, item); });
  LeaveWheelToPage(list);
  controls_.push_back({&setting, list});
  return list;
}

QCheckBox* SettingsPage::MakeBox(Value value) {
  const Setting& setting = SettingOf(value);
  auto* box = new QCheckBox(Text(setting.caption), this);
  box->setObjectName(Text(setting.control));
  connect(box, &QCheckBox::clicked,
          [this, &setting](bool ticked) { emit settingChosen(setting, ticked ? 1 : 0); });
  controls_.push_back({&setting, nullptr, box});
  return box;
}

QSlider* SettingsPage::MakeSlider(Value value, QLabel* label) {
  const Setting& setting = SettingOf(value);
  auto* slider = new QSlider(Qt::Horizontal, this);
  slider->setObjectName(Text(setting.control));
  slider->setAccessibleName(Text(setting.caption));
  slider->setRange(0, setting.top);
  slider->setPageStep(1);
  slider->setTickPosition(QSlider::TicksBelow);
  slider->setTickInterval(setting.top > 10 ? 5 : 1);
  LeaveWheelToPage(slider);
  label->setNum(0);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("00")));
  connect(slider, &QSlider::valueChanged, [this, label, &setting](int position) {
    label->setNum(position);
    if (!loading_) emit settingChosen(setting, position);
  });
  controls_.push_back({&setting, nullptr, nullptr, slider});
  return slider;
}

void SettingsPage::LeaveWheelToPage(QWidget* control) {
  control->setFocusPolicy(Qt::StrongFocus);
  control->installEventFilter(this);
}

bool SettingsPage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
  event->ignore();
  return true;
}

QCheckBox* SettingsPage::MakeLooseBox(const QString& name, const char* caption) {
  auto* box = new QCheckBox(QString::fromUtf8(caption), this);
  box->setObjectName(name);
  connect(box, &QCheckBox::clicked, this, &SettingsPage::looseBoxClicked);
  return box;
}

QLabel* SettingsPage::MakeLabel(Value value) {
  const Setting& setting = SettingOf(value);
  auto* label = new QLabel(Text(setting.caption), this);
  label->setBuddy(findChild<QWidget*>(Text(setting.control)));
  return label;
}

QLabel* SettingsPage::MakeUnit(Value value) {
  return new QLabel(Text(SettingOf(value).unit), this);
}

QPushButton* SettingsPage::MakeCloneButton(const char* name, const char* caption,
                                           void (SettingsPage::*requested)()) {
  auto* button = new QPushButton(QString::fromUtf8(caption), this);
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, requested);
  clone_buttons_.push_back(button);
  return button;
}

}  // namespace q40
