#include "cli/console.h"

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

}  // namespace

Console::Console(std::FILE* out, std::FILE* err)
    : out_(out),
      err_(err),
      terminal_(isatty(fileno(err)) != 0),
      colour_(terminal_ && std::getenv("NO_COLOR") == nullptr) {}

void Console::Say(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), err_);
  std::fflush(err_);
}

bool Console::Result(std::string_view text) {
  return std::fwrite(text.data(), 1, text.size(), out_) == text.size() && std::fflush(out_) == 0;
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
