// The data as it is being edited. Every change is one of the operations below: each keeps the change
// flags as the program has always kept them, and tells one listener, once, what has changed.
//
// Two flags, not one: settings and channels are asked about separately. What each operation does to
// them stands beside it, oddities included; nobody else touches them.
#pragma once

#include <array>
#include <bitset>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/clone_data.h"
#include "document/document_cells.h"
#include "radio/channel_codec.h"

namespace q40 {

// Which operation, where somebody keeps an account of them.
enum class DocumentAct : unsigned char {
  kPart,  // of a longer work: what is read from a radio, or goes with a write
  kInsertChannel,
  kDeleteChannel,
  kClearChannel,
  kClearAllChannels,
  kStoreMemoryChannel,
  kStoreSpecialChannel,
  kClearLimit,
  kChooseBand,
  kChangeSetting,
  kChangeLooseSetting,
  kChangeDialText,
  kNew,
  kChangeModel,
  kOpen,
  kImport,
  kTakeBack,
  kStoreChannels,
  kRestore,
};

// Memory channels, by their index.
using ChannelSet = std::bitset<kMemoryChannelCount>;
ChannelSet ChannelsFrom(int first, int last);  // both among them
inline const ChannelSet kAllChannels = ChannelSet().set();

// Calls tell(first, last) for every run of neighbours, in their order.
template <typename Tell>
void EachRun(const ChannelSet& channels, Tell tell) {
  const auto has = [&](int n) {
    return n < kMemoryChannelCount && channels[static_cast<std::size_t>(n)];
  };
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    if (!has(n)) continue;
    const int first = n;
    while (has(n + 1)) ++n;
    tell(first, n);
  }
}

// What an operation has changed, so that it can be shown.
struct DocumentChange {
  // These memory channels and no others: a row that is drawn anew loses how it was drawn before.
  ChannelSet channels{};
  // They came from the radio: the grid places their texts by its headings, and not in stored order.
  bool as_read = false;
  bool special_channels = false;  // of the shown band, with the choice of the band
  bool settings = false;          // by the program; a control already shows what it has set itself
  bool dial = false;              // the same
  bool model = false;             // or version
  bool anew = false;              // New, or another model: the data does not come from a file
  bool edit = false;              // by the user, and counts as a change
  DocumentAct act = DocumentAct::kPart;
  // Of the channel, row, setting (in Settings()) or dialer memory that the act is about, or that was read.
  int index = 0;
};
inline const DocumentChange kEverything = {
    .channels = kAllChannels,
    .special_channels = true,
    .settings = true,
    .dial = true,
    .model = true,
};

class DocumentListener {
 public:
  DocumentListener() = default;
  virtual ~DocumentListener() = default;
  DocumentListener(const DocumentListener&) = delete;
  DocumentListener& operator=(const DocumentListener&) = delete;

  // The operation is over, the document whole.
  virtual void DocumentChanged(const DocumentChange& change) = 0;
};

class CloneDocument {
 public:
  // As at start-up: the defaults of model 0, empty dialer memories, nothing changed.
  CloneDocument();
  explicit CloneDocument(CloneData data) : data_(std::move(data)) {}

  // The listener must outlive the document, or be taken away with null.
  void SetListener(DocumentListener* listener) { listener_ = listener; }

  // ---- what there is

  [[nodiscard]] const CloneData& data() const { return data_; }
  [[nodiscard]] const CloneImage& image() const { return data_.image; }
  [[nodiscard]] const SettingsValues& settings() const { return data_.settings; }
  [[nodiscard]] const DialTexts& dial() const { return data_.dial; }
  [[nodiscard]] int model() const { return data_.model; }
  [[nodiscard]] bool SettingsChanged() const { return settings_changed_; }
  [[nodiscard]] bool MemoryChanged() const { return memory_changed_; }
  [[nodiscard]] bool HasChanges() const { return settings_changed_ || memory_changed_; }

  // ---- editing channels. n: 0..209; k: row 0..4 of the shown special set

