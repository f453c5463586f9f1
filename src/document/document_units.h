// A document as the 32-byte units that the radio keeps it in.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/clone_data.h"
#include "document/document_cells.h"
#include "radio/unit.h"

namespace q40 {

// The 64 digits of a unit in the radio, of the settings as their lines hold them. Empty when a
// channel cannot be encoded, which no reader, editor or import lets happen.
std::string DigitsOf(const CloneData& document, Unit unit);

// The document as the write commands send it: the settings in their lines, and in the RPT rows the
// frequencies that the radio always gets there.
CloneData AsWritten(CloneData document);

// Takes one unit into a document, as a read of it would. No value, or why it cannot be decoded: the
// document then is as it was.
std::optional<std::string> LoadUnit(const UnitData& data, CloneData& document);

// Whether two contents of one unit mean the same to the program: equal digits, or digits that decode to
// the same values.
bool SameValues(const UnitData& a, const UnitData& b);

// What an owner would call the difference between two contents of one unit: fields of a channel,
// settings, dialer texts. Bytes that no field shows are named as such. Empty when the digits are
// the same.
std::vector<CellDifference> UnitDifferences(const UnitData& a, const UnitData& b);

}  // namespace q40
