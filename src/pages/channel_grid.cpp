#include "pages/channel_grid.h"

#include <algorithm>

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStyleOption>
#include <QToolTip>

#include "pages/grid_columns.h"
#include "widgets/change_mark.h"
#include "widgets/readable_style.h"

namespace q40 {
namespace {

constexpr int kPixelsPerInch = 96;
constexpr int kCellPixels = 11;      // height of the cell font beside a normal interface font
constexpr int kNormalPixels = 12;    // of the interface font: 9 point at 96 dpi
constexpr double kCellWidth = 0.45;  // of its height: six characters fit a column of 495 twips
constexpr int kHeadingMargin = 4;    // left and right of a heading together
constexpr int kRowMargin = 6;        // above and below a text together

int Pixels(int twips) { return (twips * kPixelsPerInch + kTwipsPerInch / 2) / kTwipsPerInch; }

// The columns are as narrow as the texts allow; so are the margins.
class NarrowStyle final : public QProxyStyle {
 public:
  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                const QWidget* widget) const override {
    if (metric == PM_FocusFrameHMargin) return 0;
    if (metric == PM_HeaderMargin) return 1;
    // Where rows could be dragged higher, if they could, a click would be lost.
    const auto* header = qobject_cast<const QHeaderView*>(widget);
    const bool rows = header != nullptr && header->orientation() == Qt::Vertical;
    if (metric == PM_HeaderGripMargin && rows) return 0;
    return QProxyStyle::pixelMetric(metric, option, widget);
  }
  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* data) const override {
    const int usual = QProxyStyle::styleHint(hint, option, widget, data);
    return hint == SH_Table_GridLineColor ? ReadableGridLine(option, usual) : usual;
  }
};

// Of the buttons only the left one opens a row.
class RowTitles final : public QHeaderView {
 public:
  explicit RowTitles(QWidget* parent) : QHeaderView(Qt::Vertical, parent) {
    setSectionsClickable(true);
    setHighlightSections(true);
    setSectionResizeMode(QHeaderView::Fixed);
    setDefaultAlignment(Qt::AlignCenter);
  }

 protected:
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) QHeaderView::mouseDoubleClickEvent(event);
  }
  void paintSection(QPainter* painter, const QRect& rect, int row) const override {
    painter->save();  // the style leaves a clip behind that lets nothing through
    QHeaderView::paintSection(painter, rect, row);
    painter->restore();
    if (!model()->headerData(row, Qt::Vertical, ChannelGridModel::kMarkRole).toBool()) return;
    ChangeMark::Paint(*painter, rect, palette(), ChangeMark::Size(fontMetrics()));
  }
};

// How much larger than usual the user has made the interface font.
double FontScale(const QFont& font) {
  return std::max(1.0, QFontInfo(font).pixelSize() / static_cast<double>(kNormalPixels));
}

}  // namespace

ChannelGrid::ChannelGrid(ChannelKind kind, const CloneImage& image, QWidget* parent)
    : QTableView(parent), model_(new ChannelGridModel(kind, image, this)) {
  setModel(model_);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setVerticalHeader(new RowTitles(this));
  auto* narrow = new NarrowStyle;
  narrow->setParent(this);
  for (QWidget* part : {static_cast<QWidget*>(this), static_cast<QWidget*>(horizontalHeader()),
                        static_cast<QWidget*>(verticalHeader())}) {
    part->setStyle(narrow);
  }
  setHorizontalScrollMode(ScrollPerPixel);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setMinimumSectionSize(1);
  connect(this, &QTableView::doubleClicked,
          [this](const QModelIndex& index) { Open(index.row()); });
  connect(verticalHeader(), &QHeaderView::sectionDoubleClicked, this, &ChannelGrid::Open);
  ChangeFont();
  SelectRow(1);
}

void ChannelGrid::SelectRow(int row) {
  const QModelIndex index = model_->index(row - 1, 0);
  setCurrentIndex(index);
  selectRow(row - 1);
  scrollTo(index, EnsureVisible);
}

// The next command is for the row that the dialog edits.
void ChannelGrid::Open(int index) {
  SelectRow(index + 1);
  emit openRequested(CurrentRow());
}

void ChannelGrid::scrollTo(const QModelIndex& index, ScrollHint hint) {
  const int sideways = horizontalScrollBar()->value();
  QTableView::scrollTo(index, hint);
  horizontalScrollBar()->setValue(sideways);
}

