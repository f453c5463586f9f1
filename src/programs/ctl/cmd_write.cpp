#include <memory>

#include "document/defaults.h"
#include "files/radio_copy_file.h"
#include "files/whole_file.h"
#include "programs/ctl/radio_session.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string port;
  std::string only;
  std::optional<std::string> backup;
  bool verify = false;
  std::string file;
};

// A word as a shell takes it.
std::string ShellWord(const std::string& word) {
  constexpr std::string_view kPlain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+=./:,@%";
  if (word.starts_with('-')) return ShellWord("./" + word);  // no option
  if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

std::string RestoreCommand(const Arguments& arguments) {
  if (!arguments.backup) return {};
  const std::string only = arguments.only.empty() ? "" : " --only " + arguments.only;
  return "rxq40ctl write -p " + ShellWord(arguments.port) + only + ' ' +
         ShellWord(*arguments.backup);
}

// kExitDone when the backup's file can be made. An older backup is never replaced: it may be the one
// that is needed.
int CheckBackup(CommandContext& context, const std::string& path) {
  Product product(context, path);
  if (product.IsStream()) {
    return context.console.Error(kExitUsage, path + " is no file. A backup needs one.");
  }
  return product.Prepare(false, "A backup replaces no file; name another.");
}

WriteNet NetOf(CommandContext& context, const Arguments& arguments) {
  WriteNet net{.keep_backup = {}, .verify = arguments.verify};
  if (!arguments.backup) return net;
  net.keep_backup = [&context, path = *arguments.backup](const RadioCopy& radio) {
    if (const auto problem = SaveRadioCopy(path, radio)) {
      context.console.Error(*problem);
      return false;
    }
    context.console.Note("The radio's memory is kept in " + path);
    return true;
  };
  return net;
}

int Run(CommandContext& context, const Arguments& arguments) {
  const auto device = DeviceOrComplain(context, arguments.port);
  if (!device) return context.exit_code;
  CloneData data = FreshData();
  if (const int code = OpenOrComplain(context, arguments.file, data)) return code;
  if (arguments.backup) {
    if (const int code = CheckBackup(context, *arguments.backup)) return code;
  }
  CloneDocument document(std::move(data));
  RadioSession session(context, *device, document);
  const int code = session.Write(HalfOf(arguments.only), NetOf(context, arguments),
                                 {RestoreCommand(arguments), {}});
  if (code != kExitDone) return code;
  context.console.Note(InputName(arguments.file) + " written to the radio: " +
                       std::to_string(session.report().acknowledged.size()) +
                       " blocks acknowledged" + (arguments.verify ? " and verified" : ""));
  return kExitDone;
}

}  // namespace

void AddWrite(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("write", "Writes a clone file to the radio");
  auto arguments = std::make_shared<Arguments>();
  AddPortOption(*command, arguments->port);
  AddOnlyOption(*command, arguments->only);
  command
      ->add_option("--backup", arguments->backup,
                   "read the radio first and keep what it holds in this new clone file")
      ->type_name("FILE");
  command->add_flag("--verify", arguments->verify,
                    "read back what was written and compare; differences go to standard output");
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->footer(
      "A write whose backup failed does not start. A backup is a clone file: it brings back what\n"
      "such a file can hold, and RPT's frequency is set by every write.\n"
      "Example: rxq40ctl write -p /dev/ttyUSB0 --backup before.Q40 --verify radio.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
