// Dialer memories: block to text to block, and text to block. The input is a memory's number and
// the digits, taken as a text as well.
#include "base/hex.h"
#include "radio/dial_text.h"
#include "target.h"

namespace q40::fuzz {
namespace {

std::string Block(const DialTexts& texts, int index) {
  const std::string block = MakeDialData(texts, index);
  Check(block.size() == kBlockDigits && std::all_of(block.begin(), block.end(), IsHexDigit),
        "a block has 32 digits");
  return block;
}

}  // namespace

void Run(Input input) {
  const int index = input.Below(kDialCount);
  const auto row = static_cast<std::size_t>(index);
  const std::string_view digits = input.Rest();
  DialTexts texts;
  texts.fill("0");
  UpDateDialData(texts, digits, index);
  Check(texts[row].size() <= kDialLength &&
            texts[row].find_first_not_of("0123456789ABCD*#") == std::string::npos,
        "a dialer text has up to 16 characters of its set");
  Check(std::count(texts.begin(), texts.end(), "0") >= kDialCount - 1,
        "the other memories stay as they are");

  // Padding inside a block closes up when it is read, so the first block may differ from the
  // digits; from then on nothing changes.
  const DialTexts read = texts;
  const std::string block = Block(texts, index);
  UpDateDialData(texts, block, index);
  Check(texts == read, "a text comes back from its block");

  // Typed texts may be longer and hold what the radio does not know.
  texts[row] = digits;
  const std::string typed = Block(texts, index);
  UpDateDialData(texts, typed, index);
  Check(Block(texts, index) == typed, "a block comes back from its text");
}

}  // namespace q40::fuzz
