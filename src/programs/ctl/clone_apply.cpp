#include "programs/ctl/clone_apply.h"

#include <algorithm>
#include <map>
#include <set>

#include "base/hex.h"
#include "base/plain_text.h"
#include "document/defaults.h"
#include "document/document_units.h"
#include "programs/nearest.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

// A value of the text with what it is in the file.
struct Named {
  const CloneItem* item;
  const Json* value;
  [[nodiscard]] std::string Where() const { return PointerTo(item->place, item->name); }
};
using NamedValues = std::vector<Named>;

constexpr std::size_t kByteDigits = 2;
constexpr std::size_t kMostProblems = 20;  // to find what each word may mean takes a while

std::string ValueText(const Json& value) {
  return value.is_string() ? Quoted(value.get<std::string>()) : value.dump();
}

// ---- what the names stand for

// Why a value cannot be one of its item whatever the file holds; empty when it can.
std::string WhyNoValue(const Named& named) {
  const Json& value = *named.value;
  const CloneItem& item = *named.item;
  const auto must_be = [&](bool is, const char* what) {
    return is ? std::string() : std::string("must be ") + what;
  };
  const auto must_be_one = [&](const Choices& choices) {
    return choices.HasTypeOf(value) ? "" : "must be " + choices.TypeText();
  };
  switch (item.kind) {
    case ItemKind::kModel:
      if (value.is_string() && FindModel(value.get<std::string>())) return {};
      return "must be RX-Q40T, RX-Q40E, RX-Q40T1 or RX-Q20A";
    case ItemKind::kVersion: return must_be(value == "A" || value == "0", "\"A\" or \"0\"");
    case ItemKind::kSetting: return must_be_one(Choices::Of(Settings()[item.index]));
    case ItemKind::kInUse: return must_be(value.is_boolean(), "true or false");
    case ItemKind::kField: break;
    default: return must_be(value.is_string(), "a text");
  }
  switch (item.field) {
    case Field::kFrequency:
    case Field::kShiftFrequency: return must_be(value.is_number(), "a number");
    case Field::kName: return must_be(value.is_string(), "a text");
    default: return must_be_one(Choices::Of(item.field));
  }
}

// How many characters a value has that is stored as it is, at the most for a text; 0 for any other value.
std::size_t StoredLength(ItemKind kind) {
  switch (kind) {
    case ItemKind::kCarriedByte:
    case ItemKind::kOtherBits:
    case ItemKind::kOddByte: return kByteDigits;
    case ItemKind::kStoredData: return kUnitDigits;
    case ItemKind::kOddDialText: return kCloneLineLength;
    default: return 0;
  }
}

// Why a text cannot be stored as it is.
std::string WhyNoBytes(const Named& named) {
  const std::size_t length = StoredLength(named.item->kind);
  if (length == 0) return {};
  const auto bytes = BytesOf(*named.value);
  if (!bytes || bytes->find_first_of("\r\n") != std::string::npos) {
    return "holds characters that no clone file can";
  }
  if (named.item->kind == ItemKind::kOddDialText) {
    return bytes->size() <= length ? "" : "is longer than 32 characters";
  }
  if (bytes->size() != length) return "must have " + std::to_string(length) + " digits";
  if (named.item->kind != ItemKind::kStoredData) return {};
  CloneData scratch = FreshData();
  return LoadUnit({named.item->unit, *bytes}, scratch).value_or("");
}

std::string WhyNoItem(const Named& named) {
  std::string why = WhyNoValue(named);
  if (why.empty()) why = WhyNoBytes(named);
  return why.empty() ? why : named.Where() + ' ' + why;
}

class Names {
 public:
  Names() {
    for (const CloneItem& item : CloneItems()) items_[item.place][item.name] = &item;
  }

  // The values of the text; what is none goes to the problems.
  NamedValues Resolve(const std::vector<JsonEntry>& entries, std::vector<std::string>& problems) {
    NamedValues values;
    for (const JsonEntry& entry : entries) {
      if (problems.size() == kMostProblems) break;
      Named named{nullptr, &entry.value};
      std::string why = Find(entry, named.item);
      if (named.item != nullptr) why = WhyNoItem(named);
      if (!why.empty()) problems.push_back(why);
      if (named.item != nullptr) values.push_back(named);
    }
    return values;
  }

