#include "support/random_document.h"

#include <random>

#include "base/hex.h"
#include "document/defaults.h"
#include "radio/channel_codec.h"
#include "radio/settings_codec.h"

namespace q40::test {
namespace {

int Below(std::mt19937& random, int top) {
  return std::uniform_int_distribution<int>(0, top - 1)(random);
}

// 64 digits of a channel record that the radio could hold: every index inside its list.
std::string RandomRecord(std::mt19937& random, bool in_use) {
  const auto byte = [&](int top) { return HexByteText(Below(random, top)); };
  const auto bcd = [&](int mhz) {
    std::string digits = std::to_string(mhz * 10'000 + Below(random, 2000) * 5);
    return std::string(8 - digits.size(), '0') + digits;
  };
  std::string hex = in_use ? "8" : "0";
  hex += Below(random, 4) == 0 ? '8' : '0';
  hex += byte(3) + (Below(random, 2) != 0 ? "0C" : "01") + (Below(random, 2) != 0 ? "02" : "00");
  hex += bcd(136 + Below(random, 300)) + bcd(Below(random, 9));
  hex += byte(39) + byte(39) + byte(104) + byte(104);
  for (int i = 0; i < 6; ++i) hex += HexByteText(0x30 + Below(random, 36));
  hex +=
      byte(2) + "00" + byte(3) + byte(3) + byte(2) + "00" + byte(2) + byte(3) + byte(2) + byte(11);
  return hex;
}

}  // namespace

CloneData RandomDocument(unsigned seed) {
  std::mt19937 random(seed);
  CloneData document = FreshData();
  ChangeModel(document, Below(random, kModelCount));
  CloneImage& image = document.image;
  image.VersionA = Below(random, 2) != 0;
  for (std::string& line : image.SettingsLine) {
    line.clear();
    for (int i = 0; i < kBlockSize; ++i) line += HexByteText(Below(random, 256));
  }
  document.settings = DecodeSettings(image);
  EncodeSettings(document.settings, image);
  for (const Band band : kBands) {
    SpecialSet& set = SpecialStore(image, band);
    for (int k = 0; k < kSpecialChannelCount; ++k) {
      std::string hex = RandomRecord(random, true);
      hex.replace(32, 12, "000000000000");
      EXPECT_FALSE(DecodeSpecialChannel(hex, k, set));
    }
    SetStoredPresent(image, band, PresentByFrequency(set));
  }
  ShowBand(image, image.ShownBand);
  for (std::string& dial : document.dial) {
    dial.clear();
    for (int i = Below(random, 17); i > 0; --i) dial += "0123456789ABCD*#"[Below(random, 16)];
  }
  for (int n = 0; n < kMemoryChannelCount; ++n)
    EXPECT_FALSE(DecodeMemoryChannel(RandomRecord(random, Below(random, 3) != 0), n, image));
  return document;
}

}  // namespace q40::test
