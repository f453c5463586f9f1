#include "files/channel_table.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "base/hex.h"
#include "base/plain_text.h"
#include "files/channel_csv_columns.h"
#include "files/channel_csv_notes.h"
#include "files/channel_csv_vocabulary.h"
#include "files/csv_text.h"

namespace q40 {
namespace {

constexpr std::string_view kChannelHeading = "Channel";
constexpr std::size_t kShownHeading = 40;

// ---- out

// On one line and in one column; a spreadsheet takes a word that begins with a sign for a formula.
std::string Item(const CloneImage& image, const ChannelPlace& place, Field field) {
  std::string text = CellText(image, place, field);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  if (field == Field::kShift && !text.empty() && (text.front() == '-' || text.front() == '+'))
    text.insert(0, " ");
  return text;
}

std::string Escaped(std::string_view text) {
  std::string html;
  for (const char c : text) {
    switch (c) {
      case '<': html += "&lt;"; break;
      case '>': html += "&gt;"; break;
      case '&': html += "&amp;"; break;
      default: html += c;
    }
  }
  return html;
}

// What a spreadsheet program is told of a cell, so that its language decides nothing: 145.6250 is a
// number also where it would be written 145,6250, and 023 is none.
std::string CellType(Field field, const std::string& item) {
  const bool number = !UnitOf(field).empty() && item.find('.') != std::string::npos &&
                      item.find_first_not_of("0123456789.") == std::string::npos;
  return number ? " sdval=\"" + item + R"(" sdnum="1033;")" : R"( sdnum="1033;0;@")";
}

// Every item of the table, the headings first; `take` gets no field with those and the channel's title.
template <class TakeItem, class EndRow>
void Walk(const CloneImage& image, std::span<const ChannelPlace> places,
          std::span<const Field> fields, TakeItem take, EndRow end) {
  take(std::string(kChannelHeading), true, std::nullopt);
  for (const Field field : fields) take(HeadingOf(field), true, std::nullopt);
  end();
  for (const ChannelPlace& place : places) {
    take(TitleOf(place), false, std::nullopt);
    for (const Field field : fields) take(Item(image, place, field), false, std::optional(field));
    end();
  }
}

// ---- in

std::string Letters(std::string_view text) {
  std::string letters;
  for (const char c : text.substr(0, text.find(','))) {  // behind the comma stands the unit
    const auto code = static_cast<unsigned char>(c);
    if (std::isalnum(code) != 0) letters += UpperCase(c);  // the same in Turkish
  }
  return letters;
}

std::optional<Field> FieldOf(std::string_view heading) {
  const std::string letters = Letters(heading);
  for (const ChannelField& row : kChannelFields) {
    for (const std::string_view name : {row.name, row.heading, row.csv}) {
      if (!name.empty() && Letters(name) == letters) return row.field;
    }
  }
  return std::nullopt;
}

bool SaysWhere(std::string_view heading) {
  const auto same = [&](std::string_view first) { return Letters(first) == Letters(heading); };
  return std::any_of(kFirstHeadings.begin(), kFirstHeadings.end(), same);
}

// Everything in quotes counts as one item; a line end outside ends the row.
std::vector<CopiedTable::Row> Split(std::string_view text, char separator) {
  std::vector<CopiedTable::Row> rows;
  std::string item;
  std::vector<std::string> items;
  int line = 1;
  int first_line = 1;
  bool quoted = false;
  const auto end_row = [&] {
    items.push_back(std::exchange(item, {}));
    rows.push_back({first_line, std::exchange(items, {}), false});
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\n') ++line;
    if (c == '"' && quoted && i + 1 < text.size() && text[i + 1] == '"') {
      item += text[++i];
    } else if (c == '"' && (quoted || item.empty())) {
      quoted = !quoted;
    } else if (c == separator && !quoted) {
      items.push_back(std::exchange(item, {}));
    } else if (c == '\n' && !quoted) {
      end_row();
      first_line = line;
    } else if (c != '\r' || quoted) {
      item += c;
    }
  }
  if (!item.empty() || !items.empty()) end_row();
  return rows;
}

// A decimal comma separates nothing: commas do so in a channel list alone.
char SeparatorOf(std::string_view text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  std::string head(kFirstHeadings.front());
  for (const std::string_view quote : {std::string_view(), std::string_view("\"")}) {
    head += quote;
    for (const char separator : {',', ';'}) {
      if (line.find(head + separator) != std::string_view::npos) return separator;
    }
  }
  const bool tabs = text.find('\t') != std::string_view::npos;
  return tabs || line.find(';') == std::string_view::npos ? '\t' : ';';
}

// More than half of what stands there are headings. A single row is never one, nor a single word that
// the field itself knows.
bool IsHeadings(const std::vector<CopiedTable::Row>& rows, std::span<const Field> fields) {
  if (rows.size() < 2) return false;
  int known = 0;
  int all = 0;
  for (const std::string& item : rows.front().items) {
    if (Trimmed(item).empty()) continue;
    ++all;
    if (FieldOf(item) || SaysWhere(item)) ++known;
  }
  if (all == 1 && !fields.empty() && CodeOfWord(fields.front(), rows.front().items.front()) != 0) {
    return false;
  }
  return 2 * known > all;
}

void TakeHeadings(CopiedTable& table) {
  const CopiedTable::Row head = std::move(table.rows.front());
  table.rows.erase(table.rows.begin());
  std::size_t bank = head.items.size();
  for (std::size_t i = 0; i < head.items.size(); ++i) {
    const std::string& item = head.items[i];
    auto field = FieldOf(item);
    const bool twice = field && std::find(table.columns.begin(), table.columns.end(), field) !=
                                    table.columns.end();
    if (twice) field.reset();
    table.columns.push_back(field);
    if (item == kFirstHeadings[1]) bank = i;
    if (!twice && (field || SaysWhere(item) || Trimmed(item).empty())) continue;
    table.unknown.push_back({head.line, Printable(FirstCharacters(item, kShownHeading)),
                             twice
                                 ? "a second column with this heading was passed over"
                                 : "no heading of a channel's field; the column was passed over"});
  }
  for (CopiedTable::Row& row : table.rows) {
    row.special = bank < row.items.size() && row.items[bank] != kMemoryBank;
  }
}

class Paste {
 public:
  Paste(const CopiedTable& table, bool as_stored, int model, CloneImage& image)
      : table_(table), as_stored_(as_stored), model_(model), image_(image) {
    for (const ImportNote& note : table.unknown) AddNote(report_, note);
  }

