#include "lists/list_words.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "base/decimal.h"
#include "base/digits.h"
#include "lists/list_numbers.h"

namespace q40 {
namespace {

bool IsAlphanumeric(char c) { return IsDigit(c) || (c >= 'a' && c <= 'z'); }

template <class Value>
struct WordRow {
  std::string_view word;
  Value value;
};
template <class Value>
std::optional<Value> Found(std::span<const WordRow<Value>> rows, std::string_view word) {
  const auto row = std::find_if(rows.begin(), rows.end(), [&](auto& r) { return r.word == word; });
  return row == rows.end() ? std::nullopt : std::optional(row->value);
}

// A sign counts as a letter where it alone says something.
std::string SignedWord(std::string_view item) {
  item = Trimmed(item);
  char sign = TakeSign(item);
  std::string word = BareWord(item);
  if (word.empty() && !item.empty()) return "?";
  if (sign == '\0' && (item.ends_with('+') || item.ends_with('-'))) sign = item.back();
  if (sign != '\0') word.insert(0, 1, sign);
  return word;
}

constexpr WordRow<Direction> kDirections[] = {
    {"", Direction::kSimplex},
    {"simplex", Direction::kSimplex},
    {"sx", Direction::kSimplex},
    {"s", Direction::kSimplex},
    {"none", Direction::kSimplex},
    {"no", Direction::kSimplex},
    {"0", Direction::kSimplex},
    {"ohne", Direction::kSimplex},
    {"kein", Direction::kSimplex},
    {"keine", Direction::kSimplex},
    {"-", Direction::kMinus},
    {"minus", Direction::kMinus},
    {"neg", Direction::kMinus},
    {"negative", Direction::kMinus},
    {"negativ", Direction::kMinus},
    {"down", Direction::kMinus},
    {"-shift", Direction::kMinus},
    {"-dup", Direction::kMinus},
    {"-duplex", Direction::kMinus},
    {"-offset", Direction::kMinus},
    {"-rpt", Direction::kMinus},
    {"+", Direction::kPlus},
    {"plus", Direction::kPlus},
    {"pos", Direction::kPlus},
    {"positive", Direction::kPlus},
    {"positiv", Direction::kPlus},
    {"up", Direction::kPlus},
    {"+shift", Direction::kPlus},
    {"+dup", Direction::kPlus},
    {"+duplex", Direction::kPlus},
    {"+offset", Direction::kPlus},
    {"+rpt", Direction::kPlus},
    {"split", Direction::kSplit},
    {"odd", Direction::kSplit},
    {"off", Direction::kNoTransmit},
    {"rxonly", Direction::kNoTransmit},
    {"receiveonly", Direction::kNoTransmit},
};

constexpr WordRow<ToneKind> kToneKinds[] = {
    {"", ToneKind::kNone},
    {"none", ToneKind::kNone},
    {"off", ToneKind::kNone},
    {"no", ToneKind::kNone},
    {"0", ToneKind::kNone},
    {"csq", ToneKind::kNone},
    {"carrier", ToneKind::kNone},
    {"aus", ToneKind::kNone},
    {"kein", ToneKind::kNone},
    {"keine", ToneKind::kNone},
    {"ohne", ToneKind::kNone},
    {"tone", ToneKind::kSent},
    {"ton", ToneKind::kSent},
    {"enc", ToneKind::kSent},
    {"encode", ToneKind::kSent},
    {"t", ToneKind::kSent},
    {"tonetx", ToneKind::kSent},
    {"tsq", ToneKind::kSquelch},
    {"tsql", ToneKind::kSquelch},
    {"tonesql", ToneKind::kSquelch},
    {"ctcss", ToneKind::kSquelch},
    {"encdec", ToneKind::kSquelch},
    {"tonesquelch", ToneKind::kSquelch},
    {"tonrausch", ToneKind::kSquelch},
    {"dcs", ToneKind::kDcs},
    {"dtcs", ToneKind::kDcs},
    {"dpl", ToneKind::kDcs},
};

constexpr std::string_view kFmWords[] = {"fm",   "nfm", "fmn", "nbfm",   "fmnarrow", "wfm",
                                         "wbfm", "fmw", "f3e", "analog", "analogue"};
constexpr std::string_view kNarrowWords[] = {"nfm", "fmn", "nbfm", "fmnarrow", "narrow", "n"};
constexpr std::string_view kOtherModes[] = {
    "am",  "nam",     "ssb",  "usb",    "lsb",      "cw",   "dmr",   "dstar", "star",
    "dv",  "ysf",     "c4fm", "fusion", "p25",      "nxdn", "tetra", "m17",   "atv",
    "dig", "digital", "aprs", "packet", "echolink", "rtty", "auto"};

constexpr WordRow<std::string_view> kWidths[] = {
    {"narrow", "Narrow"}, {"n", "Narrow"},    {"nar", "Narrow"}, {"nfm", "Narrow"},
    {"schmal", "Narrow"}, {"wide", "Normal"}, {"w", "Normal"},   {"normal", "Normal"},
    {"breit", "Normal"},  {"fm", "Normal"},   {"std", "Normal"}};
constexpr WordRow<std::string_view> kPowers[] = {
    {"hi", "Hi"},   {"high", "Hi"}, {"h", "Hi"},       {"max", "Hi"}, {"hoch", "Hi"},
    {"mid", "Mid"}, {"med", "Mid"}, {"medium", "Mid"}, {"m", "Mid"},  {"mittel", "Mid"},
    {"lo", "Lo"},   {"low", "Lo"},  {"l", "Lo"},       {"min", "Lo"}, {"niedrig", "Lo"}};
constexpr WordRow<std::string_view> kSkips[] = {
    {"on", "On"}, {"yes", "On"},    {"y", "On"},     {"s", "On"},    {"skip", "On"},
    {"x", "On"},  {"1", "On"},      {"true", "On"},  {"ja", "On"},   {"lockout", "On"},
    {"lo", "On"}, {"", "Off"},      {"off", "Off"},  {"no", "Off"},  {"n", "Off"},
    {"0", "Off"}, {"false", "Off"}, {"nein", "Off"}, {"scan", "Off"}};
constexpr std::string_view kNoneWords[] = {"",   "0",    "00",      "000",  "off",  "none",
                                           "no", "kein", "keine",   "0000", "ohne", "aus",
                                           "na", "csq",  "carrier", "nein"};

template <class Words>
bool Among(const Words& words, std::string_view word) {
  return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

// The words of an item, in small letters: "FM-N" are two.
template <class Take>
void ForEachWord(std::string_view item, Take take) {
  std::string word;
  for (const char c : std::string(item) + ' ') {
    if (IsAlphanumeric(LowerCase(c))) {
      word += LowerCase(c);
    } else if (!word.empty()) {
      take(word);
      word.clear();
    }
  }
}

}  // namespace

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string BareWord(std::string_view text) {
  std::string word;
  for (const char c : text) {
    if (IsAlphanumeric(LowerCase(c))) word += LowerCase(c);
  }
  return word;
}

bool SaysNone(std::string_view item) { return Among(kNoneWords, BareWord(item)); }

std::optional<Direction> DirectionIn(std::string_view item) {
  const bool dashes = item.size() > 1 && item.find_first_not_of('-') == std::string_view::npos;
  return dashes ? Direction::kSimplex : Found<Direction>(kDirections, SignedWord(item));
}

std::optional<ToneKind> ToneKindIn(std::string_view item) {
  return Found<ToneKind>(kToneKinds, BareWord(item));
}

ModeItem ModeIn(std::string_view item) {
  ModeItem mode;
  ForEachWord(item, [&](const std::string& word) {
    const bool fm = Among(kFmWords, word);
    mode.fm = mode.fm || fm;
    mode.known = mode.known || fm || Among(kOtherModes, word);
    mode.narrow = mode.narrow || Among(kNarrowWords, word);
  });
  mode.narrow = mode.narrow && mode.fm;
  return mode;
}

std::optional<std::string_view> WidthIn(std::string_view item) {
  constexpr std::int64_t kWidestNarrow = 12'500'000;
  constexpr std::int64_t kNarrowestNormal = 20'000'000;
  constexpr std::int64_t kLargestKhz = 1'000'000'000;
  const auto number = NumberIn(item);
  if (!number) return Found<std::string_view>(kWidths, BareWord(item));
  const std::int64_t khz =
      number->millionths >= kLargestKhz ? number->millionths / 1'000 : number->millionths;
  if (khz > 0 && khz <= kWidestNarrow) return "Narrow";
  if (khz >= kNarrowestNormal) return "Normal";
  return std::nullopt;
}

std::optional<std::string_view> PowerIn(std::string_view item) {
  return Found<std::string_view>(kPowers, BareWord(item));
}

bool SaysNormal(std::string_view item) {
  constexpr std::string_view kNormalWords[] = {"n", "nn", "normal"};
  return SaysNone(item) || Among(kNormalWords, BareWord(item));
}

std::optional<std::string_view> SkipIn(std::string_view item) {
  return Found<std::string_view>(kSkips, BareWord(item));
}

}  // namespace q40
