// A small filled corner: what stands here has changed. By its shape, so that no colour need be seen.
#pragma once

#include <QWidget>

namespace q40 {

class ChangeMark final : public QWidget {
  Q_OBJECT

 public:
  // Paints the mark into the upper left corner of a rectangle.
  static void Paint(QPainter& painter, const QRect& rect, const QPalette& palette, int size);
  // How large it is beside texts of a font.
  static int Size(const QFontMetrics& metrics);

  // Lays the mark over the corner of a control, and puts `was` behind the tool tip that it has. An
  // empty text takes both away.
  static void Show(QWidget& control, const QString& was);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  explicit ChangeMark(QWidget* control);

  QString tool_tip_;  // the control's own
  QString was_;
};

}  // namespace q40
