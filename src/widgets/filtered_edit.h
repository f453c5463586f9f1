// A line of text that takes only certain keys, and repairs what comes in at once.
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

  // A change by the user: the text that came in, with what now stands before and behind it. Typed,
  // pasted, from the middle button or an input method; empty when something was taken away.
  struct Change {
    QString before;
    QString text;
    QString after;
  };
  // Puts a change right before it is shown. A text of which nothing is left changes nothing, not
  // even the selection that it would have replaced.
  using Repair = std::function<void(Change& change)>;

  // Without a filter every key is taken. Keys that type nothing (arrows, Delete, shortcuts) are
  // never filtered. Of what comes in, `longest` cuts what does not fit, after the repair.
  FilteredEdit(Filter filter, int longest, QWidget* parent);

  void SetRepair(Repair repair) { repair_ = std::move(repair); }
  void SetLongest(int longest) { longest_ = longest; }
  [[nodiscard]] int longest() const { return longest_; }
  // Shows a text that the program sets: cut to the longest, but neither filtered nor repaired.
  void ShowText(const QString& text);
  // What was typed is no longer the box's own to take back.
  void ForgetTyping() { ShowText(text()); }
  // The user has come here and has not gone on to another control, even if the keyboard is with the
  // menu or another window meanwhile.
  [[nodiscard]] bool IsEntered() const { return hasFocus() || away_; }

 signals:
  // A character key or Backspace was pressed and has had its effect.
  void typed(char key, bool dropped);
  void entered();
  void gotFocus();
  // The focus has gone to another control of the window, not to another window or a menu.
  void left();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  class Gate;
  bool Admit(QString& input, int& cursor);
  [[nodiscard]] Change ChangeTo(const QString& input, int cursor) const;
  void Remember();
  void ComeBack(const QWidget* focus);

  Filter filter_;
  Repair repair_;
  int longest_;
  bool by_program_ = false;
  QString shown_;  // before a change, and where it will take place
  int place_ = 0;
  QMetaObject::Connection away_;  // while the keyboard is with the menu or another window
};

}  // namespace q40
