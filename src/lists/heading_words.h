// What a heading can mean, by its words.
#pragma once

#include <string_view>
#include <vector>

#include "lists/meaning.h"

namespace q40 {

struct HeadingMeaning {
  Meaning meaning;  // kIgnored: the words say that nothing here is of use
  int words = 0;    // how many of them say so: two say more than one
};
// The likeliest first; empty: no word is known.
std::vector<HeadingMeaning> MeaningsOfHeading(std::string_view heading);

}  // namespace q40
