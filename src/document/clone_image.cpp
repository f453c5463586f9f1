#include "document/clone_image.h"

#include <algorithm>
#include <cassert>

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

std::optional<CodecError> DecodeMemoryChannel(std::string_view hex64, int n, CloneImage& image) {
  assert(n >= 0 && n < kMemoryChannelCount);
  const auto row = static_cast<std::size_t>(n);
  return DecodeMemoryChannel(hex64, image.MemoryTable[row], image.ChannelInUse[row]);
}

std::optional<ChannelLines> EncodeMemoryChannel(const CloneImage& image, int n) {
  assert(n >= 0 && n < kMemoryChannelCount);
  const auto row = static_cast<std::size_t>(n);
  return EncodeMemoryChannel(image.MemoryTable[row], image.ChannelInUse[row]);
}

SettingsValues DecodeSettings(CloneImage& image) { return DecodeSettings(image.SettingsLine); }

SettingsLines EncodedSettings(const SettingsValues& values, const CloneImage& image) {
  const auto* const first = image.ChannelInUse.begin();
  const auto* const used = std::find(first, first + kMemoryChannelCount, true);
  SettingsLines lines = image.SettingsLine;
  EncodeSettings(values, static_cast<int>(used - first), lines);
  return lines;
}

void EncodeSettings(const SettingsValues& values, CloneImage& image) {
  image.SettingsLine = EncodedSettings(values, image);
}

}  // namespace q40
