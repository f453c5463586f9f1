// The documents of the project as lines, and the examples in them.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/decimal.h"
#include "support/temp_folder.h"

namespace q40::test {

using Lines = std::vector<std::string>;

inline const std::string kFolder = PROJECT_FOLDER "/";
inline const std::string kExamples = kFolder + "docs/examples/";

inline Lines LinesOf(const std::string& text) {
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

inline std::string Joined(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  return text;
}

struct Fence {
  std::string kind;  // behind the three quotes
  Lines lines;
};

// The fences of a document whose kind is, or begins with, these words; without words all.
inline std::vector<Fence> Fences(const std::string& document, const std::string& kind) {
  std::vector<Fence> fences;
  bool inside = false;
  for (const std::string& line : LinesOf(Content(kFolder + document))) {
    if (!line.starts_with("```")) {
      if (inside) fences.back().lines.push_back(line);
      continue;
    }
    inside = !inside;
    if (inside) fences.push_back({line.substr(3), {}});
  }
  EXPECT_FALSE(inside) << document << ": a fence is never closed";
  if (kind.empty()) return fences;
  std::erase_if(fences, [&](auto& fence) { return !(fence.kind + ' ').starts_with(kind + ' '); });
  EXPECT_FALSE(fences.empty()) << document << ": no example of the kind " << kind;
  return fences;
}

// Lines of all fences of a kind.
inline Lines FenceLines(const std::string& document, const std::string& kind) {
  Lines lines;
  for (const Fence& fence : Fences(document, kind))
    lines.insert(lines.end(), fence.lines.begin(), fence.lines.end());
  return lines;
}

inline Lines Words(const std::string& text, char separator) {
  Lines words;
  std::istringstream stream(text);
  for (std::string word; std::getline(stream, word, separator);) words.emplace_back(Trimmed(word));
  std::erase(words, "");
  return words;
}

}  // namespace q40::test
