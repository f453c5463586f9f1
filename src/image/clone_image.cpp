#include "image/clone_image.h"

namespace q40 {
namespace {

constexpr std::size_t FirstFlag(Band band) { return band == Band::kVhf ? 211 : 213; }

}  // namespace

void ClearChannelTables(CloneImage& image) {
  image.MemoryTable = {};
  image.ShownSpecialSet = {};
  image.ChannelInUse = {};
  image.ShownPresent = {};
  image.VersionA = false;
  image.ShownBand = Band::kVhf;
}

SpecialSet& SpecialStore(CloneImage& image, Band band) {
  return band == Band::kVhf ? image.VhfSpecialSet : image.UhfSpecialSet;
}

const SpecialSet& SpecialStore(const CloneImage& image, Band band) {
  return band == Band::kVhf ? image.VhfSpecialSet : image.UhfSpecialSet;
}

PresentPair StoredPresent(const CloneImage& image, Band band) {
  const std::size_t ph = FirstFlag(band);
  return {image.ChannelInUse[ph], image.ChannelInUse[ph + 1]};
}

void SetStoredPresent(CloneImage& image, Band band, PresentPair present) {
  const std::size_t ph = FirstFlag(band);
  image.ChannelInUse[ph] = present[0];
  image.ChannelInUse[ph + 1] = present[1];
}

PresentPair PresentByFrequency(const SpecialSet& set) {
  return {set[kPhRow].Frequency() != 0, set[kPlRow].Frequency() != 0};
}

bool EffectivelyPresent(const SpecialSet& set, PresentPair present, int k) {
  if (k < kPhRow) return true;
  return present[static_cast<std::size_t>(k - kPhRow)] &&
         set[static_cast<std::size_t>(k)].Frequency() != 0;
}

void ShowBand(CloneImage& image, Band band) {
  image.ShownBand = band;
  image.ShownSpecialSet = SpecialStore(image, band);
  image.ShownPresent = StoredPresent(image, band);
}

void StoreShownRow(CloneImage& image, int k) {
  const auto row = static_cast<std::size_t>(k);
  SpecialStore(image, image.ShownBand)[row] = image.ShownSpecialSet[row];
  SetStoredPresent(image, image.ShownBand, image.ShownPresent);
}

}  // namespace q40
