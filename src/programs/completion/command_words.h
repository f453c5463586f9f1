// What a shell has to know of a command line to complete it: the commands, options and values as they
// are defined for the parser.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace q40 {

enum class ValueKind : unsigned char {
  kNone,       // a flag
  kText,       // nothing to offer: a number, a block
  kWords,      // one of ValueWords::words
  kPort,       // a port number or a device
  kCloneFile,  // *.Q40
  kCsvFile,    // *.csv
  kFile,       // any file
};

struct ValueWords {
  ValueKind kind = ValueKind::kNone;
  std::string name;                // "PORT"
  std::vector<std::string> words;  // of kWords
};

struct OptionWords {
  std::vector<std::string> names;  // "-p", "--port"
  std::string description;
  ValueWords value;
};

struct PositionalWords {
  ValueWords value;
  bool repeats = false;
};

struct CommandWords {
  std::string name;
  std::string description;
  std::vector<OptionWords> options;
  std::vector<PositionalWords> positionals;
};

struct ToolWords {
  CommandWords top;  // what comes before the command
  std::vector<CommandWords>
      commands;  // with the options of `top` that they let through; may be empty
};

// Throws std::runtime_error when the name of a value is not known here.
ToolWords WordsOf(const CLI::App& app);

// The scripts, and a list for checks: "COMMAND OPTION" on a line each.
std::string BashCompletion(const ToolWords& tool);
std::string ZshCompletion(const ToolWords& tool);
std::string OptionList(const ToolWords& tool);

}  // namespace q40
