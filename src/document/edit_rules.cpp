#include "document/edit_rules.h"

#include <algorithm>
#include <iterator>

#include "base/digits.h"
#include "base/hex.h"

namespace q40 {
namespace {

constexpr int kFractionDigits = 4;
constexpr std::size_t kMhzDigits = 3;

bool IsIn(char c, std::string_view list) { return list.find(c) != std::string_view::npos; }
bool IsPoint(char c) { return IsIn(c, ".,"); }

// Digits after the point in units of 100 Hz, 0..9999.
int FractionUnits(std::string_view text) {
  int units = 0;
  int digits = 0;
  for (; digits < kFractionDigits && !text.empty() && IsDigit(text.front()); ++digits) {
    units = units * 10 + (text.front() - '0');
    text.remove_prefix(1);
  }
  for (; digits < kFractionDigits; ++digits) units *= 10;
  return units;
}

// A multiple of 50 (5 kHz) or 125 (12.5 kHz), and its step index.
std::pair<int, int> Tuned(int units) {
  constexpr int kStep5 = 50;
  constexpr int kStep12 = 125;
  units -= units % 5;
  while (units % kStep5 != 0 && units % kStep12 != 0) units -= 5;
  return {units, units % kStep5 == 0 ? 0 : 2};
}

int TypedMhz(std::string_view typed) {
  return static_cast<int>(LeadingNumber(typed) / kNumberScale);
}

}  // namespace

std::optional<char> FrequencyKey(char key) {
  if (IsDigit(key) || key == kBackspace) return key;
  return std::nullopt;
}

std::optional<char> NameKey(char key) {
  if (key == kBackspace || IsIn(key, " #$()*+-/")) return key;
  if (IsDigit(key) || IsIn(key, "=\\_")) return key;
  if (key >= 'A' && key <= 'D') return key;
  if (key >= 'a' && key <= 'z') return UpperCase(key);
  return std::nullopt;
}

std::optional<char> DialKey(char key) {
  if (key == kBackspace || IsDigit(key) || IsIn(key, "#*ABCD")) return key;
  if (key >= 'a' && key <= 'd') return UpperCase(key);
  return std::nullopt;
}

std::string DialCharacters(std::string_view text) {
  std::string kept;
  for (const char c : text) {
    const auto taken = DialKey(c);
    if (taken && *taken != kBackspace) kept += *taken;
  }
  return kept;
}

std::string Digits(std::string_view text) {
  std::string digits;
  std::copy_if(text.begin(), text.end(), std::back_inserter(digits), IsDigit);
  return digits;
}

std::optional<PastedFrequency> WholeFrequency(std::string_view text) {
  for (std::size_t point = 1; point + 1 < text.size(); ++point) {
    if (!IsPoint(text[point]) || !IsDigit(text[point - 1]) || !IsDigit(text[point + 1])) continue;
    std::size_t first = point;
    while (first > 0 && IsDigit(text[first - 1])) --first;
    std::size_t last = point;
    while (last < text.size() && (IsDigit(text[last]) || IsPoint(text[last]))) ++last;
    return {
        {std::string(text.substr(first, point - first)), Digits(text.substr(point, last - point))}};
  }
  return std::nullopt;
}

std::string_view WithoutPoint(std::string_view text) {
  while (!text.empty() && IsPoint(text.front())) text.remove_prefix(1);
  return text;
}

bool KeyCounter::Typed(char key, bool dropped, int jump_after) {
  if (dropped || typing_) {
    ++count_;
    if (count_ < jump_after) return false;
    Reset();
    return true;
  }
  typing_ = true;
  if (key != kBackspace) count_ = 1;
  return false;
}

void KeyCounter::Reset() {
  typing_ = false;
  count_ = 0;
}

TunedFraction TuneFraction(std::string_view text) {
  const auto [units, step] = Tuned(FractionUnits(text));
  return {FractionDigits(FrequencyText(units)), step};
}

TunedFrequency TuneFrequency(std::string_view text) {
  const Units100Hz frequency = LeadingFrequency(text);
  const auto [units, step] = Tuned(frequency % kUnitsPerMhz);
  return {FrequencyText(frequency - frequency % kUnitsPerMhz + units), step};
}

std::string WholeMhz(std::string_view frequency_text) {
  frequency_text = WithoutStar(frequency_text);
  return std::string(frequency_text.substr(0, frequency_text.find('.')));
}

std::string FractionDigits(std::string_view frequency_text) {
  const auto point = frequency_text.find('.');
  return point == std::string_view::npos ? std::string()
                                         : std::string(frequency_text.substr(point + 1));
}

std::string CheckedSpecialMhz(std::string_view typed, Band band, int model, int range,
                              std::string_view current_text) {
  if (BandTableOf(band).Contains(TypedMhz(typed), model, range)) return std::string(typed);
  return WholeMhz(current_text).substr(0, kMhzDigits);
}

std::string CheckedMemoryMhz(std::string_view typed, int model, int range, bool in_use,
                             std::string_view current_text) {
  constexpr int kModelE = 1;
  const int mhz = TypedMhz(typed);
  for (const Band band : kBands) {
    if (BandTableOf(band).Contains(mhz, model, range)) return std::string(typed);
  }
  if (in_use) return WholeMhz(current_text).substr(0, kMhzDigits);
  // On a version A radio the lower limit is 0, so every frequency lies above it. Intended.
  if (mhz < BandTableOf(Band::kUhf).BandLimit(model, range, kLowerBound)) return "145";
  return model == kModelE ? "435" : "445";
}

std::string DialogCaption(int n) {
  constexpr int kFirstCaptionedD = kFirstDChannel - 1;
  if (n < kFirstCaptionedD) return "CH" + std::to_string(n);
  return "CHD" + std::to_string(n - kFirstDChannel);
}

}  // namespace q40
