// What the two settings pages share: controls that stand for the radio's settings bytes.
#pragma once

#include <vector>

#include <QWidget>

#include "radio/settings_table.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QSlider;

namespace q40 {

class SettingsPage : public QWidget {
  Q_OBJECT

 public:
  explicit SettingsPage(QWidget* parent) : QWidget(parent) {}

  // Shows the values of this page's controls. Never reports an edit.
  void SetValues(const SettingsValues& values);

  void SetCloneButtonsEnabled(bool enabled);

 signals:
  // The user set a control, maybe to what it was already.
  void settingChosen(const q40::Setting& setting, int value);
  // A box that stands for no setting.
  void looseBoxClicked();
  void readRequested();
  void writeRequested();

 protected:
  using Value = int SettingsValues::*;

  // A list with its items.
  QComboBox* MakeList(Value value);
  QCheckBox* MakeBox(Value value);
  // A slider from 0 to the largest value that the radio's byte may have. `label` always shows its
  // position.
  QSlider* MakeSlider(Value value, QLabel* label);
  // A check box that stands for no byte.
  QCheckBox* MakeLooseBox(const QString& name, const char* caption);
  // The list's label, without the blanks in front being lost.
  QLabel* MakeLabel(Value value);
  QLabel* MakeUnit(Value value);
  QPushButton* MakeCloneButton(const char* name, const char* caption,
                               void (SettingsPage::*requested)());
  // The wheel scrolls the page; it turns only a control that has the focus.
  bool eventFilter(QObject* watched, QEvent* event) override;
  // Runs when new values are shown.
  virtual void ValuesShown() {}

 private:
  void LeaveWheelToPage(QWidget* control);

  struct Bound {
    const Setting* setting;
    QComboBox* list = nullptr;
    QCheckBox* box = nullptr;
    QSlider* slider = nullptr;
    void Show(int value) const;
  };

  std::vector<Bound> controls_;
  std::vector<QPushButton*> clone_buttons_;
  bool loading_ = false;
};

}  // namespace q40
