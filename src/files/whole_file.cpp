#include "files/whole_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

#include "files/file_rights.h"
#include "files/standard_streams.h"

namespace q40 {
namespace fs = std::filesystem;
namespace {

FileProblem Unreadable(const std::string& path, std::string what) {
  return {FileProblem::Kind::kBadData, path, 0, std::move(what)};
}

FileProblem Unwritable(const std::string& path, std::string what) {
  return {FileProblem::Kind::kCannotWrite, path, 0, std::move(what)};
}

std::string Reason(int error) { return std::generic_category().message(error); }

// Why a path cannot be used as a regular file; empty when it can.
std::string NotAFile(const fs::file_status& status) {
  switch (status.type()) {
    case fs::file_type::regular:
    case fs::file_type::not_found: return {};
    case fs::file_type::directory: return "is a folder, not a file";
    case fs::file_type::fifo: return "is a pipe, not a file";
    case fs::file_type::socket: return "is a socket, not a file";
    case fs::file_type::character:
    case fs::file_type::block: return "is a device, not a file";
    default: return "is not a regular file";
  }
}

std::string RandomSuffix() {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
  constexpr int kLength = 8;
  std::random_device random;
  std::string suffix;
  for (int i = 0; i < kLength; ++i) suffix += kLetters[random() % kLetters.size()];
  return suffix;
}

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// Up to `limit` bytes of a file that has been opened, and closes it.
std::optional<FileProblem> ReadAll(std::FILE* file, const std::string& name, std::size_t limit,
                                   std::string& content) {
  if (file == nullptr) return Unreadable(name, errno == EBADF ? "is closed" : Reason(errno));
  constexpr std::size_t kPiece = 65536;
  std::size_t got = 0;
  do {
    content.resize(std::min(limit, content.size() + kPiece));
    got += std::fread(content.data() + got, 1, content.size() - got, file);
  } while (got == content.size() && got < limit);
  content.resize(got);
  const int failure = std::ferror(file) != 0 ? errno : 0;
  std::fclose(file);
  if (failure != 0) return Unreadable(name, Reason(failure));
  return std::nullopt;
}

}  // namespace

std::optional<FileProblem> ReadFile(const std::string& path, std::size_t limit,
                                    std::string& content) {
  content.clear();
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::none) return Unreadable(path, error.message());
  if (std::string why = NotAFile(status); !why.empty()) return Unreadable(path, std::move(why));
  return ReadAll(std::fopen(path.c_str(), "rb"), path, limit, content);
}

std::optional<FileProblem> ReadInput(const std::string& path, std::size_t limit,
                                     std::string& content) {
  content.clear();
  if (const auto number = StreamNumber(path, StreamUse::kRead)) {
    return ReadAll(OpenStream(*number, StreamUse::kRead), InputName(path), limit, content);
  }
  if (!IsPipe(path)) return ReadFile(path, limit, content);
  return ReadAll(std::fopen(path.c_str(), "rb"), path, limit, content);
}

std::string InputName(const std::string& path) {
  return path == kStandardStream ? "standard input" : path;
}

FileReplacement::~FileReplacement() {
  if (file_ != nullptr) system_.Close(file_);
  if (!temporary_.empty()) system_.Remove(temporary_);
}

std::optional<FileProblem> FileReplacement::Failed(std::string_view doing) const {
  return Unwritable(path_, "cannot " + std::string(doing) + ": " + Reason(errno));
}

std::optional<FileProblem> FileReplacement::Open(const std::string& path) {
  path_ = path;
  target_ = Resolved(path);
  if (IsInProc(target_)) {  // as /dev/stdout: to replace its file would lose that one
    return Unwritable(path, "is an open stream, not a file");
  }
  const fs::path target = target_;
  std::error_code error;
  if (!target.has_filename())
    return Unwritable(path.empty() ? "\"\"" : path, "is not the name of a file");
  if (std::string why = NotAFile(fs::status(target, error)); !why.empty()) {
    return Unwritable(path, std::move(why));
  }

  if (fs::exists(target, error)) {
    // Only the folder's rights would count for the rename; a protected file is meant to stay.
    if (!system_.MayWrite(target_)) return Failed("be written");
    if (!system_.Rights(target_, old_.emplace())) return Failed("keep its access rights");
  }
  return CreateBeside();
}

std::optional<FileProblem> FileReplacement::CreateBeside() {
  constexpr std::uint32_t kPermissions = 0777;
  constexpr std::uint32_t kNewFile = 0666;
  const std::uint32_t mode = old_ ? old_->mode & kPermissions : kNewFile;
  constexpr int kTries = 16;
  for (int i = 0; i < kTries && file_ == nullptr; ++i) {
    const fs::path beside = FolderOf(target_) / (".q40-" + RandomSuffix() + ".tmp");
    file_ = system_.Create(beside.string(), mode);
    if (file_ != nullptr) temporary_ = beside.string();
    if (file_ == nullptr && errno != EEXIST) break;
  }
  if (file_ == nullptr) return Failed("create a file in its folder");
  return std::nullopt;
}

std::optional<FileProblem> FileReplacement::Store(std::string_view content) {
  if (system_.Write(file_, content) != content.size()) return Failed("write");
  // A full disk may show only here, or only in the size: both are looked at before the old file
  // goes.
  if (!system_.Sync(file_) && !IsUnsupported(errno)) return Failed("write");
  std::FILE* file = file_;
  file_ = nullptr;
  if (!system_.Close(file)) return Failed("write");
  const std::int64_t size = system_.Size(temporary_);
  if (size < 0) return Failed("check what was written");
  if (size != static_cast<std::int64_t>(content.size())) {
    return Unwritable(path_, "only " + std::to_string(size) + " of " +
                                 std::to_string(content.size()) + " bytes could be stored");
  }
  return std::nullopt;
}

std::optional<FileProblem> FileReplacement::Commit(std::string_view content) {
  // First, so that nobody can read the content who must not.
  if (old_ && !KeepRights(system_, *old_, file_, temporary_)) {
    return Failed("keep its access rights");
  }
  if (auto problem = Store(content)) return problem;
  if (!system_.Rename(temporary_, target_)) return Failed("replace the file");
  temporary_.clear();
  // The new file is in place. That its name may not survive a power cut is no reason to call the
  // save failed.
  system_.SyncFolder(FolderOf(target_).string());
  return std::nullopt;
}

std::optional<FileProblem> CheckReplaceable(const std::string& path, FileSystem& system) {
  return FileReplacement(system).Open(path);
}

std::optional<FileProblem> WriteFile(const std::string& path, std::string_view content,
                                     FileSystem& system) {
  FileReplacement replacement(system);
  if (auto problem = replacement.Open(path)) return problem;
  return replacement.Commit(content);
}

}  // namespace q40
