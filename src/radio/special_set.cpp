#include "radio/special_set.h"

namespace q40 {

PresentPair PresentByFrequency(const SpecialSet& set) {
  return {set[kPhRow].Frequency() != 0, set[kPlRow].Frequency() != 0};
}

bool EffectivelyPresent(const SpecialSet& set, PresentPair present, int k) {
  if (k < kPhRow) return true;
  return present[static_cast<std::size_t>(k - kPhRow)] &&
         set[static_cast<std::size_t>(k)].Frequency() != 0;
}

}  // namespace q40
