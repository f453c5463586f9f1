#include <memory>

#include "document/defaults.h"
#include "files/whole_file.h"
#include "link/write_plan.h"
#include "programs/ctl/pasted_command.h"
#include "programs/ctl/radio_copies.h"
#include "programs/ctl/radio_session.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string port;
  std::string only;
  std::optional<std::string> backup;
  std::optional<std::string> changes;
  bool rest = false;
  std::optional<std::string> before;
  bool verify = false;
  std::string file;
};

WayOut WaysOf(const Arguments& arguments) {
  PastedCommand go_on("write", arguments.port);
  if (!arguments.only.empty()) go_on.Option("--only").Option(arguments.only);
  if (arguments.changes) go_on.Option("--changes").File(*arguments.changes);
  go_on.Option("--rest");
  WayOut ways;
  if (const auto& before = arguments.rest ? arguments.before : arguments.backup) {
    go_on.Option("--before").File(*before);
    ways.restore = PastedCommand("restore", arguments.port).File(*before).Text();
  }
  ways.go_on = go_on.File(arguments.file).Text();
  ways.has_a_part = arguments.rest;
  return ways;
}

std::string CountText(const RadioSession& session) {
  const std::size_t count = session.report().acknowledged.size();
  return std::to_string(count) + (count == 1 ? " block" : " blocks");
}

int WriteAll(CommandContext& context, const Arguments& arguments, RadioSession& session) {
  WriteNet net{.keep_backup = {}, .verify = arguments.verify};
  if (arguments.backup) net.keep_backup = KeepIn(context, *arguments.backup);
  const int code = session.Write(HalfOf(arguments.only), net, WaysOf(arguments));
  if (code != kExitDone) return code;
  context.console.Note(InputName(arguments.file) + " written to the radio: " + CountText(session) +
                       " acknowledged" + (arguments.verify ? " and verified" : ""));
  return kExitDone;
}

int WriteRest(CommandContext& context, const Arguments& arguments, const CloneData& data,
              RadioSession& session) {
  RadioContent before;
  if (const int code =
          ContentOrComplain(context, arguments.before, arguments.file, data.model, before)) {
    return code;
  }
  const auto units = MakeWritePlan(data, HalfOf(arguments.only)).All();
  if (const int code = session.Swap(data.model, RestOf(units, before), WaysOf(arguments))) {
    return code;
  }
  context.console.Note("All of " + InputName(arguments.file) +
                       (arguments.only.empty() ? "" : " (" + arguments.only + ")") +
                       " is in the radio: " + CountText(session) + " of " +
                       std::to_string(units.size()) + " were missing");
  return kExitDone;
}

int WriteChanges(CommandContext& context, const Arguments& arguments, const CloneData& data,
                 RadioSession& session) {
  RadioContent known;
  if (const int code =
          ContentOrComplain(context, arguments.changes, arguments.file, data.model, known)) {
    return code;
  }
  std::vector<UnitSwap> swaps = ChangedUnits(known, data);
  if (arguments.rest) swaps = RestOf(std::move(swaps));
  const std::string files = InputName(arguments.file) + " and " + InputName(*arguments.changes);
  if (swaps.empty()) {
    context.console.Note(files + " hold the same; nothing was sent to the radio");
    return kExitDone;
  }
  if (const int code = session.Swap(data.model, swaps, WaysOf(arguments))) return code;
  const std::string names = FewUnitsText(session.report().acknowledged);
  context.console.Note("The radio has the difference between " + files + ": " + CountText(session) +
                       " written and verified" + (names.empty() ? "" : " (" + names + ')'));
  return kExitDone;
}

int Run(CommandContext& context, const Arguments& arguments) {
  const auto device = DeviceOrComplain(context, arguments.port);
  if (!device) return context.exit_code;
  std::vector<std::string> inputs = {arguments.file};
  for (const auto& other : {arguments.changes, arguments.before}) {
    if (other) inputs.push_back(*other);
  }
  if (const int code = CheckInputs(context, inputs)) return code;
  CloneData data = FreshData();
  if (const int code = OpenOrComplain(context, arguments.file, data)) return code;
  if (const int code = CheckBackup(context, arguments.backup)) return code;
  CloneDocument document(data);
  RadioSession session(context, *device, document);
  if (arguments.changes) return WriteChanges(context, arguments, data, session);
  if (arguments.rest) return WriteRest(context, arguments, data, session);
  return WriteAll(context, arguments, session);
}

}  // namespace

void AddWrite(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("write", "Writes a clone file to the radio");
  auto arguments = std::make_shared<Arguments>();
  AddPortOption(*command, arguments->port);
  AddOnlyOption(*command, arguments->only);
  auto* backup = AddBackupOption(*command, arguments->backup);
  command->add_flag("--verify", arguments->verify,
                    "read back what was written and compare; differences go to standard output");
  auto* changes = command
                      ->add_option("--changes", arguments->changes,
                                   "write only what differs from this file, which the radio must "
                                   "hold, and verify it")
                      ->type_name("BASE");
  AddRestOptions(*command, arguments->rest, arguments->before)->excludes(backup);
  changes->excludes(backup)->excludes("--only")->excludes("--before");
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->footer(
      "A write whose backup failed does not start. A backup is a clone file that holds the radio\n"
      "byte for byte; rxq40ctl restore brings it back.\n"
      "BASE is what was read or backed up before it was changed. When the radio holds something\n"
      "else there, nothing is written.\n"
      "Examples: rxq40ctl write -p /dev/ttyUSB0 --backup before.Q40 --verify radio.Q40\n"
      "          rxq40ctl write -p 1 --changes before.Q40 radio.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
