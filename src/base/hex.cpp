#include "base/hex.h"

#include <algorithm>

namespace q40 {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr int kBitsPerDigit = 4;

// 0..15, or -1 for a character that is no digit.
constexpr int DigitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

std::string HexDigitToBits(char digit) {
  const int value = HexDigitValue(digit);
  std::string bits(kBitsPerDigit, '0');
  for (int bit = 0; bit < kBitsPerDigit; ++bit) {
    if ((value & (8 >> bit)) != 0) bits[static_cast<std::size_t>(bit)] = '1';
  }
  return bits;
}

char BitsToHexDigit(std::string_view bits) {
  std::size_t value = 0;
  for (const char bit : bits.substr(0, kBitsPerDigit)) value = value * 2 + (bit == '1' ? 1 : 0);
  return kDigits[value];
}

bool IsHexDigit(char c) { return DigitOf(c) >= 0; }

int HexDigitValue(char digit) { return std::max(DigitOf(digit), 0); }

int HexByteValue(std::string_view digits, std::size_t offset) {
  const auto digit = [&](std::size_t at) {
    return at < digits.size() ? HexDigitValue(digits[at]) : 0;
  };
  return digit(offset) * 16 + digit(offset + 1);
}

std::array<char, 2> HexByte(int value) {
  const auto byte = static_cast<unsigned>(value) & 0xFFU;
  return {kDigits[byte >> 4U], kDigits[byte & 0xFU]};
}

std::string HexByteText(int value) {
  const auto digits = HexByte(value);
  return {digits.begin(), digits.end()};
}

char UpperCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) { return UpperCase(c); });
  return upper;
}

}  // namespace q40
