// What a write sends. It is made and checked before the first byte goes out, so that bad data is
// refused while the radio is still unchanged.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/clone_data.h"
#include "radio/unit.h"

namespace q40 {

// The units in the order of the wire. One that cannot be encoded has no digits.
struct WritePlan {
  std::vector<UnitData> settings;  // 17, or none
  std::vector<UnitData> memory;    // 210, or none

  [[nodiscard]] std::vector<UnitData> All() const;
};
WritePlan MakeWritePlan(const CloneData& document, Half half);

// A unit that must not be sent.
struct BadUnit {
  std::string where;  // "settings area 1"
  std::string why;
};
// The first one whose digits are not 64 hexadecimal digits.
std::optional<BadUnit> FirstBadUnit(const std::vector<UnitData>& units);
std::optional<BadUnit> FirstBadUnit(const WritePlan& plan);

}  // namespace q40
