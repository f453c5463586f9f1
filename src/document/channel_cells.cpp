#include "document/channel_cells.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "base/digits.h"
#include "base/hex.h"
#include "base/plain_text.h"
#include "document/dialog_values.h"
#include "document/edit_rules.h"
#include "document/value_rules.h"
#include "radio/channel_fields.h"
#include "radio/memory_map.h"

namespace q40 {
namespace {

constexpr std::size_t kFractionLength = 4;
constexpr std::size_t kMhzLength = 3;
constexpr int kSplitChoice = 3;

bool IsSpecial(const ChannelPlace& place) { return place.kind == ChannelKind::kSpecial; }
bool IsLimit(const ChannelPlace& place) { return IsSpecial(place) && place.index >= kPhRow; }
std::size_t RowOf(const ChannelPlace& place) { return static_cast<std::size_t>(place.index); }

constexpr char LowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool StartsWith(std::string_view text, std::string_view start) {
  return start.size() <= text.size() &&
         std::equal(start.begin(), start.end(), text.begin(),
                    [](char a, char b) { return LowerCase(a) == LowerCase(b); });
}
bool SameWord(std::string_view a, std::string_view b) {
  return a.size() == b.size() && StartsWith(a, b);
}

// ---- what is typed

// The text without the unit of the field that may stand behind it.
std::string_view Bare(Field field, std::string_view text) {
  text = Trimmed(text);
  const std::string_view unit = UnitOf(field);
  if (!unit.empty() && text.size() > unit.size() &&
      SameWord(text.substr(text.size() - unit.size()), unit)) {
    text.remove_suffix(unit.size());
  }
  return Trimmed(text);
}

// "145.6125" and "145,6125" as up to three digits of MHz and four behind the point. No value: it is
// neither, or is finer than 100 Hz.
std::optional<PastedFrequency> Frequency(std::string_view text) {
  const auto strange = [](char c) { return !IsDigit(c) && c != '.' && c != ','; };
  if (text.empty() || !IsDigit(text.front()) || std::any_of(text.begin(), text.end(), strange)) {
    return std::nullopt;
  }
  if (!IsDigit(text.back())) text.remove_suffix(1);  // "145."
  auto found = AreDigits(text) ? PastedFrequency{std::string(text), ""} : WholeFrequency(text);
  if (!found) return std::nullopt;
  std::string& fraction = found->fraction;
  if (fraction.find_first_not_of('0', kFractionLength) != std::string::npos) return std::nullopt;
  if (found->mhz.size() > kMhzLength) return std::nullopt;
  fraction.resize(kFractionLength, '0');
  return found;
}

// The entry that a text means: the same word, the same number, or the only one that begins so.
std::optional<int> ChoiceIn(const std::vector<std::string>& choices, Field field,
                            std::string_view typed) {
  std::string number(typed);
  std::replace(number.begin(), number.end(), ',', '.');
  const bool is_number = typed.find_first_not_of("0123456789.,") == std::string_view::npos;
  std::optional<int> begun;
  int begins = 0;
  for (std::size_t i = 0; i < choices.size(); ++i) {
    const std::string_view choice = Trimmed(WithoutUnit(field, choices[i]));
    const auto at = static_cast<int>(i);
    if (SameWord(choice, typed) || SameWord(choices[i], typed)) return at;
    if (is_number && IsDigit(choice.front()) && LeadingNumber(choice) == LeadingNumber(number)) {
      return at;
    }
    if (StartsWith(choice, typed) && ++begins == 1) begun = at;
  }
  return begins == 1 ? begun : std::nullopt;
}

// ---- one edit

class Edit {
 public:
  Edit(CloneImage& image, int model, const ChannelPlace& place, Field field)
      : image_(image),
        place_(place),
        field_(field),
        channel_(EditedChannelOf(image, model, place)),
        values_(ValuesOf(*channel_.base, place.kind, IsRepeaterRow(place))) {}

  CellResult Take(std::string_view text) {
    std::string refusal = Refusal(text);
    if (!refusal.empty()) return {std::move(refusal), {}};
    const ChannelRecord& before = *channel_.base;
    ChannelRecord after =
        RecordOf(values_, place_.kind, IsRepeaterRow(place_), RecordAt(image_, place_));
    CellResult result{{}, channel_.in_use ? Followers(before, after) : std::string()};
    PutRecord(image_, place_, std::move(after));
    return result;
  }

