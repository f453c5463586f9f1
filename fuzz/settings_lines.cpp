// Settings lines: decode, encode, decode again. The input is two bytes that mark a memory channel
// as in use (or none), then up to four lines of any length.
#include "base/hex.h"
#include "document/clone_image.h"
#include "target.h"

namespace q40::fuzz {
namespace {

// Bytes that no control owns and that go back as they came, by line.
struct CarriedBytes {
  std::size_t line;
  std::size_t first;
  std::size_t last;
};
constexpr CarriedBytes kCarried[] = {{0, 3, 3},  {1, 7, 7},  {1, 10, 11}, {1, 13, 14},
                                     {2, 8, 15}, {3, 0, 11}, {3, 14, 15}};

bool InRange(const SettingsValues& values) {
  const auto fields = Settings();
  return std::all_of(fields.begin(), fields.end(), [&](const Setting& field) {
    return values.*field.value >= 0 && values.*field.value <= field.top;
  });
}

void CheckCarried(const CloneImage& read, const CloneImage& written) {
  for (const CarriedBytes& bytes : kCarried) {
    const std::size_t length = 2 * (bytes.last - bytes.first + 1);
    const std::string& line = read.SettingsLine[bytes.line];
    if (line.size() != kBlockDigits) continue;
    Check(UpperCase(line.substr(2 * bytes.first, length)) ==
              written.SettingsLine[bytes.line].substr(2 * bytes.first, length),
          "a byte without a control goes back as it came");
  }
}

}  // namespace

void Run(Input input) {
  CloneImage image;
  const int channel = 256 * input.Byte() + input.Byte();
  if (channel < kMemoryChannelCount) image.ChannelInUse[static_cast<std::size_t>(channel)] = true;
  for (std::string& line : image.SettingsLine) line = input.Line();
  const CloneImage read = image;

  const SettingsValues values = DecodeSettings(image);
  Check(InRange(values), "no value lies outside its range");
  EncodeSettings(values, image);
  for (const std::string& line : image.SettingsLine) {
    Check(line.size() == kBlockDigits, "a settings line has 32 digits");
  }
  CheckCarried(read, image);

  const CloneImage written = image;
  Check(DecodeSettings(image) == values, "the values come back");
  Check(image == written, "lines that were encoded need no repair");
  EncodeSettings(values, image);
  Check(image == written, "lines that were encoded are encoded alike again");
}

}  // namespace q40::fuzz
