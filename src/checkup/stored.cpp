// What a file or a radio stores and no document can hold.
#include <algorithm>

#include "base/decimal.h"
#include "base/digits.h"
#include "base/hex.h"
#include "checkup/checkup.h"
#include "document/defaults.h"
#include "radio/channel_codec.h"
#include "radio/channel_fields.h"
#include "radio/name_codes.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

bool IsFrequency(Field field) {
  return field == Field::kFrequency || field == Field::kShiftFrequency;
}

std::string StoredWords(Field field, const std::string& digits) {
  if (IsFrequency(field)) {
    if (std::all_of(digits.begin(), digits.end(), IsDigit)) {
      return OffsetText(static_cast<Units100Hz>(std::stol(digits))) + " MHz";
    }
  } else if (std::all_of(digits.begin(), digits.end(), IsHexDigit)) {
    const int code = HexByteValue(digits, 0);
    const bool known = !IndexListOf(field).empty() || KnownCode(field, code) == code;
    const std::string_view word = CodeText(field, code);
    if (known && !word.empty()) return '"' + std::string(word) + '"';
  }
  return "0x" + digits;
}

// A channel as it is opened.
struct Opened {
  Place place;
  ChannelKind kind;
  bool in_use = false;
  ChannelRecord record{};
  std::string digits{};  // that the next save gives; empty when the unit cannot be decoded

  [[nodiscard]] bool Carries(Field field) const {
    const bool repeater = kind == ChannelKind::kSpecial && place.index == kRptRow;
    return HasField(kind, field) && (!repeater || CarriedInRepeaterRow(field));
  }
};

Opened OpenMemory(const UnitData& unit, int n) {
  Opened opened{{Place::Where::kMemory, Band::kVhf, n}, ChannelKind::kMemory};
  CloneData document = FreshData();
  if (LoadUnit(unit, document)) return opened;
  opened.in_use = document.image.ChannelInUse[static_cast<std::size_t>(n)];
  opened.record = document.image.MemoryTable[static_cast<std::size_t>(n)];
  if (const auto lines = EncodeMemoryChannel(document.image, n)) opened.digits = lines->Joined();
  return opened;
}

Opened OpenSpecial(const UnitData& unit, Band band, int k) {
  Opened opened{{Place::Where::kSpecial, band, k}, ChannelKind::kSpecial};
  CloneData document = FreshData();
  if (LoadUnit(unit, document)) return opened;
  const SpecialSet& set = SpecialStore(document.image, band);
  const PresentPair present = StoredPresent(document.image, band);
  opened.in_use = EffectivelyPresent(set, present, k);
  opened.record = set[static_cast<std::size_t>(k)];
  if (const auto lines = EncodeSpecialChannel(set, present, k)) opened.digits = lines->Joined();
  return opened;
}

void Add(const Place& place, std::string_view field, const std::string& stored,
         const std::string& opened, Findings& findings) {
  findings.push_back({FindingKind::kStoredValueDropped, place, std::string(field),
                      FindingText(FindingKind::kStoredValueDropped, {stored, opened})});
}

// Codes that stand for no character, and are not the end of the name.
bool HasStrangeCharacter(std::string_view digits) {
  for (std::size_t at = 0; at < digits.size(); at += 2) {
    const int code = HexByteValue(digits, at);
    if (code != 0 && NameCharacter(code) == '\0') return true;
  }
  return false;
}

void CompareChannel(const UnitData& unit, const Opened& channel, Findings& findings) {
  if (!channel.in_use || channel.digits.empty()) return;
  for (int i = 0; i < kFieldCount; ++i) {
    const auto field = static_cast<Field>(i);
    if (field == Field::kSkip || !channel.Carries(field)) continue;
    const FieldBytes place = BytesOf(field);
    const auto bytes = [&](std::string_view digits) {
      return UpperCase(digits.substr(2 * place.byte, 2 * place.count));
    };
    const std::string stored = bytes(unit.digits);
    const std::string opened = bytes(channel.digits);
    if (field == Field::kName) {
      // CheckUp reports what the document's own name loses.
      if (!HasStrangeCharacter(stored)) continue;
      Add(channel.place, FieldName(field), "0x" + stored,
          '"' + channel.record.Text(channel.kind, field) + '"', findings);
    } else if (stored != opened) {
      Add(channel.place, FieldName(field), StoredWords(field, stored), StoredWords(field, opened),
          findings);
    }
  }
}

// A value that its list or slider does not have is repaired when the settings are loaded.
void CompareSettings(const UnitData& unit, int first_line, Findings& findings) {
  CloneData document = FreshData();
  if (LoadUnit(unit, document)) return;
  const auto items = Settings();
  for (std::size_t i = 0; i < items.size(); ++i) {
    const Setting& field = items[i];
    if (field.line != first_line && field.line != first_line + 1) continue;
    const auto line = static_cast<std::size_t>(field.line - first_line);
    const auto at = line * kBlockDigits + 2 * static_cast<std::size_t>(field.byte);
    const std::string stored = UpperCase(unit.digits.substr(at, 2));
    const auto loaded = static_cast<std::size_t>(field.line);
    if (stored == UpperCase(document.image.SettingsLine[loaded]).substr(at % kBlockDigits, 2)) {
      continue;
    }
    SettingsValues values = document.settings;
    values.*field.value = HexByteValue(stored, 0);
    const std::string word = SettingText(values, field);
    Add({Place::Where::kSetting, Band::kVhf, static_cast<int>(i)}, CaptionOf(field),
        word.empty() ? "0x" + stored : '"' + word + '"',
        '"' + SettingText(document.settings, field) + '"', findings);
  }
}

}  // namespace

Findings CheckStored(std::span<const UnitData> units) {
  Findings findings;
  for (const UnitData& data : units) {
    const Unit unit = data.unit;
    switch (unit.kind()) {
      case Unit::Kind::kSettings: CompareSettings(data, 2 * unit.index(), findings); break;
      case Unit::Kind::kSpecial:
        CompareChannel(data, OpenSpecial(data, unit.band(), unit.index()), findings);
        break;
      case Unit::Kind::kMemory:
        CompareChannel(data, OpenMemory(data, unit.index()), findings);
        break;
      case Unit::Kind::kDialer: break;  // the codec of a dialer text drops nothing that shows
    }
  }
  return findings;
}

}  // namespace q40
