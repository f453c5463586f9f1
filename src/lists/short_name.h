// Names of any length as six characters that the radio keeps.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace q40 {

// With letters that have no accents: "Zürich" is "Zuerich". Characters of other scripts stay.
std::string LatinLetters(std::string_view text);

// Capitals, and of other characters only those that the radio keeps; blanks where others were. What is
// longer than six characters loses, until it fits: what stands behind a call; blanks; signs; vowels but
// the first letter, each from the end; then its end.
std::string ShortName(std::string_view text);
// Whether the name is the text but for small letters.
bool IsSameName(std::string_view name, std::string_view text);

// The names that are given, so that one that was shortened is given once.
class NamesGiven {
 public:
  void Add(const std::string& name) { names_.insert(name); }
  // The name, or the first of it with a number at its end ("HAMBR2") that is not given yet; given then.
  std::string Distinct(const std::string& name);

 private:
  std::set<std::string> names_;
};

}  // namespace q40
