// Hexadecimal text, the form in which radio bytes travel and are stored: two digits a byte, high
// digit first, written in upper case. Every reader here is total: letter case does not matter and a
// character that is no hexadecimal digit reads as 0.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace q40 {

// "0".."F" to "0000".."1111", most significant bit first.
std::string HexDigitToBits(char digit);

// "0000".."1111" to "0".."F". Any character but "1" counts as a clear bit.
char BitsToHexDigit(std::string_view bits);

bool IsHexDigit(char c);
int HexDigitValue(char digit);

// Value 0..255 of the two digits at `offset`. Digits past the end of the text read as 0.
int HexByteValue(std::string_view digits, std::size_t offset);

// 0..255 as two upper-case digits.
std::array<char, 2> HexByte(int value);
std::string HexByteText(int value);

// ASCII only; other characters stay.
char UpperCase(char c);
std::string UpperCase(std::string_view text);

}  // namespace q40
