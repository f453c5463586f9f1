#include "lists/mapping.h"

#include <algorithm>

#include "base/decimal.h"
#include "base/digits.h"
#include "base/plain_text.h"
#include "lists/list_words.h"

namespace q40 {
namespace {

constexpr std::string_view kVersionKey = "rxq40-map";
constexpr std::string_view kVersion = "1";
constexpr std::string_view kColumnKey = "column ";
constexpr std::string_view kGuessWord = "guess";

struct EncodingRow {
  ListEncoding encoding;
  std::string_view word;
};
constexpr EncodingRow kEncodings[] = {{ListEncoding::kGuess, kGuessWord},
                                      {ListEncoding::kUtf8, "utf-8"},
                                      {ListEncoding::kUtf16Le, "utf-16le"},
                                      {ListEncoding::kUtf16Be, "utf-16be"},
                                      {ListEncoding::kLatin1, "latin-1"}};
constexpr char kSeparators[] = {',', ';', '\t', '|'};

// Headings are the same but for small letters and blanks.
std::string HeadingKey(std::string_view heading) {
  std::string key;
  for (const char c : heading) {
    if (static_cast<unsigned char>(c) > ' ') key += LowerCase(c);
  }
  return key;
}

// A heading may have several lines, a line of a mapping has not.
std::string OnOneLine(std::string heading) {
  std::replace_if(
      heading.begin(), heading.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; },
      ' ');
  return std::string(Trimmed(heading));
}

std::string InQuotes(std::string_view heading) {
  std::string quoted(1, '"');
  for (const char c : heading) {
    if (c == '"') quoted += c;
    quoted += c;
  }
  return quoted + '"';
}

// A number without sign below 10 000.
std::optional<int> SmallNumber(std::string_view text) {
  constexpr std::size_t kMostDigits = 4;
  if (!AreDigits(text) || text.size() > kMostDigits) return std::nullopt;
  return static_cast<int>(LeadingNumber(text) / kNumberScale);
}

// ---- reading

class MappingReader {
 public:
  // What is wrong with the line; empty: nothing.
  std::string Take(std::string_view line) {
    line = Trimmed(line);
    if (line.empty() || line.front() == '#') return {};
    std::string heading;
    const bool by_heading = line.front() == '"';
    if (by_heading && !TakeHeading(line, heading)) return "the quote is never closed";
    const auto sign = line.find('=');
    if (sign == std::string_view::npos) return "there is no \"=\" in " + Quoted(line);
    const std::string_view key = Trimmed(line.substr(0, sign));
    const std::string_view value = Trimmed(line.substr(sign + 1));
    if (by_heading && !key.empty()) return Quoted(key) + " stands behind the heading";
    if (!by_heading && key == kVersionKey) return Version(value);
    if (!versioned_) return "the first line is not \"rxq40-map = 1\"";
    if (by_heading) return heading.empty() ? "an empty heading" : Column({heading, 0, {}}, value);
    if (key.starts_with(kColumnKey)) return NumberedColumn(key, value);
    return Form(key, value);
  }
  [[nodiscard]] bool IsVersioned() const { return versioned_; }
  KeptMapping Kept() { return std::move(kept_); }

 private:
  // "" in the heading is a quote.
  static bool TakeHeading(std::string_view& line, std::string& heading) {
    for (std::size_t i = 1; i < line.size(); ++i) {
      if (line[i] == '"' && (i + 1 == line.size() || line[i + 1] != '"')) {
        line.remove_prefix(i + 1);
        heading = Trimmed(heading);
        return true;
      }
      if (line[i] == '"') ++i;
      heading += line[i];
    }
    return false;
  }

  std::string Version(std::string_view value) {
    if (versioned_) return "rxq40-map stands twice";
    if (value != kVersion) return "version " + Quoted(value) + " is not known; 1 is";
    versioned_ = true;
    return {};
  }

  std::string NumberedColumn(std::string_view key, std::string_view value) {
    const std::string_view digits = Trimmed(key.substr(kColumnKey.size()));
    const auto number = SmallNumber(digits);
    if (!number || *number < 1 || *number > static_cast<int>(kMostListColumns)) {
      return Quoted(digits) + " is no column: 1 to " + std::to_string(kMostListColumns);
    }
    return Column({{}, *number, {}}, value);
  }

  std::string Column(KeptMapping::Entry entry, std::string_view value) {
    const auto meaning = MeaningNamed(value);
    if (!meaning) return Quoted(value) + " is no meaning of a column";
    entry.meaning = *meaning;
    for (const KeptMapping::Entry& other : kept_.entries) {
      const bool same_column =
          other.column == entry.column && HeadingKey(other.heading) == HeadingKey(entry.heading);
      if (same_column) return "the column stands twice";
      if (*meaning != Meaning::kIgnored && other.meaning == *meaning) {
        return "two columns are " + Quoted(value);
      }
    }
    kept_.entries.push_back(std::move(entry));
    return {};
  }

  std::string Form(std::string_view key, std::string_view value) {
    if (std::find(keys_.begin(), keys_.end(), key) != keys_.end()) {
      return std::string(key) + " stands twice";
    }
    keys_.emplace_back(key);
    bool known = false;
    if (key == "separator") {
      known = Separator(value);
    } else if (key == "encoding") {
      known = Encoding(value);
    } else if (key == "headings") {
      known = Headings(value);
    } else {
      return Quoted(key) + " is not known";
    }
    return known ? std::string() : Quoted(value) + " is no " + std::string(key);
  }

