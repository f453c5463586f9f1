#include "document/value_rules.h"

#include <algorithm>

#include "base/hex.h"
#include "base/plain_text.h"
#include "document/edit_rules.h"
#include "radio/channel_fields.h"
#include "radio/name_codes.h"

namespace q40 {
namespace {

constexpr Field kFixedInRepeaterRow[] = {Field::kFrequency,   Field::kStep,  Field::kAtt,
                                         Field::kRpt,         Field::kPower, Field::kMid,
                                         Field::kBatterySave, Field::kClock, Field::kBandwidth};
constexpr int kSplit = 3;
constexpr int kStart = kDialCount - 1;                           // "St"
constexpr Units100Hz kOffsetEnd = 100 * kUnitsPerMhz;            // two digits before the point
constexpr Units100Hz kDialogFrequencyEnd = 1000 * kUnitsPerMhz;  // three

using To = Objection::To;

bool StaysInTheDialog(const std::string& mhz, const EditedChannel& channel) {
  const std::string current =
      channel.base == nullptr ? "" : channel.base->Text(channel.place.kind, Field::kFrequency);
  const std::string checked =
      channel.place.kind == ChannelKind::kSpecial
          ? CheckedSpecialMhz(mhz, channel.place.band, channel.model, channel.range, current)
          : CheckedMemoryMhz(mhz, channel.model, channel.range, channel.in_use, current);
  return !checked.empty() && LeadingNumber(checked) == LeadingNumber(mhz);
}

// What the fraction becomes when its field is left.
Objection ToFraction(Units100Hz frequency) {
  const Units100Hz tuned = LeadingFrequency(TuneFrequency(FrequencyText(frequency)).text);
  if (tuned == frequency) return {};
  return {To::kFraction, OffsetText(tuned)};
}

Objection ToFrequency(Units100Hz frequency, const EditedChannel& channel) {
  const std::string mhz = std::to_string(frequency / kUnitsPerMhz);
  if (frequency >= kDialogFrequencyEnd || !StaysInTheDialog(mhz, channel)) return {To::kMhz};
  return ToFraction(frequency);
}

// What has a key, and what the radio keeps: capitals, most of which are typed small, and "?", which can be
// pasted.
bool IsNameCharacter(char c) {
  if (c == kBackspace || c == '\0') return false;
  if (NameKey(c) == c) return true;
  const auto code = NameCodeDigits(static_cast<unsigned char>(c));
  return NameCharacter(HexByteValue({code.data(), code.size()}, 0)) == c;
}

Objection ToName(std::string_view name) {
  const auto* const bad =
      std::find_if_not(name.begin(), name.end(), [](char c) { return IsNameCharacter(c); });
  if (bad != name.end()) {
    const std::string_view rest = name.substr(static_cast<std::size_t>(bad - name.begin()));
    return {To::kCharacter, Quoted(FirstCharacters(rest, 1))};
  }
  return {name.size() > kNameLength ? To::kLength : To::kNothing};
}

bool HoldsIt(const EditedChannel& channel, Field field, int number, std::string_view name) {
  if (channel.base == nullptr) return false;
  const ChannelKind kind = channel.place.kind;
  return field == Field::kName ? channel.base->Text(kind, field) == name
                               : channel.base->Number(kind, field) == number;
}

}  // namespace

EditedChannel EditedChannelOf(const CloneImage& image, int model, const ChannelPlace& place) {
  const bool in_use = InUse(image, place);
  const bool fresh = place.kind == ChannelKind::kMemory && !in_use;
  return {place, model, VersionOf(image), in_use,
          fresh ? &image.TemplateChannel() : &RecordAt(image, place)};
}

bool ChangesInRepeaterRow(Field field) {
  return std::find(std::begin(kFixedInRepeaterRow), std::end(kFixedInRepeaterRow), field) ==
         std::end(kFixedInRepeaterRow);
}

Objection ObjectionTo(const EditedChannel& channel, Field field, int number,
                      std::string_view name) {
  if (HoldsIt(channel, field, number, name)) return {};
  if (IsRepeaterRow(channel.place) && !ChangesInRepeaterRow(field)) return {To::kRow};
  switch (field) {
    case Field::kFrequency: return ToFrequency(number, channel);
    case Field::kShiftFrequency:
      return number >= kOffsetEnd ? Objection{To::kOffset} : ToFraction(number);
    case Field::kName: return ToName(name);
    case Field::kShift: {
      const bool offered = number != kSplit || OffersSplit(channel.place.kind, channel.place.index);
      return {offered ? To::kNothing : To::kSplit};
    }
    default: return {};
  }
}

std::string WhyNotField(const ChannelRecord& record, Field field, const EditedChannel& channel) {
  const ChannelKind kind = channel.place.kind;
  const std::string_view name =
      field == Field::kName ? std::string_view(record.Text(kind, field)) : std::string_view();
  const auto [to, detail] = ObjectionTo(channel, field, record.Number(kind, field), name);
  switch (to) {
    case To::kNothing: return {};
    case To::kRow: return "cannot be changed in the repeater-access row";
    case To::kMhz: {
      const std::string bands = BandTexts(channel, true);
      const std::string model(ModelName(channel.model));
      return "is outside the bands; " +
             (bands.empty() ? model + " has none" : "those of " + model + " are " + bands);
    }
    case To::kFraction: return "is no multiple of 5 or 12.5 kHz; the nearest below is " + detail;
    case To::kOffset: return "is too large; a shift has two digits before the point";
    case To::kSplit: return "is for VFO and CALL only";
    case To::kCharacter: return "holds a character that no name can have: " + detail;
    case To::kLength: return "is longer than 6 characters";
  }
  return {};
}

std::string BandTexts(const EditedChannel& channel, bool named) {
  std::string texts;
  for (const Band band : kBands) {
    if (channel.place.kind == ChannelKind::kSpecial && band != channel.place.band) continue;
    const std::string_view text = BandTableOf(band).BandText(channel.model, channel.range);
    if (text.empty()) continue;
    if (!texts.empty()) texts += ' ';
    if (named) texts += std::string(BandName(band)) + ' ';
    texts += text;
  }
  return texts;
}

std::string WhyNotDialText(std::string_view text, int index) {
  if (DialCharacters(text) != text) return "holds characters other than 0 to 9, A to D, * and #";
  if (text.size() > kDialLength) return "is longer than 16 characters";
  return text.empty() && index == kStart ? "must not be empty" : "";
}

}  // namespace q40
