// "RX-Q40.ini": the number of the serial port, a bare decimal number on one line. No section, no
// key.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/file_problem.h"

namespace q40 {

inline constexpr const char* kPortNumberFile = "RX-Q40.ini";
inline constexpr int kDefaultPortNumber = 1;

// Number 1..14 in the text: blanks, digits, and nothing else up to a comma or the line's end.
// Anything else is port 1.
int PortNumberIn(std::string_view text);

// "3" CR LF.
std::string PortNumberText(int number);

// Where the number is kept: in the program's folder, or, when that cannot be written or the program
// is an installed one, in a folder of the user's. The user's file wins when there is one.
class PortNumberFile {
 public:
  PortNumberFile(std::string program_folder, std::string user_folder)
      : program_folder_(std::move(program_folder)), user_folder_(std::move(user_folder)) {}

  // A missing or unreadable file is port 1, without a message.
  [[nodiscard]] int Read() const;
  // Never reports anything: the number is a convenience.
  void Write(int number) const;

 private:
  std::string program_folder_;
  std::string user_folder_;
};

}  // namespace q40
