// Where the rows of a card stand on the paper. Lengths are points, 1/72 inch; x goes right, y down.
//
// A page has its heading, and below it columns of rows, filled one after the other. A page is a whole
// sheet within its margins, or one of eight panels of a sheet that is folded three times and cut once,
// so that it becomes a booklet:
//
//     | 1 | 8 | 7 | 6 |     upside down
//     |---+=======+---|     = the cut, - and | the folds
//     | 2 | 3 | 4 | 5 |
#pragma once

#include <array>
#include <cstdint>

#include "card/card_content.h"

namespace q40 {

enum class CardPaper : std::uint8_t { kA4, kLetter };

struct CardOptions {
  CardPaper paper = CardPaper::kA4;
  bool pocket = false;  // folded
  bool special = false;
};

struct CardPoint {
  double x = 0;
  double y = 0;
};

// Widths of texts at a size of one point. They grow with the size.
class CardWidths {
 public:
  CardWidths() = default;
  virtual ~CardWidths() = default;
  CardWidths(const CardWidths&) = delete;
  CardWidths& operator=(const CardWidths&) = delete;
  [[nodiscard]] virtual double WidthOf(const std::string& text) const = 0;
};

// The smallest size that is read without effort, and one that is large enough for anybody.
inline constexpr double kSmallestSize = 7;
inline constexpr double kLargestSize = 10;
// Of a line, times the size: at least, and where there is room.
inline constexpr double kLineHeight = 1.2;
inline constexpr double kLooseLine = 1.5;

struct CardPanel {
  CardPoint at{};       // where its upper left corner is, or, turned, its lower right one
  bool turned = false;  // upside down
};

struct CardLayout {
  CardPoint sheet{};                        // width and height; in a booklet, it lies on its side
  CardPoint page{};                         // of what may be printed on
  double size = 0;                          // of the text
  double line = 0;                          // height of a line
  std::array<double, kCardColumns> left{};  // of the cells, from the left of a column of rows
  std::array<double, kCardColumns> width{};
  double column_width = 0;
  double column_step = 0;  // from one column of rows to the next
  int columns = 0;         // of rows, a page
  int rows = 0;            // a column, at most
  int pages = 0;
  int panels = 1;  // pages a sheet

  [[nodiscard]] int Sheets() const { return (pages + panels - 1) / panels; }
  [[nodiscard]] CardPanel PanelOf(int page_number) const;  // from 0
  // Of the line with a row, on its page. `number` -1: that of the headings of a column.
  [[nodiscard]] CardPoint LineAt(int column, int number) const;
};

// On as few sheets as the smallest size takes, in the largest size that takes no more of them. Texts
// so wide that no column fits are set smaller than that. A card without rows has one page.
CardLayout LayOutCard(const CardContent& card, const CardOptions& options,
                      const CardWidths& widths);

}  // namespace q40
