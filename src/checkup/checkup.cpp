#include "checkup/checkup.h"

#include <algorithm>
#include <map>
#include <optional>

#include "base/hex.h"
#include "base/plain_text.h"
#include "checkup/read_back.h"
#include "document/defaults.h"
#include "document/document_cells.h"
#include "radio/channel_fields.h"
#include "radio/name_codes.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

using Where = Place::Where;

// What a field that is not read back is called. Fields without a row are kValueLost.
struct LossRow {
  Field field;
  FindingKind kind;
};
constexpr LossRow kLossRows[] = {{Field::kFrequency, FindingKind::kFrequencyLost},
                                 {Field::kStep, FindingKind::kStepLost},
                                 {Field::kShift, FindingKind::kSplitLost},
                                 {Field::kShiftFrequency, FindingKind::kOffsetLost},
                                 {Field::kName, FindingKind::kNameLost}};

FindingKind LossOf(Field field) {
  const auto* const row = std::find_if(std::begin(kLossRows), std::end(kLossRows),
                                       [&](const LossRow& r) { return r.field == field; });
  return row == std::end(kLossRows) ? FindingKind::kValueLost : row->kind;
}

std::string Mhz(Units100Hz frequency) { return OffsetText(frequency); }

// From the number: the text of a cell may be empty, or carry a star.
std::string ValueText(ChannelKind kind, const ChannelRecord& record, Field field) {
  const int number = record.Number(kind, field);
  switch (field) {
    case Field::kFrequency:
    case Field::kShiftFrequency: return Mhz(number);
    case Field::kName: return record.Text(kind, field);
    case Field::kSkip: return number == 1 ? "On" : "Off";
    default: return std::string(CodeText(field, number));
  }
}

// What becomes of the characters of a name, each said once: "")" becomes "(", "x" is left out".
std::string NameChanges(std::string_view name) {
  std::string text;
  const auto add = [&](const std::string& what) {
    if (text.find(what) == std::string::npos) text += (text.empty() ? "" : ", ") + what;
  };
  std::size_t count = 0;
  for (; !name.empty() && count < kNameLength; ++count) {
    const std::string character = FirstCharacters(name, 1);
    const auto digits = NameDigits(character);
    const char back = NameCharacter(HexByteValue({digits.data(), digits.size()}, 0));
    if (back == '\0') {
      add('"' + character + "\" is left out");
    } else if (character != std::string(1, back)) {
      add('"' + character + "\" becomes \"" + back + '"');
    }
    name.remove_prefix(character.size());
  }
  if (!name.empty()) add("six characters fit");
  return text;
}

// One run over one document.
class CheckUpRun {
 public:
  explicit CheckUpRun(const CloneData& document)
      : document_(document), image_(document.image), after_(ReadBack(document)) {}

  Findings Run() {
    Settings();
    for (const Band band : kBands) {
      for (int k = 0; k < kSpecialChannelCount; ++k) SpecialChannel(band, k);
    }
    Dialer();
    for (int n = 0; n < kMemoryChannelCount; ++n) {
      if (image_.ChannelInUse[static_cast<std::size_t>(n)]) MemoryChannel(n);
    }
    return std::move(findings_);
  }

 private:
  void Add(FindingKind kind, const Place& place, std::string_view field,
           std::initializer_list<std::string> values) {
    findings_.push_back({kind, place, std::string(field), FindingText(kind, values)});
  }

  // ---- settings and dialer

  void Settings() {
    CloneImage copy = image_;
    const SettingsValues stored = DecodeSettings(copy);
    const auto items = q40::Settings();
    for (std::size_t i = 0; i < items.size(); ++i) {
      const Setting& field = items[i];
      const Place place{Where::kSetting, Band::kVhf, static_cast<int>(i)};
      const std::string caption = CaptionOf(field);
      if (document_.settings.*field.value != after_.settings.*field.value) {
        const bool burst = field.value == &SettingsValues::cmbTB;
        Add(burst ? FindingKind::kToneBurstLost : FindingKind::kSettingLost, place, caption,
            {SettingText(document_.settings, field), SettingText(after_.settings, field)});
      } else if (document_.settings.*field.value == stored.*field.value) {
        SettingByte(place, field, caption);
      }
      if (field.value == &SettingsValues::chkChannel) StartChannel(place, caption);
    }
  }

  // A control that nobody moved, and whose byte changes nevertheless: it held a value that the
  // control does not know.
  void SettingByte(const Place& place, const Setting& field, const std::string& caption) {
    const std::string before = ByteOf(image_, field.line, field.byte);
    const std::string after = ByteOf(after_.image, field.line, field.byte);
    if (UpperCase(before) == after) return;
    const int address = Unit::kSettingsStart + kBlockSize * field.line + field.byte;
    Add(FindingKind::kSettingRewritten, place, caption,
        {"00" + HexByteText(address), before, SettingText(document_.settings, field), after});
  }

