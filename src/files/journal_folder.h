// The folder in which every window keeps its journal, each under a lock that ends with its process: a
// journal whose lock is free was left by a window that did not end.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_problem.h"

namespace q40 {

// A journal's name and its lock, which is ours as long as this lives. The file stays until it is
// removed.
class JournalFile {
 public:
  ~JournalFile();
  JournalFile(const JournalFile&) = delete;
  JournalFile& operator=(const JournalFile&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  // The old content or the new one is there, never a part of it.
  [[nodiscard]] std::optional<FileProblem> Write(std::string_view text);
  void Remove();
  // Gives the file a name that no longer counts as a journal; empty: that failed, and it stays.
  std::string PutAside();

 private:
  friend struct JournalAccess;
  JournalFile(std::string path, int lock) : path_(std::move(path)), lock_(lock) {}
  [[nodiscard]] std::string LockPath() const;

  std::string path_;
  int lock_;
};

// A name that nobody has yet. The folder is made when it is missing. Null: `problem` says why.
std::unique_ptr<JournalFile> NewJournalFile(const std::string& folder,
                                            std::optional<FileProblem>& problem);
// What windows have left, the youngest first. They are ours then: nobody else finds them.
std::vector<std::unique_ptr<JournalFile>> LeftJournals(const std::string& folder);

}  // namespace q40
