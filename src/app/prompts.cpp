#include "app/prompts.h"

#include <filesystem>

#include "files/clone_file.h"
#include "widgets/paths.h"

namespace q40 {

void Prompts::DataError(const FileProblem& problem) {
  NoteFailure(Shown(problem.Message()));
  ShowError(QString::fromUtf8(kDataErrorText));
}

bool IsGone(const std::string& path) {
  std::error_code error;
  return std::filesystem::status(path, error).type() == std::filesystem::file_type::not_found;
}

}  // namespace q40