  static std::string ByteOf(const CloneImage& image, int line, int byte) {
    const std::string& text = image.SettingsLine[static_cast<std::size_t>(line)];
    const auto at = 2 * static_cast<std::size_t>(byte);
    return at + 2 <= text.size() ? text.substr(at, 2) : "00";
  }

  void StartChannel(const Place& place, const std::string& caption) {
    constexpr int kStartByte = 4;
    if (document_.settings.chkChannel == 0) return;
    const int start = HexByteValue(ByteOf(after_.image, 0, kStartByte), 0);
    if (start < kMemoryChannelCount) return;
    Add(FindingKind::kNoStartChannel, place, caption, {std::to_string(start)});
  }

  void Dialer() {
    for (int i = 0; i < kDialCount; ++i) {
      const auto at = static_cast<std::size_t>(i);
      if (document_.dial[at] == after_.dial[at]) continue;
      Add(FindingKind::kDialLost, {Where::kDialer, Band::kVhf, i}, kDialTitles[at],
          {document_.dial[at], after_.dial[at]});
    }
  }

  // ---- channels

  void SpecialChannel(Band band, int k) {
    const auto row = static_cast<std::size_t>(k);
    const SpecialSet& set = SpecialStore(image_, band);
    const Place place{Where::kSpecial, band, k};
    if (k >= kPhRow && !Limit(place)) return;
    if (k != kRptRow) OutOfBand(place, set[row].Frequency(), band);
    if (k == kPhRow && Present(image_, band, kPlRow) && set[row].Frequency() < Pl(set)) {
      Add(FindingKind::kPhBelowPl, place, FieldName(Field::kFrequency),
          {Mhz(set[row].Frequency()), Mhz(Pl(set))});
    }
    Losses(place, ChannelKind::kSpecial, set[row], SpecialStore(after_.image, band)[row]);
    if (k != kRptRow) ShiftLeavesBand(place, ChannelKind::kSpecial, set[row], band);
  }

  static Units100Hz Pl(const SpecialSet& set) { return set[kPlRow].Frequency(); }
  static bool Present(const CloneImage& image, Band band, int k) {
    return EffectivelyPresent(SpecialStore(image, band), StoredPresent(image, band), k);
  }

  // Whether PH or PL exists for the radio. Adds a finding when its mark will not survive.
  bool Limit(const Place& place) {
    const auto flag = static_cast<std::size_t>(place.index - kPhRow);
    const bool marked = StoredPresent(image_, place.band)[flag];
    const bool later = StoredPresent(after_.image, place.band)[flag];
    const std::string name = PlaceText(place).substr(BandName(place.band).size() + 1);
    const auto row = static_cast<std::size_t>(place.index);
    if (marked && !later) {
      Add(FindingKind::kLimitWithoutFrequency, place, FieldName(Field::kFrequency), {name});
    } else if (!marked && later && !IsDefault(place)) {
      Add(FindingKind::kLimitComesBack, place, FieldName(Field::kFrequency),
          {name, Mhz(SpecialStore(image_, place.band)[row].Frequency())});
    }
    return Present(image_, place.band, place.index);
  }

  // A special channel as a new document has it, which nobody has chosen. Its PH and PL are absent
  // and have a frequency all the same.
  [[nodiscard]] bool IsDefault(const Place& place) const {
    CloneImage fresh;
    LoadSpecialDefaults(fresh, document_.model);
    const auto row = static_cast<std::size_t>(place.index);
    return SpecialStore(image_, place.band)[row] == SpecialStore(fresh, place.band)[row];
  }

  void MemoryChannel(int n) {
    constexpr auto kKind = ChannelKind::kMemory;
    const auto row = static_cast<std::size_t>(n);
    const ChannelRecord& record = image_.MemoryTable[row];
    const ChannelRecord& after = after_.image.MemoryTable[row];
    const Place place{Where::kMemory, Band::kVhf, n};
    OutOfBand(place, record.Frequency(), std::nullopt);
    Duplicate(frequencies_, record.Frequency(), place, FindingKind::kDuplicateFrequency,
              Field::kFrequency, Mhz(record.Frequency()));
    Losses(place, kKind, record, after);
    ShiftLeavesBand(place, kKind, record, BandOf(record.Frequency()));
    if (Trimmed(record.Text(kKind, Field::kName)).empty()) {
      Add(FindingKind::kNoName, place, FieldName(Field::kName), {});
    }
    // As the radio keeps them: two names may differ in what it does not keep.
    const std::string& kept = after.Text(kKind, Field::kName);
    if (Trimmed(kept).empty()) return;
    Duplicate(names_, kept, place, FindingKind::kDuplicateName, Field::kName, kept);
  }

