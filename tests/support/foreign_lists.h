// Lists that others have made, and meanings of their columns, from short texts.
#pragma once

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "lists/foreign_list.h"
#include "lists/meaning.h"

namespace q40::test {

inline ForeignList Read(std::string_view bytes, const ListForm& form = {}) {
  ForeignList list;
  const auto problem = ReadForeignList(bytes, "the list", form, list);
  EXPECT_FALSE(problem) << problem->Message();
  return list;
}

inline std::string Joined(const std::vector<std::string>& items, char with) {
  std::string text;
  for (const std::string& item : items) text += (text.empty() ? "" : std::string(1, with)) + item;
  return text;
}

// The meanings of the columns, by their names.
inline std::string Names(const ColumnMeanings& meanings) {
  std::vector<std::string> names;
  for (const Meaning meaning : meanings) names.emplace_back(RowOf(meaning).name);
  return Joined(names, ' ');
}
inline ColumnMeanings Meanings(const std::string& names) {
  ColumnMeanings meanings;
  std::istringstream in(names);
  for (std::string name; in >> name;) meanings.push_back(MeaningNamed(name).value());
  return meanings;
}

}  // namespace q40::test
