// A clone document as a list of things that an owner can name: what diff compares, and what tells the
// difference between what was written and what the radio kept.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "image/clone_document.h"

namespace q40 {

struct DocumentCell {
  std::string place;  // "Settings", "Auto dialer", "VHF CALL", "Memory D3"
  std::string name;   // "Standby", "M1", "Frequency"
  std::string value;  // empty: a cell of a channel that is not in use, or an empty text
};

// Everything in a document, always the same places and names in the same order, so that two
// documents can be compared one by one. Channels that are not in use have empty cells, as in the
// grids; what they still hold is one cell more.
std::vector<DocumentCell> CellsOf(const CloneDocument& document);

struct CellDifference {
  std::string place;
  std::string name;
  std::string a;
  std::string b;
};

// The cells whose values differ. Between a channel in use and one that is not, the data that the
// unused one still stores is no difference of its own.
std::vector<CellDifference> DifferencesOf(const CloneDocument& a, const CloneDocument& b);

// "Memory 3: Frequency: "145.0000" -> "146.0000"", with unprintable characters escaped.
std::string DifferenceText(const CellDifference& difference);

// ---- Words for single values.

// "DTMF", "Access", "Settings"
std::string PlaceOf(SettingsGroup group);
// The caption of a setting, with its unit, without the blanks that align it.
std::string CaptionOf(const Setting& setting);
// A setting as its control shows it, without the blanks that align it.
std::string SettingText(const SettingsValues& values, const Setting& setting);
// A field of a channel; skip, which no grid shows, is "On" or "Off".
std::string FieldText(ChannelKind kind, const ChannelRecord& record, Field field);

// "RX-Q40E, version A"
std::string ModelText(const CloneDocument& document);

}  // namespace q40