 private:
  template <class Map>
  static std::string Unknown(const std::string& pointer, const std::string& word,
                             const Map& known) {
    std::vector<std::string> words;
    for (const auto& [name, value] : known) words.push_back(name);
    const auto meant = Nearest(word, words);
    return pointer + " is unknown" +
           (meant ? "; did you mean " + Quoted(*meant) + "?" : std::string());
  }

  // Empty, with the item, or with none for the format.
  std::string Find(const JsonEntry& entry, const CloneItem*& item) const {
    if (entry.name.empty() && entry.place == kFormatKey) {
      const bool known = entry.value.is_number() && entry.value == kJsonFormat;
      return known ? "" : PointerTo(entry.place, {}) + " must be " + std::to_string(kJsonFormat);
    }
    const auto place = items_.find(entry.place);
    if (place == items_.end()) return Unknown(PointerTo(entry.place, {}), entry.place, items_);
    if (entry.name.empty()) return PointerTo(entry.place, {}) + " must be a group of values";
    const auto found = place->second.find(entry.name);
    if (found == place->second.end())
      return Unknown(PointerTo(entry.place, entry.name), entry.name, place->second);
    item = found->second;
    return {};
  }

  std::map<std::string, std::map<std::string, const CloneItem*>> items_;
};

// ---- what is stored as it is

void Put(std::string_view text, char* at) { std::copy(text.begin(), text.end(), at); }

char* ByteIn(CloneLines& lines, const CloneItem& item) {
  return DigitsIn(lines, item.unit) + kByteDigits * item.index;
}

// All bits of a byte but the one that a control has.
void PutOtherBits(std::string_view digits, char* at) {
  constexpr int kBit6 = 4;  // of the high digit
  const int high = (HexDigitValue(digits[0]) & ~kBit6) | (HexDigitValue(*at) & kBit6);
  Put(std::string{HexByteText(high)[1], digits[1]}, at);
}

// The model and the bytes that the text names.
void StoreBytes(const NamedValues& values, OpenedClone& clone) {
  CloneLines& lines = clone.lines;
  CloneData& data = clone.data;
  for (const auto& [item, value] : values) {
    const std::string bytes = value->is_string() ? BytesOf(*value).value_or("") : std::string();
    switch (item->kind) {
      case ItemKind::kModel: data.model = FindModel(bytes).value_or(data.model); break;
      case ItemKind::kVersion: data.image.VersionA = bytes == "A"; break;
      case ItemKind::kCarriedByte: Put(bytes, ByteIn(lines, *item)); break;
      case ItemKind::kOtherBits: PutOtherBits(bytes, ByteIn(lines, *item)); break;
      case ItemKind::kStoredData: Put(bytes, DigitsIn(lines, item->unit)); break;
      case ItemKind::kOddDialText:
        Put(DialLine(bytes), lines.text.data() + (kFirstDialLine + item->index) * kCloneLineLength);
        break;
      default: break;
    }
  }
  // Over the bits that they share with others.
  for (const auto& [item, value] : values) {
    if (item->kind == ItemKind::kOddByte) Put(*BytesOf(*value), ByteIn(lines, *item));
  }
  Put(HeaderLine(data.model, VersionOf(data.image)), lines.text.data());
}

// ---- what an editor could make

class Editor {
 public:
  Editor(CloneData& data, Applied& result) : data_(data), result_(result) {}

  void Edit(const NamedValues& values) {
    std::map<Unit, NamedValues> channels;
    for (const Named& named : values) {
      switch (named.item->kind) {
        case ItemKind::kSetting: Setting(named); break;
        case ItemKind::kDialText: DialText(named); break;
        case ItemKind::kInUse:
        case ItemKind::kField:
        case ItemKind::kStoredData: channels[named.item->unit].push_back(named); break;
        default: ++result_.applied; break;
      }
    }
    for (const auto& [unit, named] : channels) Channel(unit, named);
  }

 private:
  void Refuse(const Named& named, const std::string& why) {
    result_.notes.push_back(named.Where() + ": " + ValueText(*named.value) + ' ' + why);
  }

  void Setting(const Named& named) {
    const q40::Setting& setting = Settings()[named.item->index];
    const Choices choices = Choices::Of(setting);
    const auto code = choices.CodeOf(*named.value);
    if (!code) return Refuse(named, choices.WhyNot(*named.value));
    data_.settings.*setting.value = *code;
    ++result_.applied;
  }

