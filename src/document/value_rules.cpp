#include "document/value_rules.h"

#include <algorithm>

#include "base/plain_text.h"
#include "document/edit_rules.h"
#include "radio/channel_fields.h"

namespace q40 {
namespace {

constexpr Field kFixedInRepeaterRow[] = {Field::kFrequency,   Field::kStep,  Field::kAtt,
                                         Field::kRpt,         Field::kPower, Field::kMid,
                                         Field::kBatterySave, Field::kClock, Field::kBandwidth};
constexpr int kSplit = 3;
constexpr int kStart = kDialCount - 1;                           // "St"
constexpr Units100Hz kOffsetEnd = 100 * kUnitsPerMhz;            // two digits before the point
constexpr Units100Hz kDialogFrequencyEnd = 1000 * kUnitsPerMhz;  // three

// What the fraction becomes when its field is left.
std::string WhyNotTuned(Units100Hz frequency) {
  const TunedFrequency tuned = TuneFrequency(FrequencyText(frequency));
  if (LeadingFrequency(tuned.text) == frequency) return {};
  return "is no multiple of 5 or 12.5 kHz; the nearest below is " +
         OffsetText(LeadingFrequency(tuned.text));
}

bool StaysInTheDialog(const std::string& mhz, const EditedChannel& channel) {
  const std::string checked =
      channel.kind == ChannelKind::kSpecial
          ? CheckedSpecialMhz(mhz, channel.band, channel.model, channel.range, channel.frequency)
          : CheckedMemoryMhz(mhz, channel.model, channel.range, channel.in_use, channel.frequency);
  return !checked.empty() && LeadingNumber(checked) == LeadingNumber(mhz);
}

// What the dialog shows beside the frequency.
std::string Bands(const EditedChannel& channel) {
  std::string texts;
  for (const Band band : kBands) {
    if (channel.kind == ChannelKind::kSpecial && band != channel.band) continue;
    const std::string_view text = BandTableOf(band).BandText(channel.model, channel.range);
    if (!text.empty()) texts += ' ' + std::string(BandName(band)) + ' ' + std::string(text);
  }
  const std::string model(ModelName(channel.model));
  return texts.empty() ? model + " has none" : "those of " + model + " are" + texts;
}

std::string WhyNotFrequency(Units100Hz frequency, const EditedChannel& channel) {
  const std::string mhz = std::to_string(frequency / kUnitsPerMhz);
  if (frequency >= kDialogFrequencyEnd || !StaysInTheDialog(mhz, channel)) {
    return "is outside the bands; " + Bands(channel);
  }
  return WhyNotTuned(frequency);
}

std::string WhyNotOffset(Units100Hz offset) {
  if (offset >= kOffsetEnd) return "is too large; a shift has two digits before the point";
  return WhyNotTuned(offset);
}

std::string WhyNotShift(int shift, const EditedChannel& channel) {
  const bool offered = shift != kSplit || OffersSplit(channel.kind, channel.row);
  return offered ? "" : "is for VFO and CALL only";
}

// Letters are typed small, most of them.
std::string WhyNotName(std::string_view name) {
  for (const char c : name) {
    const char small = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    if (c == kBackspace || NameKey(small) != c) {
      return "holds a character that no name can have: " + Quoted({&c, 1});
    }
  }
  return name.size() > kNameLength ? "is longer than 6 characters" : "";
}

}  // namespace

bool ChangesInRepeaterRow(Field field) {
  return std::find(std::begin(kFixedInRepeaterRow), std::end(kFixedInRepeaterRow), field) ==
         std::end(kFixedInRepeaterRow);
}

std::string WhyNotField(const ChannelRecord& record, Field field, const EditedChannel& channel) {
  if (channel.IsRepeaterRow() && !ChangesInRepeaterRow(field)) {
    return "cannot be changed in the repeater-access row";
  }
  switch (field) {
    case Field::kFrequency: return WhyNotFrequency(record.Frequency(), channel);
    case Field::kShiftFrequency: return WhyNotOffset(record.Number(channel.kind, field));
    case Field::kName: return WhyNotName(record.Text(channel.kind, field));
    case Field::kShift: return WhyNotShift(record.Number(channel.kind, field), channel);
    default: return {};
  }
}

std::string WhyNotDialText(std::string_view text, int index) {
  if (DialCharacters(text) != text) return "holds characters other than 0 to 9, A to D, * and #";
  if (text.size() > kDialLength) return "is longer than 16 characters";
  return text.empty() && index == kStart ? "must not be empty" : "";
}

}  // namespace q40
