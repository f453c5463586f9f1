#include "radio/dial_text.h"

#include "base/hex.h"

namespace q40 {
namespace {

constexpr std::string_view kCharacters = "0123456789ABCD*#";
constexpr int kFirstCode = 0x30;

}  // namespace

std::string MakeDialData(const DialTexts& texts, int index) {
  std::string data;
  for (const char character : UpperCase(texts[static_cast<std::size_t>(index)])) {
    const auto place = kCharacters.find(character);
    if (place != std::string_view::npos) data += HexByteText(kFirstCode + static_cast<int>(place));
  }
  data.resize(kBlockDigits, '0');
  return data;
}

void UpDateDialData(DialTexts& texts, std::string_view block, int index) {
  std::string& text = texts[static_cast<std::size_t>(index)];
  text.clear();
  for (std::size_t byte = 0; byte < kDialLength; ++byte) {
    const auto place = static_cast<std::size_t>(HexByteValue(block, 2 * byte) - kFirstCode);
    if (place < kCharacters.size()) text += kCharacters[place];
  }
}

}  // namespace q40
