#include "widgets/filtered_edit.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QValidator>

namespace q40 {
namespace {

constexpr char kBackspace = '\b';

// The character that a key types; no value for keys that type none.
std::optional<QChar> TypedBy(const QKeyEvent& event) {
  const auto plain = Qt::ShiftModifier | Qt::KeypadModifier | Qt::GroupSwitchModifier;
  if ((event.modifiers() & ~plain) != Qt::NoModifier) return std::nullopt;
  if (event.key() == Qt::Key_Backspace) return QLatin1Char(kBackspace);
  if (event.text().isEmpty() || !event.text().front().isPrint()) return std::nullopt;
  return event.text().front();
}

bool InsideTheWindow(const QFocusEvent& event) {
  const Qt::FocusReason reason = event.reason();
  return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
         reason != Qt::MenuBarFocusReason;
}

}  // namespace

// Every change passes here, wherever it comes from, before it is seen.
class FilteredEdit::Gate final : public QValidator {
 public:
  explicit Gate(FilteredEdit& edit) : QValidator(&edit), edit_(edit) {}
  State validate(QString& input, int& cursor) const override {
    return edit_.Admit(input, cursor) ? Acceptable : Invalid;
  }

 private:
  FilteredEdit& edit_;
};

FilteredEdit::FilteredEdit(Filter filter, int longest, QWidget* parent)
    : QLineEdit(parent), filter_(std::move(filter)), longest_(longest) {
  setAcceptDrops(false);  // a clone file that is dropped here is for the window
  setValidator(new Gate(*this));
  connect(this, &QLineEdit::cursorPositionChanged, this, &FilteredEdit::Remember);
  connect(this, &QLineEdit::selectionChanged, this, &FilteredEdit::Remember);
  connect(this, &QLineEdit::textChanged, this, &FilteredEdit::Remember);
}

// Takes back what is typed, one piece after the other. When nothing is left of it, the keys are the
// window's.
bool FilteredEdit::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool none_left = (key.matches(QKeySequence::Undo) && !isUndoAvailable()) ||
                           (key.matches(QKeySequence::Redo) && !isRedoAvailable());
    if (none_left) {
      event->ignore();
      return true;
    }
  }
  return QLineEdit::event(event);
}

// ---- what comes in

void FilteredEdit::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    emit entered();
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

void FilteredEdit::ShowText(const QString& text) {
  by_program_ = true;
  setText(text.left(longest_));
  by_program_ = false;
}

void FilteredEdit::Remember() {
  shown_ = text();
  place_ = hasSelectedText() ? selectionStart() : cursorPosition();
}

// What changed between the text that was shown and `input`, after which the cursor stands.
FilteredEdit::Change FilteredEdit::ChangeTo(const QString& input, int cursor) const {
  if (input.size() < shown_.size() && cursor <= place_) {
    return {input.left(cursor), {}, input.mid(cursor)};
  }
  const QString before = shown_.left(place_);
  if (cursor < place_ || !input.startsWith(before)) return {{}, input, {}};
  return {before, input.mid(place_, cursor - place_), input.mid(cursor)};
}

// False: the change is undone.
bool FilteredEdit::Admit(QString& input, int& cursor) {
  if (by_program_) return true;
  Change change = ChangeTo(input, cursor);
  const bool came_in = !change.text.isEmpty();
  if (repair_) repair_(change);
  change.text.truncate(
      std::max<qsizetype>(0, longest_ - change.before.size() - change.after.size()));
  if (came_in && change.text.isEmpty()) return false;
  cursor = static_cast<int>(change.before.size() + change.text.size());
  input = change.before + change.text + change.after;
  return true;
}

// ---- coming and going

void FilteredEdit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (InsideTheWindow(*event)) emit gotFocus();
}

void FilteredEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (InsideTheWindow(*event)) {
    emit left();
  } else if (!away_) {
    away_ = connect(qApp, &QApplication::focusChanged, this,
                    [this](const QWidget*, const QWidget* now) { ComeBack(now); });
  }
}

// From the menu or another window, to here or, with a click of the mouse, to another control.
void FilteredEdit::ComeBack(const QWidget* focus) {
  if (focus == nullptr || focus->window() != window()) return;
  if (qobject_cast<const QMenuBar*>(focus) != nullptr) return;
  disconnect(away_);
  if (focus != this) emit left();
}

}  // namespace q40
