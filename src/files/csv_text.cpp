#include "files/csv_text.h"

#include <algorithm>

#include "base/decimal.h"

namespace q40 {
namespace {

constexpr char kQuote = '"';
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kEndsOfItem = ",\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

CsvItems::CsvItems(std::string_view text) : rest_(text) {
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
  const std::size_t length = std::min(rest_.find_first_of(kEndsOfItem), rest_.size());
  const std::string_view item = rest_.substr(0, length);
  rest_.remove_prefix(length);
  return std::string(Trimmed(item));
}

std::optional<std::string> CsvItems::Next() {
  if (!after_comma_) {
    while (SkipLineEnd()) continue;
    if (rest_.empty()) return std::nullopt;
  }
  item_line_ = line_;
  const std::size_t blanks = std::min(rest_.find_first_not_of(kBlanks), rest_.size());
  const bool quoted = rest_.substr(blanks).starts_with(kQuote);
  if (quoted) rest_.remove_prefix(blanks);
  std::string item = quoted ? QuotedItem() : PlainItem();
  ignored_ = quoted ? PlainItem() : std::string();

  after_comma_ = rest_.starts_with(',');
  if (after_comma_) {
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
