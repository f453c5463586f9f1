// For Linux: only the system itself can push a file to the disk, keep its rights, and rename it only
// where nothing is.
#include "files/file_system.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <system_error>
#include <unistd.h>

namespace q40 {
namespace fs = std::filesystem;
namespace {

bool StoreReason(const std::error_code& error) {
  if (error) errno = error.value();
  return !error;
}

constexpr const char* kAccessList = "system.posix_acl_access";

class NewFiles final : public FileSystem {
 public:
  bool Rename(const std::string& from, const std::string& to) override {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (!IsUnsupported(errno)) return false;
    return RenameWhereNothingIs(from, to);
  }
};

}  // namespace

bool IsUnsupported(int error) {
  constexpr int kReasons[] = {EINVAL, ENOSYS, ENOTSUP, EOPNOTSUPP, EROFS};
  return std::find(std::begin(kReasons), std::end(kReasons), error) != std::end(kReasons);
}

bool FileSystem::MayWrite(const std::string& path) {
  std::FILE* file = std::fopen(path.c_str(), "r+b");
  return file != nullptr && std::fclose(file) == 0;
}

std::FILE* FileSystem::Create(const std::string& path, std::uint32_t mode) {
  const int handle = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  std::FILE* file = handle < 0 ? nullptr : fdopen(handle, "wb");
  if (file != nullptr) std::setvbuf(file, nullptr, _IONBF, 0);
  return file;
}

std::size_t FileSystem::Write(std::FILE* file, std::string_view data) {
  return std::fwrite(data.data(), 1, data.size(), file);
}

bool FileSystem::Sync(std::FILE* file) {
  if (std::fflush(file) != 0) return false;
  return fsync(fileno(file)) == 0;
}

bool FileSystem::Close(std::FILE* file) { return std::fclose(file) == 0; }

std::int64_t FileSystem::Size(const std::string& path) {
  std::error_code error;
  const auto size = fs::file_size(path, error);
  return StoreReason(error) ? static_cast<std::int64_t>(size) : -1;
}

bool FileSystem::Rights(const std::string& path, FileRights& rights) {
  rights = {};
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return false;
  rights = {status.st_uid, status.st_gid, status.st_mode & 07777U, {}};
  const ssize_t size = getxattr(path.c_str(), kAccessList, nullptr, 0);
  rights.access_list.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return size <= 0 || getxattr(path.c_str(), kAccessList, rights.access_list.data(),
                               rights.access_list.size()) == size;
}

bool FileSystem::SetOwner(std::FILE* file, std::uint32_t owner, std::uint32_t group) {
  return fchown(fileno(file), owner, group) == 0;
}

bool FileSystem::SetAccessList(std::FILE* file, const std::string& list) {
  if (list.empty()) return fremovexattr(fileno(file), kAccessList) == 0;
  return fsetxattr(fileno(file), kAccessList, list.data(), list.size(), 0) == 0;
}

bool FileSystem::SetMode(std::FILE* file, std::uint32_t mode) {
  return fchmod(fileno(file), mode) == 0;
}

bool FileSystem::Rename(const std::string& from, const std::string& to) {
  std::error_code error;
  fs::rename(from, to, error);
  return StoreReason(error);
}

bool FileSystem::SyncFolder(const std::string& folder) {
  const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return false;
  const bool done = fsync(handle) == 0;
  close(handle);
  return done;
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
