#include "link/write_plan.h"

#include <algorithm>

#include "base/hex.h"
#include "base/plain_text.h"
#include "radio/channel_codec.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

// The radio gets these frequencies in its RPT rows, whatever the rows hold. Intended.
constexpr Units100Hz RepeaterFrequency(Band band) {
  return (band == Band::kVhf ? 145 : 445) * kUnitsPerMhz;
}

std::string DigitsOf(const std::optional<ChannelLines>& lines) {
  return lines ? std::string(lines->Joined()) : std::string();
}

void AddSpecialChannels(const CloneImage& image, Band band, std::vector<Unit>& units) {
  SpecialSet set = SpecialStore(image, band);  // a working copy: the store keeps its RPT
  set[kRptRow].value[0] = RepeaterFrequency(band);
  for (int k = 0; k < kSpecialChannelCount; ++k) {
    units.push_back({SpecialChannelAddress(band, k),
                     DigitsOf(EncodeSpecialChannel(set, StoredPresent(image, band), k))});
  }
}

std::vector<Unit> SettingsUnitsOf(const CloneDocument& document) {
  CloneImage image = document.image;
  EncodeSettings(document.settings, image);
  const auto& lines = image.SettingsLine;
  std::vector<Unit> units = {{kSettingsAddress[0], lines[0] + lines[1]},
                             {kSettingsAddress[1], lines[2] + lines[3]}};
  for (const Band band : kBands) AddSpecialChannels(image, band, units);
  for (int unit = 0; unit < kDialUnitCount; ++unit) {
    units.push_back({DialAddress(unit), MakeDialData(document.dial, 2 * unit) +
                                            MakeDialData(document.dial, 2 * unit + 1)});
  }
  return units;
}

std::vector<Unit> MemoryUnitsOf(const CloneImage& image) {
  std::vector<Unit> units;
  units.reserve(kMemoryChannelCount);
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    units.push_back({MemoryChannelAddress(n), DigitsOf(EncodeMemoryChannel(image, n))});
  }
  return units;
}

// "byte 0x0023 holds "ZZ", which is no hexadecimal number"
std::string OddByteText(const Unit& unit, std::size_t digit) {
  const std::size_t byte = digit / 2;
  const int address = unit.address + static_cast<int>(byte);
  return "byte 0x" + HexByteText(address >> 8) + HexByteText(address) + " holds " +
         Quoted(unit.digits.substr(2 * byte, 2)) + ", which is no hexadecimal number";
}

std::optional<BadUnit> BadUnitOf(const Unit& unit) {
  const auto odd =
      std::find_if(unit.digits.begin(), unit.digits.end(), [](char c) { return !IsHexDigit(c); });
  const auto good = static_cast<std::size_t>(odd - unit.digits.begin());
  if (good == kUnitDigits) return std::nullopt;
  return BadUnit{UnitName(unit.address), good == unit.digits.size() ? "the data cannot be encoded"
                                                                    : OddByteText(unit, good)};
}

}  // namespace

WritePlan MakeWritePlan(const CloneDocument& document, Half half) {
  WritePlan plan;
  if (half != Half::kMemory) plan.settings = SettingsUnitsOf(document);
  if (half != Half::kSettings) plan.memory = MemoryUnitsOf(document.image);
  return plan;
}

std::optional<BadUnit> FirstBadUnit(const WritePlan& plan) {
  for (const auto* units : {&plan.settings, &plan.memory}) {
    for (const Unit& unit : *units) {
      if (auto bad = BadUnitOf(unit)) return bad;
    }
  }
  return std::nullopt;
}

}  // namespace q40
