// One value of one channel as a table shows it and takes it: text out, text in.
//
// What goes in obeys the rules of the edit dialog through the same functions. Where the dialog repairs
// silently, a table refuses and says why.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "document/clone_image.h"

namespace q40 {

struct ChannelPlace {
  ChannelKind kind = ChannelKind::kMemory;
  Band band = Band::kVhf;  // of a special channel; VHF elsewhere
  int index = 0;           // memory channel, or row of the special set

  bool operator==(const ChannelPlace&) const = default;
};

// "D3", "PH"
std::string TitleOf(const ChannelPlace& place);
// "channel D3", "VHF PH"
std::string NameOf(const ChannelPlace& place);

// The record at a place. Of the special channels the store counts, and not the shown set.
const ChannelRecord& RecordAt(const CloneImage& image, const ChannelPlace& place);
ChannelRecord& RecordAt(CloneImage& image, const ChannelPlace& place);
// Memory channels by their flag; PH and PL need theirs and a frequency.
bool InUse(const CloneImage& image, const ChannelPlace& place);
// Makes it the record of the place, which is in use then.
void PutRecord(CloneImage& image, const ChannelPlace& place, ChannelRecord record);
// Empties it. Of the special channels only PH and PL can be; false, and nothing happens, for others.
bool ClearRecord(CloneImage& image, const ChannelPlace& place);

// Whether the dialog lets a field of this channel be changed: a special channel has no name, and the
// repeater-access row carries only some.
bool IsEditable(const ChannelPlace& place, Field field);
// The entries of a field that has a list, in the dialog's order; empty for what is typed freely.
std::vector<std::string> ChoicesOf(const ChannelPlace& place, Field field);

// "kHz", "Hz", "MHz", "dB": what the texts of a field leave out. Empty: it has no unit.
std::string_view UnitOf(Field field);
// "12.5" of "12.5KHz"; "Off" and other words stay.
std::string_view WithoutUnit(Field field, std::string_view text);

// Of a column: the field's name with its unit, "Frequency, MHz".
std::string HeadingOf(Field field);

// What a table shows: from the number, without unit or star. Empty for a channel that is not in use, and
// for what the repeater-access row does not carry.
std::string CellText(const CloneImage& image, const ChannelPlace& place, Field field);

struct CellResult {
  std::string refusal;  // a sentence why nothing was changed; empty: it was taken
  std::string also;     // what follows from it, "Step 12.5KHz", as in the dialog; mostly empty
};
// Takes a text into a field: 145.6125 and 145,6125, an entry of a list by its text, its number or how
// it begins, a name in small letters. A frequency programs an empty channel, as the dialog's
// template has it; any other field of it is refused. `model` 0..3.
CellResult SetCell(CloneImage& image, int model, const ChannelPlace& place, Field field,
                   std::string_view text);

}  // namespace q40
