// Number and widths of the columns of the two channel grids. Their headings: radio/channel_fields.h.
#pragma once

#include <array>

namespace q40 {

inline constexpr int kTwipsPerInch = 1440;

inline constexpr int kMemoryGridColumns = 19;  // the column of row titles included
inline constexpr int kSpecialGridColumns = 18;

// Width of grid column 0..18 in twips, the row-title column included. 0 for any other column.
constexpr int ColumnWidthTwips(int column) {
  constexpr std::array<int, 8> kWidth = {450, 495, 500, 690, 705, 795, 870, 585};
  // Class of grid columns 0..17. Column 0 is the row title, so "Frequency" has class 6.
  constexpr std::array<std::size_t, 18> kClass = {2, 6, 4, 0, 3, 3, 7, 7, 1,
                                                  5, 2, 0, 0, 0, 0, 2, 2, 4};
  constexpr int kNameWidth = 850;
  if (column < 0 || column > static_cast<int>(kClass.size())) return 0;
  return column < static_cast<int>(kClass.size()) ? kWidth[kClass[static_cast<std::size_t>(column)]]
                                                  : kNameWidth;
}

}  // namespace q40
