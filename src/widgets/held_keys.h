// Keys that are held down.
#pragma once

#include <QObject>

class QKeyEvent;

namespace q40 {

// A held key runs a command once. While it repeats, no shortcut fires, and neither Enter nor the
// space bar presses anything: the key that has opened a dialog or a question does not answer it.
// Moving, typing and erasing repeat as usual. For all windows of the program, as long as the object
// lives.
class HeldKeys final : public QObject {
 public:
  explicit HeldKeys(QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool Repeats(const QKeyEvent& press) const;

  int released_ = 0;         // the key that was released last
  quint64 released_at_ = 0;  // and when, by the clock of its events; 0: that has none
};

}  // namespace q40
