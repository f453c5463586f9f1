#include <memory>

#include "document/defaults.h"
#include "programs/ctl/user_files.h"
#include "radio/models.h"

namespace q40 {
namespace {

struct Arguments {
  std::string model;
  bool version_a = false;
  bool force = false;
  std::string file;
};

int Run(CommandContext& context, const Arguments& arguments) {
  Product product(context, arguments.file);
  if (const int code = product.Prepare(arguments.force)) return code;
  CloneData document = FreshData();
  ChangeModel(document, FindModel(arguments.model).value_or(0));
  document.image.VersionA = arguments.version_a;
  return product.Store(document);
}

}  // namespace

void AddNew(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("new", "Makes a clone file with the defaults of a model");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("--model", arguments->model, "RX-Q40T, RX-Q40E, RX-Q40T1 or RX-Q20A")
      ->required()
      ->type_name("MODEL")
      ->check(CLI::IsMember({"RX-Q40T", "RX-Q40E", "RX-Q40T1", "RX-Q20A"}, CLI::ignore_case));
  command->add_flag("--version-a", arguments->version_a, "a radio of version A");
  command->add_flag("--force", arguments->force, "replace an existing file");
  command->add_option("FILE", arguments->file, kNewClonePathHelp)->required();
  command->footer("Example: rxq40ctl new --model RX-Q40E radio.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
