#include <algorithm>
#include <memory>

#include "checkup/checkup.h"
#include "document/defaults.h"
#include "programs/ctl/document_text.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string file;
  bool json = false;
};

std::string JsonRows(const Findings& findings) {
  auto json = nlohmann::ordered_json::array();
  for (const Finding& finding : findings) {
    const FindingKindRow& row = RowOf(finding.kind);
    json.push_back({{"place", PlaceText(finding.place)},
                    {"field", finding.field},
                    {"kind", row.code},
                    {"severity", SeverityText(row.severity)},
                    {"text", finding.text}});
  }
  return JsonText(json);
}

// Settings and channels of a file as the radio's units. The file has been opened, so it has its lines.
std::vector<Unit> StoredUnits(std::string_view text) {
  constexpr std::size_t kFirstSettingsLine = 1;
  constexpr std::size_t kFirstLine[] = {5, 15};  // of the VHF and the UHF special channels
  constexpr std::size_t kFirstMemoryLine = 35;
  std::vector<Unit> units;
  CloneLines lines;
  if (SplitCloneText(text, {}, lines)) return units;
  const auto add = [&](Address address, std::size_t line) {
    units.push_back({address, std::string(lines.Pair(line))});
  };
  for (std::size_t number = 0; number < kSettingsAddress.size(); ++number) {
    add(kSettingsAddress[number], kFirstSettingsLine + 2 * number);
  }
  for (const Band band : kBands) {
    const std::size_t first = kFirstLine[band == Band::kVhf ? 0 : 1];
    for (std::size_t k = 0; k < kSpecialChannelCount; ++k) {
      add(SpecialChannelAddress(band, static_cast<int>(k)), first + 2 * k);
    }
  }
  for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
    add(MemoryChannelAddress(static_cast<int>(n)), kFirstMemoryLine + 2 * n);
  }
  return units;
}

int Run(CommandContext& context, const Arguments& arguments) {
  CloneDocument document = FreshDocument();
  std::string stored;
  if (const int code = OpenOrComplain(context, arguments.file, document, stored)) return code;
  Findings findings = CheckUp(document);
  const Findings lost = CheckStored(StoredUnits(stored));
  findings.insert(findings.end(), lost.begin(), lost.end());
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& a, const Finding& b) { return a.place < b.place; });
  std::string text;
  if (arguments.json) {
    text = JsonRows(findings);
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
