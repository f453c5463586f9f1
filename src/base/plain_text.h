// Texts of unknown origin on their way to a terminal or a message.
#pragma once

#include <string>
#include <string_view>

namespace q40 {

// Control characters (C0, C1, line and direction marks) and bytes that are not UTF-8 as \xNN,
// everything else unchanged.
std::string Printable(std::string_view text);

// Whether all of it is UTF-8.
bool IsUtf8(std::string_view text);

// Length of the character that starts a UTF-8 text (not empty), continuation bytes included. A
// malformed byte counts as one character.
std::size_t CharacterLength(std::string_view text);

// The first `count` characters of a UTF-8 text.
std::string FirstCharacters(std::string_view text, std::size_t count);

// In quotes, printable, and cut to a length that a message can bear.
std::string Quoted(std::string_view text);

}  // namespace q40
