// What the simulated radio holds when nobody loads anything into it: enough to have something to
// see.
#pragma once

#include "document/clone_data.h"

namespace q40 {

// An RX-Q40E of version A with some channels, dialer memories and settings.
CloneData DemoDocument();

}  // namespace q40
