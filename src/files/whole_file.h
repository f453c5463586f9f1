// Reading and replacing whole files. A file on disk is either the old one or the complete new one.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/file_problem.h"
#include "files/file_system.h"

namespace q40 {

// The first `limit` bytes of a regular file. A directory, a pipe or a device is refused before it
// is opened: a pipe would block, a device might never end.
[[nodiscard]] std::optional<FileProblem> ReadFile(const std::string& path, std::size_t limit,
                                                  std::string& content);

// The same for a program that may wait for its input. The path may also be a pipe, name a stream
// that is open already, or be "-" for standard input.
[[nodiscard]] std::optional<FileProblem> ReadInput(const std::string& path, std::size_t limit,
                                                   std::string& content);
// What messages call such a path.
[[nodiscard]] std::string InputName(const std::string& path);

// A file that is about to be replaced. The temporary file beside the target exists from Open to
// Commit; until the last step of Commit the target is untouched, and afterwards it is complete. A
// symbolic link is followed: the file it names is replaced, the link stays.
class FileReplacement {
 public:
  explicit FileReplacement(FileSystem& system = SystemFiles()) : system_(system) {}
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  // Fails when the target cannot be replaced: it is protected or no regular file, or its folder is
  // missing or closed to us.
  [[nodiscard]] std::optional<FileProblem> Open(const std::string& path);

  // Takes over the old file's rights, writes, pushes to the disk, compares the size, renames. Once,
  // after a successful Open.
  [[nodiscard]] std::optional<FileProblem> Commit(std::string_view content);

 private:
  std::optional<FileProblem> CreateBeside();
  std::optional<FileProblem> Store(std::string_view content);
  [[nodiscard]] std::optional<FileProblem> Failed(std::string_view doing) const;

  FileSystem& system_;
  std::string path_;       // as the user named it
  std::string target_;     // what it stands for, links resolved
  std::string temporary_;  // empty when there is none
  std::FILE* file_ = nullptr;
  std::optional<FileRights> old_;  // of the target, when there is one
};

// Whether `path` could be replaced now; leaves nothing behind. Long jobs ask first.
[[nodiscard]] std::optional<FileProblem> CheckReplaceable(const std::string& path,
                                                          FileSystem& system = SystemFiles());

// Open and Commit in one.
[[nodiscard]] std::optional<FileProblem> WriteFile(const std::string& path,
                                                   std::string_view content,
                                                   FileSystem& system = SystemFiles());

}  // namespace q40
