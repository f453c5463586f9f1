#include "document/clone_document.h"

#include "document/channel_cells.h"
#include "document/defaults.h"
#include "document/memory_edit.h"
#include "document/take_back.h"

namespace q40 {
namespace {

constexpr int kLast = kMemoryChannelCount - 1;

ChannelSet ChannelsThatDiffer(const CloneImage& a, const CloneImage& b) {
  ChannelSet differ;
  for (std::size_t n = 0; n < differ.size(); ++n) {
    differ[n] = a.MemoryTable[n] != b.MemoryTable[n] || a.ChannelInUse[n] != b.ChannelInUse[n];
  }
  return differ;
}

// What has to be shown anew where `after` takes the place of `before`.
DocumentChange ChangeBetween(const CloneData& before, const CloneData& after) {
  const CloneImage& a = before.image;
  const CloneImage& b = after.image;
  DocumentChange change = {.channels = ChannelsThatDiffer(a, b), .act = DocumentAct::kRestore};
  change.special_channels = a.ShownSpecialSet != b.ShownSpecialSet ||
                            a.ShownPresent != b.ShownPresent || a.ShownBand != b.ShownBand;
  change.settings = before.settings != after.settings;
  change.dial = before.dial != after.dial;
  change.model = before.model != after.model || a.VersionA != b.VersionA;
  return change;
}

// In what the special channels of two images differ.
struct SpecialsDiffer {
  SpecialsDiffer(const CloneImage& before, const CloneImage& after) {
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

  bool special = false;
  bool stored = false;   // a special channel holds something else
  bool emptied = false;  // PH or PL is there no more
};

}  // namespace

ChannelSet ChannelsFrom(int first, int last) {
  ChannelSet channels;
  for (int n = first; n <= last; ++n) channels.set(static_cast<std::size_t>(n));
  return channels;
}

CloneDocument::CloneDocument() : data_(FreshData()) {}

void CloneDocument::Tell(const DocumentChange& change) {
  if (listener_ != nullptr) listener_->DocumentChanged(change);
}

// What an edit of channel n has done to itself and others.
void CloneDocument::TellChannels(DocumentAct act, int n, const ChannelSet& channels) {
  Tell({.channels = channels, .edit = true, .act = act, .index = n});
}

// ---- channels

void CloneDocument::InsertChannel(int n) {
  InsertMemoryChannel(data_.image, n);
  settings_changed_ = memory_changed_ = true;
  TellChannels(DocumentAct::kInsertChannel, n, ChannelsFrom(n, kLast));
}

void CloneDocument::DeleteChannel(int n) {
  DeleteMemoryChannel(data_.image, n);
  settings_changed_ = memory_changed_ = true;
  TellChannels(DocumentAct::kDeleteChannel, n, ChannelsFrom(n, kLast));
}

void CloneDocument::ClearChannel(int n) {
  ClearMemoryChannel(data_.image, n);
  settings_changed_ = memory_changed_ = true;
  TellChannels(DocumentAct::kClearChannel, n, ChannelsFrom(n, n));
}

void CloneDocument::ClearAllChannels() {
  ClearAllMemoryChannels(data_.image);
  memory_changed_ = true;
  TellChannels(DocumentAct::kClearAllChannels, 0, kAllChannels);
}

void CloneDocument::StoreMemoryChannel(int n, ChannelRecord record) {
  const auto row = static_cast<std::size_t>(n);
  data_.image.MemoryTable[row] = std::move(record);
  data_.image.ChannelInUse[row] = true;
  settings_changed_ = memory_changed_ = true;
  TellChannels(DocumentAct::kStoreMemoryChannel, n, ChannelsFrom(n, n));
}

void CloneDocument::StoreSpecialChannel(int k, ChannelRecord record) {
  const auto row = static_cast<std::size_t>(k);
  data_.image.ShownSpecialSet[row] = std::move(record);
  if (k >= kPhRow) data_.image.ShownPresent[row - kPhRow] = true;
  StoreShownRow(data_.image, k);
  settings_changed_ = true;
  Tell({.special_channels = true,
        .edit = true,
        .act = DocumentAct::kStoreSpecialChannel,
        .index = k});
}

void CloneDocument::ClearLimit(int k) {
  ClearShownLimit(data_.image, k);
  memory_changed_ = true;
  Tell({.special_channels = true, .edit = true, .act = DocumentAct::kClearLimit, .index = k});
}

bool CloneDocument::StoreChannels(const CloneImage& edited) {
  const ChannelSet channels = ChannelsThatDiffer(data_.image, edited);
  const SpecialsDiffer differ(data_.image, edited);
  if (channels.none() && !differ.special) return false;
  data_.image.MemoryTable = edited.MemoryTable;
  data_.image.ChannelInUse = edited.ChannelInUse;
  for (const Band band : kBands) SpecialStore(data_.image, band) = SpecialStore(edited, band);
  ShowBand(data_.image, data_.image.ShownBand);
  settings_changed_ = settings_changed_ || channels.any() || differ.stored;
  memory_changed_ = memory_changed_ || channels.any() || differ.emptied;
  Tell({.channels = channels,
        .special_channels = differ.special,
        .edit = true,
        .act = DocumentAct::kStoreChannels});
  return true;
}

void CloneDocument::ChooseBand(Band band) {
  ShowBand(data_.image, band);
  Tell({.special_channels = true, .act = DocumentAct::kChooseBand});
}

// ---- settings

void CloneDocument::ChangeSetting(const Setting& setting, int value) {
  data_.settings.*setting.value = value;
  if (setting.counts) settings_changed_ = true;
  Tell({.edit = setting.counts,
        .act = DocumentAct::kChangeSetting,
        .index = static_cast<int>(&setting - Settings().data())});
}

void CloneDocument::ChangeLooseSetting() {
  settings_changed_ = true;
  Tell({.edit = true, .act = DocumentAct::kChangeLooseSetting});
}

void CloneDocument::ChangeDialText(int index, std::string text) {
  data_.dial[static_cast<std::size_t>(index)] = std::move(text);
  settings_changed_ = true;
  Tell({.edit = true, .act = DocumentAct::kChangeDialText, .index = index});
}

// ---- taking back

int CloneDocument::TakeBack(const CloneData& before, const std::vector<CellAddress>& cells) {
  const TakenBack taken = PutBack(before, cells, data_);
  settings_changed_ = settings_changed_ || taken.settings_flag;
  memory_changed_ = memory_changed_ || taken.memory_flag;
  if (taken.cells > 0) Tell(taken.change);
  return taken.cells;
}

// ---- starting anew

void CloneDocument::StartAnew(DocumentAct act) {
  ResetToDefaults(data_);
  ForgetChanges();
  DocumentChange change = kEverything;
  change.anew = true;
  change.act = act;
  Tell(change);
}

void CloneDocument::New() { StartAnew(DocumentAct::kNew); }

bool CloneDocument::ChangeModel(int model) {
  if (model == data_.model) return false;
  data_.model = model;
  StartAnew(DocumentAct::kChangeModel);
  return true;
}

void CloneDocument::Open(CloneData data) {
  data_ = std::move(data);
  ForgetChanges();
  DocumentChange change = kEverything;
  change.act = DocumentAct::kOpen;
  Tell(change);
}

void CloneDocument::Import(CloneImage image) {
  data_.image = std::move(image);
  ForgetChanges();
  Tell({.channels = kAllChannels, .special_channels = true, .act = DocumentAct::kImport});
}

// ---- going back

void CloneDocument::Restore(CloneData data, bool settings_changed, bool memory_changed) {
  const DocumentChange change = ChangeBetween(data_, data);
  data_ = std::move(data);
  settings_changed_ = settings_changed;
  memory_changed_ = memory_changed;
  Tell(change);
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
  Tell({.channels = ChannelsFrom(n, n), .as_read = true, .index = n});
  return std::nullopt;
}

void CloneDocument::RebuildSettingsLines() { EncodeSettings(data_.settings, data_.image); }

}  // namespace q40
