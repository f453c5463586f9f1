#include "app/edit_commands.h"

#include "document/memory_edit.h"

namespace q40 {
namespace {

constexpr int kLastMemory = kMemoryChannelCount - 1;

}  // namespace

void EditCommands::TellMemory(int first, int last) {
  listener_({DocumentChange::What::kMemory, first, last});
}

void EditCommands::TellSpecial(int k) { listener_({DocumentChange::What::kSpecial, k, k}); }

// ---- memory channels

void EditCommands::InsertMemory(int n) {
  InsertMemoryChannel(document_.image, n);
  document_.MemoryChanged = true;
  document_.SettingsChanged = true;
  TellMemory(n, kLastMemory);
}

void EditCommands::DeleteMemory(int n) {
  DeleteMemoryChannel(document_.image, n);
  document_.MemoryChanged = true;
  document_.SettingsChanged = true;
  TellMemory(n, kLastMemory);
}

void EditCommands::ClearMemory(int n) {
  ClearMemoryChannel(document_.image, n);
  document_.MemoryChanged = true;
  document_.SettingsChanged = true;
  TellMemory(n, n);
}

// Intended: SettingsChanged stays, so that quitting after it does not ask.
void EditCommands::ClearAllMemory() {
  ClearAllMemoryChannels(document_.image);
  document_.MemoryChanged = true;
  TellMemory(0, kLastMemory);
}

void EditCommands::SetMemory(int n, const ChannelRecord& record) {
  const auto row = static_cast<std::size_t>(n);
  document_.image.MemoryTable[row] = record;
  document_.image.ChannelInUse[row] = true;
  document_.MemoryChanged = true;
  document_.SettingsChanged = true;
  TellMemory(n, n);
}

// ---- special channels

// Intended: MemoryChanged stays; the special channels count as settings.
void EditCommands::SetSpecial(int k, const ChannelRecord& record) {
  CloneImage& image = document_.image;
  const auto row = static_cast<std::size_t>(k);
  image.ShownSpecialSet[row] = record;
  if (k >= kPhRow) image.ShownPresent[row - kPhRow] = true;
  StoreShownRow(image, k);
  document_.SettingsChanged = true;
  TellSpecial(k);
}

// Intended: only MemoryChanged is set, although the channel is a special one.
void EditCommands::ClearLimit(int k) {
  ClearShownLimit(document_.image, k);
  document_.MemoryChanged = true;
  TellSpecial(k);
}

// Sets no flag: the band that is shown is not part of the radio's data.
void EditCommands::ChooseBand(Band band) {
  ShowBand(document_.image, band);
  listener_({DocumentChange::What::kSpecial, 0, kSpecialChannelCount - 1, false});
}

// ---- settings

// Intended: four of the settings are stored without counting as a change.
void EditCommands::SetSetting(const Setting& setting, int value) {
  document_.settings.*setting.value = value;
  if (setting.counts) document_.SettingsChanged = true;
  listener_({.is_edit = setting.counts});
}

// Intended: counts as a change, although nothing of it is stored.
void EditCommands::TouchLooseBox() {
  document_.SettingsChanged = true;
  listener_({});
}

void EditCommands::SetDialText(int index, const std::string& text) {
  document_.dial[static_cast<std::size_t>(index)] = text;
  document_.SettingsChanged = true;
  listener_({DocumentChange::What::kDial, index, index});
}

}  // namespace q40
