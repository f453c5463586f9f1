#include "card_paint/card_pages.h"

#include <QCoreApplication>
#include <QPagedPaintDevice>
#include <QPainter>

namespace q40 {
namespace {

constexpr double kPointsPerInch = 72;
constexpr double kHair = 0.4;       // points
constexpr double kBaseline = 0.35;  // of the size, below the middle of a line
const QColor kBand(238, 238, 238);
const QColor kRule(120, 120, 120);
const QColor kFold(170, 170, 170);

// Paints in points, from the upper left corner of a sheet or a page.
class SheetPainter {
 public:
  SheetPainter(QPainter& painter, const CardContent& card, const CardLayout& layout,
               const CardFont& font)
      : painter_(painter),
        card_(card),
        layout_(layout),
        font_(font),
        unit_(painter.device()->logicalDpiX() / kPointsPerInch) {}

  void Page(int number) {
    const CardPanel panel = layout_.PanelOf(number);
    painter_.save();
    painter_.translate(panel.at.x * unit_, panel.at.y * unit_);
    if (panel.turned) painter_.rotate(180);
    Heading(number);
    const int first = number * layout_.columns * layout_.rows;
    for (int column = 0; column < layout_.columns; ++column) {
      Column(column, first + column * layout_.rows);
    }
    painter_.restore();
  }

  // Where a booklet is folded, and cut.
  void Marks() {
    const double across = layout_.sheet.x / 4;
    const double middle = layout_.sheet.y / 2;
    for (int i = 1; i < 4; ++i) Line({i * across, 0}, {i * across, layout_.sheet.y}, Folded());
    Line({0, middle}, {across, middle}, Folded());
    Line({3 * across, middle}, {4 * across, middle}, Folded());
    Line({across, middle}, {3 * across, middle}, QPen(Qt::black, kHair * unit_));
    const QString cut = QCoreApplication::translate("Card", "cut");
    Use(kSmallestSize, false);
    Put({across + 4, middle - 2}, cut);
  }

 private:
  [[nodiscard]] QPen Folded() const { return {kFold, kHair * unit_, Qt::DashLine}; }
  void Use(double size, bool bold) { painter_.setFont(font_.Of(size, bold)); }
  void Put(CardPoint baseline, const QString& text) {
    painter_.setPen(Qt::black);
    painter_.drawText(QPointF(baseline.x * unit_, baseline.y * unit_), text);
  }
  void Line(CardPoint from, CardPoint to, const QPen& pen) {
    painter_.setPen(pen);
    painter_.drawLine(QPointF(from.x * unit_, from.y * unit_), QPointF(to.x * unit_, to.y * unit_));
  }

  // Model and page, then file and date.
  void Heading(int number) {
    const double size = layout_.size;
    const double first = Baseline(0);
    const double second = first + layout_.line;
    Use(size, true);
    Put({0, first}, font_.Showable(card_.model));
    Use(size, false);
    PutRight(first, std::to_string(number + 1) + '/' + std::to_string(layout_.pages));
    const double left = layout_.page.x / size - font_.WidthOf(card_.date) - 1;
    Put({0, second}, font_.Fitted(card_.file, left));
    PutRight(second, card_.date);
    const double rule = 2.2 * layout_.line;
    Line({0, rule}, {layout_.page.x, rule}, QPen(kRule, kHair * unit_));
  }
  // Of the line that begins there.
  [[nodiscard]] double Baseline(double top) const {
    return top + layout_.line / 2 + kBaseline * layout_.size;
  }
  void PutRight(double baseline, const std::string& text) {
    Put({layout_.page.x - font_.WidthOf(text) * layout_.size, baseline}, font_.Showable(text));
  }

  void Column(int column, int first) {
    const int rows = static_cast<int>(card_.rows.size());
    if (first >= rows) return;
    CardCells headings;
    std::copy(kCardHeadings.begin(), kCardHeadings.end(), headings.begin());
    Use(layout_.size, false);
    Row(layout_.LineAt(column, -1), headings);
    for (int line = 0; line < layout_.rows && first + line < rows; ++line) {
      const CardPoint at = layout_.LineAt(column, line);
      if (line % 2 == 0) Band(at);
      Row(at, *(card_.rows.begin() + first + line));
    }
  }
  // The eye stays in its row.
  void Band(CardPoint at) {
    const double pad = 0.2 * layout_.size;
    painter_.fillRect(QRectF((at.x - pad) * unit_, at.y * unit_,
                             (layout_.column_width + 2 * pad) * unit_, layout_.line * unit_),
                      kBand);
  }
  // Frequencies stand with their points below each other, as all have four digits behind it.
  void Row(CardPoint at, const CardCells& cells) {
    for (std::size_t i = 0; i < kCardColumns; ++i) {
      if (cells[i].empty()) continue;
      const bool right = i == 0 || i == 2;
      const double width = right ? font_.WidthOf(cells[i]) * layout_.size : layout_.width[i];
      Put({at.x + layout_.left[i] + layout_.width[i] - width, Baseline(at.y)},
          font_.Showable(cells[i]));
    }
  }

  QPainter& painter_;
  const CardContent& card_;
  const CardLayout& layout_;
  const CardFont& font_;
  double unit_;  // of the device, a point
};

}  // namespace

CardPages::CardPages(CardContent card, const CardOptions& options)
    : options_(options), card_(std::move(card)), layout_(LayOutCard(card_, options, font_)) {}

QString CardPages::Account() const {
  const auto count = [](int n, const char* one, const char* many) {
    return QCoreApplication::translate("Card", n == 1 ? one : many).arg(n);
  };
  const QString inside = options_.pocket
                             ? count(layout_.pages, "%1 page of a booklet", "%1 pages of a booklet")
                             : count(layout_.columns, "%1 column", "%1 columns");
  return QCoreApplication::translate("Card", "%1, %2, letters of %3 points")
      .arg(count(layout_.Sheets(), "%1 sheet", "%1 sheets"), inside,
           QString::number(layout_.size, 'g', 3));
}

QPageLayout CardPages::Paper() const {
  const bool a4 = options_.paper == CardPaper::kA4;
  QPageLayout paper(QPageSize(a4 ? QPageSize::A4 : QPageSize::Letter),
                    options_.pocket ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
  paper.setMode(QPageLayout::FullPageMode);
  return paper;
}

void CardPages::PaintSheet(QPainter& painter, int sheet) const {
  SheetPainter on(painter, card_, layout_, font_);
  if (layout_.panels > 1) on.Marks();
  const int first = sheet * layout_.panels;
  for (int i = 0; i < layout_.panels && first + i < layout_.pages; ++i) on.Page(first + i);
}

bool CardPages::PaintAll(QPagedPaintDevice& device) const {
  QPainter painter;
  if (!painter.begin(&device)) return false;
  for (int sheet = 0; sheet < layout_.Sheets(); ++sheet) {
    if (sheet > 0 && !device.newPage()) return false;
    PaintSheet(painter, sheet);
  }
  return painter.end();
}

}  // namespace q40