  bool Separator(std::string_view value) {
    const auto* const found = std::find_if(std::begin(kSeparators), std::end(kSeparators),
                                           [&](char s) { return SeparatorText(s) == value; });
    if (found != std::end(kSeparators)) kept_.form.separator = *found;
    return found != std::end(kSeparators) || value == kGuessWord;
  }

  bool Encoding(std::string_view value) {
    const auto* const row = std::find_if(std::begin(kEncodings), std::end(kEncodings),
                                         [&](const EncodingRow& r) { return r.word == value; });
    if (row == std::end(kEncodings)) return false;
    kept_.form.encoding = row->encoding;
    return true;
  }

  bool Headings(std::string_view value) {
    if (value == kGuessWord) return true;
    const auto row = value == "none" ? std::optional(0) : SmallNumber(value);
    if (!row || (*row == 0 && value != "none")) return false;
    kept_.form.heading_row = *row;
    return true;
  }

  KeptMapping kept_;
  bool versioned_ = false;
  std::vector<std::string> keys_;
};

}  // namespace

std::optional<Meaning> MeaningNamed(std::string_view name) {
  const auto* const row = std::find_if(kMeanings.begin(), kMeanings.end(),
                                       [&](const MeaningRow& r) { return r.name == name; });
  return row == kMeanings.end() ? std::nullopt : std::optional(row->meaning);
}

std::string WhyNotUsable(const ColumnMeanings& meanings) {
  for (const MeaningRow& row : kMeanings) {
    if (row.meaning == Meaning::kIgnored) continue;
    const auto count = std::count(meanings.begin(), meanings.end(), row.meaning);
    if (count > 1) return "two columns are \"" + std::string(row.words) + '"';
    if (count == 0 && row.meaning == Meaning::kOutput) {
      return "no column is the output frequency, on which the radio receives";
    }
  }
  return {};
}

// ---- keeping

KeptMapping KeptOf(const ForeignList& list, const ColumnMeanings& meanings) {
  constexpr std::size_t kLongestHeading = 200;
  KeptMapping kept{list.asked, {}};
  for (std::size_t c = 0; c < std::min(meanings.size(), list.Columns()); ++c) {
    if (meanings[c] == Meaning::kIgnored) continue;
    const std::string key = HeadingKey(list.headings[c]);
    const auto alike = std::count_if(list.headings.begin(), list.headings.end(),
                                     [&](auto& heading) { return HeadingKey(heading) == key; });
    const bool by_heading = !key.empty() && key.size() <= kLongestHeading && alike == 1;
    kept.entries.push_back({by_heading ? OnOneLine(list.headings[c]) : std::string(),
                            by_heading ? 0 : static_cast<int>(c) + 1, meanings[c]});
  }
  return kept;
}

ColumnMeanings MeaningsFor(const ForeignList& list, const KeptMapping& kept,
                           std::vector<std::string>& missing) {
  ColumnMeanings meanings(list.Columns(), Meaning::kIgnored);
  for (const KeptMapping::Entry& entry : kept.entries) {
    std::size_t column = static_cast<std::size_t>(entry.column) - 1;
    if (!entry.heading.empty()) {
      const std::string key = HeadingKey(entry.heading);
      column = static_cast<std::size_t>(
          std::find_if(list.headings.begin(), list.headings.end(),
                       [&](auto& heading) { return HeadingKey(heading) == key; }) -
          list.headings.begin());
    }
    if (column < meanings.size()) {
      meanings[column] = entry.meaning;
    } else if (!entry.heading.empty()) {
      missing.push_back("no column has the heading " + Quoted(entry.heading));
    } else {
      missing.push_back("there is no column " + std::to_string(entry.column));
    }
  }
  return meanings;
}

std::string MappingText(const KeptMapping& kept) {
  const auto line = [](std::string_view key, std::string_view value) {
    return std::string(key) + " = " + std::string(value) + '\n';
  };
  std::string text = line(kVersionKey, kVersion);
  const ListForm& form = kept.form;
  const auto* const encoding =
      std::find_if(std::begin(kEncodings), std::end(kEncodings),
                   [&](const EncodingRow& r) { return r.encoding == form.encoding; });
  text += line("encoding", encoding->word);
  text += line("separator", form.separator == '\0' ? kGuessWord : SeparatorText(form.separator));
  const int row = form.heading_row;
  text += line("headings", row < 0    ? std::string(kGuessWord)
                           : row == 0 ? "none"
                                      : std::to_string(row));
  for (const KeptMapping::Entry& entry : kept.entries) {
    const std::string key = entry.heading.empty()
                                ? std::string(kColumnKey) + std::to_string(entry.column)
                                : InQuotes(entry.heading);
    text += line(key, RowOf(entry.meaning).name);
  }
  return text;
}

std::optional<FileProblem> ReadMapping(std::string_view text, const std::string& name,
                                       KeptMapping& kept) {
  FileProblem problem{FileProblem::Kind::kBadData, name, 0, {}};
  if (text.size() > kLongestMapping) {
    problem.what = "a mapping of more than " + std::to_string(kLongestMapping) + " bytes";
    return problem;
  }
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  MappingReader reader;
  while (!text.empty()) {
    ++problem.line;
    const std::size_t length = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, length);
    if (line.ends_with('\r')) line.remove_suffix(1);
    problem.what = reader.Take(line);
    if (!problem.what.empty()) return problem;
    text.remove_prefix(std::min(length + 1, text.size()));
  }
  if (!reader.IsVersioned()) {
    problem.line = 0;
    problem.what = "no mapping: the line \"rxq40-map = 1\" is missing";
    return problem;
  }
  kept = reader.Kept();
  return std::nullopt;
}

}  // namespace q40