  void TakeRow(const CopiedTable::Row& row, const ChannelPlace& place) {
    row_ = &row;
    place_ = place;
    if (IsEmpty()) return Clear();
    if (as_stored_ && !row.special && place.kind == ChannelKind::kMemory) {
      PutStored();
    } else if (!TakeItems()) {
      return;
    }
    LineOf(report_, place) = row.line;
    ++(place.kind == ChannelKind::kMemory ? report_.memory_records : report_.special_records);
  }
  ImportReport Report() { return std::move(report_); }

 private:
  // Whether the row has an item for the field: it may end before the column.
  [[nodiscard]] bool Has(Field field) const { return ColumnOfItem(field) < row_->items.size(); }
  [[nodiscard]] std::size_t ColumnOfItem(Field field) const {
    const auto column = std::find(table_.columns.begin(), table_.columns.end(), field);
    const bool none = column == table_.columns.end();
    return none ? row_->items.size() : static_cast<std::size_t>(column - table_.columns.begin());
  }
  [[nodiscard]] std::string_view At(Field field) const {
    if (!Has(field)) return {};
    const std::string_view item = row_->items[ColumnOfItem(field)];
    // What a channel list says of a special channel for fields that it does not have.
    const bool none = !HasField(ChannelKind::kSpecial, field) &&
                      (row_->special || place_.kind == ChannelKind::kSpecial);
    return none && SaysNothing(field, item) ? std::string_view() : item;
  }
  [[nodiscard]] bool IsEmpty() const {
    return std::all_of(kReadingOrder.begin(), kReadingOrder.end(), [&](Field field) {
      return Trimmed(At(field)).empty() || (field == Field::kSkip && SaysNothing(field, At(field)));
    });
  }

  void Tell(std::string_view heading, std::string text) {
    AddNote(report_, {row_->line, std::string(heading), std::move(text), place_});
  }

