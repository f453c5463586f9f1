#include <algorithm>
#include <filesystem>
#include <memory>

#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "link/com_ports.h"
#include "link/serial_port.h"

namespace q40 {
namespace {

struct PortRow {
  int number;
  std::string device;
  bool present;
  std::string description;
};

std::string Resolved(const std::string& device) {
  std::error_code error;
  const auto resolved = std::filesystem::canonical(device, error);
  return error ? device : resolved.string();
}

std::vector<PortRow> PortRows() {
  const auto present = PresentPorts();
  std::vector<PortRow> rows;
  for (int number = 1; number <= kComPortCount; ++number) {
    PortRow row{number, ComDevice(number), false, {}};
    const std::string device = Resolved(row.device);
    const auto found = std::find_if(present.begin(), present.end(),
                                    [&](const PresentPort& p) { return p.device == device; });
    if (found != present.end()) row.description = found->description;
    std::error_code error;
    const bool listed_only = device.starts_with("/dev/ttyS");  // the nodes exist without a chip
    row.present = found != present.end() ||
                  (!listed_only && std::filesystem::is_character_file(device, error));
    rows.push_back(std::move(row));
  }
  return rows;
}

std::string Table(const std::vector<PortRow>& rows) {
  std::string text;
  for (const PortRow& row : rows) {
    std::string number = std::to_string(row.number);
    number.insert(0, number.size() < 2 ? 1 : 0, ' ');
    text += "COM " + number + "  " + row.device;
    text += row.present ? "  present" : "  -";
    if (!row.description.empty()) text += "  " + row.description;
    text += '\n';
  }
  return text;
}

std::string JsonText(const std::vector<PortRow>& rows) {
  auto json = nlohmann::ordered_json::array();
  for (const PortRow& row : rows) {
    json.push_back({{"number", row.number},
                    {"device", row.device},
                    {"present", row.present},
                    {"description", row.description}});
  }
  return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

}  // namespace

void AddPorts(CLI::App& app, CommandContext& context) {
  auto* command =
      app.add_subcommand("ports", "Lists COM 1 to 14: device, whether it is present, what it is");
  auto json = std::make_shared<bool>(false);
  command->add_flag("--json", *json, "as JSON");
  command->footer("Example: rxq40ctl ports");
  command->callback([&context, json] {
    const auto rows = PortRows();
    context.exit_code = Print(context, *json ? JsonText(rows) : Table(rows));
  });
}

}  // namespace q40
