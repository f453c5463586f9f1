#include "image/plain_text.h"

#include "image/hex.h"
#include "image/name_codes.h"

namespace q40 {

std::string Printable(std::string_view text) {
  constexpr unsigned char kFirstPrintable = 0x20;
  constexpr unsigned char kDelete = 0x7F;
  std::string printable;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code < kFirstPrintable || code == kDelete) {
      printable += "\\x" + HexByteText(code);
    } else {
      printable += c;
    }
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
