// import --map: lists of channels that others have made.
#pragma once

#include <optional>
#include <string>

#include "programs/ctl/commands.h"

namespace q40 {

class Product;

struct OtherList {
  std::optional<std::string> map;  // "auto", a kept name, or a file; none: the program's own list
  std::string first = "0";
  bool only_fm = false;
  bool only_bands = false;
  bool replace = false;
  bool print_map = false;
};

void AddOtherListOptions(CLI::App& command, OtherList& arguments);

// Prints the mapping that would be used on the list at `path`; imports nothing. The exit code.
int PrintMapping(CommandContext& context, const std::string& path, const OtherList& arguments);

// Takes the list into the document and stores it in the product, which is prepared; tells what became of
// every row. The exit code.
int ImportOtherList(CommandContext& context, const std::string& path, const OtherList& arguments,
                    CloneData& document, Product& product);

}  // namespace q40
