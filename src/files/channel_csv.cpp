#include "files/channel_csv.h"

#include <algorithm>

#include "app/tables/values.h"
#include "files/csv_text.h"
#include "image/digits.h"
#include "image/name_codes.h"
#include "image/plain_text.h"
#include "image/channel_fields.h"

namespace q40 {
namespace {

constexpr std::string_view kModelItem = "RX-Q40";  // for every variant
constexpr std::string_view kMemoryBank = "MEMORY";
constexpr std::string_view kNoName = "No";  // of a special channel
constexpr std::string_view kLineEnd = "\r\n";

constexpr std::string_view BankOf(Band band) { return band == Band::kVhf ? "VFO VHF" : "VFO UHF"; }

struct Column {
  std::string_view heading;
  Field field;
};

// Items 4 to 22 of a record; MODEL, BANK and CHANNEL stand before them.
constexpr std::array kColumns = {
    Column{"FREQUENCY", Field::kFrequency},
    Column{"STEP", Field::kStep},
    Column{"TONE", Field::kTone},
    Column{"TXTONE", Field::kTxTone},
    Column{"RXTONE", Field::kRxTone},
    Column{"TXDCS", Field::kTxDcs},
    Column{"RXDCS", Field::kRxDcs},
    Column{"SHIFT", Field::kShift},
    Column{"SHIFT FREQUENCY", Field::kShiftFrequency},
    Column{"Repeat", Field::kRpt},
    Column{"Power", Field::kPower},
    Column{"MID", Field::kMid},
    Column{"ATT", Field::kAtt},
    Column{"BS", Field::kBatterySave},
    Column{"Clock", Field::kClock},
    Column{"BCLO", Field::kBclo},
    Column{"Bandwidth", Field::kBandwidth},
    Column{"Name", Field::kName},
    Column{"Skip", Field::kSkip},
};
using Items = std::array<std::string, kColumns.size()>;

// ---- export

// One record. An empty record (an absent PH or PL) gives empty texts.
void AppendRecord(std::string& text, std::string_view bank, std::string_view channel,
                  ChannelKind kind, const ChannelRecord& record) {
  for (const std::string_view item : {kModelItem, bank, channel}) {
    AppendCsvItem(text, item);
    text += ',';
  }
  for (const Column& column : kColumns) {
    std::string item;
    if (column.field == Field::kSkip) {
      const bool skip = kind == ChannelKind::kMemory && record.Number(kind, Field::kSkip) == 1;
      item = skip ? "On" : "Off";
    } else if (!HasField(kind, column.field)) {
      item = kNoName;
    } else {
      item = record.Text(kind, column.field);
      // Without the blank a spreadsheet would take the word for a formula.
      const bool formula = item.starts_with('-') || item.starts_with('+');
      if (column.field == Field::kShift && formula) item.insert(0, 1, ' ');
    }
    AppendCsvItem(text, item);
    text += column.field == Field::kSkip ? kLineEnd : std::string_view(",");
  }
}

void AppendHeader(std::string& text) {
  for (const std::string_view item : {"MODEL", "BANK", "CHANNEL"}) {
    AppendCsvItem(text, item);
    text += ',';
  }
  for (const Column& column : kColumns) {
    AppendCsvItem(text, column.heading);
    text += column.field == Field::kSkip ? kLineEnd : std::string_view(",");
  }
}

// ---- import

// The entry of a value list that equals the item as a number; none: keep the code.
std::optional<int> IndexByNumber(Field field, std::string_view item) {
  const auto list = IndexListOf(field);
  const auto number = LeadingNumber(item);
  const auto found = std::find_if(list.begin(), list.end(), [&](std::string_view entry) {
    return LeadingNumber(entry) == number;
  });
  if (found == list.end()) return std::nullopt;
  return static_cast<int>(found - list.begin());
}

// Code of an item; no value: the channel keeps its own.
std::optional<int> CodeOfItem(Field field, std::string_view item) {
  constexpr std::size_t kShiftWordLength = 6;
  switch (field) {
    case Field::kFrequency:
    case Field::kShiftFrequency: return LeadingFrequency(item);
    case Field::kTxTone:
    case Field::kRxTone:
    case Field::kTxDcs:
    case Field::kRxDcs: return IndexByNumber(field, item);
    case Field::kStep: return FindText(IndexListOf(field), item);
    case Field::kMid:
      return FindText(IndexListOf(field),
                      item.size() == 1 ? '0' + std::string(item) : std::string(item));
    case Field::kShift:  // " -Shift": only the last six characters count
      return CodeOfWord(field, item.substr(item.size() - std::min(item.size(), kShiftWordLength)));
    case Field::kAtt: {
      const auto number = LeadingNumber(item);
      return number == 10 * kNumberScale ? 1 : number == 20 * kNumberScale ? 2 : 0;
    }
    case Field::kBatterySave: return item == "Off" ? 0 : item == "BS-1" ? 1 : 2;
    case Field::kName: return item.empty() ? 0 : 1;
    case Field::kSkip: return item == "On" ? 1 : 0;
    default: return CodeOfWord(field, item);
  }
}

// Cell text of a code, as the edit dialog writes it.
std::string CellText(Field field, int code, const std::string& item) {
  switch (field) {
    case Field::kFrequency: return FrequencyText(code);
    case Field::kShiftFrequency: return OffsetText(code);
    case Field::kName: return FirstCharacters(item, kNameLength);
    default: return std::string(CodeText(field, code));
  }
}

void TakeItems(const Items& items, ChannelKind kind, bool repeater_row, ChannelRecord& record) {
  for (std::size_t i = 0; i < kColumns.size(); ++i) {
    const Field field = kColumns[i].field;
    if (!HasField(kind, field)) continue;
    const std::string& item = items[i];
    if (repeater_row && item.empty() && !CarriedInRepeaterRow(field)) continue;
    const std::string_view plain = field == Field::kFrequency ? WithoutStar(Trimmed(item)) : item;
    const int code = CodeOfItem(field, plain).value_or(record.Number(kind, field));
    record.Set(kind, field, code, CellText(field, code, item));
  }
}

// The number of a memory channel, 0..209. "D7" is 207: only the last character counts. The star of
// a skipped channel and a fraction of zeros may stand around a number, nothing else.
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

// Where a record goes.
struct Target {
  ChannelKind kind = ChannelKind::kMemory;
  Band band = Band::kVhf;
  int index = 0;  // memory channel, or row of the special set
};

std::optional<Target> TargetOf(std::string_view bank, std::string_view channel) {
  if (bank == kMemoryBank) {
    const auto n = MemoryChannelOf(channel);
    if (!n) return std::nullopt;
    return Target{ChannelKind::kMemory, Band::kVhf, *n};
  }
  const auto title = std::find(kSpecialRowTitles.begin(), kSpecialRowTitles.end(), channel);
  if (title == kSpecialRowTitles.end()) return std::nullopt;
  const auto row = static_cast<int>(title - kSpecialRowTitles.begin());
  return Target{ChannelKind::kSpecial, bank == BankOf(Band::kVhf) ? Band::kVhf : Band::kUhf, row};
}

bool IsBank(std::string_view item) {
  return item == kMemoryBank || item == BankOf(Band::kVhf) || item == BankOf(Band::kUhf);
}

// Whether the next record begins among the items of one. A channel may have the name of the radio:
// then no bank stands behind it.
bool HoldsNextRecord(const Items& items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i] != kModelItem) continue;
    if (kColumns[i].field != Field::kName || IsBank(items[i + 1])) return true;
  }
  return false;
}

