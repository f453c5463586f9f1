// What of an imported list a clone file will not keep.
#pragma once

#include "files/channel_csv.h"

namespace q40 {

// Adds to the report of an import what the check-up of the document finds about the channels that the
// list has set: values that were taken as they were written, but will not come back.
void AddLosses(const CloneData& document, ImportReport& report);

}  // namespace q40
