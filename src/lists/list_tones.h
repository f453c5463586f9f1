// CTCSS tones and DCS codes as lists write them.
#pragma once

#include <string>
#include <string_view>

namespace q40 {

struct ToneItem {
  enum class Kind : unsigned char { kNone, kCtcss, kDcs, kUnfit };
  Kind kind = Kind::kNone;
  std::string text;  // entry of the radio's list, "88.5Hz" or "023"; kUnfit: a sentence why not

  [[nodiscard]] bool Is(Kind k) const { return kind == k; }
};
// `bare_is_dcs`: a number that does not say what it is is a code.
ToneItem ToneIn(std::string_view item, bool bare_is_dcs);

}  // namespace q40
