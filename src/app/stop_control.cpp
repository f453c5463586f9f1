#include "app/stop_control.h"

#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "app/radio_commands.h"
#include "app/radio_texts.h"
#include "app/session.h"
#include "app/status_line.h"

namespace q40 {

StopControl::StopControl(Session& session, RadioCommands& radio, StatusLine& status,
                         QWidget& window)
    : QObject(&window), session_(session), status_(status), window_(window) {
  connect(&session, &Session::busyChanged, this, &StopControl::ShowBusy);
  connect(&status, &StatusLine::stopWanted, this, &StopControl::Ask);
  connect(&radio, &RadioCommands::begun, this, [this](Sequence sequence) {
    writing_ = Writes(sequence);
    if (!writing_ && question_) question_->reject();
  });
}

void StopControl::ShowBusy() {
  const bool talks = session_.busy() == Session::Busy::kTalking;
  if (talks == talks_) return;
  talks_ = talks;
  status_.ShowStop(talks);
  if (talks) return qApp->installEventFilter(this);
  qApp->removeEventFilter(this);
  writing_ = false;
  closes_ = false;
  if (question_) question_->reject();
  // After the command has told what came of it.
  if (then_) QTimer::singleShot(0, this, std::exchange(then_, {}));
}

void StopControl::Ask() {
  if (!talks_) return;
  if (writing_) return AskAboutWrite();
  Stop();
}

void StopControl::AskToClose() {
  closes_ = true;
  Ask();
}

void StopControl::StopThen(std::function<void()> then) {
  if (!talks_) return then();
  then_ = std::move(then);
  if (question_) question_->reject();
  session_.Stop();
}

void StopControl::Stop() {
  if (closes_) then_ = [this] { window_.close(); };
  session_.Stop();
  status_.Hint(tr("Stopping."));
}

// Open beside the write: nobody waits for the answer but the user.
void StopControl::AskAboutWrite() {
  if (question_) return;
  question_ =
      new QMessageBox(QMessageBox::Question, tr("Stop Writing"),
                      tr("The radio would hold a part of what is being written, and a part of "
                         "what it held before. Write the Rest goes on with it later.\n\n"
                         "The write goes on while this is open."),
                      QMessageBox::NoButton, &window_);
  question_->setObjectName(QStringLiteral("frmStop"));
  question_->setTextFormat(Qt::PlainText);
  question_->setAttribute(Qt::WA_DeleteOnClose);
  const QAbstractButton* stop = question_->addButton(tr("&Stop"), QMessageBox::DestructiveRole);
  auto* go_on = question_->addButton(tr("&Go On"), QMessageBox::RejectRole);
  question_->setDefaultButton(go_on);
  question_->setEscapeButton(go_on);
  connect(question_, &QDialog::finished, this, [this, stop] {
    if (question_->clickedButton() == stop) Stop();
    closes_ = false;
  });
  question_->open();
}

// Esc in the main window and in those beside it, which it would close. In a question, and in a menu that
// is open, it has its own meaning.
bool StopControl::eventFilter(QObject* watched, QEvent* event) {
  const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
  if (!key || !qobject_cast<QWidget*>(watched)) return false;
  const auto* pressed = static_cast<QKeyEvent*>(event);
  if (pressed->key() != Qt::Key_Escape || pressed->modifiers() != Qt::NoModifier ||
      QApplication::activeModalWidget() != nullptr ||
      QApplication::activePopupWidget() != nullptr) {
    return false;
  }
  event->accept();
  if (event->type() == QEvent::KeyPress && !pressed->isAutoRepeat()) Ask();
  return true;
}

}  // namespace q40
