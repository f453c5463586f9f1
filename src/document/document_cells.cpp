#include "document/document_cells.h"

#include <algorithm>

#include "base/decimal.h"
#include "base/hex.h"
#include "base/plain_text.h"
#include "radio/channel_codec.h"
#include "radio/channel_fields.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

struct DocumentCell {
  std::string place;
  std::string name;
  std::string value;
  CellAddress at;
};

// Name of the cell that holds what a channel out of use still stores; empty for one in use.
constexpr const char* kStoredData = "stored data";

// Whole, unlike the values in messages.
std::string InQuotes(const std::string& value) {
  std::string text(1, '"');
  text += Printable(value);
  text += '"';
  return text;
}

constexpr const char* kDialPlace = "Auto dialer";

std::string SpecialPlace(Band band, int k) {
  return std::string(BandName(band)) + ' ' +
         std::string(kSpecialRowTitles[static_cast<std::size_t>(k)]);
}

std::string MemoryPlace(int n) { return "Memory " + ChannelTitle(n); }

// A byte of the settings area, counted from its beginning.
struct SettingsByte {
  explicit SettingsByte(int at)
      : offset(at),
        line(at / kBlockSize),
        byte(at % kBlockSize),
        name("byte 0x00" + HexByteText(Unit::kSettingsStart + at)) {
    const auto fields = Settings();
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](auto& f) { return f.line == line && f.byte == byte; });
    if (found != fields.end()) field = &*found;
  }

  int offset;
  int line;
  int byte;
  std::string name;
  [[nodiscard]] Unit unit() const { return Unit::Settings(offset / kUnitSize); }
  const Setting* field = nullptr;  // what it stands for, if a control does
  [[nodiscard]] bool IsStartChannel() const { return line == 0 && byte == kStartChannelByte; }
};

class CellList {
 public:
  explicit CellList(const CloneData& document) : document_(document) {}

  std::vector<DocumentCell> Take() { return std::move(cells_); }

  void AddRadio() {
    Add("Radio", "Model", std::string(ModelName(document_.model)), {});
    Add("Radio", "Version", document_.image.VersionA ? "A" : "0", {});
  }

  void AddSettings() {
    for (const Setting& setting : Settings()) {
      Add(PlaceOf(setting.group), CaptionOf(setting), SettingText(document_.settings, setting),
          {.unit = Unit::Settings(setting.line / 2), .setting = &setting});
    }
    const SettingsLines lines = EncodedSettings(document_.settings, document_.image);
    for (int offset = 0; offset < kSettingsUnitCount * kUnitSize; ++offset) {
      AddCarriedByte(SettingsByte(offset), lines);
    }
  }

  void AddDialText(int index) {
    const auto i = static_cast<std::size_t>(index);
    Add(kDialPlace, std::string(kDialTitles[i]), document_.dial[i],
        {.unit = Unit::Dialer(index / 2), .index = index});
  }

  void AddSpecial(Band band, int k) {
    const SpecialSet& set = SpecialStore(document_.image, band);
    const PresentPair present = StoredPresent(document_.image, band);
    const auto lines = EncodeSpecialChannel(set, present, k);
    AddChannel({SpecialPlace(band, k), Unit::Special(band, k), ChannelKind::kSpecial, k >= kPhRow,
                EffectivelyPresent(set, present, k)},
               set[static_cast<std::size_t>(k)], lines ? lines->Joined() : "");
  }

  void AddMemory(int n) {
    const auto row = static_cast<std::size_t>(n);
    const auto lines = EncodeMemoryChannel(document_.image, n);
    AddChannel({MemoryPlace(n), Unit::Memory(n), ChannelKind::kMemory, true,
                document_.image.ChannelInUse[row]},
               document_.image.MemoryTable[row], lines ? lines->Joined() : "");
  }

  void AddUnit(Unit unit) {
    switch (unit.kind()) {
      case Unit::Kind::kSettings: return AddSettings();
      case Unit::Kind::kSpecial: return AddSpecial(unit.band(), unit.index());
      case Unit::Kind::kMemory: return AddMemory(unit.index());
      case Unit::Kind::kDialer:
        for (const int half : {0, 1}) AddDialText(2 * unit.index() + half);
    }
  }

