// The folder in which backups of radios are kept, and what the names of its files tell.
//
//   RX-Q40T 2026-11-22 01.02.03 by hand.Q40
//   RX-Q40T 2026-11-22 01.02.03 before a write.Q40
//   RX-Q40T 2026-11-22 01.02.03 after a broken write.Q40
//   RX-Q40T 2026-11-22 01.02.03 by hand (2).Q40            the second one of a second
//
// Earlier versions gave no reason: theirs were made before a write. A file of another name is listed
// too, with the time of its last change.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_problem.h"
#include "radio/unit.h"

namespace q40 {

// Why a backup was made. kAfterBrokenWrite: the radio held a part of what had been written, so that
// going back to it helps nobody.
enum class BackupReason : unsigned char { kByHand, kBeforeWrite, kAfterBrokenWrite, kUnknown };

// "before a write"; empty: not known.
std::string_view BackupReasonText(BackupReason reason);

struct BackupName {
  int model = -1;    // -1: the name does not tell
  std::string time;  // "2026-11-22 01.02.03", of the user's clock
  BackupReason reason = BackupReason::kUnknown;
};

struct BackupEntry {
  std::string path;
  BackupName name;      // the model is the one in the file, where that can be read
  int channels = 0;     // memory channels in use, those included that cannot be decoded
  int undecodable = 0;  // of them
  std::string problem;  // why the file is no copy of a radio; empty: it is one

  // Of a radio as its owner had it.
  [[nodiscard]] bool IsWhole() const {
    return problem.empty() && name.reason != BackupReason::kAfterBrokenWrite &&
           name.reason != BackupReason::kUnknown;
  }
};

// All of them, the latest first. Empty too when there is no such folder.
std::vector<BackupEntry> ListBackups(const std::string& folder);
// Path of the last backup of a whole radio of this model; empty: there is none.
std::string LastWholeBackup(const std::string& folder, int model);

// Keeps a copy in a new file, in a folder that is made when it is needed. `path`: of that file.
[[nodiscard]] std::optional<FileProblem> KeepBackup(const std::string& folder,
                                                    const RadioCopy& copy, const std::string& time,
                                                    BackupReason reason, std::string& path);

}  // namespace q40
