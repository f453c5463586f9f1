#include <memory>

#include "cli/commands.h"
#include "cli/document_text.h"
#include "image/defaults.h"
#include "image/plain_text.h"

namespace q40 {
namespace {

struct Arguments {
  std::string a;
  std::string b;
  bool json = false;
};

// Whole, unlike the values in messages.
std::string Value(const std::string& value) {
  std::string text(1, '"');
  text += Printable(value);
  text += '"';
  return text;
}

int Run(CommandContext& context, const Arguments& arguments) {
  CloneDocument a = FreshDocument();
  CloneDocument b = FreshDocument();
  if (const int code = OpenOrComplain(context, arguments.a, a)) return code;
  if (const int code = OpenOrComplain(context, arguments.b, b)) return code;
  const auto cells_a = CellsOf(a);
  const auto cells_b = CellsOf(b);

  std::string text;
  auto json = nlohmann::ordered_json::array();
  for (std::size_t i = 0; i < cells_a.size(); ++i) {
    const DocumentCell& cell = cells_a[i];
    const std::string& other = cells_b[i].value;
    if (cell.value == other) continue;
    // Between a channel in use and one that is not, the other cells say it all.
    if (cell.name == kStoredData && (cell.value.empty() || other.empty())) continue;
    text += cell.place + ": " + cell.name + ": " + Value(cell.value) + " -> " + Value(other) + '\n';
    json.push_back({{"place", cell.place}, {"name", cell.name}, {"a", cell.value}, {"b", other}});
  }
  const bool same = text.empty();
  if (arguments.json) {
    text = json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
  }
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
