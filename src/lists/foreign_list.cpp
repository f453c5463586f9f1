#include "lists/foreign_list.h"

#include <algorithm>
#include <array>

#include "base/decimal.h"
#include "base/digits.h"
#include "base/plain_text.h"
#include "files/channel_csv_columns.h"
#include "files/csv_text.h"
#include "lists/heading_words.h"
#include "lists/list_numbers.h"
#include "lists/list_text.h"

namespace q40 {
namespace {

struct SeparatorRow {
  char separator;
  std::string_view text;
};
// A comma may also begin decimals, so that it comes last where several could separate.
constexpr SeparatorRow kSeparators[] = {
    {'\t', "tab"}, {';', "semicolon"}, {'|', "bar"}, {',', "comma"}};
// So many rows are looked at for separators and headings.
constexpr std::size_t kLookedAt = 20;

// ---- rows

class Rows {
 public:
  Rows(std::string_view text, char separator) : items_(text, separator) {}

  // Up to so many rows that are not empty; one more when there are more. What is wrong: `problem`.
  std::vector<ListRow> Take(std::size_t most, FileProblem& problem) {
    std::vector<ListRow> rows;
    ListRow row;
    while (rows.size() <= most && problem.what.empty()) {
      auto item = items_.Next();
      if (!item) break;
      if (row.items.empty()) row.line = items_.Line();
      Add(std::move(*item), row, problem);
      if (!items_.EndsLine()) continue;
      if (!IsEmpty(row)) rows.push_back(std::move(row));
      row = {};
    }
    if (!IsEmpty(row)) rows.push_back(std::move(row));
    return rows;
  }

 private:
  static bool IsEmpty(const ListRow& row) {
    return std::all_of(row.items.begin(), row.items.end(),
                       [](const std::string& item) { return item.empty(); });
  }

  void Add(std::string item, ListRow& row, FileProblem& problem) {
    if (!items_.Ignored().empty()) item += ' ' + items_.Ignored();
    row.items.emplace_back(Trimmed(item));
    if (items_.UnclosedLine() != 0) {
      problem.line = items_.UnclosedLine();
      problem.what = "the quote that begins here is never closed";
    } else if (item.size() > kLongestListItem) {
      problem.line = items_.Line();
      problem.what = "an item is longer than " + std::to_string(kLongestListItem) + " bytes";
    } else if (row.items.size() > kMostListColumns) {
      problem.line = row.line;
      problem.what = "more than " + std::to_string(kMostListColumns) + " columns";
    }
  }

