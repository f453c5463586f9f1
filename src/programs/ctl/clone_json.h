// A clone file as one JSON document, complete: what goes in comes out again with apply.
#pragma once

#include <optional>
#include <string>

#include "document/value_rules.h"
#include "files/clone_file.h"
#include "programs/ctl/clone_names.h"
#include "programs/ctl/json_values.h"

namespace q40 {

inline constexpr int kJsonFormat = 1;
inline constexpr const char* kFormatKey = "format";

// A file as it is, and as the program reads it. The bytes may say more than is read of them: a step that
// no reading keeps, a PH that Save would mark as present.
struct OpenedClone {
  CloneLines lines;
  CloneData data;
};

// The file's text has been opened before.
OpenedClone OpenedCloneOf(std::string_view text, CloneData data);
// The lines that Save makes of the data.
CloneLines SavedLines(const CloneData& data);

// The 64 characters of a unit that is none of the dialer's.
std::string_view DigitsIn(const CloneLines& lines, Unit unit);
char* DigitsIn(CloneLines& lines, Unit unit);

// Where the channel of a unit stands.
inline ChannelPlace PlaceOf(Unit unit) {
  if (unit.kind() == Unit::Kind::kMemory) return {ChannelKind::kMemory, Band::kVhf, unit.index()};
  return {ChannelKind::kSpecial, unit.band(), unit.index()};
}

// What the data says of an item that is no byte; null for a field of a channel that is not in use.
Json ValueOf(const CloneData& data, const CloneItem& item);

// The whole document.
Json DocumentJson(const OpenedClone& clone);

}  // namespace q40
