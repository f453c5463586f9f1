// The window's commands for channel lists, and the notes of what an import took otherwise than it was
// written.
#include <QAction>

#include "app/frm_main.h"
#include "checkup/import_losses.h"
#include "dialogs/import_notes.h"
#include "files/channel_csv.h"
#include "files/whole_file.h"
#include "pages/memory_page.h"
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
    return frmMain::tr("Nothing was imported: %1.").arg(Shown(report.no_list));
  }
  return frmMain::tr("%1 memory and %2 special channel records imported, %3 passed over.")
      .arg(report.memory_records)
      .arg(report.special_records)
      .arg(report.passed_over_count);
}

QString NotesText(int count) {
  return count == 1 ? frmMain::tr("1 note") : frmMain::tr("%1 notes").arg(count);
}

}  // namespace

void frmMain::Export() {
  const std::string path = AskPath(FileDialog::kExport);
  if (path.empty()) return;
  if (const auto problem = WriteFile(path, ExportChannels(document_.image))) {
    return DataError(*problem);
  }
  document_.SettingsChanged = false;
  document_.MemoryChanged = false;
  // Intended: the next Save writes a clone file under this bare name.
  SetPath(FileName(path));
  Note(tr("Exported. The next Save writes a clone file named %1 into the working folder.")
           .arg(Shown(path_)));
}

void frmMain::Import() {
  if (HasChanges() && !AskToSave()) return;
  const std::string path = AskPath(FileDialog::kImport);
  if (path.empty()) return;
  std::string text;
  if (const auto problem = ReadList(path, text)) return DataError(*problem);
  ImportReport report = ImportChannels(text, document_.image);
  if (const auto problem = ProblemOf(report, path)) return DataError(*problem);
  ShowImported(report);
  document_.SettingsChanged = false;
  document_.MemoryChanged = false;
  SetPath({});
  CheckNewData();
  CollectSettings();
  AddLosses(document_, report);
  KeepImportNotes(path, report);
}

// Rows that are skipped and come from the list have a star in their titles.
void frmMain::ShowImported(const ImportReport& report) {
  UpdateVFOData();
  memory_->grid().SelectRow(1);
  memory_->RedrawAll();
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    const auto row = static_cast<std::size_t>(n);
    const bool skipped =
        document_.image.MemoryTable[row].Number(ChannelKind::kMemory, Field::kSkip) == 1;
    if (report.imported[row] > 0 && skipped) memory_->grid().cells().StarTitle(n);
  }
}

// ---- the notes of the last import

void frmMain::KeepImportNotes(const std::string& path, const ImportReport& report) {
  const QString account = AccountOf(report);
  ForgetImportNotes();
  if (report.note_count == 0 && report.no_list.empty()) return Note(account);
  if (import_notes_ == nullptr) {
    import_notes_ = new ImportNotes(this);
    connect(import_notes_, &PlaceList::placeChosen, this, [this](const Place& place) {
      if (MayRun()) GoTo(place);
    });
  }
  import_notes_->ShowNotes(Shown(FileName(path)) + QStringLiteral(": ") + account, report);
  findChild<QAction*>(QStringLiteral("mnuImportNotes"))->setEnabled(true);
  const QString where = tr("Tools, Import Notes.");
  Note(account + QLatin1Char(' ') +
       (report.note_count > 0 ? NotesText(report.note_count) + QStringLiteral(": ") : QString()) +
       where);
}

// They tell about channels that are no longer there.
void frmMain::ForgetImportNotes() {
  if (import_notes_ != nullptr) import_notes_->hide();
  findChild<QAction*>(QStringLiteral("mnuImportNotes"))->setEnabled(false);
}

void frmMain::ShowImportNotes() { ShowWindow(*import_notes_); }

}  // namespace q40
