// rxq40ctl as a process of its own.
#pragma once

#include <string>
#include <vector>

#include "support/process.h"

namespace q40::test {

inline ProcessResult Ctl(std::vector<std::string> words, const ProcessOptions& options = {}) {
  words.insert(words.begin(), Program("rxq40ctl"));
  return Run(words, options);
}

inline bool Says(const ProcessResult& result, const std::string& words) {
  return result.err.find(words) != std::string::npos;
}

}  // namespace q40::test
