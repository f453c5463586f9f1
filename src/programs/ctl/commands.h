// The commands of rxq40ctl, one file each. Every Add... registers a subcommand with its options,
// its help and an example; the subcommand leaves its exit code in the context.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "document/clone_data.h"
#include "link/com_ports.h"
#include "programs/ctl/console.h"
#include "programs/ctl/radio_line.h"
#include "programs/exit_codes.h"

namespace q40 {

// Opens the way to the radio at a device. The device itself is opened by the first command sent.
using LineFactory = std::function<std::unique_ptr<RadioLine>(const std::string& device)>;

struct TraceChoice {
  std::string path;
  std::string file;  // that the command reads or makes; may be empty
  bool may_replace = false;
};

struct CommandContext {
  Console console;
  LineFactory line_to;
  // The serial devices that are plugged in.
  std::function<std::vector<PresentPort>()> present_ports = [] {
    return std::vector<PresentPort>();
  };
  std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
  // Where the user's mappings of lists are kept, below it; empty: there is none.
  std::string user_folder{};
  std::optional<TraceChoice> trace{};  // of what goes over the line, if the user wants one
  int exit_code = kExitDone;
};

// The whole tool: parses the arguments (the program's name first), runs the command, returns the
// exit code.
int RunCommandLine(int argc, const char* const* argv, CommandContext& context);

// Every command and option of the tool. The context must outlive the app.
void DefineCommandLine(CLI::App& app, CommandContext& context);

void AddPorts(CLI::App& app, CommandContext& context);
void AddIdentify(CLI::App& app, CommandContext& context);
void AddRead(CLI::App& app, CommandContext& context);
void AddWrite(CLI::App& app, CommandContext& context);
void AddBackup(CLI::App& app, CommandContext& context);
void AddRestore(CLI::App& app, CommandContext& context);
void AddNew(CLI::App& app, CommandContext& context);
void AddCheck(CLI::App& app, CommandContext& context);
void AddShow(CLI::App& app, CommandContext& context);
void AddDiff(CLI::App& app, CommandContext& context);
void AddLint(CLI::App& app, CommandContext& context);
void AddExport(CLI::App& app, CommandContext& context);
void AddImport(CLI::App& app, CommandContext& context);
void AddApply(CLI::App& app, CommandContext& context);
void AddDump(CLI::App& app, CommandContext& context);

// ---- What several commands share.

// Opens a clone file, also from a pipe or "-"; kExitDone, or the code of the error that was said.
int OpenOrComplain(CommandContext& context, const std::string& path, CloneData& document);
// Writes a result to standard output; kExitCannotWrite (said) when it takes no more. A reader that
// goes away early is no error.
int Print(CommandContext& context, std::string_view text);

inline constexpr const char* kClonePathHelp = "clone file (*.Q40), - for standard input";
inline constexpr const char* kNewClonePathHelp = "clone file (*.Q40), - for standard output";

}  // namespace q40