  void Clear() {
    if (!Has(Field::kFrequency) || !InUse(image_, place_)) return;
    if (ClearRecord(image_, place_)) {
      LineOf(report_, place_) = row_->line;
    } else {
      Tell({}, "an empty row; " + NameOf(place_) + " cannot be empty and stays as it is");
    }
  }

  void PutStored() {
    constexpr auto kKind = ChannelKind::kMemory;
    ChannelRecord record;
    for (const Field field : kReadingOrder) {
      const ItemReading reading = ReadItem(field, std::string(At(field)), 0);
      record.Set(kKind, field, reading.code, reading.text);
    }
    if (record.Number(kKind, Field::kSkip) == 1) {
      record.Set(kKind, Field::kFrequency, record.Frequency(),
                 '*' + record.Text(kKind, Field::kFrequency));
    }
    PutRecord(image_, place_, std::move(record));
  }

  // The frequency goes first: it programs an empty channel, and with it comes its step, which the column
  // of the step may then change.
  bool TakeItems() {
    const bool empty = !InUse(image_, place_);
    TakeItem(Field::kFrequency);
    if (empty && !InUse(image_, place_)) {
      ++report_.passed_over_count;
      if (At(Field::kFrequency).empty()) {
        Tell({}, "passed over: the channel is empty, and begins with a frequency");
      }
      return false;
    }
    TakeItem(Field::kShiftFrequency);
    for (const Field field : kReadingOrder) {
      if (field != Field::kFrequency && field != Field::kShiftFrequency) TakeItem(field);
    }
    return true;
  }

  void TakeItem(Field field) {
    const std::string_view item = At(field);
    const bool emptied = field == Field::kName && Has(field) && HasField(place_.kind, field);
    if (Trimmed(item).empty() && !emptied) return;
    const CellResult result = SetCell(image_, model_, place_, field, item);
    if (result.refusal.empty()) return;
    Tell(HeadingOf(field), result.refusal + " Written was " + Quoted(item) + ".");
  }

  const CopiedTable& table_;
  bool as_stored_;
  int model_;
  CloneImage& image_;
  ImportReport report_;
  const CopiedTable::Row* row_ = nullptr;
  ChannelPlace place_;
};

}  // namespace

std::string TableText(const CloneImage& image, std::span<const ChannelPlace> places,
                      std::span<const Field> fields) {
  std::string text;
  Walk(
      image, places, fields,
      [&](const std::string& item, bool /*heading*/, std::optional<Field> /*field*/) {
        if (!text.empty() && text.back() != '\n') text += '\t';
        text += item;
      },
      [&] { text += '\n'; });
  return text;
}

std::string TableHtml(const CloneImage& image, std::span<const ChannelPlace> places,
                      std::span<const Field> fields) {
  std::string text = "<meta charset=\"utf-8\"><table><tr>";
  Walk(
      image, places, fields,
      [&](const std::string& item, bool heading, std::optional<Field> field) {
        const std::string tag = heading ? "th" : "td";
        text += '<' + tag + (field && !item.empty() ? CellType(*field, item) : "") + '>' +
                Escaped(item) + "</" + tag + '>';
      },
      [&] { text += "</tr>\n<tr>"; });
  text.resize(text.size() - std::string_view("<tr>").size());
  return text + "</table>";
}

CopiedTable ReadTable(std::string_view text, std::span<const Field> fields) {
  CopiedTable table;
  table.rows = Split(text, SeparatorOf(text));
  if (table.rows.empty()) return table;
  if (IsHeadings(table.rows, fields)) {
    TakeHeadings(table);
    return table;
  }
  table.columns.assign(fields.begin(), fields.end());
  for (const CopiedTable::Row& row : table.rows) {
    if (row.items.size() <= fields.size()) continue;
    const auto beyond = std::to_string(row.items.size() - fields.size());
    table.unknown.push_back(
        {row.line, {}, "passed over beyond the last column that is shown: " + beyond + " items"});
  }
  return table;
}

ImportReport PasteTable(const CopiedTable& table, bool as_stored, int model,
                        std::span<const ChannelPlace> places, CloneImage& image) {
  Paste paste(table, as_stored, model, image);
  for (std::size_t i = 0; i < table.rows.size(); ++i) paste.TakeRow(table.rows[i], places[i]);
  return paste.Report();
}

}  // namespace q40
