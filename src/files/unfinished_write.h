// A write that has not ended, kept in a file so that it can be finished after the program was killed.
//
//   Korvex RX-Q40 unfinished write 1
//   model 1
//   time 2026-11-22 01.02.03
//   0200 8000...00 0145...00 FFFF...FF       address, what it is to hold, what it may have held
//   end 1 9A3C51E0                           how many of these lines, and the sum of all before
//
// Lines end with LF. The digits, 64 each, are kept as they are. Behind the first stands what the radio
// was known to hold there before the write: nothing when it was not known, two texts when an earlier
// write left that open. The lines stand in the order of the wire.
//
// What is in this file is written to a radio. So a single changed character makes it worthless, and
// the sum (32 bits, FNV-1a) finds every one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_problem.h"
#include "document/radio_content.h"
#include "files/file_system.h"

namespace q40 {

struct UnfinishedWrite {
  int model = 0;
  std::string time;             // when it began: "2026-11-22 01.02.03", of the user's clock
  std::vector<UnitSwap> swaps;  // what was to be written, and what was known of it before
};

std::string UnfinishedWriteText(const UnfinishedWrite& write);

// On a problem `write` is undefined. `path` only names the file in it.
[[nodiscard]] std::optional<FileProblem> ReadUnfinishedWrite(std::string_view text,
                                                             const std::string& path,
                                                             UnfinishedWrite& write);

// From a file, and into one that is replaced as a whole.
[[nodiscard]] std::optional<FileProblem> OpenUnfinishedWrite(const std::string& path,
                                                             UnfinishedWrite& write);
[[nodiscard]] std::optional<FileProblem> SaveUnfinishedWrite(const std::string& path,
                                                             const UnfinishedWrite& write,
                                                             FileSystem& system = SystemFiles());

// Two writes of one radio, the later one over the earlier: what is left to be written when neither
// has ended. Of what was not known before the later one, the earlier one knew.
UnfinishedWrite Over(const UnfinishedWrite& earlier, UnfinishedWrite later);
// What is left of a write after another one has ended well. No value: nothing.
std::optional<UnfinishedWrite> Without(const UnfinishedWrite& write, const UnfinishedWrite& done);

}  // namespace q40
