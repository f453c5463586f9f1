#include "lists/list_numbers.h"

#include <algorithm>

#include "base/decimal.h"
#include "base/digits.h"
#include "lists/list_words.h"
#include "radio/memory_map.h"

namespace q40 {
namespace {

constexpr std::int64_t kMillion = 1'000'000;
constexpr std::int64_t kThousand = 1'000;
constexpr std::size_t kMostWholeDigits = 10;
constexpr std::size_t kDecimals = 6;
constexpr std::size_t kGroup = 3;

bool IsPoint(char c) { return c == '.' || c == ','; }

// Where the decimals begin in digits with points and commas; at its end: nowhere. No value: the signs
// part nothing that is a number.
std::optional<std::size_t> DecimalSign(std::string_view digits) {
  const std::size_t first = std::min(digits.find_first_of(".,"), digits.size());
  const std::size_t last = digits.find_last_of(".,");
  if (first == digits.size() || first == last) return first;
  std::size_t before = first;
  for (std::size_t i = first + 1; i <= digits.size(); ++i) {
    if (i < digits.size() && !IsPoint(digits[i])) continue;
    const bool decimals = before == last && digits[last] != digits[first];
    if (!decimals && i - before - 1 != kGroup) return std::nullopt;
    if (!decimals && digits[before] != digits[first]) return std::nullopt;
    before = i;
  }
  return digits[last] == digits[first] ? digits.size() : last;
}

std::string DigitsIn(std::string_view text) {
  std::string digits(text);
  std::erase_if(digits, [](char c) { return !IsDigit(c); });
  return digits;
}

std::int64_t Value(std::string_view digits) {
  std::int64_t value = 0;
  for (const char c : digits) value = 10 * value + (c - '0');
  return value;
}

std::optional<std::int64_t> Hz(const ListNumber& number, std::int64_t first_khz,
                               std::int64_t first_hz) {
  const std::string_view unit = number.unit;
  const auto by_size = [&](std::int64_t from, std::int64_t below) {
    return unit.empty() && number.millionths >= from * kMillion &&
           (below == 0 || number.millionths < below * kMillion);
  };
  if (unit == "ghz" && number.millionths < kMillion * kMillion)
    return number.millionths * kThousand;
  if (unit == "mhz" || unit == "m" || by_size(0, first_khz)) return number.millionths;
  if (unit == "khz" || unit == "k" || by_size(first_khz, first_hz)) {
    return number.millionths / kThousand;
  }
  if (unit == "hz" || by_size(first_hz, 0)) return number.millionths / kMillion;
  return std::nullopt;
}

}  // namespace

char TakeSign(std::string_view& text) {
  // The last is the dash of Windows, of which Latin-1 knows nothing.
  constexpr std::string_view kMinusSigns[] = {"-", "\xE2\x88\x92", "\xE2\x80\x93", "\xC2\x96"};
  for (const std::string_view minus : kMinusSigns) {
    if (!text.starts_with(minus)) continue;
    text = Trimmed(text.substr(minus.size()));
    return '-';
  }
  if (!text.starts_with('+')) return '\0';
  text = Trimmed(text.substr(1));
  return '+';
}

std::optional<ListNumber> NumberIn(std::string_view item) {
  std::string_view text = Trimmed(item);
  ListNumber number;
  number.sign = TakeSign(text);
  if (text.empty() || (!IsDigit(text.front()) && !IsPoint(text.front()))) return std::nullopt;
  const std::size_t length = std::min(text.find_first_not_of("0123456789.,"), text.size());
  const std::string_view digits = text.substr(0, length);
  const auto sign = DecimalSign(digits);
  if (!sign) return std::nullopt;
  const std::string whole = DigitsIn(digits.substr(0, *sign));
  std::string decimals = DigitsIn(digits.substr(*sign));
  if (whole.size() > kMostWholeDigits || whole.size() + decimals.size() == 0) return std::nullopt;
  decimals.resize(std::max(decimals.size(), kDecimals + 1), '0');
  number.millionths = Value(whole) * kMillion + Value(decimals.substr(0, kDecimals)) +
                      (decimals[kDecimals] >= '5' ? 1 : 0);
  const std::string_view unit = Trimmed(text.substr(length));
  number.unit = BareWord(unit);
  if (number.unit.size() != unit.size()) return std::nullopt;
  return number;
}

std::optional<std::int64_t> HzOfFrequency(const ListNumber& number) {
  return Hz(number, 10'000, 10'000'000);
}
std::optional<std::int64_t> HzOfOffset(const ListNumber& number) {
  return Hz(number, 100, 100'000);
}

std::string MhzText(std::int64_t hz) {
  constexpr std::size_t kShortest = 4;
  std::string decimals = std::to_string(hz % kHzPerMhz);
  decimals.insert(0, kDecimals - decimals.size(), '0');
  while (decimals.size() > kShortest && decimals.back() == '0') decimals.pop_back();
  return std::to_string(hz / kHzPerMhz) + '.' + decimals;
}

std::optional<int> ChannelIn(std::string_view item) {
  constexpr std::size_t kMostDigits = 6;
  item = Trimmed(item);
  const bool d = item.size() == 2 && LowerCase(item.front()) == 'd' && IsDigit(item.back());
  if (d) return kFirstDChannel + (item.back() - '0');
  if (!AreDigits(item) || item.size() > kMostDigits) return std::nullopt;
  const std::int64_t number = Value(item);
  return number < kFirstDChannel ? std::optional(static_cast<int>(number)) : std::nullopt;
}

}  // namespace q40
