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

void StoreDocument(CloneData document, RadioMemory& memory) {
  EncodeSettings(document.settings, document.image);
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    memory.Write(unit.address(), DigitsOf(document, unit));
  }
}

std::optional<CloneData> DocumentOf(const RadioMemory& memory, int model, bool version_a,
                                    std::string& why) {
  CloneData document = FreshData();
  ChangeModel(document, model);
  document.image.VersionA = version_a;
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    const auto error = LoadUnit({unit, memory.Read(unit.address(), kUnitSize).value()}, document);
    if (!error) continue;
    why = unit.Name() + ": " + *error;
    return std::nullopt;
  }
  return document;
}

}  // namespace q40
