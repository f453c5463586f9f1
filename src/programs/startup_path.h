// The clone file named on the command line.
#pragma once

#include <string>
#include <string_view>

namespace q40 {

// The path in a raw command line, which carries it in quotes: a text longer than 5 characters loses
// its first and its last character, a shorter one names no file (empty result).
std::string StartupPath(std::string_view raw_command_line);

// The raw form of an argument that the shell has already unquoted: the quotes that StartupPath
// expects are put around it, unless it still carries its own.
std::string RawCommandLine(std::string_view argument);

}  // namespace q40
