#include <sstream>

#include "programs/ctl/commands.h"
#include "programs/ctl/trace_option.h"
#include "programs/usage_error.h"
#include "version.h"

namespace q40 {

void DefineCommandLine(CLI::App& app, CommandContext& context) {
  app.name("rxq40ctl");
  app.description("Clone utility of the Korvex RX-Q40 radios, on the command line.");
  app.set_version_flag("--version", std::string("rxq40ctl ") + kVersion);
  const auto* const quiet = app.add_flag("--quiet")->description("say errors only");
  app.fallthrough();
  app.require_subcommand(1);
  app.parse_complete_callback([quiet, &context] { context.console.SetQuiet(quiet->count() > 0); });
  for (const auto add :
       {AddPorts, AddIdentify, AddRead, AddWrite, AddBackup, AddRestore, AddNew, AddCheck, AddShow,
        AddDiff, AddLint, AddExport, AddImport, AddApply, AddDump, AddCard}) {
    add(app, context);
  }
  AddTraceOptions(app, context);
  app.footer(std::string("PORT is 1 to 14, the path of a device, or auto; see rxq40ctl ports.\n"
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
      return context.console.Error(kExitUsage, UsageError(app, error));
    }
    std::ostringstream help;
    app.exit(error, help, help);
    return Print(context, help.str());
  }
  return context.exit_code;
}

}  // namespace q40
