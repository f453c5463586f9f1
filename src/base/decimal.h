// Frequencies and other decimal numbers, held as integers so that no binary fraction ever decides a
// digit. The C locale everywhere: the decimal sign is a point.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace q40 {

// A frequency or an offset in units of 100 Hz: 145.5 MHz is 1 455 000. Valid: 0..kLargestFrequency.
using Units100Hz = std::int32_t;

inline constexpr Units100Hz kUnitsPerMhz = 10'000;
inline constexpr Units100Hz kLargestFrequency = 99'999'999;  // 9999.9999 MHz

// 8 decimal digits, four of whole MHz and four decimals, as the radio stores them.
std::array<char, 8> FrequencyDigits(Units100Hz frequency);

// Formatted "###.0000": no leading zeros, 145.5000, 45.5000, .0000.
std::string FrequencyText(Units100Hz frequency);

// Formatted "#0.0000": at least one digit before the point, 0.6000, 12.5000.
std::string OffsetText(Units100Hz offset);

// The number at the start of a text in ten-thousandths, rounded half up: blanks, a sign, digits and
// one point; the rest is ignored ("88.5Hz" is 885 000, "abc" is 0). Saturates far above any
// frequency.
std::int64_t LeadingNumber(std::string_view text);
inline constexpr std::int64_t kNumberScale = 10'000;

// LeadingNumber as MHz. A value that eight digits cannot hold (negative, 10 000 MHz and more) is 0.
Units100Hz LeadingFrequency(std::string_view text);

// A frequency text without the star of a skipped channel.
constexpr std::string_view WithoutStar(std::string_view text) {
  return text.starts_with('*') ? text.substr(1) : text;
}

// Text without the blanks (spaces, tabs) at its ends.
std::string_view Trimmed(std::string_view text);

}  // namespace q40
