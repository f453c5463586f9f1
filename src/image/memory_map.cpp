#include "image/memory_map.h"

#include "image/dial_text.h"
#include "image/hex.h"

namespace q40 {

std::string ChannelTitle(int n) {
  return n < kFirstDChannel ? std::to_string(n) : 'D' + std::to_string(n - kFirstDChannel);
}

std::string UnitName(Address address) {
  for (int unit = 0; unit < kSettingsUnitCount; ++unit) {
    if (address == kSettingsAddress[static_cast<std::size_t>(unit)]) {
      return "settings area " + std::to_string(unit + 1);
    }
  }
  for (const Band band : kBands) {
    for (int k = 0; k < kSpecialChannelCount; ++k) {
      if (address != SpecialChannelAddress(band, k)) continue;
      return std::string(BandName(band)) + " special channel " +
             std::string(kSpecialRowTitles[static_cast<std::size_t>(k)]);
    }
  }
  for (int unit = 0; unit < kDialUnitCount; ++unit) {
    if (address == DialAddress(unit)) {
      const auto first = 2 * static_cast<std::size_t>(unit);
      return "auto-dialer memories " + std::string(kDialTitles[first]) + " and " +
             std::string(kDialTitles[first + 1]);
    }
  }
  const int offset = address - MemoryChannelAddress(0);
  if (offset >= 0 && offset % kUnitSize == 0 && offset / kUnitSize < kMemoryChannelCount) {
    return "memory channel " + ChannelTitle(offset / kUnitSize);
  }
  return "address " + HexByteText(address >> 8) + HexByteText(address);
}

}  // namespace q40
