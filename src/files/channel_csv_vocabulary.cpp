#include "files/channel_csv_vocabulary.h"

#include <algorithm>
#include <optional>

#include "base/digits.h"
#include "base/plain_text.h"
#include "files/channel_csv_columns.h"
#include "radio/channel_fields.h"
#include "radio/name_codes.h"
#include "radio/values.h"

namespace q40 {
namespace {

// The entry of a value list that equals the item as a number; none: keep the code.
std::optional<int> IndexByNumber(Field field, std::string_view item) {
  const auto list = IndexListOf(field);
  const auto number = LeadingNumber(item);
  const auto found = std::find_if(list.begin(), list.end(), [&](std::string_view entry) {
    return LeadingNumber(entry) == number;
  });
  if (found == list.end()) return std::nullopt;
  return static_cast<int>(found - list.begin());
}

// Code of an item; no value: the channel keeps its own.
std::optional<int> CodeOfItem(Field field, std::string_view item) {
  constexpr std::size_t kShiftWordLength = 6;
  switch (field) {
    case Field::kFrequency: return LeadingFrequency(WithoutStar(Trimmed(item)));
    case Field::kShiftFrequency: return LeadingFrequency(item);
    case Field::kTxTone:
    case Field::kRxTone:
    case Field::kTxDcs:
    case Field::kRxDcs: return IndexByNumber(field, item);
    case Field::kStep: return FindText(IndexListOf(field), item);
    case Field::kMid:
      return FindText(IndexListOf(field),
                      item.size() == 1 ? '0' + std::string(item) : std::string(item));
    case Field::kShift:  // " -Shift": only the last six characters count
      return CodeOfWord(field, item.substr(item.size() - std::min(item.size(), kShiftWordLength)));
    case Field::kAtt: {
      const auto number = LeadingNumber(item);
      return number == 10 * kNumberScale ? 1 : number == 20 * kNumberScale ? 2 : 0;
    }
    case Field::kBatterySave: return item == "Off" ? 0 : item == "BS-1" ? 1 : 2;
    case Field::kName: return item.empty() ? 0 : 1;
    case Field::kSkip: return item == "On" ? 1 : 0;
    default: return CodeOfWord(field, item);
  }
}

std::string CellText(Field field, int code, const std::string& item) {
  switch (field) {
    case Field::kFrequency: return FrequencyText(code);
    case Field::kShiftFrequency: return OffsetText(code);
    case Field::kName: return FirstCharacters(item, kNameLength);
    default: return std::string(CodeText(field, code));
  }
}

constexpr char LowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameWord(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerCase(x) == LowerCase(y); });
}

// The unit that may follow a number; no value for columns of words alone.
std::optional<std::string_view> UnitOf(Field field) {
  switch (field) {
    case Field::kFrequency:
    case Field::kShiftFrequency: return "MHz";
    case Field::kStep: return "KHz";
    case Field::kTxTone:
    case Field::kRxTone: return "Hz";
    case Field::kAtt: return "dB";
    case Field::kTxDcs:
    case Field::kRxDcs:
    case Field::kMid: return "";
    default: return std::nullopt;
  }
}

// Whether a text is this number and nothing else, apart from a unit. Here a comma is as good as a
// point: 145,5000 was read as 145, which is no mistake if it means the same.
bool IsNumber(std::string_view text, std::int64_t number, std::string_view unit) {
  constexpr std::size_t kDecimals = 4;
  const std::size_t end = std::min(text.find_first_not_of("+-.,0123456789"), text.size());
  std::string digits(text.substr(0, end));
  const std::string_view rest = Trimmed(text.substr(end));
  if (!rest.empty() && !SameWord(rest, unit)) return false;
  std::replace(digits.begin(), digits.end(), ',', '.');
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::size_t beyond = std::min(point + 1 + kDecimals, digits.size());
  return std::any_of(digits.begin(), digits.end(), IsDigit) &&
         digits.find_first_of("+-", 1) == std::string::npos &&
         digits.find('.', std::min(point + 1, digits.size())) == std::string::npos &&
         digits.find_first_not_of('0', beyond) == std::string::npos &&
         LeadingNumber(digits) == number;
}

bool IsAsWritten(Field field, std::string_view item, const ItemReading& reading, int before) {
  if (field == Field::kName) return item == reading.text;
  item = Trimmed(item);
  if (field == Field::kFrequency) item = WithoutStar(item);
  if (item.empty()) return field != Field::kFrequency && reading.code == before;
  if (field == Field::kSkip) return SameWord(item, reading.code == 1 ? "On" : "Off");
  if (SameWord(item, reading.text)) return true;
  const auto unit = UnitOf(field);
  return unit && IsNumber(item, LeadingNumber(reading.text), *unit);
}

}  // namespace

ItemReading ReadItem(Field field, const std::string& item, int before) {
  ItemReading reading;
  reading.code = CodeOfItem(field, item).value_or(before);
  reading.text = CellText(field, reading.code, item);
  reading.as_written = IsAsWritten(field, item, reading, before);
  return reading;
}

bool SaysNothing(Field field, std::string_view item) {
  item = Trimmed(item);
  return item.empty() || SameWord(item, field == Field::kName ? kNoName : "Off");
}

}  // namespace q40
