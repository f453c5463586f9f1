#include "programs/ctl/user_files.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "files/standard_streams.h"
#include "files/whole_file.h"

namespace q40 {
namespace {

constexpr int kStandardInput = 0;
constexpr int kStandardOutput = 1;

}  // namespace

// ---- reading

OpenResult OpenInput(const std::string& path, CloneData& document, std::string& text) {
  OpenResult result;
  result.problem = ReadInput(path, kLongestCloneFile, text);
  return result.problem ? result : OpenCloneText(text, InputName(path), document);
}

int OpenOrComplain(CommandContext& context, const std::string& path, CloneData& document,
                   std::string& text) {
  const OpenResult result = OpenInput(path, document, text);
  if (result.problem) return context.console.Error(*result.problem);
  if (result.odd_digit) context.console.Note(result.odd_digit->Message());
  return kExitDone;
}

int OpenOrComplain(CommandContext& context, const std::string& path, CloneData& document) {
  std::string text;
  return OpenOrComplain(context, path, document, text);
}

int CheckInputs(CommandContext& context, const std::vector<std::string>& paths) {
  const auto count = std::count_if(paths.begin(), paths.end(), [](const std::string& path) {
    return StreamNumber(path, StreamUse::kRead) == kStandardInput;
  });
  if (count < 2) return kExitDone;
  return context.console.Error(kExitUsage, "only one of the files can be standard input");
}

// ---- making

int Print(CommandContext& context, std::string_view text) {
  Console& console = context.console;
  if (console.Result(text) || console.ReaderIsGone()) return kExitDone;
  return console.Error(kExitCannotWrite, console.OutputProblem());
}

Product::Product(CommandContext& context, std::string path)
    : context_(context),
      path_(std::move(path)),
      number_(StreamNumber(path_, StreamUse::kWrite)),
      is_pipe_(IsPipe(path_)) {}

Product::~Product() {
  if (stream_ != nullptr) std::fclose(stream_);
}

std::string Product::Name() const { return path_ == kStandardStream ? "standard output" : path_; }

// Even a broken link belongs to somebody.
bool Product::Exists() const {
  std::error_code error;
  return !IsStream() && std::filesystem::exists(std::filesystem::symlink_status(path_, error));
}

int Product::Prepare(bool may_replace, const std::string& advice) {
  may_replace_ = may_replace;
  if (IsStream()) return OpenOutput();
  if (const auto problem = CheckReplaceable(path_)) return context_.console.Error(*problem);
  if (may_replace || !Exists()) return kExitDone;
  return context_.console.Error(kExitUsage, path_ + " exists. " + advice);
}

int Product::OpenOutput() {
  if (number_ == kStandardOutput) {
    if (context_.console.TakesResults()) return kExitDone;
    return context_.console.Error(kExitCannotWrite, context_.console.OutputProblem());
  }
  stream_ = number_ ? OpenStream(*number_, StreamUse::kWrite) : std::fopen(path_.c_str(), "wb");
  return stream_ != nullptr ? static_cast<int>(kExitDone) : Failed(errno);
}

// A file that has appeared since is as precious as one that was there.
FileSystem& Product::Files() const { return may_replace_ ? SystemFiles() : NewFilesOnly(); }

int Product::Store(std::string_view content) {
  if (IsStream()) return StoreInStream(content);
  const auto problem = WriteFile(path_, content, Files());
  return problem ? context_.console.Error(*problem) : static_cast<int>(kExitDone);
}

int Product::Store(const CloneData& document) {
  if (IsStream()) {
    if (const auto text = CloneFileText(document, document.model)) return StoreInStream(*text);
  }
  const auto problem = SaveCloneFile(path_, document, document.model, Files());
  return problem ? context_.console.Error(*problem) : static_cast<int>(kExitDone);
}

int Product::StoreInStream(std::string_view content) {
  if (number_ == kStandardOutput) return Print(context_, content);
  const bool taken = std::fwrite(content.data(), 1, content.size(), stream_) == content.size();
  const int reason = taken ? 0 : errno;
  const bool closed = std::fclose(std::exchange(stream_, nullptr)) == 0;
  if (taken && closed) return kExitDone;
  return Failed(taken ? errno : reason);
}

int Product::Failed(int error) {
  if (error == EPIPE) return kExitDone;
  const std::string why = error == EBADF ? "is closed" : std::generic_category().message(error);
  return context_.console.Error(kExitCannotWrite, path_ + ": " + why);
}

}  // namespace q40
