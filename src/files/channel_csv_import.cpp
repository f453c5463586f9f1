// The records of a channel list, taken into the image one after the other.
#include <algorithm>
#include <bitset>

#include "base/digits.h"
#include "base/plain_text.h"
#include "files/channel_csv_columns.h"
#include "files/channel_csv_notes.h"
#include "files/channel_csv_vocabulary.h"
#include "files/csv_text.h"

namespace q40 {
namespace {

// The items after the channel, with their lines.
struct Items {
  std::array<std::string, kCsvOrder.size()> text;
  std::array<int, kCsvOrder.size()> line{};
};
using Columns = std::bitset<kCsvOrder.size()>;

// Takes the items into a record. The columns whose item is not what the record holds now.
Columns TakeItems(const Items& items, ChannelKind kind, bool repeater_row, ChannelRecord& record) {
  Columns doubtful;
  for (std::size_t i = 0; i < kCsvOrder.size(); ++i) {
    const Field field = kCsvOrder[i];
    const std::string& item = items.text[i];
    if (!HasField(kind, field)) {
      doubtful[i] = !SaysNothing(field, item);
      continue;
    }
    if (repeater_row && item.empty() && !CarriedInRepeaterRow(field)) continue;
    const ItemReading reading = ReadItem(field, item, record.Number(kind, field));
    doubtful[i] = !reading.as_written;
    record.Set(kind, field, reading.code, reading.text);
  }
  return doubtful;
}

std::string DoubtText(Field field, std::string_view item, ChannelKind kind,
                      const ChannelRecord& record) {
  if (!HasField(kind, field)) return "a special channel has none; written was " + Quoted(item);
  if (field == Field::kSkip) return StoredAs(record.Number(kind, field) == 1 ? "On" : "Off", item);
  const std::string& text = record.Text(kind, field);
  return StoredAs(field == Field::kName ? Quoted(text) : text, item);
}

// The number of a memory channel, 0..209. "D7" is 207: only the last character counts. A number may
// have the star of a skipped channel before it and a fraction of zeros after it, nothing else.
std::optional<int> MemoryChannelOf(std::string_view item) {
  item = Trimmed(WithoutStar(Trimmed(item)));
  if (item.starts_with('D')) {
    if (!IsDigit(item.back())) return std::nullopt;
    return kFirstDChannel + (item.back() - '0');
  }
  const std::size_t point = std::min(item.find('.'), item.size());
  const std::string_view whole = item.substr(0, point);
  const std::string_view fraction = item.substr(std::min(point + 1, item.size()));
  if (!AreDigits(whole) || fraction.find_first_not_of('0') != std::string_view::npos) {
    return std::nullopt;
  }
  const auto number = LeadingNumber(whole) / kNumberScale;
  if (number >= kMemoryChannelCount) return std::nullopt;
  return static_cast<int>(number);
}

std::optional<ListedChannel> ChannelOf(std::string_view bank, std::string_view channel) {
  if (bank == kMemoryBank) {
    const auto n = MemoryChannelOf(channel);
    if (!n) return std::nullopt;
    return ListedChannel{ChannelKind::kMemory, Band::kVhf, *n};
  }
  const auto title = std::find(kSpecialRowTitles.begin(), kSpecialRowTitles.end(), channel);
  if (title == kSpecialRowTitles.end()) return std::nullopt;
  const auto row = static_cast<int>(title - kSpecialRowTitles.begin());
  return ListedChannel{ChannelKind::kSpecial, bank == BankOf(Band::kVhf) ? Band::kVhf : Band::kUhf,
                       row};
}

bool IsBank(std::string_view item) {
  return item == kMemoryBank || item == BankOf(Band::kVhf) || item == BankOf(Band::kUhf);
}

class Importer {
 public:
  Importer(std::string_view text, CloneImage image)
      : text_(text), items_(text), image_(std::move(image)) {}