 private:
  std::string Refusal(std::string_view text) {
    if (!HasField(place_.kind, field_)) return "A special channel has none.";
    if (!IsEditable(place_, field_)) return "The repeater row does not carry it.";
    if (!channel_.in_use && field_ != Field::kFrequency) {
      return "The channel is empty; it begins with a frequency.";
    }
    if (field_ == Field::kName) return Name(UpperCase(text));
    if (field_ == Field::kFrequency) return ChannelFrequency(Bare(field_, text));
    if (field_ == Field::kShiftFrequency) return Offset(Bare(field_, text));
    return Choice(Bare(field_, text));
  }

  std::string Name(const std::string& name) {
    values_.name = name;
    return Against(0, name);
  }

  std::string ChannelFrequency(std::string_view text) {
    if (text.empty()) return "A channel has a frequency; Clear empties the channel.";
    const auto typed = Frequency(WithoutStar(text));
    if (!typed) {
      return Quoted(text) + " is no frequency in MHz with four digits behind the point.";
    }
    values_.mhz = typed->mhz;
    return Fraction(*typed, values_.fraction, text);
  }

  std::string Offset(std::string_view text) {
    const auto typed = Frequency(text);
    if (!typed) return NoOffset(text);
    values_.offset_mhz = typed->mhz;
    return Fraction(*typed, values_.offset_fraction, text);
  }

  static std::string NoOffset(std::string_view text) {
    return Quoted(text) + " is no offset: up to 99 MHz, without a sign.";
  }

  // The step follows the fraction, also that of the offset, as in the dialog.
  std::string Fraction(const PastedFrequency& typed, std::string& fraction, std::string_view text) {
    fraction = typed.fraction;
    if (!IsRepeaterRow(place_)) values_[Field::kStep] = TuneFraction(fraction).step;
    return Against(LeadingFrequency(typed.mhz + '.' + fraction), text);
  }

  std::string Choice(std::string_view text) {
    const auto choices = ChoicesOf(place_, field_);
    if (const auto choice = ChoiceIn(choices, field_, text)) {
      values_[field_] = *choice;
      return {};
    }
    constexpr std::size_t kShortList = 7;
    if (choices.size() > kShortList) return Quoted(text) + " is not in the list.";
    const std::string words = std::accumulate(
        std::next(choices.begin()), choices.end(), choices.front(),
        [](const std::string& list, const std::string& word) { return list + ", " + word; });
    return Quoted(text) + " is none of " + words + ".";
  }

  // What the dialog has against a number, or against a text that is a name.
  [[nodiscard]] std::string Against(Units100Hz number, std::string_view text) const {
    const auto [to, detail] = ObjectionTo(channel_, field_, number, text);
    switch (to) {
      case Objection::To::kMhz: return OutsideText(number / kUnitsPerMhz);
      case Objection::To::kFraction:
        return '.' + FractionDigits(FrequencyText(number)) +
               " is no multiple of 5 or 12.5 kHz; the next below is ." + FractionDigits(detail) +
               ".";
      case Objection::To::kOffset: return NoOffset(text);
      case Objection::To::kCharacter: return detail + " is no character of a name.";
      case Objection::To::kLength: return "Six characters fit into a name.";
      default: return {};  // of what cannot be typed into this cell
    }
  }

  [[nodiscard]] std::string OutsideText(int mhz) const {
    const std::string ranges = BandTexts(channel_, false);
    const std::string model(ModelName(channel_.model));
    if (ranges.empty()) return "Nothing is known of the bands of the " + model + ".";
    return std::to_string(mhz) + " MHz is outside the bands of the " + model + ": " + ranges + ".";
  }

  [[nodiscard]] std::string Followers(const ChannelRecord& before,
                                      const ChannelRecord& after) const {
    std::string also;
    for (const Field field : kReadingOrder) {
      if (field == field_ || !HasField(place_.kind, field) || !IsEditable(place_, field)) continue;
      const int number = after.Number(place_.kind, field);
      if (before.Number(place_.kind, field) == number) continue;
      also += (also.empty() ? "" : ", ") + std::string(FieldName(field)) + ' ' +
              std::string(CodeText(field, number));
    }
    return also;
  }

