#include "radio/unit.h"

#include "radio/dial_text.h"

namespace q40 {

std::optional<Unit> Unit::At(Address address) {
  for (int place = 0; place < kUnitCount; ++place) {
    if (Unit(place).address() == address) return Unit(place);
  }
  return std::nullopt;
}

std::string Unit::Name() const {
  switch (kind()) {
    case Kind::kSettings: return "settings area " + std::to_string(index() + 1);
    case Kind::kSpecial:
      return std::string(BandName(band())) + " special channel " +
             std::string(kSpecialRowTitles[static_cast<std::size_t>(index())]);
    case Kind::kDialer: {
      const auto first = 2 * static_cast<std::size_t>(index());
      return "auto-dialer memories " + std::string(kDialTitles[first]) + " and " +
             std::string(kDialTitles[first + 1]);
    }
    default: return "memory channel " + ChannelTitle(index());
  }
}

std::vector<Unit> UnitsOf(Half half) {
  const int first = half == Half::kMemory ? kSettingsUnits : 0;
  const int last = half == Half::kSettings ? kSettingsUnits : kUnitCount;
  std::vector<Unit> units;
  units.reserve(static_cast<std::size_t>(last - first));
  for (int place = first; place < last; ++place) units.push_back(Unit::AtPlace(place));
  return units;
}

}  // namespace q40
