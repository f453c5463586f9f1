#include "app/journal_keeper.h"

#include <QAction>
#include <QCoreApplication>
#include <QDateTime>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

#include "app/file_commands.h"
#include "app/frm_main.h"
#include "app/prompts.h"
#include "app/routing.h"
#include "app/session.h"
#include "app/undo_commands.h"
#include "document/defaults.h"
#include "files/whole_file.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

constexpr std::chrono::milliseconds kDelay{500};

QString TimeOf(const Journal& journal) {
  return QDateTime::fromSecsSinceEpoch(journal.time).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

QString NameOf(const Journal& journal) {
  if (journal.now.path.empty()) return JournalKeeper::tr("data without a file");
  return Shown(FileName(journal.now.path));
}

// "Unsaved changes of 2026-11-22 14:03 to radio.Q40 were found"
QString FoundText(const Journal& journal) {
  return JournalKeeper::tr("Unsaved changes of %1 to %2 were found")
      .arg(TimeOf(journal), NameOf(journal));
}

bool IsLike(CloneData data, const CloneData& other) {
  data.image.SettingsLine = other.image.SettingsLine;
  ShowBand(data.image, other.image.ShownBand);
  return data == other;
}

}  // namespace

JournalKeeper::JournalKeeper(const Parts& parts, std::string folder, bool opens_a_file,
                             frmMain& window)
    : QObject(&window),
      at_(parts),
      folder_(std::move(folder)),
      opens_a_file_(opens_a_file),
      window_(window),
      due_(new QTimer(this)) {
  due_->setSingleShot(true);
  due_->setInterval(kDelay);
  if (folder_.empty()) return;
  connect(due_, &QTimer::timeout, this, &JournalKeeper::Keep);
  connect(&window, &frmMain::ready, this, &JournalKeeper::Start);
  connect(&parts.session, &Session::changed, this, &JournalKeeper::Note);
  connect(&parts.session, &Session::pathChanged, this, &JournalKeeper::NotePath);
  connect(&parts.session, &Session::busyChanged, this, &JournalKeeper::NoteBusy);
  connect(&parts.session, &Session::saved, this, [this] {
    saved_ = {at_.session.document().data(), at_.session.path()};
    Keep();  // there is nothing any more
  });
  // Both may be the last that the program hears before it is ended.
  connect(qApp, &QGuiApplication::commitDataRequest, this, &JournalKeeper::ExpectEnd);
  connect(qApp, &QGuiApplication::saveStateRequest, this, &JournalKeeper::Keep);
}

// Behind the start-up, and behind whatever else it has to say.
void JournalKeeper::Start() {
  started_ = true;
  saved_ = {at_.session.document().data(), at_.session.path()};
  QTimer::singleShot(0, this, opens_a_file_ ? &JournalKeeper::Announce : &JournalKeeper::OfferAll);
}

// ---- keeping

void JournalKeeper::Note(const DocumentChange& change) {
  const CloneDocument& document = at_.session.document();
  const bool saved_again =
      change.act == DocumentAct::kRestore && !document.HasChanges() && !at_.session.path().empty();
  if (change.anew || change.act == DocumentAct::kOpen || saved_again) {
    saved_ = {document.data(), at_.session.path()};
  }
  Await();
}

// Of data that is in its file the name may follow.
void JournalKeeper::NotePath() {
  if (saved_.data == at_.session.document().data()) saved_.path = at_.session.path();
  Await();
}

void JournalKeeper::NoteBusy() {
  if (!started_) return;
  if (IsTalking() && due_->isActive()) Keep();
  if (at_.session.IsBusy()) return;
  Keep();
  if (ending_) QCoreApplication::exit();
}

bool JournalKeeper::IsTalking() const { return at_.session.busy() == Session::Busy::kTalking; }

void JournalKeeper::Await() {
  if (started_ && !due_->isActive() && !IsTalking()) due_->start();
}

// An import is, although it counts as nothing to save. Which band is shown, and settings lines that are
// put together anew, are no work of the user's; and neither are the defaults, to which Undo may lead
// after a radio of another model was read.
bool JournalKeeper::IsUnsaved() const {
  const CloneDocument& document = at_.session.document();
  if (document.HasChanges()) return true;
  CloneData defaults = FreshData();
  ChangeModel(defaults, document.model());
  return !IsLike(document.data(), saved_.data) && !IsLike(document.data(), defaults);
}

