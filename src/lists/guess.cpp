#include <algorithm>

#include "lists/heading_words.h"
#include "lists/list_numbers.h"
#include "lists/list_tones.h"
#include "lists/list_words.h"
#include "lists/mapping.h"

namespace q40 {
namespace {

using enum Meaning;

constexpr std::size_t kLookedAt = 200;  // rows

// ---- what stands below a heading

bool IsFrequency(std::string_view item) {
  constexpr std::int64_t kLowest = 25 * kHzPerMhz;
  constexpr std::int64_t kHighest = 3'000 * kHzPerMhz;
  const auto number = NumberIn(item);
  if (!number || number->sign != '\0') return false;
  const auto hz = HzOfFrequency(*number);
  return hz && *hz >= kLowest && *hz <= kHighest;
}

bool IsOffset(std::string_view item) {
  constexpr std::int64_t kHighest = 100 * kHzPerMhz;
  const auto number = NumberIn(item);
  if (!number) return false;
  const auto hz = HzOfOffset(*number);
  return hz && *hz < kHighest;
}

// Also of a tone that the radio does not have.
bool IsTone(std::string_view item) {
  constexpr std::int64_t kLowest = 50'000'000;
  constexpr std::int64_t kHighest = 300'000'000;
  if (!ToneIn(item, false).Is(ToneItem::Kind::kUnfit)) return true;
  const auto number = NumberIn(item);
  return number && ((number->millionths >= kLowest && number->millionths <= kHighest) ||
                    number->millionths == 1'750'000'000);
}

bool IsCode(std::string_view item) { return !ToneIn(item, true).Is(ToneItem::Kind::kUnfit); }

bool IsStep(std::string_view item) {
  constexpr std::int64_t kLowest = 1'000'000;
  const auto number = NumberIn(item);
  return number && number->millionths >= kLowest;
}

bool HasLetter(std::string_view item) {
  return std::any_of(item.begin(), item.end(), [](char c) {
    const char small = LowerCase(c);
    return (small >= 'a' && small <= 'z') || static_cast<unsigned char>(c) >= 0x80;
  });
}

bool Fits(Meaning meaning, std::string_view item) {
  switch (meaning) {
    case kOutput: return IsFrequency(item);
    case kInput: return IsFrequency(item) || SaysNone(item);
    case kOffset: return IsOffset(item);
    case kDirection: return DirectionIn(item).has_value();
    case kToneKind: return ToneKindIn(item).has_value();
    case kToneSent:
    case kToneHeard:
    case kToneBoth: return IsTone(item);
    case kDcsSent:
    case kDcsHeard:
    case kDcsBoth: return IsCode(item);
    case kName:
    case kSecondName: return HasLetter(item);
    case kStep: return IsStep(item);
    case kMode: return ModeIn(item).known;
    case kWidth: return WidthIn(item).has_value();
    case kPower: return PowerIn(item).has_value();
    case kSkip: return SkipIn(item).has_value();
    default: return true;
  }
}

// ---- without a heading: only what can hardly be anything else

bool IsSureTone(std::string_view item) {
  return item.find_first_of(".,") != std::string_view::npos &&
         ToneIn(item, false).Is(ToneItem::Kind::kCtcss);
}
bool IsSureOffset(std::string_view item) {
  constexpr std::int64_t kUsual = 10 * kHzPerMhz;
  const auto number = NumberIn(item);
  const bool like_one = number && (number->sign != '\0' || item.find_first_of(".,") < item.size());
  const auto hz = like_one ? HzOfOffset(*number) : std::nullopt;
  return hz && *hz < kUsual;
}
bool IsSureDirection(std::string_view item) {
  const auto direction = DirectionIn(item);
  const bool sign = item == "+" || item == "-";
  return direction && *direction != Direction::kNoTransmit && (sign || item.size() > 2);
}
bool IsSureFrequency(std::string_view item) {
  return IsFrequency(item) && item.find_first_of(".,") != std::string_view::npos;
}
// Not so low that it may as well say where something stands on the globe.
bool IsHighFrequency(std::string_view item) {
  constexpr std::int64_t kLowest = 118 * kHzPerMhz;
  return IsFrequency(item) && HzOfFrequency(*NumberIn(item)) >= kLowest;
}
bool IsAnything(std::string_view /*item*/) { return true; }
bool IsKnownMode(std::string_view item) { return ModeIn(item).known; }

bool IsSureToneOrNone(std::string_view item) { return IsSureTone(item) || SaysNone(item); }
bool IsSureOffsetOrNone(std::string_view item) { return IsSureOffset(item) || SaysNone(item); }
bool IsSureInput(std::string_view item) { return IsSureFrequency(item) || SaysNone(item); }

struct SureRow {
  Meaning meaning;
  bool (*fits)(std::string_view item);                 // nine of ten must
  bool (*one_is)(std::string_view item) = IsAnything;  // at least one must
};
// A tone may look like a frequency (146.2) and a mode like a name: the first that fits counts.
constexpr SureRow kSure[] = {{kToneSent, IsSureToneOrNone, IsSureTone},
                             {kToneHeard, IsSureToneOrNone, IsSureTone},
                             {kOutput, IsSureFrequency, IsHighFrequency},
                             {kInput, IsSureInput, IsHighFrequency},
                             {kOffset, IsSureOffsetOrNone, IsSureOffset},
                             {kDirection, IsSureDirection},
                             {kMode, IsKnownMode},
                             {kName, HasLetter},
                             {kSecondName, HasLetter}};

class Guess {
 public:
  explicit Guess(const ForeignList& list) : list_(list), meanings_(list.Columns(), kIgnored) {}

  ColumnMeanings Make() {
    bool known = false;
    for (const int words : {2, 1}) {
      for (std::size_t c = 0; c < list_.Columns(); ++c) known = ByHeading(c, words) || known;
    }
    if (known && Taken(kOutput)) return std::move(meanings_);
    for (std::size_t c = 0; c < list_.Columns(); ++c) ByItems(c, known);
    return std::move(meanings_);
  }

 private:
  [[nodiscard]] bool Taken(Meaning meaning) const {
    return std::find(meanings_.begin(), meanings_.end(), meaning) != meanings_.end();
  }

  // How many of the items in the first rows there are, and how many of them fit.
  template <class Test>
  [[nodiscard]] std::pair<std::size_t, std::size_t> Count(std::size_t column, Test fits) const {
    std::pair<std::size_t, std::size_t> count{0, 0};
    for (std::size_t i = 0; i < std::min(list_.rows.size(), kLookedAt); ++i) {
      const std::string_view item = ForeignList::Item(list_.rows[i], column);
      if (item.empty()) continue;
      ++count.first;
      if (fits(item)) ++count.second;
    }
    return count;
  }

  // Whether the heading says so in so many words. What it says first counts, if half of the items agree.
  bool ByHeading(std::size_t column, int words) {
    const auto candidates = MeaningsOfHeading(list_.headings[column]);
    if (candidates.empty() || candidates.front().words != words) return false;
    for (const HeadingMeaning& candidate : candidates) {
      if (candidate.meaning == kIgnored || candidate.words < words) break;
      const auto fits = [&](std::string_view item) { return Fits(candidate.meaning, item); };
      const auto [all, fitting] = Count(column, fits);
      const Meaning meaning =
          candidate.meaning == kName && Taken(kName) ? kSecondName : candidate.meaning;
      if (2 * fitting < all || Taken(meaning)) continue;
      meanings_[column] = meaning;
      break;
    }
    return true;
  }

  // Where headings are known, only the output may still be missing.
  void ByItems(std::size_t column, bool only_output) {
    if (meanings_[column] != kIgnored) return;
    for (const SureRow& row : kSure) {
      if (Taken(row.meaning) || (only_output && row.meaning != kOutput)) continue;
      const auto [all, fitting] = Count(column, row.fits);
      if (10 * fitting < 9 * all || Count(column, row.one_is).second == 0) continue;
      meanings_[column] = row.meaning;
      return;
    }
  }

  const ForeignList& list_;
  ColumnMeanings meanings_;
};

}  // namespace

ColumnMeanings GuessMapping(const ForeignList& list) { return Guess(list).Make(); }

}  // namespace q40
