#include "sim/radio_memory.h"

#include <algorithm>

#include "base/hex.h"
#include "document/defaults.h"
#include "document/document_units.h"
#include "radio/channel_codec.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

bool Inside(Address address, std::size_t size) {
  return address + size <= static_cast<std::size_t>(kMemorySize);
}

}  // namespace

std::optional<std::string> RadioMemory::Read(Address address, int size) const {
  if (!Inside(address, static_cast<std::size_t>(size))) return std::nullopt;
  std::string digits;
  for (int i = 0; i < size; ++i) {
    digits += HexByteText(bytes_[address + static_cast<std::size_t>(i)]);
  }
  return digits;
}

bool RadioMemory::Write(Address address, std::string_view digits) {
  const std::size_t size = digits.size() / 2;
  if (!Inside(address, size) || !std::all_of(digits.begin(), digits.end(), IsHexDigit)) {
    return false;
  }
  for (std::size_t i = 0; i < size; ++i) {
    bytes_[address + i] = static_cast<std::uint8_t>(HexByteValue(digits, 2 * i));
  }
  return true;
}

bool RadioMemory::SetRaw(std::string_view raw) {
  if (raw.size() != bytes_.size()) return false;
  std::transform(raw.begin(), raw.end(), bytes_.begin(),
                 [](char c) { return static_cast<std::uint8_t>(c); });
  return true;
}

void StoreDocument(CloneDocument document, RadioMemory& memory) {
  CloneImage& image = document.image;
  EncodeSettings(document.settings, image);
  memory.Write(kSettingsAddress[0], image.SettingsLine[0] + image.SettingsLine[1]);
  memory.Write(kSettingsAddress[1], image.SettingsLine[2] + image.SettingsLine[3]);
  for (const Band band : kBands) {
    for (int k = 0; k < kSpecialChannelCount; ++k) {
      const auto lines =
          EncodeSpecialChannel(SpecialStore(image, band), StoredPresent(image, band), k);
      if (lines) memory.Write(SpecialChannelAddress(band, k), lines->Joined());
    }
  }
  for (int unit = 0; unit < kDialUnitCount; ++unit) {
    memory.Write(DialAddress(unit),
                 MakeDialData(document.dial, 2 * unit) + MakeDialData(document.dial, 2 * unit + 1));
  }
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    if (const auto lines = EncodeMemoryChannel(image, n)) {
      memory.Write(MemoryChannelAddress(n), lines->Joined());
    }
  }
}

std::optional<CloneDocument> DocumentOf(const RadioMemory& memory, int model, bool version_a,
                                        std::string& why) {
  CloneDocument document = FreshDocument();
  ChangeModel(document, model);
  document.image.VersionA = version_a;
  for (const auto& addresses : {SettingsUnits(), MemoryUnits()}) {
    for (const Address address : addresses) {
      if (const auto error =
              LoadUnit({address, memory.Read(address, kUnitSize).value()}, document)) {
        why = UnitName(address) + ": " + *error;
        return std::nullopt;
      }
    }
  }
  return document;
}

}  // namespace q40
