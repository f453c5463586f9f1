#include "document/defaults.h"

#include <cassert>

#include "radio/channel_fields.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

constexpr int kModelE = 1;

constexpr std::array<std::string_view, kSettingsLines> kSettingsDefaults = {
    "A5000000000F03000002020000000000", "01000000000000000000000002000001",
    "00000000000000000000000000000000", "00000000000000000000000000000000"};
constexpr std::string_view kSettingsLine1OfModelE = "01000000010000000000000002000001";

constexpr Units100Hz kVhfFrequency = 145 * kUnitsPerMhz;
constexpr Units100Hz kVhfOffset = 6'000;

// 445 MHz for model 0, 435 for model 1, 415 for every other one.
Units100Hz UhfFrequency(int model) {
  constexpr std::array<int, kModelCount> kMhz = {445, 435, 415, 415};
  return kMhz[static_cast<std::size_t>(model)] * kUnitsPerMhz;
}

Units100Hz UhfOffset(int model) { return model == kModelE ? 76'000 : 50'000; }

ChannelRecord DefaultChannel(ChannelKind kind, Units100Hz frequency, Units100Hz offset, int model) {
  ChannelRecord record;
  record.Set(kind, Field::kFrequency, frequency, FrequencyText(frequency));
  record.Set(kind, Field::kShiftFrequency, offset, OffsetText(offset));
  for (const ChannelField& row : kChannelFields) {
    const bool coded = !row.words.empty() || row.list != nullptr;
    if (coded) SetCode(record, kind, row.field, row.fresh);
  }
  if (model == kModelE) SetCode(record, kind, Field::kStep, 2);
  return record;
}

SpecialSet DefaultSet(Units100Hz frequency, Units100Hz offset, int model) {
  constexpr auto kKind = ChannelKind::kSpecial;
  SpecialSet set;
  set.fill(DefaultChannel(kKind, frequency, offset, model));
  ChannelRecord& rpt = set[kRptRow];
  SetCode(rpt, kKind, Field::kTone, 1);
  SetCode(rpt, kKind, Field::kShift, 1);
  for (const ChannelField& row : kChannelFields) {
    if (row.in_repeater_row) continue;
    rpt.Set(kKind, row.field, rpt.Number(kKind, row.field),
            "");  // the numbers stay those of the VFO
  }
  return set;
}

void LoadSettingsDefaults(CloneData& document) {
  auto& lines = document.image.SettingsLine;
  for (std::size_t k = 0; k < lines.size(); ++k) lines[k] = kSettingsDefaults[k];
  if (document.model == kModelE) lines[1] = kSettingsLine1OfModelE;
  document.settings = DecodeSettings(document.image);
}

}  // namespace

void LoadSpecialDefaults(CloneImage& image, int model) {
  image.VhfSpecialSet = DefaultSet(kVhfFrequency, kVhfOffset, model);
  image.UhfSpecialSet = DefaultSet(UhfFrequency(model), UhfOffset(model), model);
  for (const Band band : kBands) SetStoredPresent(image, band, {});
  ShowBand(image, image.ShownBand);
}

void ResetToDefaults(CloneData& document) {
  CloneImage& image = document.image;
  LoadSettingsDefaults(document);
  LoadSpecialDefaults(image, document.model);
  for (std::size_t row = 0; row < kTemplateRow; ++row) {
    image.MemoryTable[row] = {};
    image.ChannelInUse[row] = false;
  }
  // The template belongs to the model: its step differs.
  image.TemplateChannel() =
      DefaultChannel(ChannelKind::kMemory, kVhfFrequency, kVhfOffset, document.model);
  image.ChannelInUse[kTemplateRow] = false;
}

bool ChangeModel(CloneData& document, int model) {
  assert(model >= 0 && model < kModelCount);
  if (model == document.model) return false;
  document.model = model;
  ResetToDefaults(document);
  return true;
}

CloneData FreshData() {
  CloneData document;
  ClearChannelTables(document.image);
  ResetToDefaults(document);
  return document;
}

}  // namespace q40
