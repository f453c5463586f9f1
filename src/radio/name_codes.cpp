#include "radio/name_codes.h"

#include <algorithm>

#include "base/hex.h"
#include "base/plain_text.h"

namespace q40 {
namespace {

struct Sign {
  char character;
  int code;
};

// Signs that are read and written alike.
constexpr Sign kSigns[] = {{' ', 0x54}, {'*', 0x55}, {'#', 0x56},  {'+', 0x57},
                           {'-', 0x58}, {'/', 0x59}, {'\\', 0x5A}, {'=', 0x5B},
                           {'(', 0x5C}, {'$', 0x5E}, {'_', 0x5F}};

constexpr int kDigitCode = 0x30;        // '0'
constexpr int kLetterOffset = 7;        // 'A' is 0x3A
constexpr int kFirstLetterCode = 0x3A;  // 'A'
constexpr int kLastLetterCode = 0x53;   // 'Z'
constexpr int kQuestionCode = 0x6A;
constexpr int kFirstQuestionCode = 0x60;
constexpr int kLastQuestionCode = 0x71;

int NameCode(char32_t character) {
  if (character >= U'0' && character <= U'9') return static_cast<int>(character);
  const auto* const sign = std::find_if(std::begin(kSigns), std::end(kSigns), [&](const Sign& s) {
    return static_cast<char32_t>(s.character) == character;
  });
  if (sign != std::end(kSigns)) return sign->code;
  if (character == U')') return 0x5C;  // Intended: comes back as "(".
  if (character == U'?') return kQuestionCode;
  // Letters, and with them the signs : ; < > @ that stand between the digits and the letters.
  if (character > U'9' && character <= U'Z') return static_cast<int>(character) - kLetterOffset;
  return 0;
}

}  // namespace

std::array<char, 2> NameCodeDigits(char32_t character) {
  if (character == U'(') return {'5', 'c'};
  return HexByte(NameCode(character));
}

char NameCharacter(int code) {
  if (code >= kDigitCode && code < kFirstLetterCode) return static_cast<char>(code);
  if (code >= kFirstLetterCode && code <= kLastLetterCode) {
    return static_cast<char>(code + kLetterOffset);
  }
  if (code == 0x5D) return ')';
  if (code >= kFirstQuestionCode && code <= kLastQuestionCode) return '?';
  const auto* const sign = std::find_if(std::begin(kSigns), std::end(kSigns),
                                        [&](const Sign& s) { return s.code == code; });
  return sign != std::end(kSigns) ? sign->character : '\0';
}

std::array<char, 2 * kNameLength> NameDigits(std::string_view name) {
  std::array<char, 2 * kNameLength> digits{};
  digits.fill('0');
  for (auto* place = digits.begin(); place != digits.end() && !name.empty(); place += 2) {
    const std::size_t length = CharacterLength(name);
    // A character of several bytes is none that the radio knows; its lead byte is above every code.
    const auto code = NameCodeDigits(static_cast<unsigned char>(name.front()));
    std::copy(code.begin(), code.end(), place);
    name.remove_prefix(length);
  }
  return digits;
}

}  // namespace q40
