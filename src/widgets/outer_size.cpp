#include "widgets/outer_size.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace q40 {
namespace {

constexpr int kTwipsPerPixel = 15;  // at 96 dpi
constexpr int kTwips[] = {12370, 8305};

constexpr int Pixels(int twips) { return (twips + kTwipsPerPixel / 2) / kTwipsPerPixel; }
constexpr QSize kPixels(Pixels(kTwips[0]), Pixels(kTwips[1]));

// The first size is not a whole number of pixels; it is stored as it was meant.
constexpr int Twips(int pixels, int first_twips) {
  return pixels == Pixels(first_twips) ? first_twips : pixels * kTwipsPerPixel;
}

// With its frame.
QSize LargestSize(const QWidget& window) {
  // Offscreen nothing is seen, so nothing can be outside.
  if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
    return {QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};
  }
  return window.screen()->availableGeometry().size();
}

QMargins FrameOf(const QWidget& window) {
  const QWindow* handle = window.windowHandle();
  return handle != nullptr && window.isVisible() ? handle->frameMargins() : QMargins();
}

}  // namespace

QSize RoomBeside(const QWidget& owner) { return LargestSize(owner).shrunkBy(FrameOf(owner)); }

OuterSize::OuterSize(QWidget& window) : QObject(&window), window_(window) {
  window_.resize(kPixels.boundedTo(LargestSize(window_)));
  window_.installEventFilter(this);
}

void OuterSize::Fit() {
  const QSize outer = kPixels.boundedTo(LargestSize(window_));
  const QMargins frame = FrameOf(window_);
  if (!window_.isVisible() || frame == frame_ || window_.size() != outer.shrunkBy(frame_)) return;
  frame_ = frame;
  window_.resize(outer.shrunkBy(frame_));
}

QRect OuterSize::Placement() const {
  const QRect frame = window_.geometry() + FrameOf(window_);
  return {frame.left() * kTwipsPerPixel, frame.top() * kTwipsPerPixel,
          Twips(frame.width(), kTwips[0]), Twips(frame.height(), kTwips[1])};
}

bool OuterSize::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::Show:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowActivate:
    case QEvent::Paint: Fit(); break;
    default: break;
  }
  return false;
}

}  // namespace q40
