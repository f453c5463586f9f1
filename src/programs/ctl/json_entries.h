// A JSON text of two levels, place and name, taken apart without ever holding more of it than it says.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_problem.h"
#include "programs/ctl/json_values.h"

namespace q40 {

// Longer than any document with every channel in use, several times over.
inline constexpr std::size_t kLongestJson = 4U << 20U;

struct JsonEntry {
  std::string place;
  std::string name;  // empty: the value stands beside the places
  Json value;        // a number, text, true, false or null
};

// "/Access/CTCSS ~1 DCS": the way to a value, as JSON pointers are written. For messages: without control
// characters, and cut to a length that they can bear.
std::string PointerTo(std::string_view place, std::string_view name);

struct JsonReading {
  std::vector<JsonEntry> entries;  // in the order of the text
  std::optional<FileProblem> problem;
};
// Refuses what is no JSON, what is nested more deeply, lists, and a value that is named twice. `file` only
// names it in the problem.
JsonReading ReadJson(std::string_view text, const std::string& file);

}  // namespace q40
