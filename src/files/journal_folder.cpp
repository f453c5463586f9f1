#include "files/journal_folder.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <random>
#include <system_error>

#include "files/whole_file.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace q40 {
namespace fs = std::filesystem;

struct JournalAccess {
  static std::unique_ptr<JournalFile> Make(std::string path, int lock) {
    return std::unique_ptr<JournalFile>(new JournalFile(std::move(path), lock));
  }
};

namespace {

constexpr const char* kSuffix = ".journal";
constexpr const char* kLockSuffix = ".lock";
constexpr const char* kAsideSuffix = ".unreadable";
constexpr int kNone = -1;

// The lock file, opened and locked; kNone: that cannot be, mostly because it is somebody's.
int Lock([[maybe_unused]] const std::string& path) {
#ifdef _WIN32
  errno = ENOTSUP;
  return kNone;
#else
  const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (file < 0) return kNone;
  if (flock(file, LOCK_EX | LOCK_NB) == 0) return file;
  const int reason = errno;
  close(file);
  errno = reason;
  return kNone;
#endif
}

std::optional<FileProblem> Problem(const std::string& path, const std::string& why) {
  return FileProblem{FileProblem::Kind::kCannotWrite, path, 0, why};
}

// Only the user's own: a journal tells what is in a radio.
std::error_code MakeFolder(const std::string& folder) {
  std::error_code error;
  if (fs::create_directories(folder, error)) {
    fs::permissions(folder, fs::perms::owner_all, error);
  }
  return error;
}

// What a write that was interrupted has left. A younger one may still be written.
bool IsForgotten(const fs::directory_entry& entry) {
  std::error_code error;
  const auto age = fs::file_time_type::clock::now() - entry.last_write_time(error);
  return !error && entry.path().extension() == ".tmp" && age > std::chrono::minutes(1);
}

}  // namespace

JournalFile::~JournalFile() {
#ifndef _WIN32
  if (lock_ != kNone) close(lock_);
#endif
}

std::string JournalFile::LockPath() const {
  return path_.substr(0, path_.rfind('.')) + kLockSuffix;
}

std::optional<FileProblem> JournalFile::Write(std::string_view text) {
  return WriteFile(path_, text);
}

void JournalFile::Remove() {
  std::error_code error;
  fs::remove(path_, error);  // first: a journal without its lock would count as left
  fs::remove(LockPath(), error);
}

std::string JournalFile::PutAside() {
  std::error_code error;
  std::string aside = path_ + kAsideSuffix;
  fs::rename(path_, aside, error);
  if (error) return {};
  fs::remove(LockPath(), error);
  return aside;
}

std::unique_ptr<JournalFile> NewJournalFile(const std::string& folder,
                                            std::optional<FileProblem>& problem) {
  problem.reset();
  if (const std::error_code error = MakeFolder(folder)) {
    problem = Problem(folder, "cannot be made: " + error.message());
    return nullptr;
  }
  constexpr int kTries = 16;
  std::random_device random;
  for (int i = 0; i < kTries; ++i) {
    const std::string name = (fs::path(folder) / std::to_string(random())).string();
    std::error_code error;
    if (fs::exists(name + kSuffix, error)) continue;
    const int lock = Lock(name + kLockSuffix);
    if (lock != kNone) return JournalAccess::Make(name + kSuffix, lock);
    if (errno != EWOULDBLOCK) break;
  }
  problem = Problem(folder, "cannot keep a lock: " + std::generic_category().message(errno));
  return nullptr;
}

std::vector<std::unique_ptr<JournalFile>> LeftJournals(const std::string& folder) {
  std::vector<std::pair<fs::file_time_type, std::string>> found;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    std::error_code unknown;
    if (IsForgotten(entry)) {
      fs::remove(entry.path(), unknown);
    } else if (entry.path().extension() == kSuffix) {
      found.emplace_back(entry.last_write_time(unknown), entry.path().string());
    }
  }
  std::sort(found.rbegin(), found.rend());
  std::vector<std::unique_ptr<JournalFile>> left;
  for (auto& [time, path] : found) {
    const int lock = Lock(path.substr(0, path.rfind('.')) + kLockSuffix);
    if (lock == kNone) continue;
    auto journal = JournalAccess::Make(std::move(path), lock);
    if (fs::exists(journal->path(), error)) {
      left.push_back(std::move(journal));
    } else {
      journal->Remove();  // its window has just ended as it should
    }
  }
  return left;
}

}  // namespace q40
