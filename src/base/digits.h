// Decimal digits in texts.
#pragma once

#include <algorithm>
#include <string_view>

namespace q40 {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// At least one character, and digits only.
constexpr bool AreDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

}  // namespace q40
