// Writing with a net: a backup of the radio before, a comparison with what it is known to hold, a
// comparison with what was written after. Without any of them a safe write is the write sequence and
// nothing else.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "document/radio_content.h"
#include "link/sequences.h"

namespace q40 {

struct WriteNet {
  // Stores what the radio held before, all of it and to the byte. False: it could not be stored (the
  // callee has said why), and nothing is written. Empty: no backup is made.
  std::function<bool(const RadioCopy& radio)> keep_backup;
  bool verify = false;
};

struct WriteResult {
  enum class Stage : unsigned char { kBackup, kCompare, kWrite, kVerify };
  // How far it came, and how the last sequence ended. Outcome::kDone in kVerify with differences:
  // the radio did not keep what was written.
  Stage stage = Stage::kWrite;
  SequenceReport last;
  // The write's own report; empty when it did not start.
  SequenceReport write;
  bool backup_kept = false;
  // The half that was to be written; none: single units.
  std::optional<Half> half;
  // All that was to be written, for going on with it.
  std::vector<UnitData> planned;
  // In kVerify, a: written, b: in the radio. In kCompare, a: as it was known, b: in the radio.
  std::vector<CellDifference> differences;
  // In kCompare, the units that are not as they were known, as the radio holds them.
  std::vector<UnitData> unlike;

  // Whether the radio may hold something else than before.
  [[nodiscard]] bool TouchedRadio() const {
    return !write.acknowledged.empty() || write.in_flight.has_value();
  }
};

// Writes a half of the document, or both, to the radio. The watcher hears of every sequence: kBackUp,
// then the writes, then kVerify. The backup reads both halves. Before anything is written it refuses
// a radio of another model, and replies that are damaged twice.
WriteResult SafeWrite(Link& link, CloneDocument& document, SequenceWatcher& watcher, Half half,
                      const WriteNet& net);

// Writes all units of a copy to a radio of its model, as they are, and reads them back, whatever the
// net says of verifying.
WriteResult RestoreRadio(Link& link, SequenceWatcher& watcher, const RadioCopy& copy,
                         const WriteNet& net);

// Compares before it swaps: reads the units, and writes them only when each holds what is known of it.
// Else the outcome is kNotAsKnown and nothing is written. A unit that holds its target already is
// not written. What was written is read back. At least one unit.
WriteResult SwapUnits(Link& link, SequenceWatcher& watcher, int model,
                      const std::vector<UnitSwap>& swaps);

}  // namespace q40
