// Numbers of foreign lists, with any unit and either decimal sign.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace q40 {

// A number with what stands behind it.
struct ListNumber {
  std::int64_t millionths = 0;  // without its sign; rounded at the sixth decimal
  char sign = '\0';             // '+', '-', or '\0': none is written
  std::string unit;             // small letters, "mhz"; mostly empty
};
// "145.6125", "145,6125", "-0,6 MHz", "438.725.000". One point or comma begins the decimals; several
// part groups of three digits, and only the last one, when it is the other sign, begins decimals.
std::optional<ListNumber> NumberIn(std::string_view item);

inline constexpr std::int64_t kHzPerMhz = 1'000'000;
// In Hz. What has no unit is MHz, kHz or Hz by its size: frequencies are below 10 000 MHz, ...
std::optional<std::int64_t> HzOfFrequency(const ListNumber& number);
// ... and offsets below 100 MHz.
std::optional<std::int64_t> HzOfOffset(const ListNumber& number);
// Takes the sign at the start of a text, in whatever way a minus is written; '\0': there is none.
char TakeSign(std::string_view& text);

// In MHz with four decimals, or with six where four do not suffice.
std::string MhzText(std::int64_t hz);

// Memory channel 0..209: "12", "012", "D3".
std::optional<int> ChannelIn(std::string_view item);

}  // namespace q40