 private:
  struct Channel {
    std::string place;
    Unit unit;
    ChannelKind kind;
    bool may_be_absent;
    bool in_use;
  };

  void Add(std::string place, std::string name, std::string value, CellAddress at) {
    cells_.push_back({std::move(place), std::move(name), std::move(value), at});
  }

  // What a byte holds beyond its control. The start channel follows from other cells.
  void AddCarriedByte(SettingsByte byte, const SettingsLines& lines) {
    const bool shared = byte.field != nullptr && byte.field->rule == SettingRule::kBit6;
    if (byte.IsStartChannel() || (byte.field != nullptr && !shared)) return;
    const std::string& line = lines[static_cast<std::size_t>(byte.line)];
    std::string digits = line.substr(2 * static_cast<std::size_t>(byte.byte), 2);
    if (shared) {
      constexpr int kHighDigitWithoutBit6 = 0xB;
      digits[0] = HexByteText(HexDigitValue(digits[0]) & kHighDigitWithoutBit6)[1];
      byte.name += " without " + CaptionOf(*byte.field);
    }
    Add(PlaceOf(SettingsGroup::kGeneral), byte.name, digits,
        {.unit = byte.unit(), .index = byte.offset});
  }

  // The star in front of a frequency only repeats that the channel is skipped.
  void AddChannel(const Channel& channel, const ChannelRecord& record, std::string_view stored) {
    const auto add = [&](std::string_view name, std::string_view value,
                         std::optional<Field> field) {
      Add(channel.place, std::string(name), std::string(value),
          {.unit = channel.unit, .field = field});
    };
    if (channel.may_be_absent) add("In use", channel.in_use ? "yes" : "no", std::nullopt);
    for (const Field field : kReadingOrder) {
      if (!HasField(channel.kind, field)) continue;
      const std::string text = channel.in_use ? FieldText(channel.kind, record, field) : "";
      add(FieldName(field), field == Field::kFrequency ? WithoutStar(text) : text, field);
    }
    add(kStoredData, channel.in_use ? "" : stored, std::nullopt);
  }

  const CloneData& document_;
  std::vector<DocumentCell> cells_;
};

// Two lists of the same places and names.
std::vector<CellDifference> Compared(const std::vector<DocumentCell>& cells_a,
                                     const std::vector<DocumentCell>& cells_b) {
  std::vector<CellDifference> differences;
  for (std::size_t i = 0; i < cells_a.size(); ++i) {
    const DocumentCell& cell = cells_a[i];
    const std::string& other = cells_b[i].value;
    if (cell.value == other) continue;
    if (cell.name == kStoredData && (cell.value.empty() || other.empty())) continue;
    differences.push_back({cell.place, cell.name, cell.value, other, cell.at});
  }
  return differences;
}

// What is the same needs no words: between two states of one document almost everything is.
bool IsSame(Unit unit, const CloneData& a, const CloneData& b) {
  const auto index = static_cast<std::size_t>(unit.index());
  switch (unit.kind()) {
    case Unit::Kind::kSettings:
      return a.settings == b.settings && a.image.SettingsLine == b.image.SettingsLine;
    case Unit::Kind::kSpecial:
      return SpecialStore(a.image, unit.band()) == SpecialStore(b.image, unit.band()) &&
             StoredPresent(a.image, unit.band()) == StoredPresent(b.image, unit.band());
    case Unit::Kind::kDialer:
      return a.dial[2 * index] == b.dial[2 * index] &&
             a.dial[2 * index + 1] == b.dial[2 * index + 1];
    default:
      return a.image.MemoryTable[index] == b.image.MemoryTable[index] &&
             a.image.ChannelInUse[index] == b.image.ChannelInUse[index];
  }
}

std::vector<CellDifference> RadioDifferences(const CloneData& a, const CloneData& b) {
  CellList cells_a(a);
  CellList cells_b(b);
  cells_a.AddRadio();
  cells_b.AddRadio();
  return Compared(cells_a.Take(), cells_b.Take());
}

StoredByte ByteOfSettings(int area, int byte) {
  const SettingsByte at(area * kUnitSize + byte);
  StoredByte stored{PlaceOf(SettingsGroup::kGeneral), at.name, static_cast<std::size_t>(byte)};
  if (at.IsStartChannel()) stored.name += " (start channel)";
  if (at.field == nullptr) return stored;
  stored.place = PlaceOf(at.field->group);
  stored.name += " (" + CaptionOf(*at.field) + ')';
  return stored;
}

