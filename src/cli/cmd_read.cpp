#include <filesystem>
#include <memory>

#include "cli/commands.h"
#include "cli/document_text.h"
#include "cli/radio_session.h"
#include "files/clone_file.h"
#include "files/whole_file.h"
#include "image/defaults.h"

namespace q40 {
namespace {

struct Arguments {
  std::string port;
  std::string only;
  bool force = false;
  std::string file;
};

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(std::filesystem::symlink_status(path, error));
}

int Run(CommandContext& context, const Arguments& arguments) {
  const auto device = DeviceOrComplain(context, arguments.port);
  if (!device) return context.exit_code;
  const Half half = HalfOf(arguments.only);
  const bool completes = half != Half::kBoth && Exists(arguments.file) && !arguments.force;
  if (half == Half::kBoth && Exists(arguments.file) && !arguments.force) {
    return context.console.Error(kExitUsage, arguments.file +
                                                 " exists. Use --force to replace it, or --only "
                                                 "to read one half into it.");
  }

  CloneDocument document = FreshDocument();
  // With --force too, the half that is not read is kept if the file is one to keep.
  if (completes || (half != Half::kBoth && Exists(arguments.file))) {
    const OpenResult opened = OpenCloneFile(arguments.file, document);
    if (opened.problem && completes) return context.console.Error(*opened.problem);
    if (opened.problem) document = FreshDocument();
  }
  FileReplacement target;
  if (const auto problem = target.Open(arguments.file)) return context.console.Error(*problem);

  RadioSession session(context, *device, document);
  if (completes) session.KeepModel();
  if (const int code = session.Read(half); code != kExitDone) return code;
  const auto text = CloneFileText(document, document.model);
  if (!text) return context.console.Error(kExitDataError, "the data cannot be encoded");
  if (const auto problem = target.Commit(*text)) return context.console.Error(*problem);
  context.console.Note(ModelText(document) + " read into " + arguments.file);
  return kExitDone;
}

}  // namespace

void AddRead(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("read", "Reads the radio into a clone file");
  auto arguments = std::make_shared<Arguments>();
  AddPortOption(*command, arguments->port);
  AddOnlyOption(*command, arguments->only);
  command->add_flag("--force", arguments->force,
                    "replace an existing file, also by one of another model");
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->footer(
      "A new file starts from the defaults of the radio's model. With --only an existing file\n"
      "keeps its other half.\n"
      "Example: rxq40ctl read -p 1 radio.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