  // The image with the channels of the text; the report is complete afterwards.
  CloneImage Run() {
    while (const auto item = Next({})) {
      if (*item == kModelItem) {
        TellForeignLines();
        Record();
      } else {
        Foreign(*item);
      }
    }
    TellForeignLines();
    ShowBand(image_, image_.ShownBand);
    return std::move(image_);
  }
  ImportReport Report() {
    if (items_.UnclosedLine() != 0) {  // nothing was stored, so the notes would not be true
      report_ = {};
      report_.unclosed_quote_line = items_.UnclosedLine();
    } else if (report_.memory_records + report_.special_records == 0) {
      NoList none = WhyNoList(text_);
      report_.no_list = std::move(none.why);
      if (none.told || report_.passed_over_count == 0) {
        report_.notes.clear();
        report_.note_count = 0;
      }
    }
    return std::move(report_);
  }

 private:
  void Tell(std::string_view heading, std::string text) {
    AddNote(report_, {line_, std::string(heading), std::move(text), channel_});
  }

  // The next item of the text, which stands under the heading.
  std::optional<std::string> Next(std::string_view heading) {
    auto item = items_.Next();
    if (!item) return item;
    if (const int records = RecordsInside(*item)) {
      report_.passed_over_count += records;
      AddNote(report_, {items_.Line(), std::string(heading),
                        "passed over inside the quotes of one item: " + std::to_string(records) +
                            (records == 1 ? " record" : " records") + "; is a quote missing?",
                        channel_});
    }
    if (!heading.empty() && !items_.Ignored().empty()) {
      Tell(heading, "passed over behind the closing quote: " + Quoted(items_.Ignored()));
    }
    return item;
  }

  // ---- what belongs to no record

  // Lines that belong to no record share one note.
  void Foreign(std::string_view item) {
    const int line = items_.Line();
    if (item == kFirstHeadings.front()) settled_line_ = line;  // the header
    if (line == settled_line_ || Trimmed(item).empty()) return;
    if (line == record_end_) {
      Tell({}, "has more than " + std::to_string(kRecordItems) + " items; passed over from " +
                   Quoted(item) + " on");
      settled_line_ = line;
      return;
    }
    if (foreign_.line == 0) foreign_ = {line, {}, Quoted(item)};
    foreign_last_ = line;
  }

  void TellForeignLines() {
    if (foreign_.line == 0) return;
    foreign_.text = "passed over" +
                    (foreign_last_ > foreign_.line ? " to line " + std::to_string(foreign_last_)
                                                   : std::string()) +
                    ": begins with " + foreign_.text + " instead of " + Quoted(kModelItem);
    AddNote(report_, std::move(foreign_));
    foreign_ = {};
  }

  // ---- records

  void PassOver(const std::string& why) {
    ++report_.passed_over_count;
    Tell({}, "passed over, " + why);
    settled_line_ = items_.Line();
  }

  // The rest of a record after its MODEL item. Every return leaves the reader where the next MODEL
  // item may follow.
  void Record() {
    line_ = items_.Line();
    channel_.reset();
    const auto bank = Next(kFirstHeadings[1]);
    if (!bank) return PassOver("items are missing");
    if (!IsBank(*bank)) return RefuseHead(1, "bank " + Quoted(*bank), *bank);
    const auto title = Next(kFirstHeadings[2]);
    if (!title) return PassOver("items are missing");
    channel_ = ChannelOf(*bank, *title);
    if (!channel_) return RefuseHead(2, "channel " + Quoted(*title), *title);
    Items items;
    for (std::size_t i = 0; i < items.text.size(); ++i) {
      auto next = Next(RowOf(kCsvOrder[i]).csv);
      if (!next) return PassOver("items are missing");
      items.text[i] = std::move(*next);
      items.line[i] = items_.Line();
    }
    record_end_ = items_.Line();
    TellChannel(*title);
    if (channel_->kind == ChannelKind::kMemory) {
      StoreMemory(items);
    } else {
      StoreSpecial(items);
    }
    TellTakenRecords(items);
  }

  // `count` items stand in front of the one that is no bank, or no channel.
  void RefuseHead(std::size_t count, const std::string& why, std::string_view item) {
    PassOver(why);
    if (item == kModelItem && items_.Line() != line_) TellTaken(items_.Line(), count);
  }

  // Items are taken as they come, also from the next line: then two records have become one. But a
  // channel may have the name of the radio; no bank stands behind that.
  void TellTakenRecords(const Items& items) {
    for (std::size_t i = 0; i < items.text.size(); ++i) {
      if (items.text[i] != kModelItem) continue;
      if (kCsvOrder[i] == Field::kName && !IsBank(items.text[i + 1])) continue;
      TellTaken(items.line[i], kFirstHeadings.size() + i);
      settled_line_ = record_end_;
    }
  }