  CloneImage& image_;
  ChannelPlace place_;
  Field field_;
  EditedChannel channel_;
  DialogValues values_;
};

}  // namespace

std::string TitleOf(const ChannelPlace& place) {
  if (!IsSpecial(place)) return ChannelTitle(place.index);
  return std::string(kSpecialRowTitles[RowOf(place)]);
}

std::string NameOf(const ChannelPlace& place) {
  const std::string_view where = IsSpecial(place) ? BandName(place.band) : "channel";
  return std::string(where) + ' ' + TitleOf(place);
}

const ChannelRecord& RecordAt(const CloneImage& image, const ChannelPlace& place) {
  if (IsSpecial(place)) return SpecialStore(image, place.band)[RowOf(place)];
  return image.MemoryTable[RowOf(place)];
}

ChannelRecord& RecordAt(CloneImage& image, const ChannelPlace& place) {
  if (IsSpecial(place)) return SpecialStore(image, place.band)[RowOf(place)];
  return image.MemoryTable[RowOf(place)];
}

bool InUse(const CloneImage& image, const ChannelPlace& place) {
  if (!IsSpecial(place)) return image.ChannelInUse[RowOf(place)];
  return EffectivelyPresent(SpecialStore(image, place.band), StoredPresent(image, place.band),
                            place.index);
}

void PutRecord(CloneImage& image, const ChannelPlace& place, ChannelRecord record) {
  RecordAt(image, place) = std::move(record);
  if (!IsSpecial(place)) image.ChannelInUse[RowOf(place)] = true;
  if (!IsLimit(place)) return;
  PresentPair present = StoredPresent(image, place.band);
  present[RowOf(place) - kPhRow] = true;
  SetStoredPresent(image, place.band, present);
}

bool ClearRecord(CloneImage& image, const ChannelPlace& place) {
  if (IsSpecial(place) && !IsLimit(place)) return false;
  RecordAt(image, place) = {};
  if (!IsSpecial(place)) {
    image.ChannelInUse[RowOf(place)] = false;
    return true;
  }
  PresentPair present = StoredPresent(image, place.band);
  present[RowOf(place) - kPhRow] = false;
  SetStoredPresent(image, place.band, present);
  return true;
}

bool IsEditable(const ChannelPlace& place, Field field) {
  if (!HasField(place.kind, field)) return false;
  return !IsRepeaterRow(place) || ChangesInRepeaterRow(field);
}

std::vector<std::string> ChoicesOf(const ChannelPlace& place, Field field) {
  if (field == Field::kSkip) return {"Off", "On"};
  if (field == Field::kBandwidth) return {"Narrow", "Normal"};
  std::vector<std::string> choices;
  for (const Word& word : WordsOf(field)) choices.emplace_back(word.text);
  for (const std::string_view text : IndexListOf(field)) choices.emplace_back(text);
  if (field == Field::kShift && !OffersSplit(place.kind, place.index)) choices.resize(kSplitChoice);
  return choices;
}

std::string_view UnitOf(Field field) {
  switch (field) {
    case Field::kFrequency:
    case Field::kShiftFrequency: return "MHz";
    case Field::kStep: return "kHz";
    case Field::kTxTone:
    case Field::kRxTone: return "Hz";
    case Field::kAtt: return "dB";
    default: return {};
  }
}

std::string_view WithoutUnit(Field field, std::string_view text) {
  return text.empty() || !IsDigit(text.front()) ? text : Bare(field, text);
}

std::string HeadingOf(Field field) {
  const std::string_view unit = UnitOf(field);
  return std::string(FieldName(field)) + (unit.empty() ? "" : ", ") + std::string(unit);
}

std::string CellText(const CloneImage& image, const ChannelPlace& place, Field field) {
  if (!InUse(image, place) || !IsEditable(place, field)) return {};
  const ChannelRecord& record = RecordAt(image, place);
  const int number = record.Number(place.kind, field);
  switch (field) {
    case Field::kFrequency:
    case Field::kShiftFrequency: return OffsetText(number);
    case Field::kName: return record.Text(place.kind, field);
    case Field::kSkip: return number == 1 ? "On" : "Off";
    default: return std::string(WithoutUnit(field, CodeText(field, number)));
  }
}

CellResult SetCell(CloneImage& image, int model, const ChannelPlace& place, Field field,
                   std::string_view text) {
  return Edit(image, model, place, field).Take(text);
}

}  // namespace q40
