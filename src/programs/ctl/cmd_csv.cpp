// export and import: the channel list to and from CSV.
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "checkup/import_losses.h"
#include "document/defaults.h"
#include "files/channel_csv.h"
#include "files/standard_streams.h"
#include "files/whole_file.h"
#include "programs/ctl/other_list.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string file;
  std::string csv;
  std::optional<std::string> out;
  bool force = false;
  OtherList other;
};

std::optional<FileProblem> ReadCsv(const std::string& path, std::string& text) {
  if (auto problem = ReadInput(path, kLongestCsv + 1, text)) return problem;
  return CheckCsvSize(text, InputName(path));
}

void TellNotes(Console& console, const ImportReport& report) {
  for (const ImportNote& note : report.notes) console.Note(note.Message());
  const int more = report.note_count - static_cast<int>(report.notes.size());
  if (more > 0) console.Note("and " + std::to_string(more) + " more");
}

// The last words of an import that was saved. That not everything is as written is said even with
// --quiet.
int TellResult(Console& console, const ImportReport& report, const std::string& csv,
               const std::string& target) {
  console.Note(std::to_string(report.memory_records) + " memory and " +
               std::to_string(report.special_records) + " special channel records imported into " +
               target);
  if (report.note_count == 0) return kExitDone;
  const std::string notes =
      std::to_string(report.note_count) + (report.note_count == 1 ? " note" : " notes");
  const std::string what =
      report.Whole() ? "the clone file does not keep all of it" : "not all of it was understood";
  return console.Error(kExitImportedInPart, csv + ": imported, but " + what + " (" + notes + ")");
}

int RunExport(CommandContext& context, const Arguments& arguments) {
  CloneData document = FreshData();
  if (const int code = OpenOrComplain(context, arguments.file, document)) return code;
  // A slip of the hand between two names must not cost a clone file.
  if (IsCloneFile(arguments.csv)) {
    return context.console.Error(kExitUsage, arguments.csv +
                                                 " is a clone file. Name another file for the "
                                                 "channel list.");
  }
  Product list(context, arguments.csv);
  if (const int code = list.Prepare(arguments.force)) return code;
  return list.Store(ExportChannels(document.image));
}

int ImportOwnList(CommandContext& context, const std::string& path, CloneData& document,
                  Product& product) {
  std::string text;
  if (const auto problem = ReadCsv(path, text)) return context.console.Error(*problem);
  ImportReport report = ImportChannels(text, document.image);
  const std::string csv = InputName(path);
  if (const auto problem = ProblemOf(report, csv)) return context.console.Error(*problem);
  AddLosses(document, report);
  TellNotes(context.console, report);
  if (!report.no_list.empty()) {
    return context.console.Error(
        {FileProblem::Kind::kBadData, csv, 0, report.no_list + ". Nothing was imported."});
  }
  if (const int code = product.Store(document)) return code;
  return TellResult(context.console, report, csv, product.Name());
}

int RunImport(CommandContext& context, const Arguments& arguments) {
  const std::string target = arguments.out.value_or(arguments.file);
  std::vector<std::string> inputs = {arguments.file, arguments.csv};
  if (arguments.other.map) inputs.push_back(*arguments.other.map);
  if (arguments.other.print_map) inputs.erase(inputs.begin());
  if (const int code = CheckInputs(context, inputs)) return code;
  if (arguments.other.print_map) return PrintMapping(context, arguments.csv, arguments.other);
  Product product(context, target);
  if (!arguments.out && product.IsStream() && target != kStandardStream) {
    return context.console.Error(kExitUsage,
                                 target + " cannot be changed. Name the file to write with -o.");
  }
  std::error_code error;
  if (std::filesystem::equivalent(target, arguments.csv, error)) {
    return context.console.Error(kExitUsage,
                                 target + " is the channel list. Name a clone file to write.");
  }
  CloneData document = FreshData();
  if (const int code = OpenOrComplain(context, arguments.file, document)) return code;
  if (const int code = product.Prepare(arguments.force || !arguments.out)) return code;
  if (!arguments.other.map) return ImportOwnList(context, arguments.csv, document, product);
  return ImportOtherList(context, arguments.csv, arguments.other, document, product);
}

}  // namespace

void AddExport(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("export", "Writes the channel list of a clone file as CSV");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->add_option("CSV", arguments->csv, "CSV file, - for standard output")->required();
  command->add_flag("--force", arguments->force, "replace an existing file; never a clone file");
  command->footer("Example: rxq40ctl export radio.Q40 channels.csv");
  command->callback([&context, arguments] { context.exit_code = RunExport(context, *arguments); });
}

void AddImport(CLI::App& app, CommandContext& context) {
  auto* command =
      app.add_subcommand("import", "Takes the channels of a CSV file into a clone file");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->add_option("CSV", arguments->csv, "CSV file, - for standard input")->required();
  command
      ->add_option("-o,--output", arguments->out,
                   "new clone file instead of FILE, - for standard output")
      ->type_name("OUT");
  command->add_flag("--force", arguments->force, "replace an existing OUT");
  AddOtherListOptions(*command, arguments->other);
  command->footer(
      "Exit code 9 when not all of the list was understood, or is kept; the notes say what.\n"
      "Example: rxq40ctl import radio.Q40 channels.csv -o changed.Q40\n"
      "         rxq40ctl import radio.Q40 repeaters.csv --map auto --only-fm");
  command->callback([&context, arguments] { context.exit_code = RunImport(context, *arguments); });
}

}  // namespace q40
