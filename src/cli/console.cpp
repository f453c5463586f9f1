#include "cli/console.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

#include "cli/exit_codes.h"

namespace q40 {
namespace {

constexpr int kBarWidth = 30;
constexpr std::string_view kRed = "\033[31m";
constexpr std::string_view kPlain = "\033[0m";
constexpr std::string_view kEraseLine = "\r\033[K";

void Say(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace

Console::Console()
    : terminal_(isatty(STDERR_FILENO) != 0),
      colour_(terminal_ && std::getenv("NO_COLOR") == nullptr) {}

bool Console::Result(std::string_view text) {
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
         std::fflush(stdout) == 0;
}

void Console::Note(std::string_view text) {
  if (quiet_) return;
  EndProgress();
  Say(std::string(text) + '\n');
}

int Console::Error(int code, std::string_view text) {
  EndProgress();
  const std::string message = "rxq40ctl: " + std::string(text);
  Say(colour_ ? std::string(kRed) + message + std::string(kPlain) + '\n' : message + '\n');
  return code;
}

int Console::Error(const FileProblem& problem) {
  if (problem.kind == FileProblem::Kind::kCannotWrite) {
    return Error(kExitCannotWrite, problem.Message() + ". The file is as it was.");
  }
  return Error(kExitDataError, std::string(kDataErrorText) + ": " + problem.Message());
}

void Console::Progress(std::string_view job, int done, int total, std::string_view where) {
  if (quiet_) return;
  if (!terminal_) {
    if (job != job_) Say(std::string(job) + '\n');
    job_ = job;
    return;
  }
  const int filled = total > 0 ? kBarWidth * done / total : 0;
  const int percent = total > 0 ? 100 * done / total : 0;
  std::string line(kEraseLine);
  line += std::string(job) + " [" + std::string(static_cast<std::size_t>(filled), '#') +
          std::string(static_cast<std::size_t>(kBarWidth - filled), '.') + "] ";
  line += std::to_string(percent) + " % " + std::string(where);
  Say(line);
  bar_shown_ = true;
}

void Console::EndProgress() {
  if (bar_shown_) Say(kEraseLine);
  bar_shown_ = false;
}

}  // namespace q40
