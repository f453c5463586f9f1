// Items of a CSV text, one after the other.
//
// An item in double quotes ends at its closing quote ("" inside is one quote, line ends inside
// belong to it); what stands between the closing quote and the separator is ignored. Other items
// lose the blanks at their ends. Commas (or another separator) and line ends (CR LF, LF, CR) separate. An
// empty line gives no item, a byte-order mark at the start is skipped.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace q40 {

class CsvItems {
 public:
  explicit CsvItems(std::string_view text, char separator = ',');

  // The next item; no value at the end of the text.
  std::optional<std::string> Next();

  // Line (from 1) on which the item that Next returned last begins.
  [[nodiscard]] int Line() const { return item_line_; }
  // What stood between its closing quote and the separator.
  [[nodiscard]] const std::string& Ignored() const { return ignored_; }
  // Whether it was the last one before a line end, or of the text.
  [[nodiscard]] bool EndsLine() const { return !after_separator_; }
  // Line of an item whose closing quote is missing (it then reaches to the end); 0: none.
  [[nodiscard]] int UnclosedLine() const { return unclosed_line_; }

 private:
  char Take();
  bool SkipLineEnd();
  std::string QuotedItem();
  std::string PlainItem();

  std::string_view rest_;
  char separator_;
  std::string_view blanks_;  // around an item
  std::string ignored_;
  int line_ = 1;
  int item_line_ = 0;
  int unclosed_line_ = 0;
  bool after_separator_ = false;
};

// Appends an item in quotes, quotes inside doubled.
void AppendCsvItem(std::string& line, std::string_view item);

}  // namespace q40
