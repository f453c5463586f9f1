// export and import: the channel list to and from CSV.
#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "checkup/import_losses.h"
#include "cli/commands.h"
#include "files/channel_csv.h"
#include "files/clone_file.h"
#include "files/whole_file.h"
#include "image/defaults.h"

namespace q40 {
namespace {

constexpr const char* kStandardStream = "-";

struct Arguments {
  std::string file;
  std::string csv;
  std::optional<std::string> out;
};

std::string NameOf(const std::string& csv) {
  return csv == kStandardStream ? "standard input" : csv;
}

std::optional<FileProblem> ReadStandardInput(std::size_t limit, std::string& text) {
  constexpr std::size_t kPiece = 65536;
  std::size_t got = 0;
  do {
    text.resize(got + kPiece);
    const std::size_t piece = std::fread(text.data() + got, 1, kPiece, stdin);
    got += piece;
    if (piece == 0) break;
  } while (got < limit);
  text.resize(std::min(got, limit));
  if (std::ferror(stdin) == 0) return std::nullopt;
  return FileProblem{FileProblem::Kind::kBadData, NameOf(kStandardStream), 0,
                     std::generic_category().message(errno)};
}

std::optional<FileProblem> ReadCsv(const std::string& path, std::string& text) {
  if (auto problem = path == kStandardStream ? ReadStandardInput(kLongestCsv + 1, text)
                                             : ReadFile(path, kLongestCsv + 1, text)) {
    return problem;
  }
  return CheckCsvSize(text, NameOf(path));
}

void TellNotes(Console& console, const ImportReport& report) {
  for (const ImportNote& note : report.notes) console.Note(note.Message());
  const int more = report.note_count - static_cast<int>(report.notes.size());
  if (more > 0) console.Note("and " + std::to_string(more) + " more");
}

// The last words of an import that was saved. Those that not everything is as written are said in any
// case.
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
  CloneDocument document = FreshDocument();
  if (const int code = OpenOrComplain(context, arguments.file, document)) return code;
  const std::string text = ExportChannels(document.image);
  if (arguments.csv == kStandardStream || arguments.csv == "/dev/stdout") {
    return Print(context, text);
  }
  // A slip of the hand between two names must not cost a clone file.
  if (IsCloneFile(arguments.csv)) {
    return context.console.Error(kExitUsage, arguments.csv +
                                                 " is a clone file. Name another file for the "
                                                 "channel list.");
  }
  if (const auto problem = WriteFile(arguments.csv, text)) return context.console.Error(*problem);
  return kExitDone;
}

int RunImport(CommandContext& context, const Arguments& arguments) {
  const std::string target = arguments.out.value_or(arguments.file);
  std::error_code error;
  if (std::filesystem::equivalent(target, arguments.csv, error)) {
    return context.console.Error(kExitUsage,
                                 target + " is the channel list. Name a clone file to write.");
  }
  CloneDocument document = FreshDocument();
  if (const int code = OpenOrComplain(context, arguments.file, document)) return code;
  std::string text;
  if (const auto problem = ReadCsv(arguments.csv, text)) return context.console.Error(*problem);
  ImportReport report = ImportChannels(text, document.image);
  const std::string csv = NameOf(arguments.csv);
  if (const auto problem = ProblemOf(report, csv)) return context.console.Error(*problem);
  AddLosses(document, report);
  TellNotes(context.console, report);
  if (!report.no_list.empty()) {
    return context.console.Error(
        {FileProblem::Kind::kBadData, csv, 0, report.no_list + ". Nothing was imported."});
  }
  if (const auto problem = SaveCloneFile(target, document, document.model)) {
    return context.console.Error(*problem);
  }
  return TellResult(context.console, report, csv, target);
}

}  // namespace

void AddExport(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("export", "Writes the channel list of a clone file as CSV");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->add_option("CSV", arguments->csv, "CSV file, - for standard output")->required();
  command->footer("Example: rxq40ctl export radio.Q40 channels.csv");
  command->callback([&context, arguments] { context.exit_code = RunExport(context, *arguments); });
}

void AddImport(CLI::App& app, CommandContext& context) {
  auto* command =
      app.add_subcommand("import", "Takes the channels of a CSV file into a clone file");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->add_option("CSV", arguments->csv, "CSV file, - for standard input")->required();
  command->add_option("-o,--output", arguments->out, "clone file to write instead of FILE")
      ->type_name("OUT");
  command->footer(
      "Exit code 9 when not all of the list was understood, or is kept; the notes say what.\n"
      "Example: rxq40ctl import radio.Q40 channels.csv -o changed.Q40");
  command->callback([&context, arguments] { context.exit_code = RunImport(context, *arguments); });
}

}  // namespace q40