void JournalKeeper::Keep() {
  if (!started_) return;
  due_->stop();
  if (!IsUnsaved()) {
    if (file_ != nullptr) file_->Remove();
    return file_.reset();
  }
  std::optional<FileProblem> problem;
  if (file_ == nullptr) file_ = NewJournalFile(folder_, problem);
  if (file_ != nullptr) {
    problem = file_->Write(JournalText({QDateTime::currentSecsSinceEpoch(),
                                        saved_,
                                        {at_.session.document().data(), at_.session.path()}}));
  }
  if (problem && !failed_) {
    at_.prompts.NoteFailure(
        tr("Unsaved changes are not safe from a crash: %1").arg(Shown(problem->Message())));
  }
  failed_ = problem.has_value();
}

void JournalKeeper::Forget() {
  due_->stop();
  started_ = false;
  if (file_ != nullptr) file_->Remove();
  file_.reset();
}

void JournalKeeper::End() {
  Keep();
  ending_ = true;
  emit endRequested();
  if (!IsTalking()) QCoreApplication::exit();
}

// Of the session. When everybody has kept his data its manager tells everybody to quit, and waits for none:
// nobody can be asked then, even the window manager may have gone. Data that could not be kept is asked
// about all the same.
void JournalKeeper::ExpectEnd() {
  Keep();
  qApp->installEventFilter(this);
}

bool JournalKeeper::eventFilter(QObject* watched, QEvent* event) {
  if (watched != qApp || event->type() != QEvent::Quit || failed_) return false;
  End();
  return true;
}

// ---- what was left

// What cannot be read is put aside.
std::vector<JournalKeeper::Left> JournalKeeper::FindLeft(bool in_boxes) {
  std::vector<Left> found;
  for (auto& file : LeftJournals(folder_)) {
    std::string text;
    const auto problem = ReadFile(file->path(), kLongestJournal, text);
    if (auto journal = problem ? std::nullopt : JournalFrom(text)) {
      found.push_back({std::move(file), std::move(*journal)});
      continue;
    }
    const std::string aside = file->PutAside();
    const QString message =
        tr("Unsaved changes were found, but cannot be read. They were kept as %1.")
            .arg(Shown(aside.empty() ? file->path() : aside));
    if (in_boxes) {
      at_.prompts.ShowError(message);
    } else {
      at_.prompts.NoteFailure(message);
    }
  }
  return found;
}

void JournalKeeper::Announce() {
  const auto found = FindLeft(false);
  Offer(!found.empty());
  if (found.empty()) return;
  at_.prompts.Note(FoundText(found.front().journal) + tr(": File, Restore Unsaved Changes."));
}

void JournalKeeper::OfferAll() {
  auto found = FindLeft(true);
  while (!found.empty()) {
    const Answer answer = Ask(found.front().journal);
    if (answer == Answer::kLater) break;
    if (answer == Answer::kRestore && !Restore(found.front().journal)) break;
    found.front().file->Remove();
    found.erase(found.begin());
    if (answer == Answer::kRestore) break;
  }
  Offer(!found.empty());
}

JournalKeeper::Answer JournalKeeper::Ask(const Journal& journal) {
  QMessageBox box(QMessageBox::Question, tr("Unsaved Changes"), FoundText(journal),
                  QMessageBox::NoButton, &window_);
  box.setTextFormat(Qt::PlainText);
  const auto* restore = box.addButton(tr("&Restore"), QMessageBox::AcceptRole);
  const auto* discard = box.addButton(tr("&Discard"), QMessageBox::DestructiveRole);
  QPushButton* later = box.addButton(tr("&Later"), QMessageBox::RejectRole);
  box.setEscapeButton(later);
  box.exec();
  if (box.clickedButton() == restore) return Answer::kRestore;
  return box.clickedButton() == discard ? Answer::kDiscard : Answer::kLater;
}

// Two steps: to what was saved, and on to what was not. False: the user wants to keep what is there now,
// or the changes would be nowhere but in the window.
bool JournalKeeper::Restore(const Journal& journal) {
  if (!at_.files.MayLetGo()) return false;
  CloneDocument& document = at_.session.document();
  document.Restore(journal.saved.data, false, false);
  at_.undo.NameStep(tr("Restore of %1").arg(NameOf(journal)));
  at_.session.SetPath(journal.saved.path);
  document.Restore(journal.now.data, true, true);
  at_.undo.NameStep(tr("Unsaved changes of %1").arg(TimeOf(journal)));
  at_.session.SetPath(journal.now.path);
  at_.session.TellReplaced();
  saved_ = journal.saved;
  Keep();
  at_.prompts.Note(
      tr("Restored the unsaved changes of %1 to %2.").arg(TimeOf(journal), NameOf(journal)));
  return !failed_;
}

void JournalKeeper::Offer(bool possible) {
  window_.findChild<QAction*>(QLatin1String(kRestoreEntry))->setEnabled(possible);
}

}  // namespace q40
