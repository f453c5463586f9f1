// The port number file: any content is read as a port from 1 to 14, and a number comes back. The
// input is the content.
#include "files/port_number_file.h"
#include "support/temp_folder.h"
#include "target.h"

namespace q40::fuzz {
namespace {

constexpr int kHighest = 14;
constexpr std::size_t kLongestFile = 256;  // nobody reads further

// What the header of the file promises, once more: blanks, digits, blanks, up to a comma or the
// line's end.
int Expected(std::string_view text) {
  std::size_t at = 0;
  const auto take = [&](std::string_view set) {
    const std::size_t start = at;
    at = std::min(text.find_first_not_of(set, at), text.size());
    return text.substr(start, at - start);
  };
  take(" \t");
  take("0");
  const std::string_view digits = take("0123456789");
  take(" \t");
  if (at < text.size() && std::string_view(",\r\n").find(text[at]) == std::string_view::npos) {
    return kDefaultPortNumber;
  }
  for (int number = 1; number <= kHighest; ++number) {
    if (digits == std::to_string(number)) return number;
  }
  return kDefaultPortNumber;
}

}  // namespace

void Run(Input input) {
  const std::string_view text = input.Rest();
  const int number = PortNumberIn(text);
  Check(number == Expected(text), "the number is what stands there, or port 1");
  Check(PortNumberIn(PortNumberText(number)) == number, "a number comes back from its text");

  static const test::TempFolder kFolder;
  static const PortNumberFile kFile(kFolder.path(), kFolder / "user");
  test::Store(kFolder / kPortNumberFile, text);
  Check(kFile.Read() == PortNumberIn(text.substr(0, kLongestFile)), "the file gives its number");
  kFile.Write(number);
  Check(
      test::Content(kFolder / kPortNumberFile) == PortNumberText(number) && kFile.Read() == number,
      "a number that was written is read");
}

}  // namespace q40::fuzz
