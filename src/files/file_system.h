// The operations of the operating system that saving needs, one call each, so that a test can make
// any one of them fail. Every failing call leaves its reason in errno.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace q40 {

class FileSystem {
 public:
  FileSystem() = default;
  virtual ~FileSystem() = default;
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;

  // Whether an existing file may be written; it is not touched.
  virtual bool MayWrite(const std::string& path);
  // Opens a file that must not exist yet, unbuffered. Null on failure. The caller closes it.
  virtual std::FILE* Create(const std::string& path);
  // Bytes that were taken; fewer than data.size() is a failure.
  virtual std::size_t Write(std::FILE* file, std::string_view data);
  // Pushes everything to the disk.
  virtual bool Sync(std::FILE* file);
  virtual bool Close(std::FILE* file);
  // Size in bytes, -1 on failure.
  virtual std::int64_t Size(const std::string& path);
  // Gives `path` the access rights of `pattern`, and its owner where the program may.
  virtual bool CopyRights(const std::string& pattern, const std::string& path);
  // Replaces `to` in one step.
  virtual bool Rename(const std::string& from, const std::string& to);
  // Pushes the names in a folder to the disk.
  virtual bool SyncFolder(const std::string& folder);
  virtual bool Remove(const std::string& path);
};

// The system that the program runs on.
FileSystem& SystemFiles();
// The same, but its Rename replaces nothing (EEXIST), not even a file that has just appeared.
FileSystem& NewFilesOnly();
// That Rename on a file system that cannot do it in one step: looks first, then renames.
bool RenameWhereNothingIs(const std::string& from, const std::string& to);

}  // namespace q40
