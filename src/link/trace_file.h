// The file that a trace goes into, line by line: a program that is killed leaves what it had told.
#pragma once

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace q40 {

class TraceFile {
 public:
  // Opens the file to write, or returns null and leaves the reason in errno.
  using Opener = std::function<std::FILE*()>;

  explicit TraceFile(Opener open) : open_(std::move(open)) {}
  ~TraceFile();
  TraceFile(const TraceFile&) = delete;
  TraceFile& operator=(const TraceFile&) = delete;

  // Now, and not with the first line: a command that never gets to its port need not make a file.
  bool Open();
  // Stores a line at once. False when it cannot be; nothing more is stored then.
  bool Take(std::string_view line);
  // errno of what went wrong; 0: nothing did.
  [[nodiscard]] int error() const { return error_; }

 private:
  Opener open_;
  std::FILE* file_ = nullptr;
  int error_ = 0;
};

}  // namespace q40
