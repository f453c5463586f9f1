#include "files/csv_text.h"

#include <algorithm>
#include <iterator>

#include "base/decimal.h"

namespace q40 {
namespace {

constexpr char kQuote = '"';
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

CsvItems::CsvItems(std::string_view text, char separator)
    : rest_(text),
      separator_(separator),
      blanks_(separator == '\t' ? kBlanks.substr(0, 1) : kBlanks) {
  if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
}

char CsvItems::Take() {
  const char c = rest_.front();
  rest_.remove_prefix(1);
  if (c == '\n' || (c == '\r' && !rest_.starts_with('\n'))) ++line_;
  return c;
}

bool CsvItems::SkipLineEnd() {
  if (!rest_.starts_with('\r') && !rest_.starts_with('\n')) return false;
  if (Take() == '\r' && rest_.starts_with('\n')) Take();
  return true;
}

std::string CsvItems::QuotedItem() {
  const int first_line = line_;
  std::string item;
  Take();
  while (!rest_.empty()) {
    const char c = Take();
    if (c == kQuote && !rest_.starts_with(kQuote)) return item;
    if (c == kQuote) Take();
    item += c;
  }
  unclosed_line_ = first_line;
  return item;
}

std::string CsvItems::PlainItem() {
  const char ends[] = {separator_, '\r', '\n'};
  const std::size_t length = std::min(rest_.find_first_of({ends, std::size(ends)}), rest_.size());
  const std::string_view item = rest_.substr(0, length);
  rest_.remove_prefix(length);
  return std::string(Trimmed(item));
}

std::optional<std::string> CsvItems::Next() {
  if (!after_separator_) {
    while (SkipLineEnd()) continue;
    if (rest_.empty()) return std::nullopt;
  }
  item_line_ = line_;
  const std::size_t blanks = std::min(rest_.find_first_not_of(blanks_), rest_.size());
  const bool quoted = rest_.substr(blanks).starts_with(kQuote);
  if (quoted) rest_.remove_prefix(blanks);
  std::string item = quoted ? QuotedItem() : PlainItem();
  ignored_ = quoted ? PlainItem() : std::string();

  after_separator_ = rest_.starts_with(separator_);
  if (after_separator_) {
    Take();
  } else {
    SkipLineEnd();
  }
  return item;
}

void AppendCsvItem(std::string& line, std::string_view item) {
  line += kQuote;
  for (const char c : item) {
    if (c == kQuote) line += kQuote;
    line += c;
  }
  line += kQuote;
}

}  // namespace q40
