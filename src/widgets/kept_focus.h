// The keyboard focus of a window over a time in which some of its controls are disabled.
//
// A control that is disabled passes its focus on to the next one, where the key that the user meant for
// it does something else; and it does not get it back.
#pragma once

#include <functional>

#include <QPointer>
#include <QWidget>

namespace q40 {

class KeptFocus {
 public:
  explicit KeptFocus(QWidget& window) : window_(window) {}

  // Shows another page, and the toolkit may pass the focus on to one of its controls. Keep then notes the
  // one that had it before, unless the user has moved it.
  void ChangePage(const std::function<void()>& show_page);
  // Before controls are disabled: notes which one has the focus.
  void Keep();
  // After some were: if it is among them, the window itself gets the focus.
  void Park();
  // After they were enabled: gives it back, unless the user has moved it. When its page is no longer
  // shown, the first control of `page` gets it.
  void Restore(QWidget& page);

 private:
  QWidget& window_;
  QPointer<QWidget> left_;   // had it when the page changed; null: none has changed
  QPointer<QWidget> given_;  // has it since; null: nobody
  QPointer<QWidget> kept_;
  bool parked_ = false;
};

}  // namespace q40
