// A command of rxq40ctl for the user to paste into a shell.
#pragma once

#include <string>

namespace q40 {

class PastedCommand {
 public:
  PastedCommand(const std::string& command, const std::string& port);

  PastedCommand& Option(const std::string& option);
  // A file that it reads. What can be read once only, a pipe or standard input, makes it impossible.
  PastedCommand& File(const std::string& path);

  // One line, quoted as a shell wants it; empty when it is impossible.
  [[nodiscard]] std::string Text() const { return is_possible_ ? text_ : std::string(); }

 private:
  std::string text_;
  bool is_possible_ = true;
};

}  // namespace q40