  void TellTaken(int line, std::size_t count) {
    ++report_.passed_over_count;
    const std::string owner = channel_ ? NameOf(*channel_) : std::string("the record");
    AddNote(report_, {line,
                      {},
                      "passed over, taken for the rest of " + owner + " of line " +
                          std::to_string(line_) + ", which has " + std::to_string(count) + " of " +
                          std::to_string(kRecordItems) + " items",
                      channel_});
  }

  void TellChannel(std::string_view title) {
    int& line = LineOf(report_, *channel_);
    if (line != 0) {
      Tell(kFirstHeadings[2], NameOf(*channel_) + " stands in line " + std::to_string(line) +
                                  " too; this record replaces that one");
    }
    line = line_;
    // Of "D12" only the 2 counts.
    title = Trimmed(WithoutStar(Trimmed(title)));
    if (channel_->kind == ChannelKind::kMemory && title.starts_with('D') &&
        title != ChannelTitle(channel_->index)) {
      Tell(kFirstHeadings[2], StoredAs(ChannelTitle(channel_->index), title));
    }
  }

  void TellDoubts(Columns doubtful, const Items& items, const ChannelRecord& record) {
    for (std::size_t i = 0; i < kCsvOrder.size(); ++i) {
      if (!doubtful[i]) continue;
      const Field field = kCsvOrder[i];
      const std::string_view heading = RowOf(field).csv;
      Tell(heading, DoubtText(field, items.text[i], channel_->kind, record));
    }
  }

  void StoreMemory(const Items& items) {
    constexpr auto kKind = ChannelKind::kMemory;
    const auto row = static_cast<std::size_t>(channel_->index);
    // The fields of an unused channel may be stale; a new channel starts from nothing.
    ChannelRecord record = image_.ChannelInUse[row] ? image_.MemoryTable[row] : ChannelRecord();
    TellDoubts(TakeItems(items, kKind, false, record), items, record);
    if (record.Number(kKind, Field::kSkip) == 1) record.cellText[0].insert(0, 1, '*');
    image_.MemoryTable[row] = std::move(record);
    image_.ChannelInUse[row] = true;
    ++report_.memory_records;
  }

  void StoreSpecial(const Items& items) {
    const int k = channel_->index;
    const Band band = channel_->band;
    SpecialSet& set = SpecialStore(image_, band);
    PresentPair present = StoredPresent(image_, band);
    ChannelRecord record =
        EffectivelyPresent(set, present, k) ? set[static_cast<std::size_t>(k)] : ChannelRecord();
    Columns doubtful = TakeItems(items, ChannelKind::kSpecial, k == kRptRow, record);
    const bool in_use = k < kPhRow || record.Frequency() != 0;
    // Nothing of a PH or PL without a frequency is stored, and an empty frequency means just that.
    if (!in_use) doubtful &= Columns(Trimmed(items.text.front()).empty() ? 0U : 1U);
    TellDoubts(doubtful, items, record);
    if (!in_use) record = {};  // as clearing PH or PL leaves it
    if (k >= kPhRow) present[static_cast<std::size_t>(k - kPhRow)] = in_use;
    set[static_cast<std::size_t>(k)] = std::move(record);
    SetStoredPresent(image_, band, present);
    ++report_.special_records;
  }

  std::string_view text_;
  CsvItems items_;
  CloneImage image_;
  ImportReport report_;
  int line_ = 0;                          // of the record that is read
  std::optional<ListedChannel> channel_;  // its channel, once that is known
  int record_end_ = 0;                    // line on which the last whole record ended
  int settled_line_ = 0;                  // of which nothing more is to be said
  ImportNote foreign_;                    // lines of other things, until a record follows
  int foreign_last_ = 0;
};

}  // namespace

ImportReport ImportChannels(std::string_view text, CloneImage& image) {
  Importer importer(text, image);
  CloneImage imported = importer.Run();
  ImportReport report = importer.Report();
  if (report.unclosed_quote_line == 0) image = std::move(imported);
  return report;
}

}  // namespace q40