  void DialText(const Named& named) {
    std::string& text = data_.dial[named.item->index];
    const auto bytes = BytesOf(*named.value);
    if (!bytes) return Refuse(named, "holds characters that no clone file can");
    if (*bytes != text) {
      const std::string typed = UpperCase(*bytes);
      const std::string why = WhyNotDialText(typed, static_cast<int>(named.item->index));
      if (!why.empty()) return Refuse(named, why);
      text = typed;
    }
    ++result_.applied;
  }

  void Channel(Unit unit, const NamedValues& values) {
    const auto is = [](ItemKind kind) {
      return [kind](const Named& named) { return named.item->kind == kind; };
    };
    const auto in_use = std::find_if(values.begin(), values.end(), is(ItemKind::kInUse));
    const bool stored = std::any_of(values.begin(), values.end(), is(ItemKind::kStoredData));
    if (in_use != values.end() && !in_use->value->get<bool>()) {
      if (!stored || IsInUse(data_, unit)) Store(unit, {}, false);
      for (const Named& named : values) {
        if (named.item->kind == ItemKind::kField) Refuse(named, "is for a channel in use only");
      }
      ++result_.applied;
      return;
    }
    if (stored) ++result_.applied;
    const bool has_fields = std::any_of(values.begin(), values.end(), is(ItemKind::kField));
    if (has_fields || in_use != values.end()) Fields(unit, values);
  }

  // As OK in the edit dialog: the channel is in use afterwards.
  void Fields(Unit unit, const NamedValues& values) {
    EditedChannel channel = EditedChannelOf(data_, unit);
    const bool fresh = unit.kind() == Unit::Kind::kMemory && !channel.in_use;
    ChannelRecord record = fresh ? data_.image.TemplateChannel() : RecordOf(data_, unit);
    const auto notes = result_.notes.size();
    int fitted = 0;
    for (const Named& named : values) {
      if (named.item->kind == ItemKind::kInUse) ++fitted;
      if (named.item->kind != ItemKind::kField) continue;
      if (FieldFits(named, channel, record)) {
        ++fitted;
      } else if (!channel.in_use && named.item->field == Field::kFrequency) {
        result_.notes.back() += "; the channel stays empty";
        result_.notes.erase(result_.notes.begin() + static_cast<std::ptrdiff_t>(notes),
                            result_.notes.end() - 1);
        return;
      }
    }
    if (unit.kind() == Unit::Kind::kSpecial && unit.index() >= kPhRow && record.Frequency() == 0) {
      result_.notes.push_back(PointerTo(values.front().item->place, "Frequency") +
                              ": a PH or PL without one is absent; left as it was");
      return;
    }
    result_.applied += fitted;
    Store(unit, std::move(record), true);
  }

  // Takes a value into the record; false, and a note, when it does not fit.
  bool FieldFits(const Named& named, const EditedChannel& channel, ChannelRecord& record) {
    const Field field = named.item->field;
    ChannelRecord changed = record;
    std::string why = SetField(channel.kind, field, *named.value, changed);
    const auto number = record.Number(channel.kind, field);
    const bool held =
        changed.Number(channel.kind, field) == number &&
        changed.Text(channel.kind, Field::kName) == record.Text(channel.kind, Field::kName);
    if (why.empty() && !held) why = WhyNotField(changed, field, channel);
    if (!why.empty()) {
      Refuse(named, why);
      return false;
    }
    if (!held) record = std::move(changed);
    return true;
  }

  static std::string SetField(ChannelKind kind, Field field, const Json& value,
                              ChannelRecord& record) {
    if (field == Field::kFrequency || field == Field::kShiftFrequency) {
      const auto mhz = MhzOf(value);
      if (!mhz) return "is no frequency in steps of 0.0001 MHz up to 9999.9999";
      record.Set(kind, field, *mhz, FrequencyText(*mhz));
      return {};
    }
    if (field == Field::kName) {
      const auto bytes = BytesOf(value);
      if (!bytes) return "holds characters that no name can have";
      const std::string name = *bytes == record.Text(kind, field) ? *bytes : UpperCase(*bytes);
      record.Set(kind, field, name.empty() ? 0 : 1, name);
      return {};
    }
    const Choices& choices = Choices::Of(field);
    const auto code = choices.CodeOf(value);
    if (!code) return choices.WhyNot(value);
    SetCode(record, kind, field, *code);
    return {};
  }

