// The window's file commands.
#include <filesystem>

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>

#include "app/frm_main.h"
#include "app/user_options.h"
#include "editor/memory_page.h"
#include "editor/message_box.h"
#include "files/channel_csv.h"
#include "files/clone_file.h"
#include "files/whole_file.h"
#include "image/defaults.h"
#include "settings/settings_page1.h"

namespace q40 {
namespace {

constexpr const char* kCloneFilter = "Korvex RX-Q40 Clone Files (*.Q40);;All Files (*.*)";
constexpr const char* kCsvFilter = "CSV Files (*.csv);;All Files (*.*)";

std::string FileName(const std::string& path) {
  return std::filesystem::path(path).filename().string();
}

}  // namespace

// ---- path and title

void frmMain::SetPath(const std::string& path) {
  path_ = path;
  std::string title(kWindowTitle);
  if (!path.empty()) title += " - " + FileName(path);
  // "[*]" in a title is a mark of the toolkit's own.
  setWindowTitle(
      QString::fromStdString(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
  ShowStatus();
}

// ---- questions and messages

// True to go on: saved, or not wanted. A save that did not happen counts as Cancel.
bool frmMain::AskToSave() {
  const bool waiting = QGuiApplication::overrideCursor() != nullptr;
  if (waiting) QGuiApplication::changeOverrideCursor(Qt::ArrowCursor);
  const auto answer =
      ShowMessage(this, QMessageBox::Information, "Save Changes", "Save changes to settings?",
                  QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
  const bool go_on = answer == QMessageBox::No || (answer == QMessageBox::Yes && Save());
  if (waiting) QGuiApplication::changeOverrideCursor(Qt::WaitCursor);
  return go_on;
}

void frmMain::DataError(const FileProblem& problem) {
  NoteFailure(QString::fromStdString(problem.Message()));
  ShowMessage(this, QMessageBox::Critical, kErrorTitle, kDataErrorText);
}

// Empty when the dialog was cancelled. Never changes the working directory.
std::string frmMain::AskPath(FileDialog kind, const char* filter, const char* extension) {
  QFileDialog dialog(this);
  dialog.setNameFilters(QString::fromUtf8(filter).split(QStringLiteral(";;")));
  const std::filesystem::path folder = std::filesystem::path(path_).parent_path();
  dialog.setDirectory(folder.empty() ? QDir::currentPath()
                                     : QString::fromStdString(folder.string()));
  if (kind == FileDialog::kOpen) {
    dialog.setWindowTitle(tr("Open"));
    dialog.setFileMode(QFileDialog::ExistingFile);
  } else {
    dialog.setWindowTitle(tr("Save"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QString::fromUtf8(extension));
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().front().toStdString();
}

// ---- New, and the choice of a model, which starts anew too

void frmMain::New() {
  ResetToDefaults(document_);
  document_.SettingsChanged = false;
  document_.MemoryChanged = false;
  NoteStart();
  SetPath({});
  ShowDocument();
}

void frmMain::NewCommand() {
  if (!HasChanges() || AskToSave()) New();
}

void frmMain::ChooseModel(int model) {
  if (IsBusy() || !SelectModel(model)) settings1_->ShowModel(document_.model);
}

bool frmMain::SelectModel(int model) {
  if (model == document_.model) return true;
  if (startup_path_.empty() && HasChanges() && !AskToSave()) return false;
  ChangeModel(document_, model);
  NoteStart();
  SetPath({});
  ShowDocument();
  return true;
}

// ---- Open

void frmMain::Open() {
  if (HasChanges() && !AskToSave()) return;
  const std::string path = AskPath(FileDialog::kOpen, kCloneFilter, "Q40");
  if (!path.empty()) OpenCloneFile(path);
}

void frmMain::OpenAfterQuestion(const std::string& path) {
  if (!HasChanges() || AskToSave()) OpenCloneFile(path);
}

void frmMain::OpenCloneFile(const std::string& path) {
  const OpenResult result = q40::OpenCloneFile(path, document_);
  if (!result.problem) {
    SetPath(path);
    UserOptions::AddRecentFile(QString::fromStdString(path));
    Note(result.odd_digit ? QString::fromStdString(result.odd_digit->Message())
                          : tr("Opened %1.").arg(QString::fromStdString(FileName(path))));
    return ShowDocument();
  }
  // A file that is refused late leaves its model behind.
  if (result.model_changed) {
    SetPath({});
    ShowDocument();
  }
  ShowStatus();
  DataError(*result.problem);
}

// By name; the tool tip has the path.
void frmMain::FillRecentFiles(QMenu& menu) {
  menu.clear();
  int number = 0;
  for (const QString& path : UserOptions::RecentFiles()) {
    QString name = QFileInfo(path).fileName();
    name.replace(QLatin1Char('&'), QLatin1String("&&"));
    QAction* action = menu.addAction(QStringLiteral("&%1 %2").arg(++number).arg(name));
    action->setToolTip(QDir::toNativeSeparators(path));
    connect(action, &QAction::triggered, this, [this, path] {
      if (MayRun()) OpenAfterQuestion(path.toStdString());
    });
  }
  if (number == 0) menu.addAction(tr("No files yet"))->setEnabled(false);
}

// ---- Save

void frmMain::SaveCommand() { Save(); }

// Takes the model that the document has: in the question of a model change the option already shows
// the next one.
bool frmMain::Save() {
  return path_.empty() ? SaveWithDialog(document_.model) : SaveTo(path_, document_.model);
}

void frmMain::SaveAs() { SaveWithDialog(settings1_->ChosenModel()); }

bool frmMain::SaveWithDialog(int model) {
  const std::string path = AskPath(FileDialog::kSave, kCloneFilter, "Q40");
  return !path.empty() && SaveTo(path, model);
}

bool frmMain::SaveTo(const std::string& path, int model) {
  CollectSettings();
  if (const auto problem = SaveCloneFile(path, document_, model)) {
    DataError(*problem);
    return false;
  }
  SetPath(path);
  UserOptions::AddRecentFile(QString::fromStdString(path));
  Note(tr("Saved as %1.").arg(QString::fromStdString(FileName(path))));
  return true;
}

// ---- CSV

void frmMain::Export() {
  const std::string path = AskPath(FileDialog::kSave, kCsvFilter, "csv");
  if (path.empty()) return;
  if (const auto problem = WriteFile(path, ExportChannels(document_.image))) {
    return DataError(*problem);
  }
  document_.SettingsChanged = false;
  document_.MemoryChanged = false;
  // Intended: the next Save writes a clone file under this bare name.
  SetPath(FileName(path));
  Note(tr("Exported. The next Save writes a clone file named %1 into the working folder.")
           .arg(QString::fromStdString(path_)));
}

void frmMain::Import() {
  if (HasChanges() && !AskToSave()) return;
  const std::string path = AskPath(FileDialog::kOpen, kCsvFilter, "csv");
  if (path.empty()) return;
  std::string text;
  if (const auto problem = ReadFile(path, kLongestCsv + 1, text)) return DataError(*problem);
  if (const auto problem = CheckCsvSize(text, path)) return DataError(*problem);
  const ImportReport report = ImportChannels(text, document_.image);
  if (const auto problem = ProblemOf(report, path)) return DataError(*problem);
  UpdateVFOData();
  memory_->grid().SelectRow(1);
  memory_->RedrawAll();
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    const auto row = static_cast<std::size_t>(n);
    const bool skipped =
        document_.image.MemoryTable[row].Number(ChannelKind::kMemory, Field::kSkip) == 1;
    if (report.imported[row] && skipped) memory_->grid().cells().StarTitle(n);
  }
  document_.SettingsChanged = false;
  document_.MemoryChanged = false;
  SetPath({});
  CheckNewData();
  Note(tr("%1 memory and %2 special channel records imported, %3 passed over.")
           .arg(report.memory_records)
           .arg(report.special_records)
           .arg(report.passed_over_count));
}

}  // namespace q40
