#include "document/dialog_values.h"

#include <algorithm>

#include "base/plain_text.h"
#include "document/edit_rules.h"
#include "radio/channel_fields.h"
#include "radio/name_codes.h"

namespace q40 {
namespace {

// Of the fields that the repeater-access row does not carry, the option groups: no option is set.
constexpr Field kUnsetInRepeaterRow[] = {Field::kStep, Field::kPower,       Field::kMid,
                                         Field::kAtt,  Field::kBatterySave, Field::kBandwidth};
// Check boxes that are unticked in it on opening.
constexpr Field kUntickedInRepeaterRow[] = {Field::kRpt, Field::kClock, Field::kBclo};

// What the repeater-access row does not carry.
constexpr Field kDisabledInRepeaterRow[] = {Field::kStep,        Field::kAtt,   Field::kRpt,
                                            Field::kBatterySave, Field::kPower, Field::kMid,
                                            Field::kBandwidth,   Field::kClock};

constexpr std::string_view kRepeaterMhz = "Repeater";
constexpr std::string_view kRepeaterFraction = "r";

// The dialog's option order is that of the numbers, except that " Narrow" stands before "Normal".
int ChoiceOf(Field field, int number) {
  if (field == Field::kBandwidth) return number == 1 ? 0 : 1;
  const auto words = WordsOf(field);
  if (words.empty()) return number;
  const auto word =
      std::find_if(words.begin(), words.end(), [&](const Word& w) { return w.number == number; });
  return word == words.end() ? kUnset : static_cast<int>(word - words.begin());
}

int NumberOf(Field field, int choice) {
  if (field == Field::kBandwidth) return choice == 0 ? 1 : 0;
  const auto words = WordsOf(field);
  return words.empty() ? choice : words[static_cast<std::size_t>(choice)].number;
}

bool IsText(Field field) {
  return field == Field::kFrequency || field == Field::kShiftFrequency || field == Field::kName;
}

}  // namespace

bool DisabledInRepeaterRow(Field field) {
  return std::find(std::begin(kDisabledInRepeaterRow), std::end(kDisabledInRepeaterRow), field) !=
         std::end(kDisabledInRepeaterRow);
}

DialogValues ValuesOf(const ChannelRecord& record, ChannelKind kind, bool repeater_row) {
  DialogValues values;
  for (const Field field : kReadingOrder) {
    if (!HasField(kind, field) || IsText(field)) continue;
    values[field] = ChoiceOf(field, record.Number(kind, field));
  }
  const std::string& frequency = record.Text(kind, Field::kFrequency);
  values.mhz = WholeMhz(frequency);
  values.fraction = FractionDigits(frequency);
  const std::string& offset = record.Text(kind, Field::kShiftFrequency);
  values.offset_mhz = WholeMhz(offset);
  values.offset_fraction = FractionDigits(offset);
  if (HasField(kind, Field::kName)) values.name = record.Text(kind, Field::kName);
  if (repeater_row) {
    values.mhz = kRepeaterMhz;
    values.fraction = kRepeaterFraction;
    for (const Field field : kUnsetInRepeaterRow) values[field] = kUnset;
    for (const Field field : kUntickedInRepeaterRow) values[field] = 0;
  }
  return values;
}

ChannelRecord RecordOf(const DialogValues& values, ChannelKind kind, bool repeater_row,
                       const ChannelRecord& before) {
  ChannelRecord record = before;
  for (const Field field : kReadingOrder) {
    if (!HasField(kind, field) || IsText(field)) continue;
    if (values[field] != kUnset) {
      const int number = NumberOf(field, values[field]);
      record.Set(kind, field, number, CodeText(field, number));
    } else if (repeater_row) {
      record.Set(kind, field, record.Number(kind, field), "");
    }
  }
  const Units100Hz offset = LeadingFrequency(values.offset_mhz + '.' + values.offset_fraction);
  record.Set(kind, Field::kShiftFrequency, offset, OffsetText(offset));
  if (repeater_row) {
    record.Set(kind, Field::kFrequency, record.Frequency(), "");
  } else {
    const Units100Hz frequency = LeadingFrequency(values.mhz + '.' + values.fraction);
    const bool skipped = kind == ChannelKind::kMemory && values[Field::kSkip] == 1;
    std::string text = FrequencyText(frequency);
    if (skipped) text.insert(0, 1, '*');
    record.Set(kind, Field::kFrequency, frequency, text);
  }
  if (HasField(kind, Field::kName)) {
    const std::string name = FirstCharacters(values.name, kNameLength);
    record.Set(kind, Field::kName, name.empty() ? 0 : 1, name);
  }
  return record;
}

}  // namespace q40
