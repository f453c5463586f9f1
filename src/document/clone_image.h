// The program's one copy of the radio data: channels decoded, settings as hexadecimal lines.
#pragma once

#include <array>
#include <string>

#include "radio/channel_codec.h"
#include "radio/models.h"
#include "radio/settings_codec.h"

namespace q40 {

inline constexpr int kTemplateRow = 210;
inline constexpr int kMemoryRows = 211;
inline constexpr int kInUseFlags = 215;

// A value without invariants of its own; a default-constructed image is the empty state.
struct CloneImage {
  // 0..209: the memory channels; 210: the template from which the edit dialog starts a new channel.
  std::array<ChannelRecord, kMemoryRows> MemoryTable;
  // 0..209: channel in use; 210: the template's, always clear; 211, 212: VHF PH, PL present;
  // 213, 214: UHF PH, PL present.
  std::array<bool, kInUseFlags> ChannelInUse{};
  SpecialSet VhfSpecialSet;
  SpecialSet UhfSpecialSet;
  // The set that is shown and edited: a copy of the store of ShownBand, kept equal to it.
  SpecialSet ShownSpecialSet;
  Band ShownBand = Band::kVhf;
  PresentPair ShownPresent{};
  // 0x0020, 0x0030, 0x0040, 0x0050: 32 digits each, or empty before anything was loaded.
  SettingsLines SettingsLine;
  bool VersionA = false;

  bool operator==(const CloneImage&) const = default;

  [[nodiscard]] ChannelRecord& TemplateChannel() { return MemoryTable[kTemplateRow]; }
  [[nodiscard]] const ChannelRecord& TemplateChannel() const { return MemoryTable[kTemplateRow]; }
};

// Clears every memory row, the shown set, every in-use flag and VersionA; shows VHF.
void ClearChannelTables(CloneImage& image);

SpecialSet& SpecialStore(CloneImage& image, Band band);
const SpecialSet& SpecialStore(const CloneImage& image, Band band);

// PH and PL flags of a band's stored set (ChannelInUse 211..214).
PresentPair StoredPresent(const CloneImage& image, Band band);
void SetStoredPresent(CloneImage& image, Band band, PresentPair present);

// Loads the stored set of a band, and its flags, into the shown set.
void ShowBand(CloneImage& image, Band band);

// Copies shown row k and its flag to the store of the shown band.
void StoreShownRow(CloneImage& image, int k);

// The codecs on the image's own rows and lines; n: 0..209.
[[nodiscard]] std::optional<CodecError> DecodeMemoryChannel(std::string_view hex64, int n,
                                                            CloneImage& image);
[[nodiscard]] std::optional<ChannelLines> EncodeMemoryChannel(const CloneImage& image, int n);
SettingsValues DecodeSettings(CloneImage& image);
void EncodeSettings(const SettingsValues& values, CloneImage& image);
// The lines that EncodeSettings would give; the image stays.
SettingsLines EncodedSettings(const SettingsValues& values, const CloneImage& image);

inline int VersionOf(const CloneImage& image) { return image.VersionA ? kVersionA : kVersionPlain; }

}  // namespace q40
