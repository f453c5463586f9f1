#include "checkup/read_back.h"

#include "radio/channel_codec.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

// No editor, reader or import makes a record that cannot be encoded; what is encoded can be
// decoded.
void ReadBackSpecial(CloneImage& image, Band band) {
  SpecialSet& set = SpecialStore(image, band);
  const PresentPair present = StoredPresent(image, band);
  for (int k = 0; k < kSpecialChannelCount; ++k) {
    const auto lines = EncodeSpecialChannel(set, present, k);
    if (lines) (void)DecodeSpecialChannel(lines->Joined(), k, set);
  }
  SetStoredPresent(image, band, PresentByFrequency(set));
}

void ReadBackMemory(CloneImage& image, int n) {
  const auto lines = EncodeMemoryChannel(image, n);
  if (lines) (void)DecodeMemoryChannel(lines->Joined(), n, image);
}

}  // namespace

CloneData ReadBack(const CloneData& document) {
  CloneData after = document;
  EncodeSettings(after.settings, after.image);
  after.settings = DecodeSettings(after.image);
  for (const Band band : kBands) ReadBackSpecial(after.image, band);
  for (int i = 0; i < kDialCount; ++i) UpDateDialData(after.dial, MakeDialData(after.dial, i), i);
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    if (document.image.ChannelInUse[static_cast<std::size_t>(n)]) ReadBackMemory(after.image, n);
  }
  return after;
}

}  // namespace q40
