// A table of docs/faults.md, which the test that finds it out writes between two marks.
#pragma once

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace q40::test {

// The heading of a table of so many runs, by fault and by exchange.
template <typename Names>
std::string TableHead(int runs, const Names& exchanges) {
  std::string text = std::to_string(runs) + " runs:\n\n| fault |";
  std::string line = "\n| --- |";
  for (const char* name : exchanges) {
    text += " at the " + std::string(name) + " |";
    line += " --- |";
  }
  return text + line + '\n';
}

inline void CheckTable(const std::string& name, const std::string& table) {
  const std::string path = std::string(PROJECT_FOLDER) + "/docs/faults.md";
  const std::string start = "<!-- " + name + " -->\n";
  std::string text = Content(path);
  const std::size_t at = text.find(start) + start.size();
  const std::size_t end = text.find("<!-- end -->", at);
  ASSERT_TRUE(at >= start.size() && end != std::string::npos)
      << name << " has no place in " << path;
  EXPECT_EQ(text.substr(at, end - at), table)
      << "the same test with RXQ40_WRITE_DOCS=1 writes it anew";
  if (std::getenv("RXQ40_WRITE_DOCS") != nullptr) Store(path, text.replace(at, end - at, table));
}

}  // namespace q40::test
