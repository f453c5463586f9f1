// What the controls of the channel edit dialog hold, and how it relates to a channel record.
#pragma once

#include <array>
#include <string>

#include "radio/channel_record.h"

namespace q40 {

inline constexpr int kUnset = -1;  // an option group of which no option is set

struct DialogValues {
  DialogValues() { choice.fill(kUnset); }

  // By field: the option of a group, the item of a list, or 0 / 1 for a check box.
  std::array<int, kFieldCount> choice{};
  std::string mhz;       // frequency before the point
  std::string fraction;  // and behind it
  std::string offset_mhz;
  std::string offset_fraction;
  std::string name;

  int& operator[](Field field) { return choice[static_cast<std::size_t>(field)]; }
  int operator[](Field field) const { return choice[static_cast<std::size_t>(field)]; }
  bool operator==(const DialogValues&) const = default;
};

// What the dialog does not let anybody change in the repeater-access row, beside the frequency.
bool DisabledInRepeaterRow(Field field);

// The dialog on a record. The repeater-access row shows "Repeater" for its frequency, leaves unset
// what it does not carry, and unticks BCLO whatever the record holds (intended).
DialogValues ValuesOf(const ChannelRecord& record, ChannelKind kind, bool repeater_row);

// The record that OK makes of the dialog. Cells of unset groups keep their number; in the
// repeater-access row they lose their text, in others they keep it.
ChannelRecord RecordOf(const DialogValues& values, ChannelKind kind, bool repeater_row,
                       const ChannelRecord& before);

}  // namespace q40
