// The files that commands read and make: at a path, in a pipe, or in a stream that is open already
// ("-", "/dev/fd/63").
#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/clone_file.h"
#include "programs/ctl/commands.h"

namespace q40 {

// Opens what `path` names into the document. `text` is what was read.
OpenResult OpenInput(const std::string& path, CloneData& document, std::string& text);
// The same; kExitDone, or the code of the error that was said.
int OpenOrComplain(CommandContext& context, const std::string& path, CloneData& document,
                   std::string& text);

// kExitDone, or kExitUsage (said) when more than one of the paths is standard input, which can be
// read once only.
int CheckInputs(CommandContext& context, const std::vector<std::string>& paths);

// What a command makes. One rule for all: a file that exists is replaced only where the user has said
// so; a pipe or an open stream takes the content as it is, all at once and at the end.
class Product {
 public:
  // The context must outlive it.
  Product(CommandContext& context, std::string path);
  ~Product();
  Product(const Product&) = delete;
  Product& operator=(const Product&) = delete;

  [[nodiscard]] bool IsStream() const { return number_.has_value() || is_pipe_; }
  // Whether there is a file, or something else that is no stream, at its path.
  [[nodiscard]] bool Exists() const;
  // For messages.
  [[nodiscard]] std::string Name() const;

  // Before the work: kExitDone when it can be made, or the code of the error that was said. `advice`
  // to a user whose file exists and may not be replaced. Waits for the reader of a named pipe.
  int Prepare(bool may_replace, const std::string& advice = "Use --force to replace it.");
  // Once, after Prepare: kExitDone, or the code of the error that was said. A reader that goes away
  // early is no error.
  int Store(std::string_view content);
  int Store(const CloneData& document);

 private:
  int OpenOutput();
  int StoreInStream(std::string_view content);
  int Failed(int error);
  [[nodiscard]] FileSystem& Files() const;

  CommandContext& context_;
  std::string path_;
  std::optional<int> number_;  // of an open stream
  bool is_pipe_;
  bool may_replace_ = false;
  std::FILE* stream_ = nullptr;
};

}  // namespace q40
