#include <memory>

#include "document/defaults.h"
#include "files/radio_copy_file.h"
#include "programs/ctl/radio_copies.h"
#include "programs/ctl/radio_session.h"
#include "programs/ctl/user_files.h"
#include "radio/models.h"

namespace q40 {
namespace {

struct Arguments {
  std::string port;
  std::string file;
};

int Run(CommandContext& context, const Arguments& arguments) {
  const auto device = DeviceOrComplain(context, arguments.port);
  if (!device) return context.exit_code;
  Product product(context, arguments.file);
  if (const int code = product.Prepare(false, "A backup replaces no file; name another.")) {
    return code;
  }
  CloneDocument document(FreshData());
  RadioSession session(context, *device, document);
  RadioCopy copy;
  if (const int code = session.BackUp(copy)) return code;
  if (const int code = product.Store(RadioCopyText(copy))) return code;
  context.console.Note(std::string(ModelName(copy.model)) + " version " + copy.version_letter +
                       " backed up into " + product.Name() + ": " +
                       std::to_string(copy.units.size()) + " blocks, " +
                       std::to_string(copy.units.size() * kUnitSize) + " bytes");
  return kExitDone;
}

}  // namespace

void AddBackup(CLI::App& app, CommandContext& context) {
  auto* command =
      app.add_subcommand("backup", "Keeps what the radio holds, byte for byte, in a clone file");
  auto arguments = std::make_shared<Arguments>();
  AddPortOption(*command, arguments->port);
  command->add_option("FILE", arguments->file, kNewClonePathHelp)->required();
  command->footer(
      "The bytes stand in the file as they came, also those that no field shows and those that\n"
      "cannot be decoded; restore brings them back. A backup never replaces a file.\n"
      "Example: rxq40ctl backup -p 1 before.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
