// A clone document in words: what show prints and what diff compares.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "image/clone_document.h"

namespace q40 {

// One thing that an owner can name, with its value as text.
struct DocumentCell {
  std::string place;  // "Settings", "Auto dialer", "VHF CALL", "Memory D3"
  std::string name;   // "Standby", "M1", "Frequency"
  std::string value;  // empty: a cell of a channel that is not in use, or an empty text
};

// Name of the cell that holds what a channel out of use still stores; empty for one in use.
inline constexpr const char* kStoredData = "stored data";

// Everything in a document, always the same places and names in the same order, so that two
// documents can be compared one by one. Channels that are not in use have empty cells, as in the
// grids; what they still hold is one cell more.
std::vector<DocumentCell> CellsOf(const CloneDocument& document);

// The document for people: settings, dialer, special channels, channels in use.
std::string DocumentReport(const CloneDocument& document);

nlohmann::ordered_json DocumentJson(const CloneDocument& document);

// "RX-Q40E, version A"
std::string ModelText(const CloneDocument& document);

}  // namespace q40
