// Puts single cells of a document back to what they were in another one.
#pragma once

#include <vector>

#include "document/clone_document.h"
#include "document/document_cells.h"

namespace q40 {

// What was put back, and the change flags that editing the same by hand sets. The model and version
// stay as they are.
struct TakenBack {
  int cells = 0;  // that are now as before
  bool settings_flag = false;
  bool memory_flag = false;
  DocumentChange change;
};

// A channel that is in use on one side only goes back as a whole, whichever of its cells is named.
TakenBack PutBack(const CloneData& before, const std::vector<CellAddress>& cells, CloneData& data);

}  // namespace q40
