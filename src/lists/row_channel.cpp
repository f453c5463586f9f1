#include "lists/row_channel.h"

#include <algorithm>

#include "base/decimal.h"
#include "base/plain_text.h"
#include "document/channel_cells.h"
#include "document/defaults.h"
#include "lists/list_numbers.h"
#include "lists/list_words.h"
#include "lists/tone_choice.h"

namespace q40 {
namespace {

constexpr ChannelPlace kScratch;
constexpr std::int64_t kFirstUnknown = 1'000 * kHzPerMhz;  // more digits than the dialog has

// In Hz; no value: the item is no frequency.
std::optional<std::int64_t> FrequencyIn(std::string_view item) {
  const auto number = NumberIn(item);
  if (!number || number->sign == '-') return std::nullopt;
  return HzOfFrequency(*number);
}

std::optional<Band> BandAt(std::int64_t hz, int model, int range) {
  const auto mhz = static_cast<int>(std::min<std::int64_t>(hz / kHzPerMhz, kLargestFrequency));
  const auto* const band = std::find_if(kBands.begin(), kBands.end(), [&](Band b) {
    return BandTableOf(b).Contains(mhz, model, range);
  });
  return band == kBands.end() ? std::nullopt : std::optional(*band);
}

// What a word column does with a word; no value: it is not known.
using WordReader = std::optional<std::string_view> (*)(std::string_view item);

}  // namespace

bool RowItems::Has(Meaning meaning) const {
  return std::find(meanings_.begin(), meanings_.end(), meaning) != meanings_.end();
}

std::string_view RowItems::At(Meaning meaning) const {
  const auto column = std::find(meanings_.begin(), meanings_.end(), meaning);
  if (column == meanings_.end()) return {};
  return ForeignList::Item(row_, static_cast<std::size_t>(column - meanings_.begin()));
}

std::string_view RowItems::Name() const {
  const std::string_view name = At(Meaning::kName);
  return name.empty() ? At(Meaning::kSecondName) : name;
}

// ---- one row

class ChannelMaker::Row {
 public:
  Row(ChannelMaker& maker, const RowItems& items, std::vector<PlanNote>& notes)
      : maker_(maker), items_(items), notes_(notes) {}

  bool Make() {
    const std::string_view item = items_.At(Meaning::kOutput);
    if (item.empty()) return Refuse("the row has none.");
    const auto output = FrequencyIn(item);
    if (!output) return Refuse(Quoted(item) + " is no frequency.");
    output_ = *output;
    if (output_ >= kFirstUnknown) {
      return Refuse(MhzText(output_) + " MHz is outside the bands of the " +
                    std::string(ModelName(maker_.model_)) + '.');
    }
    const CellResult result =
        SetCell(maker_.image_, maker_.model_, kScratch, Field::kFrequency, MhzText(output_));
    if (!result.refusal.empty()) return Refuse(result.refusal);
    Shift();
    Tones();
    Step();
    Mode();
    Word(Meaning::kPower, Field::kPower, PowerIn, "is none of Lo, Mid, Hi.");
    Word(Meaning::kSkip, Field::kSkip, SkipIn, "says neither yes nor no.");
    return true;
  }

 private:
  bool Refuse(std::string why) {
    Tell(Meaning::kOutput, std::move(why));
    return false;
  }
  void Tell(Meaning column, std::string text) {
    notes_.push_back({std::string(RowOf(column).words), std::move(text), true});
  }

  // Puts a text into a field, or tells why that cannot be.
  bool Put(Meaning column, Field field, std::string_view text) {
    const CellResult result = SetCell(maker_.image_, maker_.model_, kScratch, field, text);
    if (!result.refusal.empty()) Tell(column, result.refusal);
    return result.refusal.empty();
  }

  // ---- the shift

