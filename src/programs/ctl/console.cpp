#include "programs/ctl/console.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/ioctl.h>
#include <system_error>
#include <unistd.h>

#include "base/plain_text.h"
#include "programs/exit_codes.h"

namespace q40 {
namespace {

constexpr std::size_t kBarWidth = 30;
constexpr std::string_view kRed = "\033[31m";
constexpr std::string_view kPlain = "\033[0m";
constexpr std::string_view kEraseLine = "\r\033[K";

std::size_t TerminalWidth(std::FILE* terminal) {
  constexpr std::size_t kUsual = 80;
  winsize size{};
  const bool known = ioctl(fileno(terminal), TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
  return known ? size.ws_col : kUsual;
}

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
  const bool taken =
      std::fwrite(text.data(), 1, text.size(), out_) == text.size() && std::fflush(out_) == 0;
  output_error_ = taken ? 0 : errno;
  return taken;
}

std::string Console::OutputProblem() const {
  if (output_error_ == EBADF) return "standard output is closed";
  return "standard output takes no more: " + std::generic_category().message(output_error_);
}

bool Console::TakesResults() {
  const int handle = fileno(out_);
  if (handle < 0) return true;  // in memory
  const int flags = fcntl(handle, F_GETFL);
  if (flags >= 0 && (flags & O_ACCMODE) != O_RDONLY) return true;
  output_error_ = EBADF;
  return false;
}

void Console::Note(std::string_view text) {
  if (quiet_) return;
  EndProgress();
  Say(Printable(text) + '\n');
}

int Console::Error(int code, std::string_view text) {
  EndProgress();
  const std::string message = "rxq40ctl: " + Printable(text);
  Say(colour_ ? std::string(kRed) + message + std::string(kPlain) + '\n' : message + '\n');
  return code;
}

int Console::Error(const FileProblem& problem) {
  if (problem.kind == FileProblem::Kind::kCannotWrite) {
    std::error_code error;
    const bool there = std::filesystem::is_regular_file(problem.path, error);
    return Error(kExitCannotWrite, problem.Message() + (there ? ". The file is as it was." : "."));
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
  if (total == 0) return;
  const auto filled = kBarWidth * static_cast<std::size_t>(done) / static_cast<std::size_t>(total);
  std::string line = std::string(job) + " [" + std::string(filled, '#') +
                     std::string(kBarWidth - filled, '.') + "] " +
                     std::to_string(100 * done / total) + " % ";
  line += where;
  // A line that wraps could not be erased.
  line.resize(std::min(line.size(), TerminalWidth(err_) - 1));
  Say(std::string(kEraseLine) + line);
  bar_shown_ = true;
}

void Console::EndProgress() {
  if (bar_shown_) Say(kEraseLine);
  bar_shown_ = false;
}

}  // namespace q40
