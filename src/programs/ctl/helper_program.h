// Another program that does a part of a command: it gets its input whole, and its output is taken whole.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace q40 {

struct HelperResult {
  int code = 0;         // its exit code; kExitInternal when it had none
  std::string output;   // what it has made
  std::string message;  // of a failure: its last words, or why there are none
};

// `command`: the path of the program, then its arguments. A program that has not finished after `limit`
// is killed.
HelperResult RunHelper(const std::vector<std::string>& command, std::string_view input,
                       std::chrono::milliseconds limit = std::chrono::seconds(60));

}  // namespace q40
