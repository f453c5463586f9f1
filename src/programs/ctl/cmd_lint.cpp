#include <algorithm>
#include <memory>

#include "checkup/checkup.h"
#include "document/defaults.h"
#include "document/document_cells.h"
#include "programs/ctl/document_text.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string file;
  bool json = false;
};

// As diff and show --json call it.
std::string PlaceName(const Place& place) {
  const auto index = static_cast<std::size_t>(place.index);
  switch (place.where) {
    case Place::Where::kSetting: return PlaceOf(Settings()[index].group);
    case Place::Where::kSpecial: return ByteAt(Unit::Special(place.band, place.index), 0).place;
    case Place::Where::kDialer: return ByteAt(Unit::Dialer(place.index / 2), 0).place;
    default: return ByteAt(Unit::Memory(place.index), 0).place;
  }
}

std::string JsonRows(const Findings& findings) {
  auto json = nlohmann::ordered_json::array();
  for (const Finding& finding : findings) {
    const FindingKindRow& row = RowOf(finding.kind);
    json.push_back({{"place", PlaceName(finding.place)},
                    {"name", finding.field},
                    {"kind", row.code},
                    {"severity", SeverityText(row.severity)},
                    {"text", finding.text}});
  }
  return JsonText(json);
}

// What a file stores; it has been opened, so it has its lines.
Findings FindingsIn(std::string_view stored) {
  CloneLines lines;
  if (SplitCloneText(stored, {}, lines)) return {};
  return CheckStored(StoredUnits(lines));
}

int Run(CommandContext& context, const Arguments& arguments) {
  CloneData document = FreshData();
  std::string stored;
  if (const int code = OpenOrComplain(context, arguments.file, document, stored)) return code;
  Findings findings = CheckUp(document);
  const Findings lost = FindingsIn(stored);
  findings.insert(findings.end(), lost.begin(), lost.end());
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& a, const Finding& b) { return a.place < b.place; });
  std::string text;
  if (arguments.json) {
    text = JsonRows(findings);
  } else {
    for (const Finding& finding : findings) {
      text += PlaceName(finding.place) + ", " + finding.field + ": " + finding.text + '\n';
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
