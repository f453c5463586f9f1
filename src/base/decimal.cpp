#include "base/decimal.h"

#include "base/digits.h"

namespace q40 {
namespace {

constexpr std::int64_t kSaturated = 1'000'000'000'000'000;
constexpr int kDecimals = 4;

std::string Fraction(Units100Hz frequency) {
  const auto digits = FrequencyDigits(frequency);
  return '.' + std::string(digits.end() - kDecimals, digits.end());
}

}  // namespace

std::array<char, 8> FrequencyDigits(Units100Hz frequency) {
  std::array<char, 8> digits{};
  for (std::size_t place = digits.size(); place > 0; --place) {
    digits[place - 1] = static_cast<char>('0' + frequency % 10);
    frequency /= 10;
  }
  return digits;
}

std::string FrequencyText(Units100Hz frequency) {
  const Units100Hz mhz = frequency / kUnitsPerMhz;
  return (mhz == 0 ? std::string() : std::to_string(mhz)) + Fraction(frequency);
}

std::string OffsetText(Units100Hz offset) {
  return std::to_string(offset / kUnitsPerMhz) + Fraction(offset);
}

std::int64_t LeadingNumber(std::string_view text) {
  text = Trimmed(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);

  std::int64_t value = 0;
  int decimals = -1;  // -1: still before the point
  for (const char c : text) {
    if (c == '.' && decimals < 0) {
      decimals = 0;
      continue;
    }
    if (!IsDigit(c)) break;
    if (decimals == kDecimals) {
      value += c >= '5' ? 1 : 0;  // the fifth decimal rounds, later ones do not matter
      break;
    }
    if (value < kSaturated) value = value * 10 + (c - '0');
    if (decimals >= 0) ++decimals;
  }
  for (int missing = decimals < 0 ? 0 : decimals; missing < kDecimals; ++missing) {
    if (value < kSaturated) value *= 10;
  }
  return negative ? -value : value;
}

Units100Hz LeadingFrequency(std::string_view text) {
  const std::int64_t value = LeadingNumber(text);
  return value < 0 || value > kLargestFrequency ? 0 : static_cast<Units100Hz>(value);
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace q40
