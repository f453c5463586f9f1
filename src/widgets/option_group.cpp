#include "widgets/option_group.h"

#include <QAbstractButton>
#include <QEvent>

namespace q40 {

OptionGroup::OptionGroup(QObject* parent) : QButtonGroup(parent) {
  connect(this, &QButtonGroup::idToggled, this, &OptionGroup::KeepTabStop);
}

void OptionGroup::Add(QAbstractButton& option, int index) {
  addButton(&option, index);
  option.installEventFilter(this);
  KeepTabStop();
}

void OptionGroup::Choose(int index) {
  if (QAbstractButton* option = button(index)) {
    option->setChecked(true);
  } else {
    setExclusive(false);  // an exclusive group cannot be emptied
    for (QAbstractButton* each : buttons()) each->setChecked(false);
    setExclusive(true);
  }
  KeepTabStop();  // which of them can be chosen may have changed too
  // Later, because an option that an arrow key has chosen takes the focus after it has said so.
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (HoldsFocus()) Focus(Qt::OtherFocusReason);
      },
      Qt::QueuedConnection);
}

void OptionGroup::Focus(Qt::FocusReason reason) {
  if (QAbstractButton* stop = TabStop()) stop->setFocus(reason);
}

// An option that gets the focus becomes the tab stop by itself, also when the mouse has not chosen
// it in the end.
bool OptionGroup::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut || event->type() == QEvent::EnabledChange) KeepTabStop();
  return QButtonGroup::eventFilter(watched, event);
}

QAbstractButton* OptionGroup::TabStop() const {
  if (checkedButton() != nullptr && checkedButton()->isEnabled()) return checkedButton();
  for (QAbstractButton* option : buttons()) {
    if (option->isEnabled()) return option;
  }
  return nullptr;
}

void OptionGroup::KeepTabStop() {
  for (QAbstractButton* option : buttons()) option->setFocusPolicy(Qt::ClickFocus);
  if (QAbstractButton* stop = TabStop()) stop->setFocusPolicy(Qt::StrongFocus);
}

// The window's focus: the window itself may just be about to get it back from a question.
bool OptionGroup::HoldsFocus() const {
  const auto all = buttons();
  return !all.isEmpty() && all.contains(all.front()->window()->focusWidget());
}

}  // namespace q40
