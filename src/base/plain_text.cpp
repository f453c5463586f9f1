#include "base/plain_text.h"

#include <algorithm>
#include <utility>

#include "base/hex.h"

namespace q40 {

namespace {

struct Character {
  char32_t code = 0;
  std::size_t length = 0;  // 0: no UTF-8 character begins here
};

Character FirstCharacter(std::string_view text) {
  // By length: bits of the lead byte, and the smallest code that needs so many bytes.
  struct Form {
    unsigned lead, mask;
    char32_t smallest;
  };
  constexpr Form kForms[] = {
      {0x00, 0x80, 0}, {0xC0, 0xE0, 0x80}, {0xE0, 0xF0, 0x800}, {0xF0, 0xF8, 0x10000}};
  constexpr char32_t kLargest = 0x10FFFF;
  const auto lead = static_cast<unsigned char>(text.front());
  for (std::size_t length = 1; length <= std::size(kForms); ++length) {
    const Form& form = kForms[length - 1];
    if ((lead & form.mask) != form.lead) continue;
    char32_t code = lead & ~form.mask;
    for (std::size_t i = 1; i < length; ++i) {
      const unsigned next = i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
      if ((next & 0xC0U) != 0x80U) return {};
      code = code << 6U | (next & 0x3FU);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < form.smallest || code > kLargest || surrogate ? Character{}
                                                                : Character{code, length};
  }
  return {};
}

// What a terminal obeys instead of showing: the control characters, and the marks that begin a line
// or turn its direction.
bool IsControl(char32_t code) {
  constexpr std::pair<char32_t, char32_t> kRanges[] = {{0x00, 0x1F},     {0x7F, 0x9F},
                                                       {0x61C, 0x61C},   {0x200E, 0x200F},
                                                       {0x2028, 0x202E}, {0x2066, 0x2069}};
  return std::any_of(std::begin(kRanges), std::end(kRanges),
                     [&](auto& range) { return code >= range.first && code <= range.second; });
}

}  // namespace

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = FirstCharacter(text).length;
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::size_t CharacterLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t expected = lead >= 0xF0U ? 4 : lead >= 0xE0U ? 3 : lead >= 0xC0U ? 2 : 1;
  std::size_t length = 1;
  while (length < expected && length < text.size() &&
         (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
    ++length;
  }
  return length;
}

std::string FirstCharacters(std::string_view text, std::size_t count) {
  std::size_t length = 0;
  for (; count > 0 && length < text.size(); --count) length += CharacterLength(text.substr(length));
  return std::string(text.substr(0, length));
}

std::string Printable(std::string_view text) {
  std::string printable;
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    const std::string_view bytes = text.substr(0, std::max<std::size_t>(character.length, 1));
    text.remove_prefix(bytes.size());
    if (character.length > 0 && !IsControl(character.code)) {
      printable += bytes;
      continue;
    }
    for (const char byte : bytes)
      printable += "\\x" + HexByteText(static_cast<unsigned char>(byte));
  }
  return printable;
}

std::string Quoted(std::string_view text) {
  constexpr std::size_t kLongest = 32;
  const std::string head = FirstCharacters(text, kLongest);
  std::string quoted(1, '"');
  quoted += Printable(head);
  if (head.size() < text.size()) quoted += "...";
  quoted += '"';
  return quoted;
}

}  // namespace q40
