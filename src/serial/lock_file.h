// The lock file that serial programs leave while they have a device: "LCK..ttyUSB0" in a folder that all
// of them know. It names its process, and often the program:
//
//   "      1234\n"                 the number alone
//   "      1234 minicom root\n"    number, program, user
//   "1234\nrxq40\nhost\n..."       number, program, host
#pragma once

#include <optional>
#include <string>

namespace q40 {

struct LockFile {
  enum class State : unsigned char {
    kHeld,      // its process lives
    kLeft,      // its process is gone, and the number perhaps with another program by now
    kNew,       // names no process, and is so young that its program may be about to
    kNameless,  // names no process, or cannot be read
  };
  std::string path;
  State state = State::kNameless;
  std::string owner;  // of a held one: "minicom, process 1234"
};

// The lock file of a device; links are followed first. Opens nothing but the file.
std::optional<LockFile> FindLockFile(const std::string& device);

}  // namespace q40