  // Both flags. The last channel, D9, is dropped.
  void InsertChannel(int n);
  // Both flags. The channels after it move up; D9 keeps stale fields, out of use (intended).
  void DeleteChannel(int n);
  // Both flags.
  void ClearChannel(int n);
  // Intended: only MemoryChanged, so that quitting after it does not ask.
  void ClearAllChannels();
  // What the edit dialog made of a channel; it is in use then. Both flags.
  void StoreMemoryChannel(int n, ChannelRecord record);
  // The same for the shown band. Intended: only SettingsChanged.
  void StoreSpecialChannel(int k, ChannelRecord record);
  // Empties PH or PL (k) of the shown band. Intended: only MemoryChanged, although it is special.
  void ClearLimit(int k);
  // What an edit of many channels at once has made of an image: its memory channels and the special
  // channels of both bands, as one change. Each part sets what it sets above: memory channels both
  // flags, special ones SettingsChanged, a PH or PL that was emptied MemoryChanged. False, and
  // nothing happens, when they are what they were.
  bool StoreChannels(const CloneImage& edited);
  // Shows the special channels of a band. No flag.
  void ChooseBand(Band band);

  // ---- editing settings. The controls show what they tell, so nobody is asked to redraw them.

  // SettingsChanged, unless the setting is one of those that do not count (intended).
  void ChangeSetting(const Setting& setting, int value);
  // A control without a byte in the radio: it counts all the same. SettingsChanged.
  void ChangeLooseSetting();
  // SettingsChanged.
  void ChangeDialText(int index, std::string text);

  // ---- taking back, cell by cell

  // Puts cells back to what they are in `before`. The flags that editing the same by hand sets. Returns
  // how many cells were put back; when there is none, nobody is told anything.
  int TakeBack(const CloneData& before, const std::vector<CellAddress>& cells);

  // ---- starting anew. Each clears both flags.

  // The defaults of the model; dialer memories, version and shown band stay.
  void New();
  // Makes `model` (0..3) the document's and starts anew with its defaults. False, and nothing
  // happens, when it is already.
  bool ChangeModel(int model);
  // The data of an opened file.
  void Open(CloneData data);
  // The channels after an import of a list. Intended: an import counts as nothing to save.
  void Import(CloneImage image);

  // ---- going back

  // Puts a state back, data and flags, and tells of what differs in it.
  void Restore(CloneData data, bool settings_changed, bool memory_changed);

  // ---- letting changes go, or having saved them

  void ForgetSettingsChanges() { settings_changed_ = false; }
  void ForgetMemoryChanges() { memory_changed_ = false; }
  void ForgetChanges() { settings_changed_ = memory_changed_ = false; }
  // After a read that broke off before it came to the channels: they are as unsaved as before.
  void KeepMemoryChanges() { memory_changed_ = true; }

  // ---- reading the radio, and what a write leaves

  // No flag.
  void SetVersionA(bool version_a);
  // The special channels of the model's defaults, both bands. No flag.
  void LoadSpecialDefaults();
  // Four lines of digits. SettingsChanged: what came from the radio is unsaved, also when a later
  // step of the read fails.
  void TakeSettingsLines(SettingsLines lines);
  // A whole band, with the presence of PH and PL by their frequencies. No flag.
  void TakeSpecialSet(Band band, SpecialSet set);
  // The 32 digits of a dialer memory. No flag.
  void TakeDialBlock(int index, std::string_view digits);
  // The 64 digits of a memory channel. On an error the channel is as it was. No flag before the
  // last one: see FinishMemoryRead.
  [[nodiscard]] std::optional<CodecError> TakeMemoryChannel(int n, std::string_view hex64);
  // The channels were read to their end: MemoryChanged. One that broke off leaves the flag.
  void FinishMemoryRead() { memory_changed_ = true; }
  // Puts the settings into the lines that a file or the radio gets. No flag.
  void RebuildSettingsLines();

 private:
  void Tell(const DocumentChange& change);
  void TellChannels(DocumentAct act, int n, const ChannelSet& channels);
  void StartAnew(DocumentAct act);

  CloneData data_;
  bool settings_changed_ = false;
  bool memory_changed_ = false;
  DocumentListener* listener_ = nullptr;
};

}  // namespace q40
