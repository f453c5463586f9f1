#include "link/trace_file.h"

#include <cerrno>

namespace q40 {

TraceFile::~TraceFile() {
  if (file_ != nullptr) std::fclose(file_);
}

bool TraceFile::Open() {
  if (file_ == nullptr && error_ == 0) {
    file_ = open_();
    if (file_ == nullptr) error_ = errno;
  }
  return error_ == 0;
}

bool TraceFile::Take(std::string_view line) {
  if (!Open()) return false;
  errno = 0;
  const bool taken =
      std::fwrite(line.data(), 1, line.size(), file_) == line.size() && std::fflush(file_) == 0;
  if (!taken) error_ = errno != 0 ? errno : EIO;
  return taken;
}

}  // namespace q40
