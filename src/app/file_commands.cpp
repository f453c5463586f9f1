#include "app/file_commands.h"

#include <QCursor>
#include <QGuiApplication>

#include "app/prompts.h"
#include "app/session.h"
#include "app/user_options.h"
#include "files/clone_file.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

// The hourglass would be wrong over a question.
class ArrowCursor {
 public:
  ArrowCursor() {
    if (waiting_) QGuiApplication::changeOverrideCursor(Qt::ArrowCursor);
  }
  ~ArrowCursor() {
    if (waiting_) QGuiApplication::changeOverrideCursor(Qt::WaitCursor);
  }
  ArrowCursor(const ArrowCursor&) = delete;
  ArrowCursor& operator=(const ArrowCursor&) = delete;

 private:
  const bool waiting_ = QGuiApplication::overrideCursor() != nullptr;
};

}  // namespace

FileCommands::FileCommands(Session& session, Prompts& prompts, QObject* parent)
    : QObject(parent), session_(session), prompts_(prompts) {
  connect(&session, &Session::changed, this, [this](const DocumentChange& change) {
    if (change.anew) StartAnew();
  });
}

bool FileCommands::AskToSave() {
  const ArrowCursor arrow;
  const Prompts::Answer answer = prompts_.AskToSave();
  return answer == Prompts::Answer::kNo || (answer == Prompts::Answer::kYes && Save());
}

bool FileCommands::MayLetGo() { return !session_.document().HasChanges() || AskToSave(); }

// ---- New, and another model

// The document has got the defaults of its model. While a radio is being read, this is reported at
// the end, together with the rest.
void FileCommands::StartAnew() {
  let_go_.clear();
  if (!session_.path().empty()) {
    let_go_ = tr(" Before, %1 was open.").arg(Shown(FileName(session_.path())));
  }
  if (session_.busy() != Session::Busy::kTalking) {
    prompts_.Note(tr("Started anew with the defaults of the %1.")
                      .arg(Shown(ModelName(session_.document().model()))) +
                  let_go_);
  }
  session_.SetPath({});
  session_.TellReplaced();
}

void FileCommands::NewCommand() {
  if (MayLetGo()) session_.document().New();
}

bool FileCommands::SelectModel(int model) {
  if (model == session_.document().model()) return true;
  if (!MayLetGo()) return false;
  session_.document().ChangeModel(model);
  return true;
}

// ---- Open

void FileCommands::Open() {
  if (!MayLetGo()) return;
  const std::string path =
      prompts_.AskPath(Prompts::FileDialog::kOpen, session_.path(), session_.document().model());
  if (!path.empty()) OpenCloneFile(path);
}

void FileCommands::OpenAfterQuestion(const std::string& path) {
  if (MayLetGo()) OpenCloneFile(path);
}

void FileCommands::OpenCloneFile(const std::string& path) {
  CloneDocument& document = session_.document();
  CloneData opened = document.data();
  const OpenResult result = q40::OpenCloneFile(path, opened);
  if (!result.problem) {
    document.Open(std::move(opened));
    session_.SetPath(path);
    emit fileHeld(false);
    UserOptions::AddRecentFile(path);
    prompts_.Note(result.odd_digit ? Shown(result.odd_digit->Message())
                                   : tr("Opened %1.").arg(Shown(FileName(path))));
    return session_.TellReplaced();
  }
  // A file that is refused late leaves its model behind.
  document.ChangeModel(opened.model);
  document.SetVersionA(opened.image.VersionA);
  session_.TellFacts();
  prompts_.DataError(*result.problem);
}

void FileCommands::OpenRecentFile(const std::string& path) {
  if (!IsGone(path)) return OpenAfterQuestion(path);
  UserOptions::ForgetRecentFile(path);
  prompts_.ShowGone(tr("%1 is gone.\nRecent Files no longer names it.").arg(Shown(path)));
}

void FileCommands::OpenBackup(const std::string& path) {
  if (!MayLetGo()) return;
  CloneData opened = session_.document().data();
  const OpenResult result = q40::OpenCloneFile(path, opened);
  if (result.problem) return prompts_.DataError(*result.problem);
  session_.document().Open(std::move(opened));
  session_.SetPath({});
  prompts_.Note(tr("Opened the backup %1. Save asks for a name.").arg(Shown(FileName(path))));
  session_.TellReplaced();
}

// ---- Save

// Takes the document's own model: while the user is asked about a change of the model, the option
// already shows the next one.
bool FileCommands::Save() {
  const int model = session_.document().model();
  return session_.path().empty() ? SaveAs(model) : SaveTo(session_.path(), model);
}

bool FileCommands::SaveAs(int model) {
  const std::string path =
      prompts_.AskPath(Prompts::FileDialog::kSaveAs, session_.path(), session_.document().model());
  return !path.empty() && SaveTo(path, model);
}

bool FileCommands::SaveTo(const std::string& path, int model) {
  session_.Settle();
  session_.document().RebuildSettingsLines();
  if (const auto problem = SaveCloneFile(path, session_.document().data(), model)) {
    prompts_.DataError(*problem);
    return false;
  }
  session_.document().ForgetChanges();
  session_.SetSaved(path);
  emit fileHeld(true);
  UserOptions::AddRecentFile(path);
  prompts_.Note(tr("Saved as %1.").arg(Shown(FileName(path))));
  return true;
}

}  // namespace q40
