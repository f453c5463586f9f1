#include "image/memory_map.h"

#include "app/tables/grid_columns.h"
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
      const std::string set = band == Band::kVhf ? "VHF" : "UHF";
      return set + " special channel " +
             std::string(kSpecialRowTitles[static_cast<std::size_t>(k)]);
    }
  }
  for (int unit = 0; unit < kDialUnitCount; ++unit) {
    if (address == DialAddress(unit)) {
      return "auto-dialer memories " + std::to_string(2 * unit + 1) + " and " +
             std::to_string(2 * unit + 2);
    }
  }
  const int offset = address - MemoryChannelAddress(0);
  if (offset >= 0 && offset % kUnitSize == 0 && offset / kUnitSize < kMemoryChannelCount) {
    return "memory channel " + ChannelTitle(offset / kUnitSize);
  }
  return "address " + HexByteText(address >> 8) + HexByteText(address);
}

}  // namespace q40
