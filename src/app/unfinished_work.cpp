#include "app/unfinished_work.h"

#include <filesystem>

#include <QFile>

#include "widgets/paths.h"

namespace q40 {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFileName = "/unfinished write.txt";
constexpr const char* kLockName = "/unfinished write.lock";

// A name that no file has yet.
std::string AsideName(const std::string& folder) {
  std::error_code error;
  for (int number = 1;; ++number) {
    std::string path = folder + "/damaged unfinished write " + std::to_string(number) + ".txt";
    if (!fs::exists(path, error)) return path;
  }
}

}  // namespace

UnfinishedWork::UnfinishedWork(std::string folder, FileSystem& files)
    : files_(files), folder_(std::move(folder)), path_(folder_ + kFileName) {}

// False: another program has it. Its holder is asked by its process number, so that one that was killed
// holds nothing. Where no lock can be made, because the toolkit cannot spell the folder, nobody has one.
bool UnfinishedWork::Lock() {
  lock_ = std::make_unique<QLockFile>(QFile::decodeName((folder_ + kLockName).c_str()));
  lock_->setStaleLockTime(0);
  return lock_->tryLock(0) || lock_->error() != QLockFile::LockFailedError;
}

QString UnfinishedWork::Begin(UnfinishedWrite write) {
  before_ = pending_;
  running_ = std::move(write);
  std::error_code error;
  if (!folder_.empty()) fs::create_directories(folder_, error);
  const bool held = !folder_.empty() && !Lock();
  if (held) path_.clear();
  const QString not_stored = Keep(before_ ? Over(*before_, *running_) : *running_);
  return held ? tr("another program that is writing keeps its own there") : not_stored;
}

void UnfinishedWork::Finish(End end) {
  if (!running_) return;
  switch (end) {
    case End::kUntouched: Keep(before_); break;
    case End::kDone: Keep(before_ ? Without(*before_, *running_) : std::nullopt); break;
    case End::kBrokeOff: emit changed(); break;
  }
  running_.reset();
  lock_.reset();
  path_ = folder_ + kFileName;
}

void UnfinishedWork::Forget() { Keep(std::nullopt); }

// A failure to store it must not keep anybody from writing: it then lasts as long as this run.
QString UnfinishedWork::Keep(std::optional<UnfinishedWrite> write) {
  pending_ = std::move(write);
  std::optional<FileProblem> problem;
  if (!folder_.empty() && !path_.empty()) {
    std::error_code error;
    if (!pending_) {
      fs::remove(path_, error);
    } else {
      problem = SaveUnfinishedWrite(path_, *pending_, files_);
    }
  }
  emit changed();
  return problem ? Shown(problem->Message()) : QString();
}

QString UnfinishedWork::Find() {
  std::error_code error;
  if (folder_.empty() || !fs::exists(path_, error) || !Lock()) return {};
  UnfinishedWrite found;
  const auto problem = OpenUnfinishedWrite(path_, found);
  QString text;
  if (!problem) {
    pending_ = std::move(found);
  } else {
    const std::string aside = AsideName(folder_);
    fs::rename(path_, aside, error);
    text = tr("What was left of a write cannot be read (%1). It was put aside as %2.")
               .arg(Shown(problem->what), Shown(aside));
  }
  lock_.reset();
  emit changed();
  return text;
}

}  // namespace q40
