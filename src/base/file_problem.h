// What goes wrong with a file, in words for the person who owns it.
#pragma once

#include <string>

namespace q40 {

struct FileProblem {
  enum class Kind : unsigned char {
    kBadData,      // cannot be read, or is not what it must be: "Data Error"
    kCannotWrite,  // the new content could not be stored; the old file is as it was
  };
  Kind kind = Kind::kBadData;
  std::string path;
  int line = 0;      // counted from 1 as editors do; 0 when no line is at fault
  std::string what;  // "31 characters instead of 32"

  // "radio.Q40, line 12: 31 characters instead of 32"
  [[nodiscard]] std::string Message() const {
    return path + (line > 0 ? ", line " + std::to_string(line) : std::string()) + ": " + what;
  }
};

// Text of the message box for a file that is not what it must be.
inline constexpr const char* kDataErrorText = "Data Error";

}  // namespace q40
