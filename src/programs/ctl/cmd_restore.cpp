#include <memory>

#include "document/defaults.h"
#include "files/whole_file.h"
#include "programs/ctl/pasted_command.h"
#include "programs/ctl/radio_copies.h"
#include "programs/ctl/radio_session.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string port;
  std::optional<std::string> backup;
  bool rest = false;
  std::optional<std::string> before;
  std::string file;
};

WayOut WaysOf(const Arguments& arguments) {
  const auto& before = arguments.rest ? arguments.before : arguments.backup;
  PastedCommand go_on("restore", arguments.port);
  go_on.Option("--rest");
  WayOut ways;
  if (before) {
    go_on.Option("--before").File(*before);
    ways.restore = PastedCommand("restore", arguments.port).File(*before).Text();
  }
  ways.go_on = go_on.File(arguments.file).Text();
  ways.has_a_part = arguments.rest;
  return ways;
}

int Transfer(CommandContext& context, const Arguments& arguments, const RadioCopy& copy,
             RadioSession& session) {
  if (arguments.rest) {
    RadioContent before;
    if (const int code =
            ContentOrComplain(context, arguments.before, arguments.file, copy.model, before)) {
      return code;
    }
    return session.Swap(copy.model, RestOf(copy.units, before), WaysOf(arguments));
  }
  WriteNet net{.keep_backup = {}, .verify = true};
  if (arguments.backup) net.keep_backup = KeepIn(context, *arguments.backup);
  return session.Restore(copy, net, WaysOf(arguments));
}

int Run(CommandContext& context, const Arguments& arguments) {
  const auto device = DeviceOrComplain(context, arguments.port);
  if (!device) return context.exit_code;
  std::vector<std::string> inputs = {arguments.file};
  if (arguments.before) inputs.push_back(*arguments.before);
  if (const int code = CheckInputs(context, inputs)) return code;
  RadioCopy copy;
  if (const int code = CopyOrComplain(context, arguments.file, copy)) return code;
  if (const int code = CheckBackup(context, arguments.backup)) return code;
  CloneDocument document(FreshData());
  RadioSession session(context, *device, document);
  if (const int code = Transfer(context, arguments, copy, session)) return code;
  context.console.Note(
      "The radio holds what " + InputName(arguments.file) + " holds, byte for byte: " +
      std::to_string(session.report().acknowledged.size()) + " blocks written and verified");
  return kExitDone;
}

}  // namespace

void AddRestore(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("restore", "Brings a backup back into the radio, exactly");
  auto arguments = std::make_shared<Arguments>();
  AddPortOption(*command, arguments->port);
  auto* backup = AddBackupOption(*command, arguments->backup);
  AddRestOptions(*command, arguments->rest, arguments->before)->excludes(backup);
  command->add_option("FILE", arguments->file, "a backup, or any other clone file")->required();
  command->footer(
      "All bytes of the file are written as they are, those of RPT too, and read back.\n"
      "Example: rxq40ctl restore -p 1 before.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
