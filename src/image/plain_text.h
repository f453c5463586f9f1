// Texts of unknown origin on their way to a terminal or a message.
#pragma once

#include <string>
#include <string_view>

namespace q40 {

// Control characters (C0, C1, line and direction marks) and bytes that are no UTF-8 as \xNN, everything
// else as it is.
std::string Printable(std::string_view text);

// In quotes, printable, and cut to a length that a message can bear.
std::string Quoted(std::string_view text);

}  // namespace q40
