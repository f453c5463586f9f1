#include <sstream>

#include "cli/commands.h"
#include "version.h"

namespace q40 {

namespace {

// What the parser has to say, for people: its own words do not name a command that it does not
// know.
std::string UsageError(const CLI::App& app, const CLI::ParseError& error, int argc,
                       const char* const* argv) {
  const char* const hint = "\nRun rxq40ctl --help, or rxq40ctl COMMAND --help.";
  for (int i = 1; i < argc && app.get_subcommands().empty(); ++i) {
    const std::string word = argv[i];
    if (!word.starts_with('-')) return "there is no command \"" + word + "\"." + hint;
  }
  return std::string(error.what()) + hint;
}

}  // namespace

void DefineCommandLine(CLI::App& app, CommandContext& context) {
  app.name("rxq40ctl");
  app.description("Clone utility of the Korvex RX-Q40 radios, on the command line.");
  app.set_version_flag("--version", std::string("rxq40ctl ") + kVersion);
  const auto* const quiet = app.add_flag("--quiet")->description("say errors only");
  app.fallthrough();
  app.require_subcommand(1);
  app.parse_complete_callback([quiet, &context] { context.console.SetQuiet(quiet->count() > 0); });
  for (const auto add : {AddPorts, AddIdentify, AddRead, AddWrite, AddNew, AddCheck, AddShow,
                         AddDiff, AddLint, AddExport, AddImport, AddDump}) {
    add(app, context);
  }
  app.footer(std::string("PORT is 1 to 14 or the path of a device; see rxq40ctl ports.\n"
                         "Help for a command: rxq40ctl COMMAND --help\n\n") +
             kExitCodeHelp + "\nExample: rxq40ctl read -p 1 radio.Q40");
}

int RunCommandLine(int argc, const char* const* argv, CommandContext& context) {
  CLI::App app;
  DefineCommandLine(app, context);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) {
      return context.console.Error(kExitUsage, UsageError(app, error, argc, argv));
    }
    std::ostringstream help;
    app.exit(error, help, help);
    return Print(context, help.str());
  }
  return context.exit_code;
}

}  // namespace q40
