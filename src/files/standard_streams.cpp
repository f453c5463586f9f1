// For Linux: the numbers of open files, and their names below /proc.
#include "files/standard_streams.h"

#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace q40 {
namespace fs = std::filesystem;
namespace {

std::string RealFolderOf(const fs::path& path) {
  std::error_code error;
  return fs::canonical(path.has_parent_path() ? path.parent_path() : ".", error).string();
}

}  // namespace

void OpenStandardStreams() {
  constexpr int kHandles[] = {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};
  for (const int handle : kHandles) {
    // open() takes the lowest free number, and every lower one is open already.
    const int wrong_way = handle == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (fcntl(handle, F_GETFD) < 0) open("/dev/null", wrong_way);
  }
}

std::string Resolved(const std::string& path) {
  constexpr int kLongestChain = 40;
  fs::path target = path;
  std::error_code error;
  for (int i = 0; i < kLongestChain && fs::is_symlink(target, error); ++i) {
    if (IsInProc(target.string())) break;
    const fs::path next = fs::read_symlink(target, error);
    if (error) break;
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  return target.string();
}

bool IsInProc(const std::string& resolved) {
  return (RealFolderOf(resolved) + '/').starts_with("/proc/");
}

std::optional<int> StreamNumber(const std::string& path, StreamUse use) {
  if (path == kStandardStream) return use == StreamUse::kRead ? 0 : 1;
  const fs::path target = Resolved(path);
  const std::string name = target.filename().string();
  std::error_code error;
  const fs::path own = fs::canonical("/proc/self/fd", error);
  if (error || RealFolderOf(target) != own) return std::nullopt;
  int number = 0;
  const char* const end = name.data() + name.size();
  const auto parsed = std::from_chars(name.data(), end, number);
  if (parsed.ec != std::errc() || parsed.ptr != end || number < 0) return std::nullopt;
  return number;
}

bool IsPipe(const std::string& path) {
  std::error_code error;
  return fs::is_fifo(path, error);
}

std::FILE* OpenStream(int number, StreamUse use) {
  const int flags = fcntl(number, F_GETFL);
  const int wrong_way = use == StreamUse::kRead ? O_WRONLY : O_RDONLY;
  if (flags >= 0 && (flags & O_ACCMODE) != wrong_way) {
    const int own = fcntl(number, F_DUPFD_CLOEXEC, 0);
    if (own >= 0) return fdopen(own, use == StreamUse::kRead ? "rb" : "wb");
    return nullptr;
  }
  errno = EBADF;
  return nullptr;
}

}  // namespace q40
