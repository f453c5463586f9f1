// The operations of the operating system that saving needs, one call each, so that a test can make
// any one of them fail. Every failing call leaves its reason in errno.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace q40 {

// Who owns a file, and who may do what with it, as the system counts it.
struct FileRights {
  std::uint32_t owner = 0;
  std::uint32_t group = 0;
  std::uint32_t mode = 0;   // the twelve permission bits
  std::string access_list;  // further users and groups, in the system's own form; mostly empty
};

// Whether the reason of a failure is that the file system does not know the operation.
bool IsUnsupported(int error);

class FileSystem {
 public:
  FileSystem() = default;
  virtual ~FileSystem() = default;
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;

  // Whether an existing file may be written; it is not touched.
  virtual bool MayWrite(const std::string& path);
  // Opens a file that must not exist yet, unbuffered, with at most the permissions `mode`. Null on
  // failure. The caller closes it.
  virtual std::FILE* Create(const std::string& path, std::uint32_t mode);
  // Bytes that were taken; fewer than data.size() is a failure.
  virtual std::size_t Write(std::FILE* file, std::string_view data);
  // Pushes everything to the disk. Not every file system can.
  virtual bool Sync(std::FILE* file);
  virtual bool Close(std::FILE* file);
  // Size in bytes, -1 on failure.
  virtual std::int64_t Size(const std::string& path);
  // Rights, and changing them while the file is open.
  virtual bool Rights(const std::string& path, FileRights& rights);
  virtual bool SetOwner(std::FILE* file, std::uint32_t owner, std::uint32_t group);
  virtual bool SetAccessList(std::FILE* file, const std::string& list);
  virtual bool SetMode(std::FILE* file, std::uint32_t mode);
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
// That Rename for a file system that cannot do it in one step: looks first, then renames.
bool RenameWhereNothingIs(const std::string& from, const std::string& to);

}  // namespace q40