// A selection is one whole row, and its current cell the first.
void ChannelGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (!current.isValid()) return;
  if (current.column() != 0) {
    selectionModel()->setCurrentIndex(model_->index(current.row(), 0),
                                      QItemSelectionModel::NoUpdate);
  }
  if (current.row() != previous.row()) emit rowChanged(current.row() + 1);
}

void ChannelGrid::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter) return QTableView::keyPressEvent(event);
  emit openRequested(CurrentRow());
}

// The style marks one cell of a row that is marked as a whole. Insert and Delete go to the grid that has
// the focus, so that must be seen.
void ChannelGrid::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (!hasFocus()) return;
  constexpr int kWidth = 2;
  constexpr int kLeftWidth = 1;  // the texts of the first column begin right after it
  const QRect all = viewport()->rect();
  const QRegion inside = all.adjusted(kLeftWidth, kWidth, -kWidth, -kWidth);
  QPainter painter(viewport());
  painter.setClipRegion(QRegion(all) - inside);
  painter.fillRect(all, palette().color(QPalette::Highlight));
}

// Moves what is painted, and with it a frame that is to stay.
void ChannelGrid::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  if (hasFocus()) viewport()->update();
}

// Even beside the cells: it opens the current row.
void ChannelGrid::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (indexAt(event->position().toPoint()).isValid()) {
    return QTableView::mouseDoubleClickEvent(event);
  }
  emit openRequested(CurrentRow());
}

// A text that its column cuts off can be read in a tool tip, after whatever the cell has to say
// about its heading.
bool ChannelGrid::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
  const auto& help = static_cast<QHelpEvent&>(*event);
  const QModelIndex cell = indexAt(help.pos());
  QStringList tip = {cell.data(Qt::ToolTipRole).toString()};
  if (cell.isValid() && sizeHintForIndex(cell).width() > columnWidth(cell.column())) {
    tip << cell.data().toString();
  }
  tip.removeAll(QString());
  QToolTip::showText(help.globalPos(), tip.join(QStringLiteral(": ")), viewport(),
                     visualRect(cell));
  return true;
}

// Exactly one row is selected, whatever keys are held; a click beside the cells changes nothing.
QItemSelectionModel::SelectionFlags ChannelGrid::selectionCommand(const QModelIndex& index,
                                                                  const QEvent* /*event*/) const {
  if (!index.isValid()) return QItemSelectionModel::NoUpdate;
  return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

void ChannelGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange && model_ != nullptr) ChangeFont();
}

void ChannelGrid::ChangeFont() {
  const double scale = FontScale(QApplication::font());
  QFont cells;
  cells.setFamilies({QStringLiteral("ＭＳ ゴシック"), QStringLiteral("MS Gothic"),
                     QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
  cells.setStyleHint(QFont::Monospace);
  cells.setPixelSize(static_cast<int>(kCellPixels * scale));
  const double natural = QFontMetricsF(cells).horizontalAdvance(QLatin1Char('0'));
  const double wanted = kCellWidth * cells.pixelSize();
  if (natural > wanted) cells.setStretch(static_cast<int>(100 * wanted / natural));
  model_->SetCellFont(cells);
  ApplyWidths(scale);
}

// The stated widths at first; later what the user has made of them.
void ChannelGrid::ApplyWidths(double scale) {
  const auto width = [&](int column) {
    return static_cast<int>(Pixels(ColumnWidthTwips(column)) * scale);
  };
  verticalHeader()->setFixedWidth(width(0));
  for (int column = 0; scale != scale_ && column < model_->columnCount(); ++column) {
    setColumnWidth(column, scale_ == 0 ? width(column + 1)
                                       : static_cast<int>(columnWidth(column) * scale / scale_));
  }
  scale_ = scale;
  FitHeadings(scale);
  const int height = QFontMetrics(model_->cell_font()).height() + kRowMargin;
  verticalHeader()->setMinimumSectionSize(height);
  verticalHeader()->setDefaultSectionSize(height);
}

// Condenses the headings until the tightest of them fits its column.
void ChannelGrid::FitHeadings(double scale) {
  QFont font = QApplication::font();
  font.setPixelSize(static_cast<int>(kCellPixels * scale));
  const QFontMetricsF metrics(font);
  double fit = 1;
  for (int column = 0; column < model_->columnCount(); ++column) {
    const QString heading = model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    fit =
        std::min(fit, (columnWidth(column) - kHeadingMargin) / metrics.horizontalAdvance(heading));
  }
  font.setStretch(static_cast<int>(100 * fit));
  horizontalHeader()->setFont(font);
  verticalHeader()->setFont(font);
}

}  // namespace q40
