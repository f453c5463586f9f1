#include "programs/nearest.h"

#include <algorithm>

#include "base/hex.h"

namespace q40 {
namespace {

// The smallest number of slips that make b of a.
std::size_t Slips(std::string_view a, std::string_view b) {
  // slips[i][j]: between the first i characters of a and the first j of b.
  std::vector<std::vector<std::size_t>> slips(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        slips[i][j] = i + j;
        continue;
      }
      const std::size_t wrong = a[i - 1] == b[j - 1] ? 0 : 1;
      slips[i][j] =
          std::min({slips[i - 1][j] + 1, slips[i][j - 1] + 1, slips[i - 1][j - 1] + wrong});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        slips[i][j] = std::min(slips[i][j], slips[i - 2][j - 2] + 1);
      }
    }
  }
  return slips[a.size()][b.size()];
}

}  // namespace

std::optional<std::string> Nearest(std::string_view word, const std::vector<std::string>& words) {
  constexpr std::size_t kLettersPerSlip = 3;
  constexpr std::size_t kLongest = 64;  // longer than every word; the table is its square
  const std::string typed = UpperCase(word);
  const std::size_t letters = typed.size() - std::min(typed.find_first_not_of('-'), typed.size());
  if (letters < 2 || letters > kLongest) return std::nullopt;
  std::size_t allowed = std::max<std::size_t>(1, letters / kLettersPerSlip);
  std::optional<std::string> nearest;
  for (const std::string& candidate : words) {
    const std::string meant = UpperCase(candidate);
    const std::size_t slips = meant.starts_with(typed) ? 0 : Slips(typed, meant);
    if (slips > allowed || (nearest && slips == allowed)) continue;
    nearest = candidate;
    allowed = slips;
  }
  return nearest;
}

}  // namespace q40
