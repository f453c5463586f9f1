#include "lists/mapping_folder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/decimal.h"
#include "base/plain_text.h"
#include "files/whole_file.h"

namespace q40 {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSuffix = ".map";

std::string PathOf(const std::string& folder, const std::string& name) {
  return folder + '/' + name + std::string(kSuffix);
}

std::optional<FileProblem> BadName(const std::string& name, FileProblem::Kind kind) {
  const std::string why = WhyNotMappingName(name);
  if (why.empty()) return std::nullopt;
  return FileProblem{kind, Quoted(name), 0, "no name of a mapping: " + why};
}

}  // namespace

std::string MappingFolder(const std::string& user_folder) { return user_folder + "/maps"; }

std::string WhyNotMappingName(std::string_view name) {
  constexpr std::size_t kMostCharacters = 40;
  if (name.empty()) return "it is empty";
  if (name == kGuessedMapping) return "\"auto\" stands for the guess";
  if (Trimmed(name) != name) return "a blank stands at its end";
  if (name.find_first_of("/.") != std::string_view::npos) return "it has a slash or a point";
  if (Printable(name) != name) return "it has a character that cannot be printed";
  if (FirstCharacters(name, kMostCharacters) != name) return "it is longer than 40 characters";
  return {};
}

std::vector<std::string> MappingNames(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const fs::path path = entry->path();
    std::error_code vanished;
    if (path.extension() != kSuffix || !entry->is_regular_file(vanished)) continue;
    if (WhyNotMappingName(path.stem().string()).empty()) names.push_back(path.stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::optional<FileProblem> LoadMapping(const std::string& folder, const std::string& name,
                                       KeptMapping& kept) {
  if (auto problem = BadName(name, FileProblem::Kind::kBadData)) return problem;
  std::string text;
  const std::string path = PathOf(folder, name);
  if (auto problem = ReadFile(path, kLongestMapping + 1, text)) return problem;
  return ReadMapping(text, path, kept);
}

std::optional<FileProblem> StoreMapping(const std::string& folder, const std::string& name,
                                        const KeptMapping& kept) {
  if (auto problem = BadName(name, FileProblem::Kind::kCannotWrite)) return problem;
  std::error_code error;  // of a folder that cannot be had the write tells
  fs::create_directories(folder, error);
  return WriteFile(PathOf(folder, name), MappingText(kept));
}

std::optional<FileProblem> DeleteMapping(const std::string& folder, const std::string& name) {
  if (auto problem = BadName(name, FileProblem::Kind::kCannotWrite)) return problem;
  std::error_code error;
  const std::string path = PathOf(folder, name);
  if (fs::remove(path, error)) return std::nullopt;
  return FileProblem{FileProblem::Kind::kCannotWrite, path, 0,
                     error ? error.message() : std::string("there is no such mapping")};
}

}  // namespace q40