  void Shift() {
    const std::string_view input = items_.At(Meaning::kInput);
    const std::string_view direction = items_.At(Meaning::kDirection);
    const auto way = DirectionIn(direction);
    if (!way) Tell(Meaning::kDirection, Quoted(direction) + " is no direction.");
    if (!SaysNone(input)) {
      TwoFrequencies(Meaning::kInput, input);
    } else if (way == Direction::kSplit) {
      TwoFrequencies(Meaning::kOffset, items_.At(Meaning::kOffset));
    } else if (way == Direction::kNoTransmit) {
      Tell(Meaning::kDirection,
           Quoted(direction) + ": no channel of the radio can be kept from transmitting.");
    } else if (way) {
      OffsetAndDirection(*way);
    }
  }

  void TwoFrequencies(Meaning column, std::string_view item) {
    const auto input = FrequencyIn(item);
    if (!input) return Tell(column, Quoted(item) + " is no frequency.");
    if (*input != 0) SetShift(column, *input - output_);
  }

  void OffsetAndDirection(Direction way) {
    const std::string_view item = items_.At(Meaning::kOffset);
    // A minus alone is more often a dash for none.
    if (item == "+" && !items_.Has(Meaning::kDirection)) return WithoutOffset(Direction::kPlus);
    if (SaysNone(item) || DirectionIn(item) == Direction::kSimplex) return WithoutOffset(way);
    const auto number = NumberIn(item);
    const auto hz = number ? HzOfOffset(*number) : std::nullopt;
    if (!hz) return Tell(Meaning::kOffset, Quoted(item) + " is no offset.");
    if (*hz == 0) return WithoutOffset(way);
    if (items_.Has(Meaning::kDirection) && way != Direction::kSimplex) {
      return SetShift(Meaning::kOffset, way == Direction::kMinus ? -*hz : *hz);
    }
    // A column of directions that is empty says simplex, unless the offset has a sign of its own.
    if (number->sign == '\0' && items_.Has(Meaning::kDirection)) return;
    if (number->sign == '\0') {
      Tell(Meaning::kOffset,
           Quoted(item) + " has neither a sign nor a direction; it is taken as +.");
    }
    SetShift(Meaning::kOffset, number->sign == '-' ? -*hz : *hz);
  }

  // A direction alone: by what the VFO of a new document has in that band.
  void WithoutOffset(Direction way) {
    if (way == Direction::kSimplex) return;
    const auto band = BandAt(output_, maker_.model_, VersionOf(maker_.image_));
    const Band usual_in = output_ < 300 * kHzPerMhz ? Band::kVhf : band.value_or(Band::kUhf);
    const ChannelRecord& vfo = SpecialStore(maker_.defaults_, usual_in)[kVfoRow];
    const std::int64_t usual =
        std::int64_t{vfo.Number(ChannelKind::kSpecial, Field::kShiftFrequency)} * 100;
    Tell(Meaning::kOffset, "the row has none; " + MhzText(usual) + " is usual.");
    SetShift(Meaning::kOffset, way == Direction::kMinus ? -usual : usual);
  }

  // The frequency goes in again: the step follows what was put in last, and it is its step that counts.
  void SetShift(Meaning column, std::int64_t hz) {
    constexpr std::int64_t kFirstNotKept = 10 * kHzPerMhz;
    if (hz == 0) return;
    const std::string text = MhzText(hz < 0 ? -hz : hz);
    if (hz >= kFirstNotKept || -hz >= kFirstNotKept) {
      return Tell(column,
                  "an offset of " + text + " MHz does not fit; the radio keeps less than 10.");
    }
    if (!Put(column, Field::kShiftFrequency, text)) return;
    Put(Meaning::kOutput, Field::kFrequency, MhzText(output_));
    Put(column, Field::kShift, hz < 0 ? "-Shift" : "+Shift");
  }

  // ---- the tone

