// The words that people write into lists.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace q40 {

char LowerCase(char c);  // ASCII only
// Small ASCII letters and digits of a text; everything else is left out.
std::string BareWord(std::string_view text);
// Nothing, or a word that says nothing: "-", "off", "none", "0".
bool SaysNone(std::string_view item);

enum class Direction : unsigned char { kSimplex, kMinus, kPlus, kSplit, kNoTransmit };
std::optional<Direction> DirectionIn(std::string_view item);

enum class ToneKind : unsigned char { kNone, kSent, kSquelch, kDcs };
std::optional<ToneKind> ToneKindIn(std::string_view item);

// What a column of modes says. An item may name several ("FM/DMR").
struct ModeItem {
  bool known = false;
  bool fm = false;
  bool narrow = false;
};
ModeItem ModeIn(std::string_view item);
// "Narrow" or "Normal".
std::optional<std::string_view> WidthIn(std::string_view item);
// "Lo", "Mid" or "Hi".
std::optional<std::string_view> PowerIn(std::string_view item);
// Of a DCS code, not inverted: "NN", "normal".
bool SaysNormal(std::string_view item);
// "On" or "Off".
std::optional<std::string_view> SkipIn(std::string_view item);

}  // namespace q40
