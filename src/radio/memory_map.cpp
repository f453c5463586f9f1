#include "radio/memory_map.h"

#include "base/hex.h"
#include "radio/dial_text.h"

namespace q40 {

std::string ChannelTitle(int n) {
  return n < kFirstDChannel ? std::to_string(n) : 'D' + std::to_string(n - kFirstDChannel);
}

UnitContent ContentAt(Address address) {
  using enum UnitContent::Kind;
  for (int area = 0; area < kSettingsUnitCount; ++area) {
    if (address == kSettingsAddress[static_cast<std::size_t>(area)]) return {kSettings, {}, area};
  }
  for (const Band band : kBands) {
    for (int k = 0; k < kSpecialChannelCount; ++k) {
      if (address == SpecialChannelAddress(band, k)) return {kSpecial, band, k};
    }
  }
  for (int pair = 0; pair < kDialUnitCount; ++pair) {
    if (address == DialAddress(pair)) return {kDial, {}, pair};
  }
  const int offset = address - MemoryChannelAddress(0);
  const int n = offset / kUnitSize;
  if (offset < 0 || offset % kUnitSize != 0 || n >= kMemoryChannelCount) return {};
  return {kMemory, {}, n};
}

std::string UnitName(Address address) {
  const UnitContent unit = ContentAt(address);
  const auto number = static_cast<std::size_t>(unit.number);
  switch (unit.kind) {
    case UnitContent::Kind::kSettings: return "settings area " + std::to_string(unit.number + 1);
    case UnitContent::Kind::kSpecial:
      return std::string(BandName(unit.band)) + " special channel " +
             std::string(kSpecialRowTitles[number]);
    case UnitContent::Kind::kDial:
      return "auto-dialer memories " + std::string(kDialTitles[2 * number]) + " and " +
             std::string(kDialTitles[2 * number + 1]);
    case UnitContent::Kind::kMemory: return "memory channel " + ChannelTitle(unit.number);
    case UnitContent::Kind::kNothing: break;
  }
  return "address " + HexByteText(address >> 8) + HexByteText(address);
}

}  // namespace q40
