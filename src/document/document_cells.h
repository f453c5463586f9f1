// A clone document as a list of things that an owner can name: what diff compares, and what tells the
// difference between what was written and what the radio kept.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/clone_data.h"
#include "radio/unit.h"

namespace q40 {

// Which cell of a document: where it is shown, and what puts it back.
struct CellAddress {
  std::optional<Unit> unit{};        // none: the radio's model and version
  const Setting* setting = nullptr;  // in a settings area, null for a byte without a control
  std::optional<Field> field{};      // of a channel; none: whether it is in use, or what it stores
  int index = 0;  // a byte without a control: 0..63 in the settings areas; a dialer memory: 0..9

  bool operator==(const CellAddress&) const = default;
};

struct CellDifference {
  std::string place;  // "Settings", "Auto dialer", "VHF CALL", "Memory D3"
  std::string name;   // "Standby", "M1", "Frequency"
  std::string a;      // empty: a cell of a channel that is not in use, or an empty text
  std::string b;
  CellAddress at{};

  bool operator==(const CellDifference&) const = default;
};

// The cells whose values differ: of the radio, the settings, the special channels, the memory
// channels, the dialer. Of a half, and of the radio in any case. Channels that are not in use have empty
// cells, as in the grids. What they still hold is one more cell, which is not compared between a
// channel in use and one that is not. What only follows from other cells is not a cell.
std::vector<CellDifference> DifferencesOf(const CloneData& a, const CloneData& b,
                                          Half half = Half::kBoth);
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
