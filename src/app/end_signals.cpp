#include "app/end_signals.h"

#include <QSocketNotifier>

#ifndef _WIN32
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace q40 {

#ifdef _WIN32

EndSignals::EndSignals() = default;
EndSignals::~EndSignals() = default;

#else

namespace {

// A handler may do little more than write into a pipe.
int wake_pipe[2] = {-1, -1};
constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

void Wake(int /*number*/) {
  const char byte = 0;
  [[maybe_unused]] const auto written = write(wake_pipe[1], &byte, 1);
}

}  // namespace

EndSignals::EndSignals() {
  if (pipe2(wake_pipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
  wake_ = new QSocketNotifier(wake_pipe[0], QSocketNotifier::Read, this);
  connect(wake_, &QSocketNotifier::activated, this, [this] {
    wake_->setEnabled(false);
    emit endRequested();
  });
  struct sigaction action {};
  action.sa_handler = Wake;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int number : kSignals) {
    struct sigaction before {};
    // What the parent wants ignored (nohup) stays ignored.
    if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) continue;
    sigaction(number, &action, nullptr);
  }
}

EndSignals::~EndSignals() {
  for (const int number : kSignals) std::signal(number, SIG_DFL);
  for (int& end : wake_pipe) {
    close(end);
    end = -1;
  }
}

#endif

}  // namespace q40
