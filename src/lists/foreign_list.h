// A list of channels or repeaters as others write it: bytes taken apart into rows of texts.
//
// What separates the columns, how the characters are stored and where the headings stand differs from
// list to list; all of it is guessed, and each guess can be overruled.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_problem.h"

namespace q40 {

enum class ListEncoding : unsigned char { kGuess, kUtf8, kUtf16Le, kUtf16Be, kLatin1 };

// How a list is to be read.
struct ListForm {
  ListEncoding encoding = ListEncoding::kGuess;
  char separator = '\0';  // ',', ';', '\t' or '|'; '\0': guessed
  // The row that holds the headings, counted from 1 among the rows that are not empty; 0: there is
  // none. What stands above it is passed over.
  int heading_row = kGuessHeading;
  static constexpr int kGuessHeading = -1;

  bool operator==(const ListForm&) const = default;
};

struct ListRow {
  int line = 0;  // on which it begins, from 1, as editors count
  // Without blanks at the ends; UTF-8. May be fewer or more than there are columns.
  std::vector<std::string> items;
};

struct ForeignList {
  ListForm asked;  // how it was to be read
  ListForm form;   // how it was read: nothing in it is a guess any more
  // As many as the list has columns (the longest row counts); a column without a heading has "".
  std::vector<std::string> headings;
  int heading_line = 0;       // on which they begin; 0: there are none
  std::vector<ListRow> rows;  // without the headings and what stands above them

  [[nodiscard]] std::size_t Columns() const { return headings.size(); }
  // The item of a row in a column; empty where the row ends before it.
  [[nodiscard]] static std::string_view Item(const ListRow& row, std::size_t column) {
    return column < row.items.size() ? std::string_view(row.items[column]) : std::string_view();
  }
};

// Limits. A list beyond one of them is refused with words, never read in part.
inline constexpr std::size_t kLongestList = 16U << 20U;  // bytes; ask for one more when reading
inline constexpr std::size_t kMostListRows = 10'000;
inline constexpr std::size_t kMostListColumns = 100;
inline constexpr std::size_t kLongestListItem = 1000;  // bytes of UTF-8

// Takes a list apart. `name` is what messages call it. On a problem (too long, control characters, no
// row, an open quote, a limit) `list` stays as it was. Items are quoted as in CSV; lines end with CR LF,
// LF or CR; empty rows are passed over.
[[nodiscard]] std::optional<FileProblem> ReadForeignList(std::string_view bytes,
                                                         const std::string& name,
                                                         const ListForm& form, ForeignList& list);

// Whether it is a channel list as this program writes it, which ImportChannels takes back whole: here its special
// channels would become memory channels.
bool IsOwnList(const ForeignList& list);

// "comma", "UTF-16, little-endian": for people.
std::string_view SeparatorText(char separator);
std::string_view EncodingText(ListEncoding encoding);

}  // namespace q40
