#include "document/clone_document.h"

#include "document/channel_cells.h"
#include "document/defaults.h"
#include "document/memory_edit.h"

namespace q40 {
namespace {

// In what the channels of two images differ.
struct ChannelsDiffer {
  ChannelsDiffer(const CloneImage& before, const CloneImage& after) {
    for (int n = 0; n < kMemoryChannelCount; ++n) {
      const ChannelPlace place{ChannelKind::kMemory, Band::kVhf, n};
      if (Same(before, after, place)) continue;
      if (!memory) first = n;
      memory = true;
      last = n;
    }
    for (const Band band : kBands) {
      for (int k = 0; k < kSpecialChannelCount; ++k) {
        const ChannelPlace place{ChannelKind::kSpecial, band, k};
        if (Same(before, after, place)) continue;
        special = true;
        (InUse(before, place) && !InUse(after, place) ? emptied : stored) = true;
      }
    }
  }
  static bool Same(const CloneImage& a, const CloneImage& b, const ChannelPlace& place) {
    return RecordAt(a, place) == RecordAt(b, place) && InUse(a, place) == InUse(b, place);
  }

  bool memory = false;
  int first = 0;
  int last = -1;
  bool special = false;
  bool stored = false;   // a special channel holds something else
  bool emptied = false;  // PH or PL is there no more
};

}  // namespace

CloneDocument::CloneDocument() : data_(FreshData()) {}

void CloneDocument::Tell(const DocumentChange& change) {
  if (listener_ != nullptr) listener_->DocumentChanged(change);
}

void CloneDocument::TellChannels(int first, int last) {
  Tell({.first_channel = first, .last_channel = last, .edit = true});
}

// ---- channels

void CloneDocument::InsertChannel(int n) {
  InsertMemoryChannel(data_.image, n);
  settings_changed_ = memory_changed_ = true;
  TellChannels(n, kMemoryChannelCount - 1);
}

void CloneDocument::DeleteChannel(int n) {
  DeleteMemoryChannel(data_.image, n);
  settings_changed_ = memory_changed_ = true;
  TellChannels(n, kMemoryChannelCount - 1);
}

void CloneDocument::ClearChannel(int n) {
  ClearMemoryChannel(data_.image, n);
  settings_changed_ = memory_changed_ = true;
  TellChannels(n, n);
}

void CloneDocument::ClearAllChannels() {
  ClearAllMemoryChannels(data_.image);
  memory_changed_ = true;
  TellChannels(0, kMemoryChannelCount - 1);
}

void CloneDocument::StoreMemoryChannel(int n, ChannelRecord record) {
  const auto row = static_cast<std::size_t>(n);
  data_.image.MemoryTable[row] = std::move(record);
  data_.image.ChannelInUse[row] = true;
  settings_changed_ = memory_changed_ = true;
  TellChannels(n, n);
}

void CloneDocument::StoreSpecialChannel(int k, ChannelRecord record) {
  const auto row = static_cast<std::size_t>(k);
  data_.image.ShownSpecialSet[row] = std::move(record);
  if (k >= kPhRow) data_.image.ShownPresent[row - kPhRow] = true;
  StoreShownRow(data_.image, k);
  settings_changed_ = true;
  Tell({.special_channels = true, .edit = true});
}

void CloneDocument::ClearLimit(int k) {
  ClearShownLimit(data_.image, k);
  memory_changed_ = true;
  Tell({.special_channels = true, .edit = true});
}

bool CloneDocument::StoreChannels(const CloneImage& edited) {
  const ChannelsDiffer differ(data_.image, edited);
  if (!differ.memory && !differ.special) return false;
  data_.image.MemoryTable = edited.MemoryTable;
  data_.image.ChannelInUse = edited.ChannelInUse;
  for (const Band band : kBands) SpecialStore(data_.image, band) = SpecialStore(edited, band);
  ShowBand(data_.image, data_.image.ShownBand);
  settings_changed_ = settings_changed_ || differ.memory || differ.stored;
  memory_changed_ = memory_changed_ || differ.memory || differ.emptied;
  Tell({.first_channel = differ.first,
        .last_channel = differ.last,
        .special_channels = differ.special,
        .edit = true});
  return true;
}

void CloneDocument::ChooseBand(Band band) {
  ShowBand(data_.image, band);
  Tell({.special_channels = true});
}

// ---- settings

void CloneDocument::ChangeSetting(const Setting& setting, int value) {
  data_.settings.*setting.value = value;
  if (setting.counts) settings_changed_ = true;
  Tell({.edit = setting.counts});
}

void CloneDocument::ChangeLooseSetting() {
  settings_changed_ = true;
  Tell({.edit = true});
}

void CloneDocument::ChangeDialText(int index, std::string text) {
  data_.dial[static_cast<std::size_t>(index)] = std::move(text);
  settings_changed_ = true;
  Tell({.edit = true});
}

// ---- starting anew

void CloneDocument::New() {
  ResetToDefaults(data_);
  ForgetChanges();
  DocumentChange change = kEverything;
  change.anew = true;
  Tell(change);
}

bool CloneDocument::ChangeModel(int model) {
  if (model == data_.model) return false;
  data_.model = model;
  New();
  return true;
}

void CloneDocument::Open(CloneData data) {
  data_ = std::move(data);
  ForgetChanges();
  Tell(kEverything);
}

void CloneDocument::Import(CloneImage image) {
  data_.image = std::move(image);
  ForgetChanges();
  Tell({.last_channel = kMemoryChannelCount - 1, .special_channels = true});
}

// ---- the radio

void CloneDocument::SetVersionA(bool version_a) {
  if (data_.image.VersionA == version_a) return;
  data_.image.VersionA = version_a;
  Tell({.model = true});
}

void CloneDocument::LoadSpecialDefaults() {
  q40::LoadSpecialDefaults(data_.image, data_.model);
  Tell({.special_channels = true});
}

void CloneDocument::TakeSettingsLines(SettingsLines lines) {
  data_.image.SettingsLine = std::move(lines);
  data_.settings = DecodeSettings(data_.image.SettingsLine);
  settings_changed_ = true;
  Tell({.settings = true});
}

void CloneDocument::TakeSpecialSet(Band band, SpecialSet set) {
  SetStoredPresent(data_.image, band, PresentByFrequency(set));
  SpecialStore(data_.image, band) = std::move(set);
  ShowBand(data_.image, data_.image.ShownBand);
  Tell({.special_channels = true});
}

void CloneDocument::TakeDialBlock(int index, std::string_view digits) {
  UpDateDialData(data_.dial, digits, index);
  Tell({.dial = true});
}

std::optional<CodecError> CloneDocument::TakeMemoryChannel(int n, std::string_view hex64) {
  if (auto error = DecodeMemoryChannel(hex64, n, data_.image)) return error;
  Tell({.first_channel = n, .last_channel = n, .as_read = true});
  return std::nullopt;
}

void CloneDocument::RebuildSettingsLines() { EncodeSettings(data_.settings, data_.image); }

}  // namespace q40