  // Reported at every channel with that value except the first, which is named.
  template <class Value>
  void Duplicate(std::map<Value, int>& seen, const Value& value, const Place& place,
                 FindingKind kind, Field field, const std::string& text) {
    const auto [first, fresh] = seen.try_emplace(value, place.index);
    if (fresh) return;
    Add(kind, place, FieldName(field),
        {text, PlaceText({Where::kMemory, Band::kVhf, first->second})});
  }

  // Nobody has chosen what an RPT row holds in the fields that it does not carry.
  void Losses(const Place& place, ChannelKind kind, const ChannelRecord& before,
              const ChannelRecord& after) {
    const bool repeater = place.where == Where::kSpecial && place.index == kRptRow;
    for (int i = 0; i < kFieldCount; ++i) {
      const auto field = static_cast<Field>(i);
      if (!HasField(kind, field) || (repeater && !CarriedInRepeaterRow(field))) continue;
      const bool is_name = field == Field::kName;
      const bool kept = is_name ? before.Text(kind, field) == after.Text(kind, field)
                                : before.Number(kind, field) == after.Number(kind, field);
      if (kept) continue;
      const std::string was = ValueText(kind, before, field);
      Add(LossOf(field), place, FieldName(field),
          {was, ValueText(kind, after, field), is_name ? NameChanges(was) : std::string()});
    }
  }

  // ---- the bands of the model

  [[nodiscard]] bool Contains(Band band, Units100Hz frequency) const {
    return BandTableOf(band).Contains(frequency / kUnitsPerMhz, document_.model, Range());
  }
  [[nodiscard]] int Range() const { return VersionOf(image_); }

  // The band that a memory channel lies in. On a version A radio, whose bands have no lower limit,
  // the first that fits.
  [[nodiscard]] std::optional<Band> BandOf(Units100Hz frequency) const {
    const auto* const band =
        std::find_if(kBands.begin(), kBands.end(), [&](Band b) { return Contains(b, frequency); });
    if (band == kBands.end()) return std::nullopt;
    return *band;
  }

  // "(144.000-145.995MHz)" without the brackets; empty for the model that has no ranges.
  [[nodiscard]] std::string RangeText(Band band) const {
    const std::string_view text = BandTableOf(band).BandText(document_.model, Range());
    return std::string(text.empty() ? text : text.substr(1, text.size() - 2));
  }

  // A memory channel (no band) may lie in either band.
  void OutOfBand(const Place& place, Units100Hz frequency, std::optional<Band> band) {
    if (RangeText(Band::kVhf).empty()) return;
    if (band ? Contains(*band, frequency) : BandOf(frequency).has_value()) return;
    const std::string ranges =
        band ? RangeText(*band) : RangeText(Band::kVhf) + " and " + RangeText(Band::kUhf);
    Add(FindingKind::kOutOfBand, place, FieldName(Field::kFrequency),
        {Mhz(frequency),
         std::string(ModelName(document_.model)) + " version " + (Range() == kVersionA ? "A" : "0"),
         ranges});
  }

  // For a frequency that is in its band. Only the radio knows what an offset means with "Split".
  void ShiftLeavesBand(const Place& place, ChannelKind kind, const ChannelRecord& record,
                       std::optional<Band> band) {
    constexpr int kMinus = 1;
    constexpr int kPlus = 2;
    const int shift = record.Number(kind, Field::kShift);
    if ((shift != kMinus && shift != kPlus) || !band || !Contains(*band, record.Frequency())) {
      return;
    }
    const Units100Hz offset = record.Number(kind, Field::kShiftFrequency);
    const Units100Hz transmit = record.Frequency() + (shift == kPlus ? offset : -offset);
    if (transmit >= 0 && Contains(*band, transmit)) return;
    Add(FindingKind::kShiftLeavesBand, place, FieldName(Field::kShift),
        {std::string(CodeText(Field::kShift, shift)), Mhz(offset),
         transmit < 0 ? '-' + Mhz(-transmit) : Mhz(transmit), std::string(BandName(*band))});
  }

  const CloneData& document_;
  const CloneImage& image_;
  CloneData after_;
  Findings findings_;
  std::map<Units100Hz, int> frequencies_;  // first memory channel with it
  std::map<std::string, int> names_;
};

}  // namespace

Findings CheckUp(const CloneData& document) { return CheckUpRun(document).Run(); }

}  // namespace q40
