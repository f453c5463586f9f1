// The one file of the core that calls the operating system beyond the C++ library: only it can push
// a file to the disk.
#include "files/file_system.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace q40 {
namespace fs = std::filesystem;
namespace {

bool StoreReason(const std::error_code& error) {
  if (error) errno = error.value();
  return !error;
}

// Only root may give a file away, and only root need: a user's file must not become root's. A disk that
// knows no owners is no reason to fail.
void KeepOwner([[maybe_unused]] const std::string& pattern,
               [[maybe_unused]] const std::string& path) {
#ifndef _WIN32
  struct stat owner {};
  if (geteuid() != 0 || stat(pattern.c_str(), &owner) != 0) return;
  [[maybe_unused]] const int kept = chown(path.c_str(), owner.st_uid, owner.st_gid);
#endif
}

class NewFiles final : public FileSystem {
 public:
  bool Rename(const std::string& from, const std::string& to) override {
#ifdef RENAME_NOREPLACE
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno != EINVAL && errno != ENOSYS) return false;
#endif
    return RenameWhereNothingIs(from, to);
  }
};

}  // namespace

bool FileSystem::MayWrite(const std::string& path) {
  std::FILE* file = std::fopen(path.c_str(), "r+b");
  return file != nullptr && std::fclose(file) == 0;
}

std::FILE* FileSystem::Create(const std::string& path) {
  std::FILE* file = std::fopen(path.c_str(), "wbx");
  if (file != nullptr) std::setvbuf(file, nullptr, _IONBF, 0);
  return file;
}

std::size_t FileSystem::Write(std::FILE* file, std::string_view data) {
  return std::fwrite(data.data(), 1, data.size(), file);
}

bool FileSystem::Sync(std::FILE* file) {
  if (std::fflush(file) != 0) return false;
#ifdef _WIN32
  return _commit(_fileno(file)) == 0;
#else
  // A file system without fsync (EINVAL) has nothing to push.
  return fsync(fileno(file)) == 0 || errno == EINVAL;
#endif
}

bool FileSystem::Close(std::FILE* file) { return std::fclose(file) == 0; }

std::int64_t FileSystem::Size(const std::string& path) {
  std::error_code error;
  const auto size = fs::file_size(path, error);
  return StoreReason(error) ? static_cast<std::int64_t>(size) : -1;
}

bool FileSystem::CopyRights(const std::string& pattern, const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(pattern, error);
  if (!StoreReason(error)) return false;
  KeepOwner(pattern, path);  // first: a new owner clears some of the permissions
  fs::permissions(path, status.permissions(), error);
  return StoreReason(error);
}

bool FileSystem::Rename(const std::string& from, const std::string& to) {
  std::error_code error;
  fs::rename(from, to, error);
  return StoreReason(error);
}

bool FileSystem::SyncFolder(const std::string& folder) {
#ifndef _WIN32
  const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return false;
  const bool done = fsync(handle) == 0;
  close(handle);
  return done;
#else
  return !folder.empty();
#endif
}

bool FileSystem::Remove(const std::string& path) {
  std::error_code error;
  return fs::remove(path, error) && StoreReason(error);
}

bool RenameWhereNothingIs(const std::string& from, const std::string& to) {
  std::error_code error;
  if (!fs::exists(fs::symlink_status(to, error))) return SystemFiles().Rename(from, to);
  errno = EEXIST;
  return false;
}

FileSystem& SystemFiles() {
  static FileSystem system;
  return system;
}

FileSystem& NewFilesOnly() {
  static NewFiles system;
  return system;
}

}  // namespace q40