  CsvItems items_;
};

// ---- guesses

char GuessSeparator(std::string_view text) {
  char best = ',';
  std::size_t most = 0;
  for (const SeparatorRow& candidate : kSeparators) {
    FileProblem problem;
    const auto rows = Rows(text, candidate.separator).Take(kLookedAt, problem);
    std::array<std::size_t, kMostListColumns + 2> with{};  // rows with so many columns
    for (const ListRow& row : rows) ++with.at(row.items.size());
    const std::size_t alike = *std::max_element(with.begin() + 2, with.end());
    if (alike <= most) continue;
    most = alike;
    best = candidate.separator;
  }
  return best;
}

// A number that no heading is: with decimals, or of many digits.
bool IsDatum(const std::string& item) {
  constexpr std::size_t kManyDigits = 5;
  if (!NumberIn(item)) return false;
  const auto digits = std::count_if(item.begin(), item.end(), IsDigit);
  return item.find_first_of(".,") != std::string::npos ||
         static_cast<std::size_t>(digits) >= kManyDigits;
}

std::ptrdiff_t KnownHeadings(const ListRow& row) {
  return std::count_if(row.items.begin(), row.items.end(),
                       [](const std::string& item) { return !MeaningsOfHeading(item).empty(); });
}

// Of the rows above the first one with numbers the one with the most known words, of several the last.
int GuessHeadingRow(const std::vector<ListRow>& rows) {
  const auto end = rows.begin() + static_cast<std::ptrdiff_t>(std::min(rows.size(), kLookedAt));
  const auto first = std::find_if(rows.begin(), end, [](const ListRow& row) {
    return std::any_of(row.items.begin(), row.items.end(), IsDatum);
  });
  auto best = first;
  for (auto row = rows.begin(); row != first; ++row) {
    if (best == first || KnownHeadings(*row) >= KnownHeadings(*best)) best = row;
  }
  if (best == first || (first == end && KnownHeadings(*best) == 0)) return 0;
  return static_cast<int>(best - rows.begin()) + 1;
}

// ---- the whole

int LineOfControl(std::string_view text) {
  constexpr char kDelete = 0x7F;
  int line = 1;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\n' || (c == '\r' && text.substr(i + 1, 1) != "\n")) ++line;
    const bool control = static_cast<unsigned char>(c) < ' ' || c == kDelete;
    if (control && c != '\n' && c != '\r' && c != '\t') return line;
  }
  return 0;
}

void TakeHeadings(ForeignList& list) {
  std::size_t columns = 0;
  for (const ListRow& row : list.rows) columns = std::max(columns, row.items.size());
  const auto above =
      std::min(static_cast<std::size_t>(std::max(list.form.heading_row, 0)), list.rows.size());
  list.form.heading_row = static_cast<int>(above);
  if (above > 0) {
    list.headings = std::move(list.rows[above - 1].items);
    list.heading_line = list.rows[above - 1].line;
  }
  list.headings.resize(columns);
  list.rows.erase(list.rows.begin(), list.rows.begin() + static_cast<std::ptrdiff_t>(above));
}

}  // namespace

std::optional<FileProblem> ReadForeignList(std::string_view bytes, const std::string& name,
                                           const ListForm& form, ForeignList& list) {
  FileProblem problem{FileProblem::Kind::kBadData, name, 0, {}};
  const auto refuse = [&](int line, std::string what) {
    problem.line = line;
    problem.what = std::move(what);
    return problem;
  };
  if (bytes.size() > kLongestList) return refuse(0, "a list of more than 16 MiB");
  const ListText decoded = DecodeList(bytes, form.encoding);
  if (const int line = LineOfControl(decoded.text)) {
    return refuse(line, "control characters; this is no list");
  }
  ForeignList read{form, form, {}, 0, {}};
  read.form.encoding = decoded.encoding;
  if (form.separator == '\0') read.form.separator = GuessSeparator(decoded.text);
  read.rows = Rows(decoded.text, read.form.separator).Take(kMostListRows, problem);
  if (!problem.what.empty()) return problem;
  if (read.rows.size() > kMostListRows) {
    return refuse(read.rows.back().line, "more than " + std::to_string(kMostListRows) + " rows");
  }
  if (read.rows.empty()) return refuse(0, "there is nothing in the list");
  if (form.heading_row < 0) read.form.heading_row = GuessHeadingRow(read.rows);
  TakeHeadings(read);
  list = std::move(read);
  return std::nullopt;
}

bool IsOwnList(const ForeignList& list) {
  return list.Columns() > kFirstHeadings.size() &&
         std::equal(kFirstHeadings.begin(), kFirstHeadings.end(), list.headings.begin());
}

std::string_view SeparatorText(char separator) {
  const auto* const row =
      std::find_if(std::begin(kSeparators), std::end(kSeparators),
                   [&](const SeparatorRow& r) { return r.separator == separator; });
  return row == std::end(kSeparators) ? std::string_view() : row->text;
}

std::string_view EncodingText(ListEncoding encoding) {
  switch (encoding) {
    case ListEncoding::kUtf8: return "UTF-8";
    case ListEncoding::kUtf16Le: return "UTF-16, little-endian";
    case ListEncoding::kUtf16Be: return "UTF-16, big-endian";
    case ListEncoding::kLatin1: return "Latin-1";
    default: return {};
  }
}

}  // namespace q40
