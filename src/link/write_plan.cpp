#include "link/write_plan.h"

#include <algorithm>

#include "base/hex.h"
#include "base/plain_text.h"
#include "document/document_units.h"

namespace q40 {
namespace {

std::vector<UnitData> DataOf(const CloneData& document, Half half) {
  std::vector<UnitData> data;
  for (const Unit unit : UnitsOf(half)) data.push_back({unit, DigitsOf(document, unit)});
  return data;
}

// "byte 0x0023 holds "ZZ", which is no hexadecimal number"
std::string OddByteText(const UnitData& unit, std::size_t digit) {
  const std::size_t byte = digit / 2;
  const int address = unit.unit.address() + static_cast<int>(byte);
  return "byte 0x" + HexByteText(address >> 8) + HexByteText(address) + " holds " +
         Quoted(unit.digits.substr(2 * byte, 2)) + ", which is no hexadecimal number";
}

std::optional<BadUnit> BadUnitOf(const UnitData& unit) {
  const auto odd =
      std::find_if(unit.digits.begin(), unit.digits.end(), [](char c) { return !IsHexDigit(c); });
  const auto good = static_cast<std::size_t>(odd - unit.digits.begin());
  if (good == kUnitDigits) return std::nullopt;
  return BadUnit{unit.unit.Name(), good == unit.digits.size() ? "the data cannot be encoded"
                                                              : OddByteText(unit, good)};
}

}  // namespace

WritePlan MakeWritePlan(const CloneData& document, Half half) {
  const CloneData sent = AsWritten(document);
  WritePlan plan;
  if (half != Half::kMemory) plan.settings = DataOf(sent, Half::kSettings);
  if (half != Half::kSettings) plan.memory = DataOf(sent, Half::kMemory);
  return plan;
}

std::vector<UnitData> WritePlan::All() const {
  std::vector<UnitData> all = settings;
  all.insert(all.end(), memory.begin(), memory.end());
  return all;
}

std::optional<BadUnit> FirstBadUnit(const std::vector<UnitData>& units) {
  for (const UnitData& unit : units) {
    if (auto bad = BadUnitOf(unit)) return bad;
  }
  return std::nullopt;
}

std::optional<BadUnit> FirstBadUnit(const WritePlan& plan) { return FirstBadUnit(plan.All()); }

}  // namespace q40