class Importer {
 public:
  Importer(std::string_view text, CloneImage image) : items_(text), image_(std::move(image)) {}

  // The image with the channels of the text; the report is complete afterwards.
  CloneImage Run() {
    while (const auto item = items_.Next()) {
      if (*item == kModelItem) Record();
    }
    report_.unclosed_quote_line = items_.UnclosedLine();
    ShowBand(image_, image_.ShownBand);
    return std::move(image_);
  }
  [[nodiscard]] const ImportReport& report() const { return report_; }

 private:
  void PassOver(std::string why) {
    ++report_.passed_over_count;
    if (report_.passed_over.size() < kPassedOverListed) {
      report_.passed_over.push_back({line_, std::move(why)});
    }
  }

  // One record behind its MODEL item. Every return leaves the reader where the next MODEL item may
  // follow.
  void Record() {
    line_ = items_.Line();
    const auto bank = items_.Next();
    if (!bank) return PassOver("items are missing");
    if (!IsBank(*bank)) return PassOver("bank " + Quoted(*bank));
    const auto channel = items_.Next();
    if (!channel) return PassOver("items are missing");
    const auto target = TargetOf(*bank, *channel);
    if (!target) return PassOver("channel " + Quoted(*channel));
    Items items;
    for (std::string& item : items) {
      auto next = items_.Next();
      if (!next) return PassOver("items are missing");
      item = std::move(*next);
    }
    // Items are taken as they come, also from the next line. Worth a word, for two channels are now
    // one.
    if (HoldsNextRecord(items)) {
      const std::string first = std::to_string(line_);
      line_ = items_.Line();
      PassOver("taken for the rest of the record of line " + first + ", which has too few items");
    }
    if (target->kind == ChannelKind::kMemory) {
      StoreMemory(target->index, items);
    } else {
      StoreSpecial(target->band, target->index, items);
    }
  }

