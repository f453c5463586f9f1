#include <memory>

#include "document/defaults.h"
#include "document/document_cells.h"
#include "programs/ctl/document_text.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string a;
  std::string b;
  bool json = false;
};

int Run(CommandContext& context, const Arguments& arguments) {
  if (const int code = CheckInputs(context, {arguments.a, arguments.b})) return code;
  CloneData a = FreshData();
  CloneData b = FreshData();
  if (const int code = OpenOrComplain(context, arguments.a, a)) return code;
  if (const int code = OpenOrComplain(context, arguments.b, b)) return code;

  std::string text;
  auto json = nlohmann::ordered_json::array();
  for (const CellDifference& one : DifferencesOf(a, b)) {
    text += DifferenceText(one) + '\n';
    json.push_back({{"place", one.place}, {"name", one.name}, {"a", one.a}, {"b", one.b}});
  }
  const bool same = text.empty();
  if (arguments.json) text = JsonText(json);
  if (const int code = Print(context, text)) return code;
  return same ? kExitDone : kExitDifferent;
}

}  // namespace

void AddDiff(CLI::App& app, CommandContext& context) {
  auto* command =
      app.add_subcommand("diff", "Lists what differs, setting by setting, cell by cell");
  auto arguments = std::make_shared<Arguments>();
  command->add_flag("--json", arguments->json, "as JSON");
  command->add_option("A", arguments->a, kClonePathHelp)->required();
  command->add_option("B", arguments->b, kClonePathHelp)->required();
  command->footer("Exit code 1 when the files differ.\nExample: rxq40ctl diff old.Q40 new.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
