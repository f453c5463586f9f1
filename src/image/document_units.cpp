#include "image/document_units.h"

#include <algorithm>

#include "image/channel_codec.h"
#include "image/defaults.h"
#include "image/hex.h"
#include "image/settings_codec.h"

namespace q40 {
namespace {

std::optional<std::string> Why(const std::optional<CodecError>& error) {
  return error ? std::optional(error->Message()) : std::nullopt;
}

void LoadSettings(const Unit& unit, std::size_t number, CloneDocument& document) {
  auto& lines = document.image.SettingsLine;
  lines[2 * number] = unit.digits.substr(0, kBlockDigits);
  lines[2 * number + 1] = unit.digits.substr(kBlockDigits);
  document.settings = DecodeSettings(document.image);
}

std::optional<std::string> LoadSpecial(const Unit& unit, Band band, int k, CloneImage& image) {
  SpecialSet& set = SpecialStore(image, band);
  auto why = Why(DecodeSpecialChannel(unit.digits, k, set));
  if (!why) SetStoredPresent(image, band, PresentByFrequency(set));
  if (band == image.ShownBand) ShowBand(image, band);
  return why;
}

// Bytes that differ without showing in any field, "byte 23" in each unit's own counting: `a` with such
// a byte of `b` is still `document_a`.
void AddHiddenBytes(const Unit& a, const Unit& b, const CloneDocument& document_a,
                    std::vector<CellDifference>& differences) {
  for (std::size_t byte = 0; 2 * byte < a.digits.size(); ++byte) {
    const std::string in_a = UpperCase(a.digits.substr(2 * byte, 2));
    const std::string in_b = UpperCase(b.digits.substr(2 * byte, 2));
    if (in_a == in_b) continue;
    Unit mixed = a;
    mixed.digits.replace(2 * byte, 2, in_b);
    CloneDocument document = FreshDocument();
    if (LoadUnit(mixed, document) || !DifferencesOf(document_a, document).empty()) continue;
    differences.push_back({UnitName(a.address), "byte " + std::to_string(byte), in_a, in_b});
  }
}

}  // namespace

std::vector<Address> SettingsUnits() {
  std::vector<Address> addresses(kSettingsAddress.begin(), kSettingsAddress.end());
  for (const Band band : kBands) {
    for (int k = 0; k < kSpecialChannelCount; ++k) {
      addresses.push_back(SpecialChannelAddress(band, k));
    }
  }
  for (int unit = 0; unit < kDialUnitCount; ++unit) addresses.push_back(DialAddress(unit));
  return addresses;
}

std::vector<Address> MemoryUnits() {
  std::vector<Address> addresses;
  addresses.reserve(kMemoryChannelCount);
  for (int n = 0; n < kMemoryChannelCount; ++n) addresses.push_back(MemoryChannelAddress(n));
  return addresses;
}

std::optional<std::string> LoadUnit(const Unit& unit, CloneDocument& document) {
  for (std::size_t number = 0; number < kSettingsAddress.size(); ++number) {
    if (unit.address == kSettingsAddress[number]) LoadSettings(unit, number, document);
  }
  for (const Band band : kBands) {
    for (int k = 0; k < kSpecialChannelCount; ++k) {
      if (unit.address != SpecialChannelAddress(band, k)) continue;
      return LoadSpecial(unit, band, k, document.image);
    }
  }
  for (int i = 0; i < kDialCount; ++i) {
    if (unit.address != DialAddress(i / 2)) continue;
    const std::size_t half = static_cast<std::size_t>(i % 2) * kBlockDigits;
    UpDateDialData(document.dial, unit.digits.substr(half, kBlockDigits), i);
  }
  const int offset = unit.address - MemoryChannelAddress(0);
  if (offset < 0 || offset % kUnitSize != 0 || offset / kUnitSize >= kMemoryChannelCount) {
    return std::nullopt;
  }
  return Why(DecodeMemoryChannel(unit.digits, offset / kUnitSize, document.image));
}

std::vector<CellDifference> UnitDifferences(const Unit& a, const Unit& b) {
  // The program writes some digits in lower case, the radio answers in capitals.
  if (UpperCase(a.digits) == UpperCase(b.digits)) return {};
  if (!std::all_of(b.digits.begin(), b.digits.end(), IsHexDigit)) {
    return {{UnitName(a.address), "content", "", "cannot be read: no hexadecimal digits"}};
  }
  CloneDocument document_a = FreshDocument();
  CloneDocument document_b = document_a;
  for (const auto& [unit, document] : {std::pair{&a, &document_a}, std::pair{&b, &document_b}}) {
    if (const auto why = LoadUnit(*unit, *document)) {
      return {{UnitName(a.address), "content", "", "cannot be read: " + *why}};
    }
  }
  auto differences = DifferencesOf(document_a, document_b);
  AddHiddenBytes(a, b, document_a, differences);
  return differences;
}

}  // namespace q40