  void StoreMemory(int n, const Items& items) {
    constexpr auto kKind = ChannelKind::kMemory;
    const auto row = static_cast<std::size_t>(n);
    // The fields of an unused channel may be stale; a new channel starts from nothing.
    ChannelRecord record = image_.ChannelInUse[row] ? image_.MemoryTable[row] : ChannelRecord();
    TakeItems(items, kKind, false, record);
    if (record.Number(kKind, Field::kSkip) == 1) record.cellText[0].insert(0, 1, '*');
    image_.MemoryTable[row] = std::move(record);
    image_.ChannelInUse[row] = true;
    report_.imported[row] = true;
    ++report_.memory_records;
  }

  void StoreSpecial(Band band, int k, const Items& items) {
    SpecialSet& set = SpecialStore(image_, band);
    PresentPair present = StoredPresent(image_, band);
    ChannelRecord record =
        EffectivelyPresent(set, present, k) ? set[static_cast<std::size_t>(k)] : ChannelRecord();
    TakeItems(items, ChannelKind::kSpecial, k == kRptRow, record);
    if (k >= kPhRow) {
      const bool in_use = record.Frequency() != 0;
      present[static_cast<std::size_t>(k - kPhRow)] = in_use;
      if (!in_use) record = {};  // as clearing PH or PL leaves it
    }
    set[static_cast<std::size_t>(k)] = std::move(record);
    SetStoredPresent(image_, band, present);
    ++report_.special_records;
  }

  CsvItems items_;
  CloneImage image_;
  ImportReport report_;
  int line_ = 0;
};

}  // namespace

std::string ExportChannels(const CloneImage& image) {
  static const ChannelRecord kAbsent;
  std::string text;
  AppendHeader(text);
  for (const Band band : kBands) {
    const SpecialSet& set = SpecialStore(image, band);
    for (int k = 0; k < kSpecialChannelCount; ++k) {
      const auto row = static_cast<std::size_t>(k);
      const bool shown = EffectivelyPresent(set, StoredPresent(image, band), k);
      AppendRecord(text, BankOf(band), kSpecialRowTitles[row], ChannelKind::kSpecial,
                   shown ? set[row] : kAbsent);
    }
  }
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    const auto row = static_cast<std::size_t>(n);
    if (!image.ChannelInUse[row]) continue;
    AppendRecord(text, kMemoryBank, ChannelTitle(n), ChannelKind::kMemory, image.MemoryTable[row]);
  }
  return text;
}

ImportReport ImportChannels(std::string_view text, CloneImage& image) {
  Importer importer(text, image);
  CloneImage imported = importer.Run();
  if (importer.report().unclosed_quote_line == 0) image = std::move(imported);
  return importer.report();
}

std::optional<FileProblem> CheckCsvSize(std::string_view text, const std::string& name) {
  if (text.size() <= kLongestCsv) return std::nullopt;
  return FileProblem{FileProblem::Kind::kBadData, name, 0, "longer than 16 MiB, no channel list"};
}

std::optional<FileProblem> ProblemOf(const ImportReport& report, const std::string& name) {
  if (report.unclosed_quote_line == 0) return std::nullopt;
  return FileProblem{FileProblem::Kind::kBadData, name, report.unclosed_quote_line,
                     "a quote that is never closed; nothing was imported"};
}

}  // namespace q40
