#include "widgets/change_mark.h"

#include <algorithm>

#include <QPainter>
#include <QPainterPath>

#include "widgets/paths.h"

namespace q40 {

void ChangeMark::Paint(QPainter& painter, const QRect& rect, const QPalette& palette, int size) {
  QPainterPath corner;
  corner.moveTo(rect.topLeft());
  corner.lineTo(rect.topLeft() + QPoint(size, 0));
  corner.lineTo(rect.topLeft() + QPoint(0, size));
  corner.closeSubpath();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(corner, palette.color(QPalette::Active, QPalette::WindowText));
  painter.restore();
}

int ChangeMark::Size(const QFontMetrics& metrics) { return std::max(6, metrics.height() / 2); }

ChangeMark::ChangeMark(QWidget* control) : QWidget(control), tool_tip_(control->toolTip()) {
  setObjectName(QStringLiteral("ChangeMark"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  const int size = Size(control->fontMetrics());
  setGeometry(0, 0, size, size);
}

void ChangeMark::Show(QWidget& control, const QString& was) {
  auto* mark =
      control.findChild<ChangeMark*>(QStringLiteral("ChangeMark"), Qt::FindDirectChildrenOnly);
  if (mark == nullptr && was.isEmpty()) return;
  if (mark == nullptr) mark = new ChangeMark(&control);
  if (mark->was_ == was) return;
  mark->was_ = was;
  mark->setVisible(!was.isEmpty());
  mark->raise();
  QStringList tip = {mark->tool_tip_, was};
  tip.removeAll(QString());
  control.setToolTip(PlainToolTip(tip.join(QLatin1Char('\n'))));
  control.setAccessibleDescription(was);
}

void ChangeMark::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Paint(painter, rect(), palette(), Size(fontMetrics()));
}

}  // namespace q40
