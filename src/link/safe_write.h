// Writing with a net: a backup of the radio before, a comparison with what was written after.
// Without either, a safe write is the write sequence and nothing else.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "link/sequences.h"

namespace q40 {

struct WriteNet {
  // Stores what the radio held before, a complete document. False: it could not be stored (the
  // callee has said why), and nothing is written. Empty: no backup is made.
  std::function<bool(const CloneData& radio)> keep_backup;
  bool verify = false;
};

struct WriteResult {
  enum class Stage : unsigned char { kBackup, kWrite, kVerify };
  // How far it came, and how the last sequence ended. Outcome::kDone in kVerify with differences:
  // the radio did not keep what was written.
  Stage stage = Stage::kWrite;
  SequenceReport last;
  // The write's own report; empty when it did not start.
  SequenceReport write;
  bool backup_kept = false;
  // a: written, b: in the radio.
  std::vector<CellDifference> differences;
};

// Writes a half of the document, or both, to the radio. The watcher hears of every sequence: kBackUp,
// then the writes, then kVerify. The backup reads both halves, so that it is a clone file like any
// other. Before anything is written it refuses a radio of another model, and replies that were damaged.
WriteResult SafeWrite(Link& link, CloneDocument& document, SequenceWatcher& watcher, Half half,
                      const WriteNet& net);

// What a write that ended early left in the radio, one sentence: "settings and channels 0 to 41
// written, channel 42 perhaps (sent, but not acknowledged), 43 onwards as before".
std::string WrittenText(const SequenceReport& write, Half half);

// The same for all that a safe write that did not end well did, in sentences. `restore` tells how
// the backup is brought back; it is said when a kept backup and a touched radio make it worth doing.
std::string AftermathText(const WriteResult& result, Half half, const std::string& restore);

}  // namespace q40
