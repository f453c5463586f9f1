#include "app/checkup_command.h"

#include "app/session.h"
#include "checkup/checkup.h"
#include "dialogs/checkup_window.h"
#include "dialogs/import_notes.h"

namespace q40 {

CheckUpCommand::CheckUpCommand(Session& session, QWidget& owner)
    : QObject(&owner), session_(session), owner_(owner) {
  connect(&session, &Session::newData, this, &CheckUpCommand::CheckNewData);
  connect(&session, &Session::replaced, this, &CheckUpCommand::ForgetNotes);
}

void CheckUpCommand::Show() {
  if (checkup_ == nullptr) {
    checkup_ = new CheckUpWindow(&owner_);
    connect(checkup_, &CheckUpWindow::checkRequested, this, &CheckUpCommand::checkRequested);
    connect(checkup_, &PlaceList::placeChosen, this, &CheckUpCommand::placeChosen);
  }
  CheckAgain();
  emit opened(*checkup_);
}

void CheckUpCommand::CheckAgain() {
  session_.Settle();
  checkup_->ShowFindings(CheckUp(session_.document().data()));
}

// Other data is shown, and a list of what was wrong with the old data would mislead. While a
// sequence runs, the list waits for its end.
void CheckUpCommand::CheckNewData() {
  if (checkup_ != nullptr && checkup_->isVisible() && !session_.IsBusy()) CheckAgain();
}

void CheckUpCommand::KeepNotes(const QString& account, const ImportReport& report) {
  ForgetNotes();
  if (report.note_count == 0 && report.no_list.empty()) return;
  if (notes_ == nullptr) {
    notes_ = new ImportNotes(&owner_);
    connect(notes_, &PlaceList::placeChosen, this, &CheckUpCommand::placeChosen);
  }
  notes_->ShowNotes(account, report);
  emit notesKept(true);
}

// They tell about channels that are no longer there.
void CheckUpCommand::ForgetNotes() {
  if (notes_ != nullptr) notes_->hide();
  emit notesKept(false);
}

void CheckUpCommand::ShowNotes() { emit opened(*notes_); }

}  // namespace q40
