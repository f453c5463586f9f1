#include "app/session.h"

#include "app/main_options.h"

namespace q40 {

Session::Session(const MainOptions& options, QObject* parent)
    : QObject(parent),
      port_file_(options.program_folder, options.user_folder),
      port_(new ComPort(options.simulation, this)),
      events_(this),
      link_(port_->port(), events_.Timers(), events_),
      unfinished_(options.backup_folder) {
  port_->setObjectName(QStringLiteral("MSComm1"));
  port_->SetNumber(port_file_.Read());
  document_.SetListener(this);
}

void Session::SetPath(const std::string& path) {
  path_ = path;
  emit pathChanged();
}

void Session::SetSaved(const std::string& path) {
  path_ = path;
  emit saved();
  emit pathChanged();
}

void Session::Stop() {
  if (busy_ == Busy::kTalking) events_.EndSequence();
}

void Session::SetBusy(Busy busy) {
  events_.ForgetStop();
  busy_ = busy;
  emit busyChanged();
}

void Session::TellReplaced() {
  part_.Forget();
  emit replaced();
  emit factsChanged();
  emit newData();
}

}  // namespace q40
