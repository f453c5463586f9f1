#include <memory>

#include "base/plain_text.h"
#include "document/defaults.h"
#include "files/whole_file.h"
#include "programs/ctl/document_text.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::vector<std::string> files;
  bool json = false;
};

int Run(CommandContext& context, const Arguments& arguments) {
  int code = kExitDone;
  auto json = nlohmann::ordered_json::array();
  CloneData document = FreshData();
  std::string text;
  if (const int refused = CheckInputs(context, arguments.files)) return refused;
  for (const std::string& file : arguments.files) {
    const OpenResult result = OpenInput(file, document, text);
    const auto& problem = result.problem;
    const auto& odd = result.odd_digit;
    if (problem) code = kExitDataError;
    if (arguments.json) {
      nlohmann::ordered_json row = {{"file", file}, {"ok", !problem}};
      if (problem && problem->line > 0) row["line"] = problem->line;
      if (problem) row["problem"] = problem->what;
      if (odd) row.update({{"line", odd->line}, {"note", odd->what}});
      json.push_back(std::move(row));
    } else if (Print(context, Printable(problem ? problem->Message() : InputName(file) + ": ok") +
                                  '\n') != kExitDone) {
      return kExitCannotWrite;
    }
    if (odd && !arguments.json) context.console.Note(odd->Message());
  }
  if (arguments.json) {
    if (const int failed = Print(context, JsonText(json))) return failed;
  }
  return code;
}

}  // namespace

void AddCheck(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand(
      "check", "Says for every file \"ok\", or the first thing that is wrong with its line");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("FILE", arguments->files, "clone files (*.Q40), - for standard input")
      ->required();
  command->add_flag("--json", arguments->json, "as JSON");
  command->footer("Example: rxq40ctl check *.Q40");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
