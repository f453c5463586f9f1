// Reads a radio into another document than the one that is shown: what it holds before it is written.
#pragma once

#include "link/sequences.h"

namespace q40 {

// Into `radio`, whose model the radio's must be. The watcher hears of it as of one sequence, `as`:
// kBackUp or kLookUp. Outcome::kDone only when every reply was whole: what damaged ones told is not
// what the radio holds.
SequenceReport ReadAside(Link& link, CloneDocument& radio, SequenceWatcher& watcher, Half half,
                         Sequence as);

}  // namespace q40
