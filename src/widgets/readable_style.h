// The desktop's style, with outlines that can be seen on dark colours.
#pragma once

#include <QProxyStyle>

namespace q40 {

// The colour of the lines in a table: the usual one cannot be seen on a dark background.
int ReadableGridLine(const QStyleOption* option, int usual);

// On a dark background the usual style draws the edges of boxes, buttons and texts darker still, and
// on black not at all. This one draws them once more, in a colour between background and text.
class ReadableStyle final : public QProxyStyle {
 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* data) const override;
};

}  // namespace q40
