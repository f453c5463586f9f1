// A line of text that takes only certain keys.
#pragma once

#include <functional>
#include <optional>

#include <QLineEdit>

namespace q40 {

class FilteredEdit : public QLineEdit {
  Q_OBJECT

 public:
  // What a typed character becomes; no value drops it. Backspace is '\b'.
  using Filter = std::function<std::optional<char>(char key)>;

  // Without a filter every key is taken. Keys that type nothing (arrows, Delete, shortcuts) are
  // never filtered, and pasted text is only cut to the length limit.
  FilteredEdit(Filter filter, int longest, QWidget* parent);

 signals:
  // A character key or Backspace was pressed and has had its effect.
  void typed(char key, bool dropped);
  void entered();
  void gotFocus();
  // The focus has gone to another control of the window, not to another window or a menu.
  void left();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  Filter filter_;
};

}  // namespace q40
