#include "widgets/held_keys.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

namespace q40 {

HeldKeys::HeldKeys(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

namespace {

// The keys that press a button or what stands for one.
bool Presses(int key) {
  if (key == Qt::Key_Return || key == Qt::Key_Enter) return true;
  return key == Qt::Key_Space &&
         qobject_cast<QAbstractButton*>(QApplication::focusWidget()) != nullptr;
}

}  // namespace

// X11 repeats a key by releasing and pressing it in the same moment; the toolkit marks that as a
// repetition only if both events have arrived when it looks. No finger is that quick.
bool HeldKeys::Repeats(const QKeyEvent& press) const {
  constexpr quint64 kSameMomentMs = 2;
  if (press.isAutoRepeat()) return true;
  return press.key() == released_ && released_at_ != 0 &&
         press.timestamp() - released_at_ <= kSameMomentMs;
}

// Sees an event before any widget does: when it comes to the window.
bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
  if (qobject_cast<QWindow*>(watched) == nullptr) return false;
  if (event->type() == QEvent::KeyRelease) {
    const auto& release = static_cast<QKeyEvent&>(*event);
    released_ = release.key();
    released_at_ = release.timestamp();
    return false;
  }
  if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress) return false;
  const auto& press = static_cast<QKeyEvent&>(*event);
  if (!Repeats(press)) return false;
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept();  // comes back as a key press that no shortcut has seen
    return true;
  }
  return Presses(press.key());
}

}  // namespace q40
