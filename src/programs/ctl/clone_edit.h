// What of the values of a text the window could have made, made.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "document/clone_data.h"
#include "programs/ctl/named_values.h"

namespace q40 {

struct Edits {
  std::set<std::size_t> settings;  // that were set, of Settings()
  std::set<Unit> channels;         // that were
  int applied = 0;                 // values, also bytes, which are nothing to edit
  std::vector<std::string> notes;  // what did not fit
};

// Sets the values in the data, as the settings pages and OK in the edit dialog do. One that the data has
// already fits whatever it is; a channel that is named is in use afterwards.
Edits EditValues(const NamedValues& values, CloneData& data);

}  // namespace q40
