// Where rxq40ctl speaks: results on one stream, messages and progress on the other.
#pragma once

#include <cerrno>
#include <cstdio>
#include <string>
#include <string_view>

#include "base/file_problem.h"

namespace q40 {

class Console {
 public:
  // The streams must outlive the console. Colour and progress bar appear only when `err` is a
  // terminal, colour only unless NO_COLOR is set.
  Console(std::FILE* out, std::FILE* err);

  // Only errors are printed.
  void SetQuiet(bool quiet) { quiet_ = quiet; }

  // A result, pushed out at once. False when its stream takes no more.
  bool Result(std::string_view text);
  // Why: its reader has gone, as `head` does, having what it wanted; or for this reason.
  [[nodiscard]] bool ReaderIsGone() const { return output_error_ == EPIPE; }
  [[nodiscard]] std::string OutputProblem() const;
  // Whether results can be printed at all; a full disk shows later.
  bool TakesResults();
  // Messages take one line; what a terminal would obey, as in file names, is escaped.
  // What happens, and what is worth knowing.
  void Note(std::string_view text);
  // What went wrong, and what to try next. Returns `code`, so that a command can end with it.
  int Error(int code, std::string_view text);
  int Error(const FileProblem& problem);

  // A bar on a terminal; elsewhere nothing but the name of each new job.
  void Progress(std::string_view job, int done, int total, std::string_view where);
  void EndProgress();

 private:
  void Say(std::string_view text);

  std::FILE* out_;
  std::FILE* err_;
  bool quiet_ = false;
  bool terminal_;
  bool colour_;
  bool bar_shown_ = false;
  int output_error_ = 0;  // errno of the last result
  std::string job_;
};

}  // namespace q40
