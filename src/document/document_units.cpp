#include "document/document_units.h"

#include <algorithm>

#include "base/hex.h"
#include "document/defaults.h"
#include "radio/channel_codec.h"
#include "radio/settings_codec.h"

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

// Whether `a` with some bytes of `b` is another document, or none that can be read.
bool Shows(const Unit& a, const Unit& b, const CloneDocument& document_a, std::size_t first,
           std::size_t count) {
  Unit mixed = a;
  mixed.digits.replace(2 * first, 2 * count, b.digits, 2 * first, 2 * count);
  CloneDocument document = document_a;
  return LoadUnit(mixed, document) || !DifferencesAt(a.address, document_a, document).empty();
}

// Bytes that differ without showing in any cell: a byte that nobody reads, or bytes that are moved
// but spell the same.
void AddHiddenBytes(const Unit& a, const Unit& b, const CloneDocument& document_a,
                    std::vector<CellDifference>& differences) {
  for (std::size_t byte = 0; byte < kUnitSize; ++byte) {
    std::string in_a = UpperCase(a.digits.substr(2 * byte, 2));
    std::string in_b = UpperCase(b.digits.substr(2 * byte, 2));
    if (in_a == in_b) continue;
    StoredByte stored = ByteAt(a.address, byte);
    if (Shows(a, b, document_a, byte, 1) && Shows(a, b, document_a, stored.first, stored.count)) {
      continue;
    }
    differences.push_back(
        {std::move(stored.place), std::move(stored.name), std::move(in_a), std::move(in_b)});
  }
}

std::vector<CellDifference> Unreadable(Address unit, const std::string& why) {
  return {{ByteAt(unit, 0).place, "content", "", "cannot be read: " + why}};
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
  const UnitContent content = ContentAt(unit.address);
  switch (content.kind) {
    case UnitContent::Kind::kSettings:
      LoadSettings(unit, static_cast<std::size_t>(content.number), document);
      return std::nullopt;
    case UnitContent::Kind::kSpecial:
      return LoadSpecial(unit, content.band, content.number, document.image);
    case UnitContent::Kind::kDial:
      for (const int half : {0, 1}) {
        const std::size_t at = static_cast<std::size_t>(half) * kBlockDigits;
        UpDateDialData(document.dial, unit.digits.substr(at, kBlockDigits),
                       2 * content.number + half);
      }
      return std::nullopt;
    case UnitContent::Kind::kMemory:
      return Why(DecodeMemoryChannel(unit.digits, content.number, document.image));
    case UnitContent::Kind::kNothing: break;
  }
  return std::nullopt;
}

std::vector<CellDifference> UnitDifferences(const Unit& a, const Unit& b) {
  // The program writes some digits in lower case, the radio answers in capitals.
  if (UpperCase(a.digits) == UpperCase(b.digits)) return {};
  if (!std::all_of(b.digits.begin(), b.digits.end(), IsHexDigit)) {
    return Unreadable(a.address, "no hexadecimal digits");
  }
  CloneDocument document_a = FreshDocument();
  CloneDocument document_b = document_a;
  for (const auto& [unit, document] : {std::pair{&a, &document_a}, std::pair{&b, &document_b}}) {
    if (const auto why = LoadUnit(*unit, *document)) return Unreadable(a.address, *why);
  }
  auto differences = DifferencesAt(a.address, document_a, document_b);
  AddHiddenBytes(a, b, document_a, differences);
  return differences;
}

}  // namespace q40
