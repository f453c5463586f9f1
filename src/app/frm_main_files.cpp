// The window's file commands.
#include <filesystem>

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenu>

#include "app/frm_main.h"
#include "app/user_options.h"
#include "base/hex.h"
#include "document/defaults.h"
#include "files/clone_file.h"
#include "pages/settings_page1.h"
#include "radio/models.h"
#include "widgets/message_box.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

// What the four file dialogs differ in, in the order of FileDialog.
struct FileDialogRow {
  const char* title;
  const char* filter;
  const char* suffix;
  bool saves;
};
constexpr const char* kCloneFilter = "Korvex RX-Q40 Clone Files (*.Q40);;All Files (*.*)";
constexpr const char* kCsvFilter = "CSV Files (*.csv);;All Files (*.*)";
constexpr FileDialogRow kFileDialogs[] = {{"Open", kCloneFilter, ".Q40", false},
                                          {"Save As", kCloneFilter, ".Q40", true},
                                          {"Import CSV", kCsvFilter, ".csv", false},
                                          {"Export CSV", kCsvFilter, ".csv", true}};

// A name with a dot has a suffix already.
std::string WithSuffix(const std::string& path, const char* suffix) {
  return FileName(path).find('.') == std::string::npos ? path + suffix : path;
}

// Name that a save dialog starts with: that of the file in the window, or of its model. A list and
// the clone file of the same data differ in the suffix only.
std::string OfferedName(const std::string& path, int model, const char* suffix) {
  if (path.empty()) return std::string(ModelName(model)) + suffix;
  const std::filesystem::path name = std::filesystem::path(path).filename();
  const bool is_list = UpperCase(name.extension().string()) == ".CSV";
  const bool wants_list = suffix == std::string_view(".csv");
  return (is_list == wants_list ? name : name.stem() += suffix).string();
}

void Prepare(QFileDialog& dialog, const FileDialogRow& row, const std::string& path, int model) {
  dialog.setNameFilters(QString::fromUtf8(row.filter).split(QStringLiteral(";;")));
  const std::filesystem::path folder = std::filesystem::path(path).parent_path();
  dialog.setDirectory(folder.empty() ? QDir::currentPath() : QFile::decodeName(folder.c_str()));
  if (!row.saves) return dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  const std::string name = OfferedName(path, model, row.suffix);
  dialog.selectFile(QFile::decodeName(name.c_str()));
}

// Not when somebody's rights hide it.
bool IsGone(const std::string& path) {
  std::error_code error;
  return std::filesystem::status(path, error).type() == std::filesystem::file_type::not_found;
}

}  // namespace

// ---- path and title

void frmMain::SetPath(const std::string& path) {
  path_ = path;
  QString title = Shown(kWindowTitle);
  if (!path.empty()) title += QStringLiteral(" - ") + Shown(FileName(path));
  // "[*]" in a title is a mark of the toolkit's own.
  setWindowTitle(title.replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
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
  NoteFailure(Shown(problem.Message()));
  ShowMessage(this, QMessageBox::Critical, kErrorTitle, kDataErrorText);
}

// Empty when the dialog was cancelled. Never changes the working directory.
std::string frmMain::AskPath(FileDialog kind) {
  const FileDialogRow& row = kFileDialogs[static_cast<std::size_t>(kind)];
  QFileDialog dialog(this, QString::fromUtf8(row.title));
  Prepare(dialog, row, path_, document_.model);
  while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
    const QString chosen = dialog.selectedFiles().front();
    std::string path = PathBytes(chosen);
    if (!row.saves) return path;
    path = WithSuffix(path, row.suffix);
    const bool asked = path == QFile::encodeName(chosen).toStdString();
    if ((kind != FileDialog::kExport || IsNoCloneFile(path)) && (asked || MayReplace(path))) {
      return path;
    }
    dialog.selectFile(QFile::decodeName(path.c_str()));
  }
  return {};
}

// A dialog asks before it lets an existing file be replaced, but some ask about the name as it was
// typed. So the suffix is ours to add, and a name that has got it ours to ask about.
bool frmMain::MayReplace(const std::string& path) {
  const QString text = tr("%1 exists.\nDo you want to replace it?").arg(Shown(path));
  return IsGone(path) || Confirmed(this, "REPLACE OK", text.toUtf8().constData());
}

// A slip of the hand between two names must not cost a clone file.
bool frmMain::IsNoCloneFile(const std::string& path) {
  if (!IsCloneFile(path)) return true;
  const QString text =
      tr("%1 is a clone file.\nName another file for the channel list.").arg(Shown(path));
  ShowMessage(this, QMessageBox::Critical, kErrorTitle, text.toUtf8().constData());
  return false;
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
  const std::string path = AskPath(FileDialog::kOpen);
  if (!path.empty()) OpenCloneFile(path);
}

void frmMain::OpenAfterQuestion(const std::string& path) {
  if (!HasChanges() || AskToSave()) OpenCloneFile(path);
}

void frmMain::OpenCloneFile(const std::string& path) {
  const OpenResult result = q40::OpenCloneFile(path, document_);
  if (!result.problem) {
    SetPath(path);
    UserOptions::AddRecentFile(path);
    Note(result.odd_digit ? Shown(result.odd_digit->Message())
                          : tr("Opened %1.").arg(Shown(FileName(path))));
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
  for (const std::string& path : UserOptions::RecentFiles()) {
    QString name = Shown(FileName(path));
    name.replace(QLatin1Char('&'), QLatin1String("&&"));
    QAction* action = menu.addAction(QStringLiteral("&%1 ").arg(++number) + name);
    action->setToolTip(PlainToolTip(Shown(path)));
    connect(action, &QAction::triggered, this, [this, path] {
      if (MayRun()) OpenRecentFile(path);
    });
  }
  if (number == 0) menu.addAction(tr("No files yet"))->setEnabled(false);
}

void frmMain::OpenRecentFile(const std::string& path) {
  if (!IsGone(path)) return OpenAfterQuestion(path);
  UserOptions::ForgetRecentFile(path);
  const QString text = tr("%1 is gone.\nRecent Files no longer names it.").arg(Shown(path));
  ShowMessage(this, QMessageBox::Information, "Recent Files", text.toUtf8().constData());
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
  const std::string path = AskPath(FileDialog::kSaveAs);
  return !path.empty() && SaveTo(path, model);
}

bool frmMain::SaveTo(const std::string& path, int model) {
  CollectSettings();
  if (const auto problem = SaveCloneFile(path, document_, model)) {
    DataError(*problem);
    return false;
  }
  SetPath(path);
  UserOptions::AddRecentFile(path);
  Note(tr("Saved as %1.").arg(Shown(FileName(path))));
  return true;
}

}  // namespace q40
