#include "widgets/readable_style.h"

#include <algorithm>

#include <QPainter>
#include <QStyleOption>

namespace q40 {
namespace {

constexpr double kRadius = 2;
constexpr int kTitleGap = 3;  // between the title of a frame and the frame

bool IsDark(const QStyleOption& option) {
  return option.palette.color(QPalette::Window).lightness() < 128;
}

// Half way from the background to the text; black and white give a clear grey.
QColor OutlineColor(const QPalette& palette) {
  const QColor back = palette.color(QPalette::Window);
  const QColor text = palette.color(QPalette::WindowText);
  return {(back.red() + text.red()) / 2, (back.green() + text.green()) / 2,
          (back.blue() + text.blue()) / 2};
}

enum class Shape : unsigned char { kNone, kBox, kCircle };

Shape ShapeOf(QStyle::PrimitiveElement element) {
  switch (element) {
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_FrameLineEdit:
    case QStyle::PE_PanelLineEdit:
    case QStyle::PE_FrameGroupBox:
    case QStyle::PE_PanelButtonCommand:
    case QStyle::PE_Frame: return Shape::kBox;
    case QStyle::PE_IndicatorRadioButton: return Shape::kCircle;
    default: return Shape::kNone;
  }
}

void DrawOutline(const QStyleOption& option, QPainter& painter, Shape shape) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(OutlineColor(option.palette));
  painter.setBrush(Qt::NoBrush);
  const QRectF edge = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
  if (shape == Shape::kCircle) {
    painter.drawEllipse(edge);
  } else {
    painter.drawRoundedRect(edge, kRadius, kRadius);
  }
  painter.restore();
}

}  // namespace

int ReadableGridLine(const QStyleOption* option, int usual) {
  if (option == nullptr || option->palette.color(QPalette::Base).lightness() >= 128) return usual;
  const QColor text = option->palette.color(QPalette::Text);
  const QColor back = option->palette.color(QPalette::Base);
  return static_cast<int>(qRgb((3 * back.red() + text.red()) / 4,
                               (3 * back.green() + text.green()) / 4,
                               (3 * back.blue() + text.blue()) / 4));
}

int ReadableStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* data) const {
  const int usual = QProxyStyle::styleHint(hint, option, widget, data);
  return hint == SH_Table_GridLineColor ? ReadableGridLine(option, usual) : usual;
}

void ReadableStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const Shape shape = ShapeOf(element);
  const bool focused = (option->state & State_HasFocus) != 0;  // has an outline of its own
  if (shape == Shape::kNone || !IsDark(*option) || focused) return;
  QStyleOption edge(*option);
  if (element == PE_FrameGroupBox) {  // its title stands on top of the frame
    edge.rect.setTop(edge.rect.top() + kTitleGap +
                     std::max(option->fontMetrics.height(),
                              pixelMetric(PM_ExclusiveIndicatorHeight, option, widget)));
  }
  DrawOutline(edge, *painter, shape);
}

void ReadableStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  const bool focused = (option->state & State_HasFocus) != 0;
  if (control == CC_ComboBox && IsDark(*option) && !focused) {
    DrawOutline(*option, *painter, Shape::kBox);
  }
  if (control == CC_Slider && IsDark(*option)) {
    QStyleOption handle(*option);
    handle.rect = subControlRect(control, option, SC_SliderHandle, widget);
    DrawOutline(handle, *painter, Shape::kBox);
  }
}

void ReadableStyle::drawControl(ControlElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawControl(element, option, painter, widget);
  if (element == CE_HeaderSection && IsDark(*option)) {
    painter->save();
    painter->setPen(OutlineColor(option->palette));
    painter->drawLine(option->rect.topRight(), option->rect.bottomRight());
    painter->drawLine(option->rect.bottomLeft(), option->rect.bottomRight());
    painter->restore();
  }
}

}  // namespace q40
