#include "document/document_units.h"

#include <algorithm>

#include "base/hex.h"
#include "document/defaults.h"
#include "radio/channel_codec.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

// The radio gets these frequencies in its RPT rows, whatever the rows hold. Intended.
constexpr Units100Hz RepeaterFrequency(Band band) {
  return (band == Band::kVhf ? 145 : 445) * kUnitsPerMhz;
}

std::optional<std::string> Why(const std::optional<CodecError>& error) {
  return error ? std::optional(error->Message()) : std::nullopt;
}

void LoadSettings(std::string_view digits, int area, CloneData& document) {
  auto& lines = document.image.SettingsLine;
  const auto first = 2 * static_cast<std::size_t>(area);
  lines[first] = digits.substr(0, kBlockDigits);
  lines[first + 1] = digits.substr(kBlockDigits);
  document.settings = DecodeSettings(document.image);
}

std::optional<std::string> LoadSpecial(std::string_view digits, Band band, int k,
                                       CloneImage& image) {
  SpecialSet& set = SpecialStore(image, band);
  auto why = Why(DecodeSpecialChannel(digits, k, set));
  if (!why) SetStoredPresent(image, band, PresentByFrequency(set));
  if (band == image.ShownBand) ShowBand(image, band);
  return why;
}

void LoadDialTexts(std::string_view digits, int pair, DialTexts& texts) {
  UpDateDialData(texts, digits.substr(0, kBlockDigits), 2 * pair);
  UpDateDialData(texts, digits.substr(kBlockDigits), 2 * pair + 1);
}

std::string Joined(const std::optional<ChannelLines>& lines) {
  return lines ? std::string(lines->Joined()) : std::string();
}

// Whether `a` with some bytes of `b` gives another document, or one that cannot be read. `scratch`: the
// document of `a`, but for the unit; copying one takes longer than all the rest.
bool Shows(const UnitData& a, const UnitData& b, const CloneData& document_a, CloneData& scratch,
           std::size_t first, std::size_t count) {
  UnitData mixed = a;
  mixed.digits.replace(2 * first, 2 * count, b.digits, 2 * first, 2 * count);
  return LoadUnit(mixed, scratch) || !DifferencesAt(a.unit, document_a, scratch).empty();
}

// Bytes that differ without showing in any cell: a byte that nobody reads, or bytes that are moved
// but spell the same.
void AddHiddenBytes(const UnitData& a, const UnitData& b, const CloneData& document_a,
                    std::vector<CellDifference>& differences) {
  CloneData scratch = document_a;
  for (std::size_t byte = 0; byte < kUnitSize; ++byte) {
    std::string in_a = UpperCase(a.digits.substr(2 * byte, 2));
    std::string in_b = UpperCase(b.digits.substr(2 * byte, 2));
    if (in_a == in_b) continue;
    StoredByte stored = ByteAt(a.unit, byte);
    if (Shows(a, b, document_a, scratch, byte, 1) &&
        Shows(a, b, document_a, scratch, stored.first, stored.count)) {
      continue;
    }
    differences.push_back(
        {std::move(stored.place), std::move(stored.name), std::move(in_a), std::move(in_b)});
  }
}

std::vector<CellDifference> Unreadable(Unit unit, const std::string& why) {
  return {{ByteAt(unit, 0).place, "content", "", "cannot be read: " + why}};
}

}  // namespace

CloneData AsWritten(CloneData document) {
  EncodeSettings(document.settings, document.image);
  for (const Band band : kBands) {
    SpecialStore(document.image, band)[kRptRow].value[0] = RepeaterFrequency(band);
  }
  return document;
}

std::optional<std::string> LoadUnit(const UnitData& data, CloneData& document) {
  const Unit unit = data.unit;
  switch (unit.kind()) {
    case Unit::Kind::kSettings: LoadSettings(data.digits, unit.index(), document); break;
    case Unit::Kind::kSpecial:
      return LoadSpecial(data.digits, unit.band(), unit.index(), document.image);
    case Unit::Kind::kDialer: LoadDialTexts(data.digits, unit.index(), document.dial); break;
    case Unit::Kind::kMemory:
      return Why(DecodeMemoryChannel(data.digits, unit.index(), document.image));
  }
  return std::nullopt;
}

std::string DigitsOf(const CloneData& document, Unit unit) {
  const CloneImage& image = document.image;
  const int index = unit.index();
  switch (unit.kind()) {
    case Unit::Kind::kSettings: {
      const auto first = 2 * static_cast<std::size_t>(index);
      return image.SettingsLine[first] + image.SettingsLine[first + 1];
    }
    case Unit::Kind::kSpecial:
      return Joined(EncodeSpecialChannel(SpecialStore(image, unit.band()),
                                         StoredPresent(image, unit.band()), index));
    case Unit::Kind::kDialer:
      return MakeDialData(document.dial, 2 * index) + MakeDialData(document.dial, 2 * index + 1);
    default: return Joined(EncodeMemoryChannel(image, index));
  }
}

bool SameValues(const UnitData& a, const UnitData& b) {
  if (UpperCase(a.digits) == UpperCase(b.digits)) return true;
  std::string encoded[2];
  const UnitData* const units[] = {&a, &b};
  for (const std::size_t i : {0U, 1U}) {
    CloneData document = FreshData();
    if (LoadUnit(*units[i], document)) return false;
    EncodeSettings(document.settings, document.image);
    encoded[i] = DigitsOf(document, units[i]->unit);
  }
  return encoded[0] == encoded[1];
}

std::vector<CellDifference> UnitDifferences(const UnitData& a, const UnitData& b) {
  // The program writes some digits in lower case, the radio answers in capitals.
  if (UpperCase(a.digits) == UpperCase(b.digits)) return {};
  if (!std::all_of(b.digits.begin(), b.digits.end(), IsHexDigit)) {
    return Unreadable(a.unit, "no hexadecimal digits");
  }
  CloneData document_a = FreshData();
  CloneData document_b = document_a;
  for (const auto& [data, document] : {std::pair{&a, &document_a}, std::pair{&b, &document_b}}) {
    if (const auto why = LoadUnit(*data, *document)) return Unreadable(a.unit, *why);
  }
  auto differences = DifferencesAt(a.unit, document_a, document_b);
  AddHiddenBytes(a, b, document_a, differences);
  return differences;
}

}  // namespace q40
