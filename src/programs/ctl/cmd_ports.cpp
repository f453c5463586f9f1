#include <memory>

#include "base/plain_text.h"
#include "link/com_ports.h"
#include "programs/ctl/commands.h"
#include "programs/ctl/document_text.h"

namespace q40 {
namespace {

std::string Table(const std::vector<ComPortState>& rows) {
  std::string text;
  for (const ComPortState& row : rows) {
    std::string number = std::to_string(row.number);
    number.insert(0, number.size() < 2 ? 1 : 0, ' ');
    text += "COM " + number + "  " + Printable(row.device);
    text += row.present ? "  present" : "  -";
    if (!row.description.empty()) text += "  " + Printable(row.description);
    if (!row.stable_path.empty()) text += "  " + Printable(row.stable_path);
    text += '\n';
  }
  return text;
}

std::string JsonRows(const std::vector<ComPortState>& rows) {
  auto json = nlohmann::ordered_json::array();
  for (const ComPortState& row : rows) {
    json.push_back({{"number", row.number},
                    {"device", row.device},
                    {"present", row.present},
                    {"description", row.description},
                    {"stablePath", row.stable_path}});
  }
  return JsonText(json);
}

}  // namespace

void AddPorts(CLI::App& app, CommandContext& context) {
  auto* command =
      app.add_subcommand("ports", "Lists COM 1 to 14: device, whether it is present, what it is");
  auto json = std::make_shared<bool>(false);
  command->add_flag("--json", *json, "as JSON");
  command->footer(
      "Of a USB adapter also the path that stays the same wherever it is plugged in.\n"
      "Example: rxq40ctl ports");
  command->callback([&context, json] {
    const auto rows = ComPortStates(context.present_ports());
    context.exit_code = Print(context, *json ? JsonRows(rows) : Table(rows));
  });
}

}  // namespace q40