StoredByte ByteOfDialTexts(std::size_t pair, std::size_t byte) {
  const std::size_t half = byte / kDialLength;
  return {
      kDialPlace,
      std::string(kDialTitles[2 * pair + half]) + ", byte " + std::to_string(byte % kDialLength),
      half * kDialLength, kDialLength};
}

StoredByte ByteOfChannel(std::string place, ChannelKind kind, std::size_t byte) {
  StoredByte stored{std::move(place), "byte " + std::to_string(byte), byte};
  if (byte == 0) stored.name += " (flags)";
  for (const Field field : kReadingOrder) {
    if (field == Field::kSkip || !HasField(kind, field)) continue;
    const FieldBytes bytes = BytesOf(field);
    if (byte < bytes.byte || byte >= bytes.byte + bytes.count) continue;
    stored.name += " (" + std::string(FieldName(field)) + ')';
    stored.first = bytes.byte;
    stored.count = bytes.count;
  }
  return stored;
}

}  // namespace

std::string FieldText(ChannelKind kind, const ChannelRecord& record, Field field) {
  if (field == Field::kSkip) return record.Number(kind, field) == 1 ? "On" : "Off";
  return record.Text(kind, field);
}

std::string PlaceOf(SettingsGroup group) {
  switch (group) {
    case SettingsGroup::kDtmf: return "DTMF";
    case SettingsGroup::kAccess: return "Access";
    default: return "Settings";
  }
}

std::string CaptionOf(const Setting& setting) {
  std::string caption(Trimmed(setting.caption));
  if (!setting.unit.empty()) caption += ' ' + std::string(setting.unit);
  return caption;
}

std::string SettingText(const SettingsValues& values, const Setting& setting) {
  const int value = values.*setting.value;
  if (!setting.items.empty()) {
    const auto index = static_cast<std::size_t>(value);
    return std::string(index < setting.items.size() ? Trimmed(setting.items[index]) : "");
  }
  if (setting.rule == SettingRule::kRange) return std::to_string(value);
  return value != 0 ? "on" : "off";
}

std::string ModelText(const CloneData& document) {
  return std::string(ModelName(document.model)) + ", version " +
         (document.image.VersionA ? "A" : "0");
}

std::vector<CellDifference> DifferencesOf(const CloneData& a, const CloneData& b, Half half) {
  std::vector<CellDifference> differences = RadioDifferences(a, b);
  // The cells of the settings are those of both areas. The dialer comes last.
  std::vector<Unit> units = UnitsOf(half);
  std::erase(units, Unit::Settings(1));
  std::stable_partition(units.begin(), units.end(),
                        [](Unit unit) { return unit.kind() != Unit::Kind::kDialer; });
  for (const Unit unit : units) {
    if (IsSame(unit, a, b)) continue;
    for (CellDifference& one : DifferencesAt(unit, a, b)) differences.push_back(std::move(one));
  }
  return differences;
}

std::vector<CellDifference> DifferencesAt(Unit unit, const CloneData& a, const CloneData& b) {
  CellList cells_a(a);
  CellList cells_b(b);
  cells_a.AddUnit(unit);
  cells_b.AddUnit(unit);
  return Compared(cells_a.Take(), cells_b.Take());
}

StoredByte ByteAt(Unit unit, std::size_t byte) {
  const int index = unit.index();
  switch (unit.kind()) {
    case Unit::Kind::kSettings: return ByteOfSettings(index, static_cast<int>(byte));
    case Unit::Kind::kDialer: return ByteOfDialTexts(static_cast<std::size_t>(index), byte);
    case Unit::Kind::kSpecial:
      return ByteOfChannel(SpecialPlace(unit.band(), index), ChannelKind::kSpecial, byte);
    default: return ByteOfChannel(MemoryPlace(index), ChannelKind::kMemory, byte);
  }
}

std::string DifferenceText(const CellDifference& difference) {
  return difference.place + ": " + difference.name + ": " + InQuotes(difference.a) + " -> " +
         InQuotes(difference.b);
}

}  // namespace q40
