// The folder in which mappings are kept under names: "maps" in the user's folder of the window and the
// tool, one file a mapping, NAME.map.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lists/mapping.h"

namespace q40 {

// The word for no kept mapping but the guess.
inline constexpr std::string_view kGuessedMapping = "auto";

// `user_folder`: the one that also holds the port's number ("~/.config/rxq40").
std::string MappingFolder(const std::string& user_folder);

// Why a mapping cannot have this name: "a name has no slash". Empty: it can. A name is 1..40
// characters without "/", "." and control characters, no blank at its ends, and not "auto".
std::string WhyNotMappingName(std::string_view name);

// `folder` is that of MappingFolder in each.

// In alphabetical order. Empty too when there is no such folder.
std::vector<std::string> MappingNames(const std::string& folder);
[[nodiscard]] std::optional<FileProblem> LoadMapping(const std::string& folder,
                                                     const std::string& name, KeptMapping& kept);
// Makes the folder when it is needed, and replaces a mapping of that name: ask first.
[[nodiscard]] std::optional<FileProblem> StoreMapping(const std::string& folder,
                                                      const std::string& name,
                                                      const KeptMapping& kept);
[[nodiscard]] std::optional<FileProblem> DeleteMapping(const std::string& folder,
                                                       const std::string& name);

}  // namespace q40
