// Sequences that move units as they are, digit by digit. No document is involved, and nothing is
// decoded: what one reads another can bring back to the byte.
//
//   Back up   Identify, 227 units, End      each reply must be whole; a damaged one is asked for again
//   Compare   Identify, some units, End     the same
//   Write     RXQ40, KX~WHO, units, End
//   Verify    Identify, those units, End    as compare
//
// Between two commands lies a pause of 10 ms, except in front of the memory channels of a backup.
#pragma once

#include <optional>
#include <vector>

#include "link/sequence_steps.h"

namespace q40 {

// Link and watcher must outlive the object. A sequence must not be started while one runs.
class UnitSequences : private SequenceSteps {
 public:
  UnitSequences(Link& link, SequenceWatcher& watcher) : SequenceSteps(link, watcher) {}

  // Reads all 227 units. `model`: of the radio that it must be; none: of any.
  SequenceReport BackUp(std::optional<int> model, RadioCopy& copy);
  // Reads the units of `wanted` into `found`, in their order. `sequence`: kCompare or kVerify.
  SequenceReport Read(Sequence sequence, int model, const std::vector<UnitData>& wanted,
                      std::vector<UnitData>& found);
  // Writes units. One whose digits are no 64 hexadecimal digits ends it before the first byte.
  SequenceReport Write(Sequence sequence, int model, const std::vector<UnitData>& units);

 private:
  bool Identify(std::optional<int> model);
};

}  // namespace q40