  void Store(Unit unit, ChannelRecord record, bool in_use) {
    CloneImage& image = data_.image;
    const auto row = static_cast<std::size_t>(unit.index());
    if (unit.kind() == Unit::Kind::kMemory) {
      image.MemoryTable[row] = std::move(record);
      image.ChannelInUse[row] = in_use;
      return;
    }
    SpecialStore(image, unit.band())[row] = std::move(record);
    if (unit.index() < kPhRow) return;
    PresentPair present = StoredPresent(image, unit.band());
    present[row - kPhRow] = in_use;
    SetStoredPresent(image, unit.band(), present);
  }

  CloneData& data_;
  Applied& result_;
};

// ---- the file afterwards

// Takes into `lines` what has changed from one way of saving to another, and leaves every other byte.
void Merge(std::string_view before, std::string_view after, char* lines) {
  for (std::size_t i = 0; i + 1 < before.size(); i += kByteDigits) {
    const std::string_view changed = after.substr(i, kByteDigits);
    if (before.substr(i, kByteDigits) != changed) Put(changed, lines + i);
  }
}

// Bytes and channels of which the text says the fields, but not how they are stored, are stored as Save
// does it. What Save always writes anew is, too, unless the text names it.
void MergeLines(const NamedValues& values, const CloneLines& before, const CloneLines& after,
                CloneLines& lines) {
  using Byte = std::pair<Unit, std::size_t>;
  std::set<Byte> as_saved = {{Unit::Settings(0), kStartChannelByte}};
  std::set<Byte> as_it_is;
  std::set<Unit> edited;
  std::set<Unit> stored;
  for (const auto& [item, value] : values) {
    const ItemKind kind = item->kind;
    if (kind == ItemKind::kSetting) {
      const Setting& setting = Settings()[item->index];
      as_saved.emplace(item->unit, setting.line % 2 * kBlockSize + setting.byte);
    }
    if (kind == ItemKind::kOddByte) as_it_is.emplace(item->unit, item->index);
    if (kind == ItemKind::kStoredData) stored.insert(item->unit);
    if (kind == ItemKind::kField || kind == ItemKind::kInUse) edited.insert(item->unit);
  }
  const Byte start = {Unit::Settings(0), kStartChannelByte};
  const std::string named_start(
      DigitsIn(std::as_const(lines), start.first).substr(2 * start.second, 2));
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    if (unit.kind() == Unit::Kind::kDialer) continue;
    if (edited.contains(unit) && !stored.contains(unit)) {
      Put(DigitsIn(after, unit), DigitsIn(lines, unit));
    } else {
      Merge(DigitsIn(before, unit), DigitsIn(after, unit), DigitsIn(lines, unit));
    }
  }
  for (const Byte& byte : as_saved) {
    if (as_it_is.contains(byte)) continue;
    Put(DigitsIn(after, byte.first).substr(2 * byte.second, 2),
        DigitsIn(lines, byte.first) + 2 * byte.second);
  }
  if (as_it_is.contains(start)) Put(named_start, DigitsIn(lines, start.first) + 2 * start.second);
  for (std::size_t i = kFirstDialLine; i < kFirstDialLine + kDialCount; ++i)
    Put(after.Line(i), lines.text.data() + i * kCloneLineLength);
}

// What is read back of the file is not what was set.
void TellLosses(const NamedValues& values, const CloneData& set, const CloneData& kept,
                std::vector<std::string>& notes) {
  for (const Named& named : values) {
    const Json wanted = ValueOf(set, *named.item);
    const Json read = ValueOf(kept, *named.item);
    if (wanted == read) continue;
    notes.push_back(named.Where() + ": " + ValueText(wanted) + " is read back as " +
                    ValueText(read));
  }
}

}  // namespace

Applied ApplyJson(const OpenedClone& clone, const std::vector<JsonEntry>& entries) {
  Applied result;
  const NamedValues values = Names().Resolve(entries, result.problems);
  if (!result.problems.empty()) return result;

  OpenedClone work = clone;
  StoreBytes(values, work);
  const auto reopen = [&](CloneData& data) {
    const OpenResult opened = OpenCloneText(CloneTextOf(work.lines), {}, data);
    if (opened.problem) result.problems.push_back(opened.problem->what);
    result.odd_digit = opened.odd_digit;
    return !opened.problem;
  };
  work.data = FreshData();
  if (!reopen(work.data)) return result;
  CloneData edited = work.data;
  Editor(edited, result).Edit(values);
  MergeLines(values, SavedLines(work.data), SavedLines(edited), work.lines);
  CloneData kept = FreshData();
  if (!reopen(kept)) return result;
  TellLosses(values, edited, kept, result.notes);
  result.text = CloneTextOf(work.lines);
  return result;
}

}  // namespace q40
