#include "card/card_content.h"

#include <cstdlib>
#include <ctime>

#include "base/decimal.h"
#include "base/plain_text.h"
#include "document/channel_cells.h"
#include "document/document_cells.h"
#include "radio/memory_map.h"

namespace q40 {
namespace {

enum ToneMode : int { kTone = 1, kToneSquelch = 3, kDcs = 12 };
enum ShiftMode : int { kNoShift, kDown, kUp, kSplit };

// "0.6" of "0.6000": on a card, room is dear.
std::string Short(std::string text) {
  const std::size_t last = text.find_last_not_of('0');
  if (last == std::string::npos || text.find('.') == std::string::npos) return text;
  text.resize(text[last] == '.' ? last + 2 : last + 1);
  return text;
}

class CardRow {
 public:
  CardRow(const CloneImage& image, const ChannelPlace& place) : image_(image), place_(place) {}

  [[nodiscard]] CardCells Cells() const {
    const bool special = place_.kind == ChannelKind::kSpecial;
    return {TitleOf(place_), special ? std::string(BandName(place_.band)) : Name(),
            Text(Field::kFrequency), Shift(), Tone()};
  }

 private:
  [[nodiscard]] std::string Text(Field field) const { return CellText(image_, place_, field); }
  [[nodiscard]] int Number(Field field) const {
    return RecordAt(image_, place_).Number(place_.kind, field);
  }
  // An imported list may have brought anything.
  [[nodiscard]] std::string Name() const { return Printable(Text(Field::kName)); }

  [[nodiscard]] std::string Shift() const {
    const std::string offset = Short(Text(Field::kShiftFrequency));
    switch (Number(Field::kShift)) {
      case kDown: return '-' + offset;
      case kUp: return '+' + offset;
      case kSplit: return "Split " + offset;
      default: return {};
    }
  }

  [[nodiscard]] std::string Tone() const {
    switch (Number(Field::kTone)) {
      case kTone: return "T " + Text(Field::kTxTone);
      case kToneSquelch: return "TSQ " + Both(Field::kTxTone, Field::kRxTone);
      case kDcs: return "DCS " + Both(Field::kTxDcs, Field::kRxDcs);
      default: return {};
    }
  }
  // What is sent, and what is waited for where that is another one.
  [[nodiscard]] std::string Both(Field sent, Field heard) const {
    return Text(sent) == Text(heard) ? Text(sent) : Text(sent) + '/' + Text(heard);
  }

  const CloneImage& image_;
  ChannelPlace place_;
};

// Of whoever wants the same bytes every time, else of today.
std::string Today() {
  std::time_t now = std::time(nullptr);
  std::tm parts{};
  if (const auto wanted = WantedTime()) {
    now = *wanted;
    gmtime_r(&now, &parts);
  } else {
    localtime_r(&now, &parts);
  }
  std::array<char, 32> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", &parts)};
}

}  // namespace

std::optional<std::time_t> WantedTime() {
  const char* const text = std::getenv("SOURCE_DATE_EPOCH");
  if (text == nullptr || *text == '\0') return std::nullopt;
  char* end = nullptr;
  const long long seconds = std::strtoll(text, &end, 10);
  constexpr long long kLatest = 253'402'300'799;  // the end of the year 9999
  if (*end != '\0' || seconds < 0 || seconds > kLatest) return std::nullopt;
  return static_cast<std::time_t>(seconds);
}

CardContent MakeCard(const CloneData& document, std::string_view file, bool special) {
  CardContent card{ModelText(document), Printable(file), Today(), {}};
  const auto add = [&](const ChannelPlace& place) {
    if (InUse(document.image, place)) card.rows.push_back(CardRow(document.image, place).Cells());
  };
  for (int n = 0; n < kMemoryChannelCount; ++n) add({ChannelKind::kMemory, Band::kVhf, n});
  for (const Band band : kBands) {
    for (int k = 0; special && k < kSpecialChannelCount; ++k) add({ChannelKind::kSpecial, band, k});
  }
  return card;
}

}  // namespace q40
