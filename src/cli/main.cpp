// rxq40ctl: everything that the window does with radio and files, from the command line.
#include <csignal>

#include "cli/commands.h"
#include "files/clone_file.h"
#include "version.h"

namespace q40 {

int OpenOrComplain(CommandContext& context, const std::string& path, CloneDocument& document) {
  const OpenResult result = OpenCloneFile(path, document);
  return result.problem ? context.console.Error(*result.problem) : kExitDone;
}

int Print(CommandContext& context, std::string_view text) {
  if (context.console.Result(text)) return kExitDone;
  return context.console.Error(kExitCannotWrite, "standard output takes no more");
}

}  // namespace q40

int main(int argc, char** argv) {
  // A full disk and a closed pipe are errors of a call here, not the end of the program.
  std::signal(SIGPIPE, SIG_IGN);
#ifdef SIGXFSZ
  std::signal(SIGXFSZ, SIG_IGN);
#endif

  q40::CommandContext context;
  CLI::App app("Clone utility of the Korvex RX-Q40 radios, on the command line.", "rxq40ctl");
  bool quiet = false;
  app.set_version_flag("--version", std::string("rxq40ctl ") + q40::kVersion);
  app.add_flag("--quiet", quiet, "say errors only");
  app.fallthrough();
  app.require_subcommand(1);
  app.parse_complete_callback([&] { context.console.SetQuiet(quiet); });
  for (const auto add :
       {q40::AddPorts, q40::AddIdentify, q40::AddRead, q40::AddWrite, q40::AddNew, q40::AddCheck,
        q40::AddShow, q40::AddDiff, q40::AddExport, q40::AddImport, q40::AddDump}) {
    add(app, context);
  }
  app.footer(std::string("PORT is 1 to 14 or the path of a device; see rxq40ctl ports.\n"
                         "Help for a command: rxq40ctl COMMAND --help\n\n") +
             q40::kExitCodeHelp + "\nExample: rxq40ctl read -p 1 radio.Q40");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? q40::kExitDone : q40::kExitUsage;
  }
  return context.exit_code;
}
