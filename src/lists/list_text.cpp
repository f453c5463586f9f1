#include "lists/list_text.h"

#include <algorithm>

#include "base/plain_text.h"

namespace q40 {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

struct Mark {
  std::string_view bytes;
  ListEncoding encoding;
};
constexpr Mark kMarks[] = {{"\xEF\xBB\xBF", ListEncoding::kUtf8},
                           {"\xFF\xFE", ListEncoding::kUtf16Le},
                           {"\xFE\xFF", ListEncoding::kUtf16Be}};

std::string_view MarkOf(ListEncoding encoding) {
  const auto* const mark = std::find_if(std::begin(kMarks), std::end(kMarks),
                                        [&](const Mark& m) { return m.encoding == encoding; });
  return mark == std::end(kMarks) ? std::string_view() : mark->bytes;
}

// The letters, digits and separators of a list have a zero byte in UTF-16.
ListEncoding ByZeros(std::string_view bytes) {
  constexpr std::size_t kLookedAt = 4096;
  std::size_t zeros[2] = {0, 0};
  const std::size_t count = std::min(bytes.size(), kLookedAt);
  for (std::size_t i = 0; i < count; ++i) zeros[i % 2] += bytes[i] == '\0' ? 1 : 0;
  if (4 * zeros[1] > count && zeros[0] == 0) return ListEncoding::kUtf16Le;
  if (4 * zeros[0] > count && zeros[1] == 0) return ListEncoding::kUtf16Be;
  return ListEncoding::kGuess;
}

ListEncoding EncodingOf(std::string_view bytes) {
  for (const Mark& mark : kMarks) {
    if (bytes.starts_with(mark.bytes)) return mark.encoding;
  }
  const ListEncoding by_zeros = ByZeros(bytes);
  if (by_zeros != ListEncoding::kGuess) return by_zeros;
  return IsUtf8(bytes) ? ListEncoding::kUtf8 : ListEncoding::kLatin1;
}

void Append(std::string& text, char32_t code) {
  const auto put = [&](char32_t bits) { text += static_cast<char>(bits); };
  const auto tail = [&](unsigned shift) { put(0x80U | ((code >> shift) & 0x3FU)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0U | (code >> 6U));
    tail(0);
  } else if (code < 0x10000) {
    put(0xE0U | (code >> 12U));
    tail(6);
    tail(0);
  } else {
    put(0xF0U | (code >> 18U));
    tail(12);
    tail(6);
    tail(0);
  }
}

std::string FromUtf16(std::string_view bytes, bool little_end_first) {
  const auto unit = [&](std::size_t i) -> char32_t {
    if (i + 1 >= bytes.size()) return kReplacement;
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    return little_end_first ? second * 256U + first : first * 256U + second;
  };
  const auto is_half = [](char32_t code, char32_t start) {
    return code >= start && code < start + 0x400;
  };
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    char32_t code = unit(i);
    if (is_half(code, 0xD800) && is_half(unit(i + 2), 0xDC00)) {
      code = 0x10000 + ((code - 0xD800) << 10U) + (unit(i + 2) - 0xDC00);
      i += 2;
    } else if (is_half(code, 0xD800) || is_half(code, 0xDC00)) {
      code = kReplacement;
    }
    Append(text, code);
  }
  return text;
}

std::string FromLatin1(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) Append(text, static_cast<unsigned char>(c));
  return text;
}

std::string FromUtf8(std::string_view bytes) {
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string text;
  while (!bytes.empty()) {
    const std::string_view character = bytes.substr(0, CharacterLength(bytes));
    if (IsUtf8(character)) {
      text += character;
    } else {
      Append(text, kReplacement);
    }
    bytes.remove_prefix(character.size());
  }
  return text;
}

}  // namespace

ListText DecodeList(std::string_view bytes, ListEncoding wanted) {
  const ListEncoding encoding = wanted == ListEncoding::kGuess ? EncodingOf(bytes) : wanted;
  const std::string_view mark = MarkOf(encoding);
  if (bytes.starts_with(mark)) bytes.remove_prefix(mark.size());
  switch (encoding) {
    case ListEncoding::kUtf16Le: return {FromUtf16(bytes, true), encoding};
    case ListEncoding::kUtf16Be: return {FromUtf16(bytes, false), encoding};
    case ListEncoding::kLatin1: return {FromLatin1(bytes), encoding};
    default: return {FromUtf8(bytes), encoding};
  }
}

}  // namespace q40
