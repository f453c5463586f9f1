#include "card/card_layout.h"

#include <algorithm>
#include <cmath>

namespace q40 {
namespace {

constexpr CardPoint kPapers[] = {{595.276, 841.89}, {612, 792}};
constexpr double kSheetMargin = 28;
constexpr double kPanelMargin = 14;  // printers leave up to 13 at the edges
constexpr double kSizeStep = 0.25;
constexpr int kPanelsAcross = 4;
constexpr int kBookletPanels = 8;
// In sizes of the text.
constexpr double kCellGap = 0.65;
constexpr double kColumnGap = 1.4;
constexpr double kLargestGap = 4;
constexpr double kHeadingLines = 3.6;  // two of the page, the rule below them, one of the column

// Panel by page: column, row. The upper row is upside down.
struct PanelPlace {
  int column;
  int row;
};
constexpr PanelPlace kPanelPlaces[kBookletPanels] = {{0, 0}, {0, 1}, {1, 1}, {2, 1},
                                                     {3, 1}, {3, 0}, {2, 0}, {1, 0}};

CardLayout OnPaper(const CardOptions& options) {
  const CardPoint paper = kPapers[static_cast<std::size_t>(options.paper)];
  CardLayout layout;
  layout.sheet = paper;
  layout.page = {paper.x - 2 * kSheetMargin, paper.y - 2 * kSheetMargin};
  if (!options.pocket) return layout;
  layout.sheet = {paper.y, paper.x};
  layout.page = {paper.y / kPanelsAcross - 2 * kPanelMargin, paper.x / 2 - 2 * kPanelMargin};
  layout.panels = kBookletPanels;
  return layout;
}

// Of the widest texts, at a size of one point.
std::array<double, kCardColumns> CellWidths(const CardContent& card, const CardWidths& widths) {
  std::array<double, kCardColumns> result{};
  for (std::size_t i = 0; i < kCardColumns; ++i) {
    result[i] = widths.WidthOf(std::string(kCardHeadings[i]));
    for (const CardCells& row : card.rows) {
      result[i] = std::max(result[i], widths.WidthOf(row[i]));
    }
  }
  return result;
}

void SetSize(CardLayout& layout, const std::array<double, kCardColumns>& cells, double size) {
  layout.size = size;
  double x = 0;
  for (std::size_t i = 0; i < kCardColumns; ++i) {
    layout.left[i] = x;
    layout.width[i] = cells[i] * size;
    x += (cells[i] + kCellGap) * size;
  }
  layout.column_width = x - kCellGap * size;
  layout.column_step = layout.column_width + kColumnGap * size;
}

// As many columns and pages as that size makes.
void Fill(CardLayout& layout, std::size_t rows) {
  constexpr double kRounding = 1e-6;
  const double gap = layout.column_step - layout.column_width;
  layout.columns = static_cast<int>((layout.page.x + gap) / layout.column_step + kRounding);
  layout.rows = static_cast<int>(layout.page.y / (layout.size * kLineHeight) - kHeadingLines);
  if (layout.columns == 0) return;
  const int page = layout.columns * layout.rows;
  layout.pages = std::max(1, (static_cast<int>(rows) + page - 1) / page);
  // The columns share the rows, and what is left of the page as far as it looks good.
  const int places = layout.columns * layout.pages;
  layout.rows = std::max(1, (static_cast<int>(rows) + places - 1) / places);
  if (layout.columns > 1) {
    layout.column_step =
        std::min((layout.page.x - layout.column_width) / static_cast<double>(layout.columns - 1),
                 layout.column_width + kLargestGap * layout.size);
  }
}

}  // namespace

CardPanel CardLayout::PanelOf(int page_number) const {
  if (panels == 1) return {{kSheetMargin, kSheetMargin}, false};
  const PanelPlace place = kPanelPlaces[page_number % kBookletPanels];
  const bool turned = place.row == 0;
  const double wide = sheet.x / kPanelsAcross;
  const double high = sheet.y / 2;
  const CardPoint corner{place.column * wide + kPanelMargin, place.row * high + kPanelMargin};
  if (!turned) return {corner, false};
  return {{corner.x + page.x, corner.y + page.y}, true};
}

CardPoint CardLayout::LineAt(int column, int number) const {
  return {column * column_step, (kHeadingLines + number) * line};
}

CardLayout LayOutCard(const CardContent& card, const CardOptions& options,
                      const CardWidths& widths) {
  CardLayout layout = OnPaper(options);
  const auto cells = CellWidths(card, widths);
  SetSize(layout, cells, kSmallestSize);
  if (layout.column_width > layout.page.x) {
    SetSize(layout, cells, kSmallestSize * layout.page.x / layout.column_width);
  }
  Fill(layout, card.rows.size());
  const double smallest = layout.size;
  for (int step = 1; smallest + step * kSizeStep <= kLargestSize; ++step) {
    const double size = smallest + step * kSizeStep;
    CardLayout larger = layout;
    SetSize(larger, cells, size);
    Fill(larger, card.rows.size());
    if (larger.columns == 0) break;
    if (larger.Sheets() <= layout.Sheets()) layout = larger;
  }
  layout.line = std::min(kLooseLine * layout.size, layout.page.y / (layout.rows + kHeadingLines));
  return layout;
}

}  // namespace q40
