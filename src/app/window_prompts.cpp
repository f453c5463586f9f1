#include "app/window_prompts.h"

#include <filesystem>

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QPushButton>

#include "app/status_line.h"
#include "base/hex.h"
#include "files/clone_file.h"
#include "link/sequences.h"
#include "radio/models.h"
#include "widgets/message_box.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

// What the file dialogs differ in, in the order of Prompts::FileDialog.
struct FileDialogRow {
  const char* title;
  const char* filter;
  const char* suffix;
  bool saves;
  const char* what = "";  // is saved, where a clone file must not be replaced by it
};
constexpr const char* kCloneFilter = "Korvex RX-Q40 Clone Files (*.Q40);;All Files (*.*)";
constexpr const char* kCsvFilter = "CSV Files (*.csv);;All Files (*.*)";
constexpr const char* kTraceFilter = "Trace Files (*.trace);;All Files (*.*)";
constexpr const char* kPdfFilter = "PDF Files (*.pdf);;All Files (*.*)";
constexpr const char* kListFilter = "Lists (*.csv *.tsv *.txt);;All Files (*.*)";
constexpr FileDialogRow kFileDialogs[] = {
    {"Open", kCloneFilter, ".Q40", false},
    {"Save As", kCloneFilter, ".Q40", true},
    {"Import CSV", kCsvFilter, ".csv", false},
    {"Export CSV", kCsvFilter, ".csv", true, "channel list"},
    {"Compare With", kCloneFilter, ".Q40", false},
    {"Trace to File", kTraceFilter, ".trace", true, "trace"},
    {"Channel Card", kPdfFilter, ".pdf", true, "channel card"},
    {"Import Other List", kListFilter, "", false}};

// A name with a dot has a suffix already.
std::string WithSuffix(const std::string& path, const char* suffix) {
  return FileName(path).find('.') == std::string::npos ? path + suffix : path;
}

// Name that a save dialog starts with: that of the file in the window, or of its model. A list and
// the clone file of the same data differ in the suffix only.
std::string OfferedName(const std::string& path, int model, const char* suffix) {
  if (path.empty()) return std::string(ModelName(model)) + suffix;
  const std::filesystem::path name = std::filesystem::path(path).filename();
  const std::string own = UpperCase(name.extension().string());
  const bool wants_clone = suffix == std::string_view(".Q40");
  const bool keeps = wants_clone ? own != ".CSV" : own == UpperCase(suffix);
  return (keeps ? name : name.stem() += suffix).string();
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

QString tr(const char* text) { return QCoreApplication::translate("WindowPrompts", text); }

}  // namespace

Prompts::Answer WindowPrompts::AskToSave() {
  const auto answer =
      ShowMessage(&window_, QMessageBox::Information, "Save Changes", "Save changes to settings?",
                  QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
  if (answer == QMessageBox::Yes) return Answer::kYes;
  return answer == QMessageBox::No ? Answer::kNo : Answer::kCancel;
}

// Never changes the working directory.
std::string WindowPrompts::AskPath(FileDialog kind, const std::string& path, int model) {
  const FileDialogRow& row = kFileDialogs[static_cast<std::size_t>(kind)];
  QFileDialog dialog(&window_, QString::fromUtf8(row.title));
  Prepare(dialog, row, path, model);
  while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
    const QString chosen = dialog.selectedFiles().front();
    std::string named = PathBytes(chosen);
    if (!row.saves) return named;
    named = WithSuffix(named, row.suffix);
    const bool asked = named == QFile::encodeName(chosen).toStdString();
    if ((kind == FileDialog::kSaveAs || IsNoCloneFile(named, kind)) &&
        (asked || MayReplace(named))) {
      return named;
    }
    dialog.selectFile(QFile::decodeName(named.c_str()));
  }
  return {};
}

// A dialog asks before it lets an existing file be replaced, but some ask about the name as it was
// typed. So we add the suffix ourselves, and ask ourselves about a name that has got one.
bool WindowPrompts::MayReplace(const std::string& path) {
  const QString text = tr("%1 exists.\nDo you want to replace it?").arg(Shown(path));
  return IsGone(path) || Confirmed(&window_, "REPLACE OK", text.toUtf8().constData());
}

// A slip of the hand between two names must not cost a clone file.
bool WindowPrompts::IsNoCloneFile(const std::string& path, FileDialog kind) {
  if (!IsCloneFile(path)) return true;
  const QString what = tr(kFileDialogs[static_cast<std::size_t>(kind)].what);
  ShowError(tr("%1 is a clone file.\nName another file for the %2.").arg(Shown(path), what));
  return false;
}

Prompts::Instead WindowPrompts::AskInstead(const QString& why) {
  QMessageBox box(QMessageBox::Question, QStringLiteral("Write Changes"), why, QMessageBox::Cancel,
                  &window_);
  box.setTextFormat(Qt::PlainText);
  const QAbstractButton* back_up = box.addButton(tr("&Back Up First"), QMessageBox::AcceptRole);
  const QAbstractButton* write_all = box.addButton(tr("&Write All"), QMessageBox::AcceptRole);
  box.setDefaultButton(QMessageBox::Cancel);
  box.exec();
  if (box.clickedButton() == back_up) return Instead::kBackUp;
  return box.clickedButton() == write_all ? Instead::kWriteAll : Instead::kNothing;
}

bool WindowPrompts::Confirm(const char* title, const QString& text) {
  return Confirmed(&window_, title, text.toUtf8().constData());
}

void WindowPrompts::ShowError(const QString& text) {
  ShowMessage(&window_, QMessageBox::Critical, kErrorTitle, text.toUtf8().constData());
}

void WindowPrompts::ShowGone(const QString& text) {
  ShowMessage(&window_, QMessageBox::Information, "Recent Files", text.toUtf8().constData());
}

void WindowPrompts::Note(const QString& text) { status_.Result(text); }
void WindowPrompts::NoteFailure(const QString& text) { status_.Failure(text); }

}  // namespace q40
