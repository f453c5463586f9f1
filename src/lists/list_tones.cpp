#include "lists/list_tones.h"

#include <algorithm>
#include <span>

#include "base/decimal.h"
#include "base/digits.h"
#include "base/plain_text.h"
#include "lists/list_numbers.h"
#include "lists/list_words.h"
#include "radio/values.h"

namespace q40 {
namespace {

constexpr std::int64_t kMillion = 1'000'000;
constexpr std::int64_t kTenth = kMillion / 10;

bool TakeStart(std::string_view& word, std::span<const std::string_view> starts) {
  for (const std::string_view start : starts) {
    if (!word.starts_with(start)) continue;
    word.remove_prefix(start.size());
    return true;
  }
  return false;
}

ToneItem Unfit(std::string text) { return {ToneItem::Kind::kUnfit, std::move(text)}; }

ToneItem DcsOf(std::string_view code, std::string_view item) {
  constexpr std::size_t kCodeLength = 3;
  const bool inverted = code.ends_with('i') || code.ends_with('r');
  if (inverted || code.ends_with('n')) code.remove_suffix(1);
  std::string digits(code);
  if (digits.size() < kCodeLength) digits.insert(0, kCodeLength - digits.size(), '0');
  const bool known = AreDigits(digits) && FindText(DcsTexts(), digits).has_value();
  if (!known) return Unfit(Quoted(item) + " is no DCS code of the radio.");
  if (inverted) return Unfit(Quoted(item) + " is inverted; the radio knows no inverted codes.");
  return {ToneItem::Kind::kDcs, digits};
}

ToneItem CtcssOf(std::string_view text, std::string_view item) {
  constexpr std::int64_t kFirstTenths = 600 * kMillion;
  constexpr std::int64_t kToneCall = 1750 * kMillion;
  const auto number = NumberIn(text);
  if (!number || (number->unit != "hz" && !number->unit.empty())) {
    return Unfit(Quoted(item) + " is no tone.");
  }
  if (number->millionths == 0) return {};
  if (number->millionths == kToneCall) {
    return Unfit("1750 Hz is sent by a key; no channel holds it.");
  }
  const std::int64_t value =
      number->millionths >= kFirstTenths ? number->millionths / 10 : number->millionths;
  const std::int64_t tenths = value / kTenth;
  const std::string entry = std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + "Hz";
  if (value % kTenth == 0 && FindText(ToneTexts(), entry)) {
    return {ToneItem::Kind::kCtcss, entry};
  }
  return Unfit(Quoted(item) + " is no CTCSS tone of the radio.");
}

}  // namespace

ToneItem ToneIn(std::string_view item, bool bare_is_dcs) {
  constexpr std::string_view kDcsStarts[] = {"dcs", "dtcs", "dpl", "d"};
  constexpr std::string_view kToneStarts[] = {"ctcss", "tone", "tsql", "tsq", "pl", "t"};
  if (SaysNone(item)) return {};
  std::string lower(Trimmed(item));
  std::transform(lower.begin(), lower.end(), lower.begin(), LowerCase);
  std::string_view text = lower;
  const bool says_dcs = TakeStart(text, kDcsStarts);
  const bool says_tone = !says_dcs && TakeStart(text, kToneStarts);
  text = Trimmed(text);
  if (says_dcs || (bare_is_dcs && !says_tone)) return DcsOf(text, item);
  // "023N": only a code has a polarity.
  const bool polar = text.size() == 4 && AreDigits(text.substr(0, 3)) && !IsDigit(text.back());
  return polar ? DcsOf(text, item) : CtcssOf(text, item);
}

}  // namespace q40
