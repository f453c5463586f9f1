#include "programs/startup_path.h"

namespace q40 {

std::string StartupPath(std::string_view raw_command_line) {
  constexpr std::size_t kLongestIgnored = 5;
  if (raw_command_line.size() <= kLongestIgnored) return {};
  return std::string(raw_command_line.substr(1, raw_command_line.size() - 2));
}

std::string RawCommandLine(std::string_view argument) {
  const bool quoted = argument.size() >= 2 && argument.front() == '"' && argument.back() == '"';
  return quoted ? std::string(argument) : '"' + std::string(argument) + '"';
}

}  // namespace q40
