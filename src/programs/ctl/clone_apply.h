// Takes what a JSON text names into a clone file, and nothing else.
//
// What the file holds already is never refused. What is to change must be a value that the edit dialog or
// the settings pages could make. Bytes (carried ones, stored data) are set first and as they are; so a
// document that was printed from a file sets all that this file holds.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_problem.h"
#include "programs/ctl/clone_json.h"
#include "programs/ctl/json_entries.h"

namespace q40 {

struct Applied {
  // What is wrong with the text: unknown names, wrong types. When there is anything, nothing was applied.
  std::vector<std::string> problems;
  // What did not fit and was left as it was, and what the file will not keep as it is named.
  std::vector<std::string> notes;
  std::string text;  // the file afterwards
  int applied = 0;   // values that fitted
  // Of the file afterwards, as for one that is opened.
  std::optional<FileProblem> odd_digit;
};

Applied ApplyJson(const OpenedClone& clone, const std::vector<JsonEntry>& entries);

}  // namespace q40
