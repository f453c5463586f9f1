#include "widgets/input_guard.h"

#include <algorithm>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QSlider>
#include <QWidget>

namespace q40 {
namespace {

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::Wheel:
    case QEvent::Drop: return true;
    default: return false;
  }
}

// Scroll bars, and the tables with their viewports: their commands have a guard of their own.
bool OnlyShows(const QWidget& widget) {
  return qobject_cast<const QScrollBar*>(&widget) != nullptr ||
         qobject_cast<const QAbstractScrollArea*>(&widget) != nullptr ||
         qobject_cast<const QAbstractScrollArea*>(widget.parentWidget()) != nullptr;
}

}  // namespace

InputGuard::InputGuard(std::vector<QWidget*> pages, QObject* parent)
    : QObject(parent), pages_(std::move(pages)) {}

void InputGuard::SetActive(bool active) {
  if (active == active_) return;
  active_ = active;
  if (active) {
    ReleaseSliders();
    qApp->installEventFilter(this);
  } else {
    qApp->removeEventFilter(this);
  }
}

// One that is being held would go on following the mouse.
void InputGuard::ReleaseSliders() {
  for (const QWidget* page : pages_) {
    for (QSlider* slider : page->findChildren<QSlider*>()) slider->setSliderDown(false);
  }
}

bool InputGuard::eventFilter(QObject* watched, QEvent* event) {
  if (!IsInput(event->type())) return false;
  const auto* widget = qobject_cast<const QWidget*>(watched);
  if (widget == nullptr || OnlyShows(*widget)) return false;
  return std::any_of(pages_.begin(), pages_.end(),
                     [&](const QWidget* page) { return page->isAncestorOf(widget); });
}

}  // namespace q40
