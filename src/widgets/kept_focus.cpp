#include "widgets/kept_focus.h"

#include <utility>

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
  page_changed_ = true;
}

void KeptFocus::Keep() {
  kept_ = window_.focusWidget();
  if (std::exchange(page_changed_, false) && kept_ == given_) kept_ = left_;
  parked_ = false;
}

void KeptFocus::Park() {
  if (parked_ || !kept_ || kept_->isEnabled()) return;
  window_.setFocus();  // not nowhere: a window that becomes active again would choose a control
  parked_ = true;
}

void KeptFocus::Restore(QWidget& page) {
  page_changed_ = false;
  if (!parked_ || window_.focusWidget() != &window_) return;
  parked_ = false;
  QWidget* back = kept_ && kept_->isVisible() ? kept_.data() : FirstControl(page);
  if (back != nullptr) back->setFocus();
}

}  // namespace q40
