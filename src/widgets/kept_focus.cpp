#include "widgets/kept_focus.h"

namespace q40 {
namespace {

QWidget* FirstControl(const QWidget& page) {
  for (QWidget* next = page.nextInFocusChain(); next != &page; next = next->nextInFocusChain()) {
    const bool takes_focus = (next->focusPolicy() & Qt::TabFocus) != 0 && next->isEnabled();
    if (takes_focus && next->isVisible() && page.isAncestorOf(next)) return next;
  }
  return nullptr;
}

}  // namespace

void KeptFocus::ChangePage(const std::function<void()>& show_page) {
  left_ = window_.focusWidget();
  show_page();
  given_ = window_.focusWidget();
}

void KeptFocus::Keep() {
  kept_ = window_.focusWidget();
  if (left_ && kept_ == given_) kept_ = left_;
  parked_ = false;
}

void KeptFocus::Park() {
  if (parked_ || !kept_ || kept_->isEnabled()) return;
  window_.setFocus();  // not nowhere: a window that becomes active again would choose a control
  parked_ = true;
}

void KeptFocus::Restore(QWidget& page) {
  left_.clear();
  if (!parked_ || window_.focusWidget() != &window_) return;
  parked_ = false;
  QWidget* back = kept_ && kept_->isVisible() ? kept_.data() : FirstControl(page);
  if (back != nullptr) back->setFocus();
}

}  // namespace q40
