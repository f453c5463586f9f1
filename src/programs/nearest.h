// What a misspelled word is meant to be.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace q40 {

// The word of the list that is nearest to `word`, letter case apart: one that begins with it, or one
// that a few slips (a letter more, less, wrong, or two exchanged) make of it. No value when none is near.
std::optional<std::string> Nearest(std::string_view word, const std::vector<std::string>& words);

}  // namespace q40
