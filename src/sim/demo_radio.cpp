#include "sim/demo_radio.h"

#include "document/defaults.h"
#include "radio/channel_fields.h"

namespace q40 {
namespace {

constexpr auto kKind = ChannelKind::kMemory;

struct DemoChannel {
  int n;
  Units100Hz frequency;
  int tone;
  int tone_index;
  int shift;
  Units100Hz offset;
  const char* name;
  bool skip;
};

constexpr DemoChannel kChannels[] = {
    {0, 1'455'000, 0, 8, 0, 6'000, "CALL V", false},
    {1, 1'456'000, 1, 8, 1, 6'000, "HILL", false},
    {2, 1'456'250, 1, 12, 1, 6'000, "TOWER", false},
    {3, 1'457'250, 3, 20, 1, 6'000, "LAKE", true},
    {5, 1'448'000, 0, 8, 0, 6'000, "APRS", true},
    {10, 4'335'000, 0, 8, 0, 76'000, "CALL U", false},
    {11, 4'387'000, 1, 8, 1, 76'000, "RIDGE", false},
    {12, 4'389'500, 12, 8, 1, 76'000, "CLUB", false},
    {200, 1'452'000, 0, 8, 0, 6'000, "EMCOM", false},
    {209, 4'301'250, 0, 8, 0, 76'000, "LAST", false},
};

}  // namespace

CloneData DemoDocument() {
  CloneData document = FreshData();
  ChangeModel(document, 1);
  CloneImage& image = document.image;
  image.VersionA = true;
  for (const DemoChannel& channel : kChannels) {
    const auto row = static_cast<std::size_t>(channel.n);
    ChannelRecord record = image.TemplateChannel();
    const auto code = [&](Field field, int number) {
      record.Set(kKind, field, number, CodeText(field, number));
    };
    record.Set(kKind, Field::kFrequency, channel.frequency, FrequencyText(channel.frequency));
    code(Field::kTone, channel.tone);
    code(Field::kTxTone, channel.tone_index);
    code(Field::kRxTone, channel.tone_index);
    code(Field::kShift, channel.shift);
    record.Set(kKind, Field::kShiftFrequency, channel.offset, OffsetText(channel.offset));
    code(Field::kPower, 2);
    record.Set(kKind, Field::kName, 1, channel.name);
    record.Set(kKind, Field::kSkip, channel.skip ? 1 : 0, "");
    image.MemoryTable[row] = std::move(record);
    image.ChannelInUse[row] = true;
  }
  document.settings.Slider1 = 18;
  document.settings.cmbTOT = 6;
  document.settings.cmbScan = 2;
  document.dial[0] = "0123456789";
  document.dial[1] = "*123#";
  document.dial[9] = "1";
  return document;
}

}  // namespace q40
