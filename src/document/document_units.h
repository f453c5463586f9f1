// A document as the 32-byte units that the radio keeps it in.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/clone_document.h"
#include "document/document_cells.h"

namespace q40 {

// What one exchange moves.
struct Unit {
  Address address = 0;
  std::string digits;  // 64
};

// The units of the settings half (settings, VHF, UHF special channels, dialer) and of the memory
// half, each in the order of the wire.
std::vector<Address> SettingsUnits();
std::vector<Address> MemoryUnits();

// Takes one unit into a document, as a read of it would. No value, or why it cannot be decoded: the
// document then is as it was. An address where no unit lies is ignored.
std::optional<std::string> LoadUnit(const Unit& unit, CloneDocument& document);

// What an owner would call the difference between two contents of one unit: fields of a channel,
// settings, dialer texts. Bytes that no field shows are named as such. Empty when the digits are
// the same.
std::vector<CellDifference> UnitDifferences(const Unit& a, const Unit& b);

}  // namespace q40
