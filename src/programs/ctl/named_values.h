// The values of a JSON text with what they are in a clone file.
#pragma once

#include <string>
#include <vector>

#include "programs/ctl/clone_names.h"
#include "programs/ctl/json_entries.h"

namespace q40 {

// Neither is its own; the entries must outlive it.
struct Named {
  const CloneItem* item;
  const Json* value;
  [[nodiscard]] std::string Where() const { return PointerTo(item->place, item->name); }
};
using NamedValues = std::vector<Named>;

// What has a name that is known and the type that belongs to it. What has not goes to the problems, the
// first few of them, each with its pointer. The format, which is no value, is checked only.
NamedValues Resolved(const std::vector<JsonEntry>& entries, std::vector<std::string>& problems);

}  // namespace q40
