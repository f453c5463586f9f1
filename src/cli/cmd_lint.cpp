#include <memory>

#include <nlohmann/json.hpp>

#include "checkup/checkup.h"
#include "cli/commands.h"
#include "image/defaults.h"

namespace q40 {
namespace {

struct Arguments {
  std::string file;
  bool json = false;
};

std::string JsonText(const Findings& findings) {
  auto json = nlohmann::ordered_json::array();
  for (const Finding& finding : findings) {
    const FindingKindRow& row = RowOf(finding.kind);
    json.push_back({{"place", PlaceText(finding.place)},
                    {"field", finding.field},
                    {"kind", row.code},
                    {"severity", SeverityText(row.severity)},
                    {"text", finding.text}});
  }
  return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

// What a file does not keep was lost when it was saved, and is not found here; see Occurs.
int Run(CommandContext& context, const Arguments& arguments) {
  CloneDocument document = FreshDocument();
  if (const int code = OpenOrComplain(context, arguments.file, document)) return code;
  const Findings findings = CheckUp(document);
  std::string text;
  if (arguments.json) {
    text = JsonText(findings);
  } else {
    for (const Finding& finding : findings) {
      text += PlaceText(finding.place) + ", " + finding.field + ": " + finding.text + '\n';
    }
    if (findings.empty()) context.console.Note("no findings");
  }
  if (const int code = Print(context, text)) return code;
  return findings.empty() ? kExitDone : kExitFindings;
}

}  // namespace

void AddLint(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand(
      "lint", "Lists what is probably a mistake, and what the radio will not keep as it is");
  auto arguments = std::make_shared<Arguments>();
  command->add_flag("--json", arguments->json, "as JSON");
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->footer("Exit code 1 when there are findings.\nExample: rxq40ctl lint radio.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
