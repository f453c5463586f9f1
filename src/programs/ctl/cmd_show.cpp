#include <memory>

#include "document/defaults.h"
#include "programs/ctl/clone_json.h"
#include "programs/ctl/document_text.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string file;
  bool json = false;
};

int Run(CommandContext& context, const Arguments& arguments) {
  CloneData document = FreshData();
  std::string text;
  if (const int code = OpenOrComplain(context, arguments.file, document, text)) return code;
  if (!arguments.json) return Print(context, DocumentReport(document));
  return Print(context, JsonText(DocumentJson(OpenedCloneOf(text, std::move(document)))));
}

}  // namespace

void AddShow(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("show", "Prints everything in a clone file");
  auto arguments = std::make_shared<Arguments>();
  command->add_flag("--json", arguments->json, "as JSON");
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->footer(
      "The JSON is complete; apply takes it into a clone file.\n"
      "Example: rxq40ctl show --json radio.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
