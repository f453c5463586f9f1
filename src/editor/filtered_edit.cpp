#include "editor/filtered_edit.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include "image/edit_rules.h"

namespace q40 {
namespace {

// The character that a key types; no value for keys that type none.
std::optional<QChar> TypedBy(const QKeyEvent& event) {
  const auto plain = Qt::ShiftModifier | Qt::KeypadModifier | Qt::GroupSwitchModifier;
  if ((event.modifiers() & ~plain) != Qt::NoModifier) return std::nullopt;
  if (event.key() == Qt::Key_Backspace) return QLatin1Char(kBackspace);
  if (event.text().isEmpty() || !event.text().front().isPrint()) return std::nullopt;
  return event.text().front();
}

bool InsideTheWindow(const QFocusEvent& event) {
  return event.reason() != Qt::ActiveWindowFocusReason && event.reason() != Qt::PopupFocusReason;
}

}  // namespace

FilteredEdit::FilteredEdit(Filter filter, int longest, QWidget* parent)
    : QLineEdit(parent), filter_(std::move(filter)) {
  setMaxLength(longest);
  setAcceptDrops(false);  // a clone file that is dropped here is for the window
}

void FilteredEdit::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (!event->isAutoRepeat()) emit entered();
    return QLineEdit::keyPressEvent(event);
  }
  const auto character = TypedBy(*event);
  if (!filter_ || !character) return QLineEdit::keyPressEvent(event);

  const char key =
      character->toLatin1();  // 0, which no filter takes, for a character beyond Latin 1
  const bool ascii = character->unicode() < 0x80;
  const auto accepted = ascii ? filter_(key) : std::nullopt;
  if (accepted) {
    QKeyEvent taken(event->type(), event->key(), event->modifiers(),
                    *accepted == kBackspace ? event->text() : QString(QLatin1Char(*accepted)));
    QLineEdit::keyPressEvent(&taken);
  }
  event->accept();
  emit typed(key, !accepted);
}

void FilteredEdit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (InsideTheWindow(*event)) emit gotFocus();
}

void FilteredEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (InsideTheWindow(*event)) emit left();
}

}  // namespace q40
