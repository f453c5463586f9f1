// The size at which the main window opens: 12370 x 8305 twips with the frame that the window manager
// puts around it, less on a screen that has less.
#pragma once

#include <QMargins>
#include <QObject>
#include <QRect>

class QWidget;

namespace q40 {

// What the screen of `owner` has for another window, which will get a frame like the owner's.
QSize RoomBeside(const QWidget& owner);

// Sizes the window at once, and again when its frame becomes known, which is after it was shown; a
// window that the user or the window manager has given another size keeps that.
class OuterSize final : public QObject {
 public:
  explicit OuterSize(QWidget& window);

  // Looks whether the frame has changed. Runs by itself on the events of the window, but not all
  // window managers send one.
  void Fit();
  // Where the window is, with its frame, in twips.
  [[nodiscard]] QRect Placement() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget& window_;
  QMargins frame_;
};

}  // namespace q40
