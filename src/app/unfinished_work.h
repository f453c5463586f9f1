// The write that has not ended well, for going on with it: in this run, and in the next one when the
// program is killed in the middle.
//
// Its file lies beside the backups. It is there before the first byte of a write goes out and until
// the write has ended well. Another program that runs at the same time leaves the file of a write in
// progress alone.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include <QLockFile>
#include <QObject>

#include "files/unfinished_write.h"

namespace q40 {

class UnfinishedWork final : public QObject {
  Q_OBJECT

 public:
  // `folder`: made when it is needed. Empty: nothing is kept on the disk. `files` must outlive it.
  explicit UnfinishedWork(std::string folder, FileSystem& files = SystemFiles());

  // What is left to be written. While a write runs: what would be left if it ended now.
  [[nodiscard]] const std::optional<UnfinishedWrite>& pending() const { return pending_; }

  // A write is about to send its first byte. Why it could not be stored, so that it is known in this run
  // only; empty when it was, or when nothing is to be.
  QString Begin(UnfinishedWrite write);
  enum class End : unsigned char { kUntouched, kBrokeOff, kDone };
  // It is over. Nothing when it has not begun.
  void Finish(End end);
  // The user does not want to go on with it.
  void Forget();

  // Looks for one that an earlier run has left. In words: what was wrong with its file, which has been
  // put aside then; empty when there was none, or a good one.
  QString Find();

 signals:
  void changed();

 private:
  // Why it could not be stored; empty when it was.
  QString Keep(std::optional<UnfinishedWrite> write);
  [[nodiscard]] bool Lock();

  FileSystem& files_;
  std::string folder_;
  std::string path_;
  std::unique_ptr<QLockFile> lock_;  // held while a write runs
  std::optional<UnfinishedWrite> pending_;
  std::optional<UnfinishedWrite> before_;   // what was pending when the write began
  std::optional<UnfinishedWrite> running_;  // the write itself
};

}  // namespace q40
