#include <memory>

#include "document/defaults.h"
#include "programs/ctl/document_text.h"
#include "programs/ctl/radio_session.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string port;
  std::string only;
  bool force = false;
  std::string file;
};

int Run(CommandContext& context, const Arguments& arguments) {
  const auto device = DeviceOrComplain(context, arguments.port);
  if (!device) return context.exit_code;
  const Half half = HalfOf(arguments.only);
  Product product(context, arguments.file);
  const bool keeps_a_half = half != Half::kBoth && product.Exists();
  if (const int code =
          product.Prepare(arguments.force || keeps_a_half,
                          "Use --force to replace it, or --only to read one half into it.")) {
    return code;
  }
  CloneData kept = FreshData();
  if (keeps_a_half) {
    if (const int code = OpenOrComplain(context, arguments.file, kept)) return code;
  }
  CloneDocument document(std::move(kept));
  RadioSession session(context, *device, document);
  if (keeps_a_half && !arguments.force) session.KeepModel();
  if (const int code = session.Read(half); code != kExitDone) return code;
  if (const int code = product.Store(document.data())) return code;
  context.console.Note(ModelText(document.data()) + " read into " + product.Name());
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
  command->add_option("FILE", arguments->file, kNewClonePathHelp)->required();
  command->footer(
      "A new file starts from the defaults of the radio's model. With --only an existing file\n"
      "keeps its other half.\n"
      "Example: rxq40ctl read -p 1 radio.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
