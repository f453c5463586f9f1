// Writes the completion scripts of the command-line programs; runs at build time.
#include <cstdio>
#include <exception>
#include <string_view>

#include "programs/completion/command_words.h"
#include "programs/ctl/commands.h"
#include "programs/sim/sim_command_line.h"

namespace {

q40::ToolWords Tool(std::string_view name) {
  CLI::App app;
  q40::CommandContext context{.console = q40::Console(stdout, stderr), .line_to = {}};
  q40::SimArguments arguments;
  if (name == "rxq40sim") {
    q40::DefineSimCommandLine(app, arguments);
  } else {
    q40::DefineCommandLine(app, context);
  }
  return q40::WordsOf(app);
}

int Usage() {
  std::fputs("usage: rxq40completion bash|zsh|options rxq40ctl|rxq40sim\n", stderr);
  return q40::kExitUsage;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return Usage();
  const std::string_view form = argv[1];
  const std::string_view name = argv[2];
  if (name != "rxq40ctl" && name != "rxq40sim") return Usage();
  try {
    const q40::ToolWords tool = Tool(name);
    std::string text;
    if (form == "bash") {
      text = q40::BashCompletion(tool);
    } else if (form == "zsh") {
      text = q40::ZshCompletion(tool);
    } else if (form == "options") {
      text = q40::OptionList(tool);
    } else {
      return Usage();
    }
    return std::fputs(text.c_str(), stdout) < 0 ? q40::kExitCannotWrite : q40::kExitDone;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "rxq40completion: %s\n", error.what());
    return q40::kExitInternal;
  }
}