  void Tones() {
    const auto tone = [&](Meaning column) { return ToneIn(items_.At(column), false); };
    const auto code = [&](Meaning column) { return ToneIn(items_.At(column), true); };
    ToneRow row{std::nullopt,
                tone(Meaning::kToneSent),
                tone(Meaning::kToneHeard),
                tone(Meaning::kToneBoth),
                code(Meaning::kDcsSent),
                code(Meaning::kDcsHeard),
                code(Meaning::kDcsBoth)};
    if (items_.Has(Meaning::kToneKind)) {
      const std::string_view kind = items_.At(Meaning::kToneKind);
      row.kind = ToneKindIn(kind);
      if (!row.kind) {
        Tell(Meaning::kToneKind, Quoted(kind) + " is none of None, Tone, TSQ, DCS.");
        row.kind = ToneKind::kNone;
      }
    }
    const ToneChoice choice = ChooseTone(row);
    for (const ToneChoice::Unfit& unfit : choice.unfit) Tell(unfit.column, unfit.why);
    const std::string_view polarity = items_.At(Meaning::kDcsPolarity);
    if (choice.kind == "DCS" && !SaysNormal(polarity)) {
      return Tell(Meaning::kDcsPolarity,
                  Quoted(polarity) + " is not normal; the radio knows no inverted codes.");
    }
    const std::pair<Field, const std::string&> fields[] = {{Field::kTone, choice.kind},
                                                           {Field::kTxTone, choice.tx_tone},
                                                           {Field::kRxTone, choice.rx_tone},
                                                           {Field::kTxDcs, choice.tx_dcs},
                                                           {Field::kRxDcs, choice.rx_dcs}};
    for (const auto& [field, text] : fields) {
      if (!text.empty()) Put(Meaning::kToneKind, field, text);
    }
  }

  // ---- the rest

  // A number of Hz is as good as one of kHz.
  void Step() {
    constexpr std::int64_t kFirstHz = 1'000'000'000;
    const std::string_view item = items_.At(Meaning::kStep);
    if (SaysNone(item)) return;
    const auto number = NumberIn(item);
    const bool hz = number && (number->unit == "hz" || number->millionths >= kFirstHz);
    if (!hz) {
      Put(Meaning::kStep, Field::kStep, item);
      return;
    }
    Put(Meaning::kStep, Field::kStep, MhzText(number->millionths / 1'000));
  }

  // A column of widths says more of the width than one of modes.
  void Mode() {
    const std::string_view item = items_.At(Meaning::kMode);
    const ModeItem mode = ModeIn(item);
    if (!item.empty() && !mode.fm) {
      Tell(Meaning::kMode, Quoted(item) + " is not FM, and the radio has nothing else.");
    }
    if (mode.narrow) Put(Meaning::kMode, Field::kBandwidth, "Narrow");
    Word(Meaning::kWidth, Field::kBandwidth, WidthIn, "is no bandwidth: Narrow, Wide, 12.5, 25.");
  }

  void Word(Meaning column, Field field, WordReader read, std::string_view why_not) {
    const std::string_view item = items_.At(column);
    if (item.empty()) return;
    if (const auto word = read(item)) {
      Put(column, field, *word);
    } else {
      Tell(column, Quoted(item) + ' ' + std::string(why_not));
    }
  }

  ChannelMaker& maker_;
  const RowItems& items_;
  std::vector<PlanNote>& notes_;
  std::int64_t output_ = 0;  // Hz
};

// ---- many

ChannelMaker::ChannelMaker(const CloneData& document)
    : image_(document.image), model_(document.model) {
  LoadSpecialDefaults(defaults_, model_);
}

bool ChannelMaker::Make(const RowItems& items, ChannelRecord& record,
                        std::vector<PlanNote>& notes) {
  ClearRecord(image_, kScratch);
  if (!Row(*this, items, notes).Make()) return false;
  record = RecordAt(image_, kScratch);
  return true;
}

bool ChannelMaker::IsInBands(const RowItems& items) const {
  const auto output = FrequencyIn(items.At(Meaning::kOutput));
  return !output || BandAt(*output, model_, VersionOf(image_)).has_value();
}

}  // namespace q40
