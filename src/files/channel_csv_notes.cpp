#include "files/channel_csv_notes.h"

#include <algorithm>

#include "base/plain_text.h"
#include "files/channel_csv_columns.h"
#include "radio/channel_fields.h"

namespace q40 {
namespace {

constexpr std::string_view kQuote = "\"";

// A byte order mark, or a text of which every other byte is 0.
bool IsUtf16(std::string_view text) {
  constexpr std::size_t kEnough = 64;
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) return true;
  const std::string_view head = text.substr(0, kEnough);
  return head.size() > 1 && 2 * std::count(head.begin(), head.end(), '\0') >=
                                static_cast<std::ptrdiff_t>(head.size()) - 1;
}

// Whether the first item of a record, or of the header, ends with the separator.
bool IsSeparatedBy(char separator, std::string_view text) {
  for (const std::string_view first : {kModelItem, kFirstHeadings.front()}) {
    for (const std::string_view end : {std::string_view(), kQuote}) {
      std::string item(first);
      item += end;
      if (text.find(item + separator) != std::string_view::npos) return true;
    }
  }
  return false;
}

}  // namespace

std::string ImportNote::Message() const {
  return "line " + std::to_string(line) + (item.empty() ? "" : ", " + item) + ": " + text;
}

bool ImportReport::Whole() const {
  return no_list.empty() && unclosed_quote_line == 0 && note_count == loss_count;
}

void ImportReport::AddLoss(const ListedChannel& channel, std::string_view field, std::string text) {
  const int line = LineOf(*this, channel);
  if (line == 0) return;
  ++loss_count;
  const auto* const column = std::find_if(kChannelFields.begin(), kChannelFields.end(),
                                          [&](const ChannelField& f) { return f.name == field; });
  const std::string_view heading = column == kChannelFields.end() ? field : column->csv;
  AddNote(*this, {line, std::string(heading), std::move(text), channel});
}

void AddNote(ImportReport& report, ImportNote note) {
  ++report.note_count;
  if (report.notes.size() >= kNotesListed) return;
  // An item may stand some lines below the head of its record.
  const auto place =
      std::upper_bound(report.notes.begin(), report.notes.end(), note.line,
                       [](int line, const ImportNote& other) { return line < other.line; });
  report.notes.insert(place, std::move(note));
}

int& LineOf(ImportReport& report, const ListedChannel& channel) {
  const auto row = static_cast<std::size_t>(channel.index);
  if (channel.kind == ChannelKind::kMemory) return report.imported[row];
  return report.imported_special[static_cast<std::size_t>(channel.band)][row];
}

std::string StoredAs(std::string_view stored, std::string_view written) {
  return "stored as " + std::string(stored) +
         (written.empty() ? "; nothing was written" : "; written was " + Quoted(written));
}

int RecordsInside(std::string_view item) {
  int count = 0;
  for (auto end = item.find_first_of("\r\n"); end != std::string_view::npos;
       end = item.find_first_of("\r\n")) {
    item.remove_prefix(end + 1);
    std::string_view line = Trimmed(item.substr(0, item.find_first_of("\r\n")));
    if (line.starts_with(kQuote)) line.remove_prefix(1);
    if (line.starts_with(kModelItem)) ++count;
  }
  return count;
}

NoList WhyNoList(std::string_view text) {
  struct Separator {
    char character;
    std::string_view name;
  };
  constexpr Separator kSeparators[] = {{';', "semicolons"}, {'\t', "tabs"}, {'|', "bars"}};
  if (IsUtf16(text)) return {"the text is UTF-16; save it as UTF-8, with commas", true};
  for (const auto& [character, name] : kSeparators) {
    if (!IsSeparatedBy(character, text)) continue;
    return {"columns are separated by " + std::string(name) + "; save the list with commas", true};
  }
  return {"no channel of an RX-Q40 in it", false};
}

}  // namespace q40
