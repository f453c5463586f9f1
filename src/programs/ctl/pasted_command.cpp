#include "programs/ctl/pasted_command.h"

#include <string_view>

#include "files/standard_streams.h"

namespace q40 {
namespace {

// A word as a shell takes it.
std::string ShellWord(const std::string& word) {
  constexpr std::string_view kPlain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+=./:,@%";
  if (word.starts_with('-')) return ShellWord("./" + word);  // no option
  if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

}  // namespace

PastedCommand::PastedCommand(const std::string& command, const std::string& port)
    : text_("rxq40ctl " + command + " -p " + ShellWord(port)) {}

PastedCommand& PastedCommand::Option(const std::string& option) {
  text_ += ' ' + option;
  return *this;
}

PastedCommand& PastedCommand::File(const std::string& path) {
  is_possible_ = is_possible_ && !StreamNumber(path, StreamUse::kRead) && !IsPipe(path);
  text_ += ' ' + ShellWord(path);
  return *this;
}

}  // namespace q40
