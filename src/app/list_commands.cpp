#include "app/list_commands.h"

#include "app/file_commands.h"
#include "app/prompts.h"
#include "app/session.h"
#include "checkup/import_losses.h"
#include "files/channel_csv.h"
#include "files/whole_file.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

std::optional<FileProblem> ReadList(const std::string& path, std::string& text) {
  if (auto problem = ReadFile(path, kLongestCsv + 1, text)) return problem;
  return CheckCsvSize(text, path);
}

// What became of a list, in sentences.
QString AccountOf(const ImportReport& report) {
  if (!report.no_list.empty()) {
    return ListCommands::tr("Nothing was imported: %1. File, Import Other List may take it.")
        .arg(Shown(report.no_list));
  }
  return ListCommands::tr("%1 memory and %2 special channel records imported, %3 passed over.")
      .arg(report.memory_records)
      .arg(report.special_records)
      .arg(report.passed_over_count);
}

QString NotesText(int count) {
  return count == 1 ? ListCommands::tr("1 note") : ListCommands::tr("%1 notes").arg(count);
}

}  // namespace

void ListCommands::Export() {
  CloneDocument& document = session_.document();
  const std::string path =
      prompts_.AskPath(Prompts::FileDialog::kExport, session_.path(), document.model());
  if (path.empty()) return;
  if (const auto problem = WriteFile(path, ExportChannels(document.image()))) {
    return prompts_.DataError(*problem);
  }
  document.ForgetChanges();
  // Intended: the next Save writes a clone file under this bare name.
  session_.SetSaved(FileName(path));
  // Which may be the list itself.
  const QString next =
      IsGone(session_.path())
          ? tr("The next Save writes a clone file named %1 into the working folder.")
          : tr("The next Save replaces %1 in the working folder by a clone file.");
  prompts_.Note(tr("Exported. ") + next.arg(Shown(session_.path())));
}

void ListCommands::Import() {
  if (!files_.MayLetGo()) return;
  CloneDocument& document = session_.document();
  const std::string path =
      prompts_.AskPath(Prompts::FileDialog::kImport, session_.path(), document.model());
  if (path.empty()) return;
  std::string text;
  if (const auto problem = ReadList(path, text)) return prompts_.DataError(*problem);
  CloneImage image = document.image();
  ImportReport report = ImportChannels(text, image);
  if (const auto problem = ProblemOf(report, path)) return prompts_.DataError(*problem);
  emit importing(path);
  document.Import(std::move(image));
  emit imported(report);
  emit named(Shown(FileName(path)));
  session_.SetPath({});
  session_.TellNewData();
  session_.Settle();
  AddLosses(document.data(), report);
  Account(path, AccountOf(report), report);
}

void ListCommands::TellImported(const std::string& path, const QString& account,
                                const ImportReport& report) {
  emit named(Shown(FileName(path)));
  Account(path, account, report);
}

void ListCommands::Account(const std::string& path, QString text, const ImportReport& report) {
  emit accounted(Shown(FileName(path)) + QStringLiteral(": ") + text, report);
  const bool has_notes = report.note_count > 0;
  if (has_notes || !report.no_list.empty()) {
    text += QLatin1Char(' ');
    if (has_notes) text += NotesText(report.note_count) + QStringLiteral(": ");
    text += tr("Tools, Import Notes.");
  }
  prompts_.Note(text);
}

}  // namespace q40
