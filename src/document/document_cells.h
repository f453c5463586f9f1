// A clone document as a list of things that an owner can name: what diff compares, and what tells the
// difference between what was written and what the radio kept.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "document/clone_data.h"
#include "radio/unit.h"

namespace q40 {

struct CellDifference {
  std::string place;  // "Settings", "Auto dialer", "VHF CALL", "Memory D3"
  std::string name;   // "Standby", "M1", "Frequency"
  std::string a;      // empty: a cell of a channel that is not in use, or an empty text
  std::string b;
};

// The cells whose values differ, in the order of the document. Channels that are not in use have empty
// cells, as in the grids. What they still hold is one more cell, which is not compared between a
// channel in use and one that is not. What only follows from other cells is not a cell.
std::vector<CellDifference> DifferencesOf(const CloneData& a, const CloneData& b);
// Those that lie in one unit.
std::vector<CellDifference> DifferencesAt(Unit unit, const CloneData& a, const CloneData& b);

// A byte of a unit where no cell tells what it holds.
struct StoredByte {
  std::string place;
  std::string name;  // "byte 0x0024 (start channel)", "byte 16 (Name)", "M1, byte 3"
  // The bytes that are read as one thing together with it.
  std::size_t first = 0;
  std::size_t count = 1;
};
// Byte 0..31 of a unit.
StoredByte ByteAt(Unit unit, std::size_t byte);

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
std::string ModelText(const CloneData& document);

}  // namespace q40
