#include <memory>

#include "cli/commands.h"
#include "cli/radio_session.h"
#include "image/defaults.h"

namespace q40 {
namespace {

struct Arguments {
  std::string port;
  std::string only;
  std::string file;
};

int Run(CommandContext& context, const Arguments& arguments) {
  const auto device = DeviceOrComplain(context, arguments.port);
  if (!device) return context.exit_code;
  CloneDocument document = FreshDocument();
  if (const int code = OpenOrComplain(context, arguments.file, document)) return code;
  RadioSession session(context, *device, document);
  if (const int code = session.Write(HalfOf(arguments.only)); code != kExitDone) return code;
  context.console.Note(arguments.file + " written to the radio: " +
                       std::to_string(session.report().acknowledged.size()) +
                       " blocks acknowledged");
  return kExitDone;
}

}  // namespace

void AddWrite(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("write", "Writes a clone file to the radio");
  auto arguments = std::make_shared<Arguments>();
  AddPortOption(*command, arguments->port);
  AddOnlyOption(*command, arguments->only);
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->footer("Example: rxq40ctl write -p /dev/ttyUSB0 radio.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
