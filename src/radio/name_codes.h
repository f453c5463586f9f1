// The radio's character set for channel names, one byte a character.
//
//   code        character          code        character
//   30..39      0..9               5A          \ (backslash)
//   3A..53      A..Z               5B          =
//   54          blank              5C          (      also written for ")"
//   55 56 57    * # +              5D          )      read, never written
//   58 59       - /                5E 5F       $ _
//                                  60..71      ?      written as 6A
//
// Reading and writing are not each other's inverse, and that is how the radio is served: ")" comes
// back as "(", the signs : ; < > @ come back as the digits 3 4 5 7 9, and lower-case letters and
// all other characters are written as 00, which is no character at all.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "radio/channel_record.h"

namespace q40 {

// Two hexadecimal digits for one character. "(" is "5c", the one code with a lower-case digit.
std::array<char, 2> NameCodeDigits(char32_t character);

// Character of a code 0..255; '\0' when the code stands for none.
char NameCharacter(int code);

// 12 digits for the first 6 characters of a name, padded with "00".
std::array<char, 2 * kNameLength> NameDigits(std::string_view name);

}  // namespace q40
