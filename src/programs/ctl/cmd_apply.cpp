// apply: values from a JSON text into a clone file.
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "document/defaults.h"
#include "files/standard_streams.h"
#include "files/whole_file.h"
#include "programs/ctl/clone_apply.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string file;
  std::string json;
  std::optional<std::string> out;
  bool force = false;
};

std::string Counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

int TellProblems(Console& console, const std::vector<std::string>& problems,
                 const std::string& json) {
  for (const std::string& problem : problems)
    console.Error({FileProblem::Kind::kBadData, json, 0, problem});
  return console.Error(kExitDataError, json + ": nothing was applied");
}

int TellResult(Console& console, const Applied& applied, const std::string& json,
               const std::string& target) {
  if (applied.odd_digit) {
    console.Note(target + ", line " + std::to_string(applied.odd_digit->line) + ": " +
                 applied.odd_digit->what);
  }
  for (const std::string& note : applied.notes) console.Note(note);
  console.Note(Counted(static_cast<std::size_t>(applied.applied), "value") + " applied to " +
               target);
  if (applied.notes.empty()) return kExitDone;
  return console.Error(kExitImportedInPart, json + ": applied, but not all of it (" +
                                                Counted(applied.notes.size(), "note") + ")");
}

int Run(CommandContext& context, const Arguments& arguments) {
  Console& console = context.console;
  const std::string target = arguments.out.value_or(arguments.file);
  if (const int code = CheckInputs(context, {arguments.file, arguments.json})) return code;
  Product product(context, target);
  if (!arguments.out && product.IsStream() && target != kStandardStream) {
    return console.Error(kExitUsage,
                         target + " cannot be changed. Name the file to write with -o.");
  }
  std::error_code error;
  if (std::filesystem::equivalent(target, arguments.json, error)) {
    return console.Error(kExitUsage, target + " is the JSON text. Name a clone file to write.");
  }
  CloneData document = FreshData();
  std::string text;
  if (const int code = OpenOrComplain(context, arguments.file, document, text)) return code;
  if (const int code = product.Prepare(arguments.force || !arguments.out)) return code;
  std::string values;
  if (const auto problem = ReadInput(arguments.json, kLongestJson + 1, values))
    return console.Error(*problem);
  const std::string json = InputName(arguments.json);
  const JsonReading reading = ReadJson(values, json);
  if (reading.problem) return console.Error(*reading.problem);
  const Applied applied = ApplyJson(OpenedCloneOf(text, std::move(document)), reading.entries);
  if (!applied.problems.empty()) return TellProblems(console, applied.problems, json);
  if (const int code = product.Store(applied.text)) return code;
  return TellResult(console, applied, json, product.Name());
}

}  // namespace

void AddApply(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("apply", "Takes values of a JSON text into a clone file");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command
      ->add_option("JSON", arguments->json,
                   "what show --json prints, or some of it, - for standard input")
      ->required();
  command
      ->add_option("-o,--output", arguments->out,
                   "new clone file instead of FILE, - for standard output")
      ->type_name("OUT");
  command->add_flag("--force", arguments->force, "replace an existing OUT");
  command->footer(
      "What the text does not name stays as it is. Exit code 9 when a value did not fit, or will "
      "not be\n"
      "kept; the notes say which.\n"
      "Example: rxq40ctl show --json old.Q40 | rxq40ctl apply new.Q40 -");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
