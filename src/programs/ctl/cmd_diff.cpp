#include <memory>

#include "document/defaults.h"
#include "document/document_cells.h"
#include "programs/ctl/clone_json.h"
#include "programs/ctl/document_text.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string a;
  std::string b;
  bool json = false;
};

// A file as it is and as it is read.
struct Side {
  CloneData data = FreshData();
  std::string text;
};

// The values as show --json has them; null for what it leaves out.
std::string JsonRows(const std::vector<CellDifference>& differences, const Side& a, const Side& b) {
  const Json shown_a = DocumentJson(OpenedCloneOf(a.text, a.data));
  const Json shown_b = DocumentJson(OpenedCloneOf(b.text, b.data));
  Json json = Json::array();
  for (const CellDifference& one : differences) {
    const auto value = [&](const Json& shown) {
      const auto place = shown.find(one.place);
      return place == shown.end() ? Json() : place->value(one.name, Json());
    };
    json.push_back(
        {{"place", one.place}, {"name", one.name}, {"a", value(shown_a)}, {"b", value(shown_b)}});
  }
  return JsonText(json);
}

int Run(CommandContext& context, const Arguments& arguments) {
  if (const int code = CheckInputs(context, {arguments.a, arguments.b})) return code;
  Side a;
  Side b;
  if (const int code = OpenOrComplain(context, arguments.a, a.data, a.text)) return code;
  if (const int code = OpenOrComplain(context, arguments.b, b.data, b.text)) return code;

  const std::vector<CellDifference> differences = DifferencesOf(a.data, b.data);
  std::string text;
  for (const CellDifference& one : differences) text += DifferenceText(one) + '\n';
  if (arguments.json) text = JsonRows(differences, a, b);
  if (const int code = Print(context, text)) return code;
  return differences.empty() ? kExitDone : kExitDifferent;
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
