#include "image/vocabulary.h"

#include <algorithm>
#include <array>

#include "app/tables/values.h"

namespace q40 {
namespace {

constexpr Word kToneWords[] = {{0, "None"}, {1, "Tone"}, {3, "TSQ"}, {12, "DCS"}};
constexpr Word kShiftWords[] = {{0, "None"}, {1, "-Shift"}, {2, "+Shift"}, {3, "Split"}};
constexpr Word kPowerWords[] = {{0, "Lo"}, {1, "Mid"}, {2, "Hi"}};
constexpr Word kAttWords[] = {{0, "Off"}, {1, "10dB"}, {2, "20dB"}};
constexpr Word kBatterySaveWords[] = {{0, "Off"}, {1, "BS-1"}, {2, "BS-2"}};
constexpr Word kSwitchWords[] = {{0, "Off"}, {1, "On"}};
constexpr Word kBandwidthWords[] = {{0, "Normal"}, {1, "Narrow"}};

constexpr std::array<std::string_view, kFieldCount> kFieldNames = {
    "Frequency",       "Step",  "Tone", "TxTone", "RxTone", "TxDCS", "Shift",
    "Shift frequency", "Power", "MID",  "ATT",    "BS",     "Clock", "BCLO",
    "Bandwidth",       "Name",  "Skip", "RPT",    "RxDCS"};

const Word* FindNumber(Field field, int number) {
  const auto words = WordsOf(field);
  const auto found =
      std::find_if(words.begin(), words.end(), [&](const Word& w) { return w.number == number; });
  return found == words.end() ? nullptr : &*found;
}

}  // namespace

std::span<const Word> WordsOf(Field field) {
  switch (field) {
    case Field::kTone: return kToneWords;
    case Field::kShift: return kShiftWords;
    case Field::kPower: return kPowerWords;
    case Field::kAtt: return kAttWords;
    case Field::kBatterySave: return kBatterySaveWords;
    case Field::kClock:
    case Field::kBclo:
    case Field::kRpt: return kSwitchWords;
    case Field::kBandwidth: return kBandwidthWords;
    default: return {};
  }
}

std::span<const std::string_view> IndexListOf(Field field) {
  switch (field) {
    case Field::kStep: return StepTexts();
    case Field::kTxTone:
    case Field::kRxTone: return ToneTexts();
    case Field::kTxDcs:
    case Field::kRxDcs: return DcsTexts();
    case Field::kMid: return MidTexts();
    default: return {};
  }
}

std::string_view CodeText(Field field, int number) {
  switch (field) {
    case Field::kStep: return StepText(number);
    case Field::kTxTone:
    case Field::kRxTone: return ToneText(number);
    case Field::kTxDcs:
    case Field::kRxDcs: return DcsText(number);
    case Field::kMid: return MidText(number);
    default: break;
  }
  const auto words = WordsOf(field);
  if (words.empty()) return {};
  const Word* word = FindNumber(field, number);
  return word != nullptr ? word->text : words.front().text;
}

int KnownCode(Field field, int number) { return FindNumber(field, number) != nullptr ? number : 0; }

int CodeOfWord(Field field, std::string_view text) {
  const auto words = WordsOf(field);
  const auto found =
      std::find_if(words.begin(), words.end(), [&](const Word& w) { return w.text == text; });
  return found == words.end() ? 0 : found->number;
}

std::string_view FieldName(Field field) { return kFieldNames[static_cast<std::size_t>(field)]; }

}  // namespace q40
