#include "app/trace_command.h"

#include <system_error>

#include <QTimer>

#include "app/prompts.h"
#include "app/session.h"
#include "link/traced_port.h"
#include "widgets/paths.h"

namespace q40 {

TraceCommand::TraceCommand(Session& session, Prompts& prompts, QObject* parent)
    : QObject(parent), session_(session), prompts_(prompts) {
  // The radio is not disturbed by a full disk, and the report of its command comes first.
  connect(&session_, &Session::busyChanged, this,
          [this] { QTimer::singleShot(0, this, &TraceCommand::EndIfBroken); });
}

TraceCommand::~TraceCommand() { session_.port().trace().Stop(); }

void TraceCommand::Toggle() {
  if (!file_) return Begin();
  End();
  prompts_.Note(tr("The trace is in %1.").arg(Shown(path_)));
}

void TraceCommand::Begin() {
  const std::string path =
      prompts_.AskPath(Prompts::FileDialog::kTrace, session_.path(), session_.document().model());
  if (path.empty()) return;
  auto file = std::make_unique<TraceFile>([path] { return std::fopen(path.c_str(), "wb"); });
  if (!file->Open()) {
    return prompts_.DataError(
        {FileProblem::Kind::kCannotWrite, path, 0, std::generic_category().message(file->error())});
  }
  path_ = path;
  file_ = std::move(file);
  session_.port().trace().Start([this](std::string_view line) { return file_->Take(line); });
  prompts_.Note(tr("What goes over the line is kept in %1, until Tools, Trace to File is chosen "
                   "again.")
                    .arg(Shown(FileName(path_))));
  emit keptChanged(true);
}

void TraceCommand::End() {
  session_.port().trace().Stop();
  file_.reset();
  emit keptChanged(false);
}

void TraceCommand::EndIfBroken() {
  if (!file_ || file_->error() == 0 || session_.IsBusy()) return;
  const std::string reason = std::generic_category().message(file_->error());
  End();
  prompts_.ShowError(tr("The trace in %1 is not whole: %2.\nThe radio was not disturbed.")
                         .arg(Shown(path_), QString::fromStdString(reason)));
}

}  // namespace q40
