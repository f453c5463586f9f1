// The fields of a channel: one row each, with everything that is known about it. Codec, defaults,
// lists, grids and reports read these rows; a field that is added here is known everywhere.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "radio/channel_record.h"
#include "radio/values.h"

namespace q40 {

// The word for a coded number.
struct Word {
  int number;
  std::string_view text;
};

// How bytes of the record stand for a field.
enum class FieldCode : std::uint8_t {
  kShift,      // word by number; a memory channel does not know 3 (Split)
  kTone,       // low digit as bits: 8 DCS, else 2 TSQ, else 1 Tone
  kStep,       // 2 and 5 are 12.5 kHz, everything else is 5 kHz; written as it stands
  kFrequency,  // 4 bytes BCD, units of 100 Hz
  kOffset,     // 4 bytes BCD, units of 100 Hz
  kIndex,      // index of a value list
  kWord,       // word by number
  kFlag,       // 1 is set; any number but 0 is written as 1
  kName,       // 6 bytes, see name_codes.h
  kSkip,       // a part of byte 0, which also says whether the channel is in use
};

struct ChannelField {
  Field field;
  FieldCode code;
  int byte;                  // of the record, the first one
  std::string_view name;     // where people read it: "Shift frequency"
  std::string_view heading;  // of its column in the grids; empty: not shown there
  std::string_view csv;      // of its column in a channel list
  int reading_place;         // from 0, in reports; the grids show the same order
  int csv_place;             // from 0, behind MODEL, BANK and CHANNEL
  int fresh;                 // number in a new channel; frequencies and step depend on the model
  // Whether the repeater-access row (RPT) carries it. Where not, its text is empty in a new document;
  // its number is that of the VFO, and is what a file and the radio get. Only the frequency in the
  // radio is another: every write sets 145 or 445 MHz there.
  bool in_repeater_row;
  // What stands for its numbers: words, or a list that is indexed. Neither for frequencies, name
  // and skip flag. The first word (number 0) is that of every number that is not listed.
  std::span<const Word> words{};
  std::span<const std::string_view> (*list)() = nullptr;
  std::string_view (*text)(int) = nullptr;  // of an index of that list
};

namespace words {
inline constexpr Word kTone[] = {{0, "None"}, {1, "Tone"}, {3, "TSQ"}, {12, "DCS"}};
inline constexpr Word kShift[] = {{0, "None"}, {1, "-Shift"}, {2, "+Shift"}, {3, "Split"}};
inline constexpr Word kPower[] = {{0, "Lo"}, {1, "Mid"}, {2, "Hi"}};
inline constexpr Word kAtt[] = {{0, "Off"}, {1, "10dB"}, {2, "20dB"}};
inline constexpr Word kBatterySave[] = {{0, "Off"}, {1, "BS-1"}, {2, "BS-2"}};
inline constexpr Word kSwitch[] = {{0, "Off"}, {1, "On"}};
inline constexpr Word kBandwidth[] = {{0, "Normal"}, {1, "Narrow"}};
}  // namespace words

// In the order of the enumeration, which is that of the cells of a record.
// clang-format off
inline constexpr std::array<ChannelField, kFieldCount> kChannelFields = {{
    // field                  code                 byte  name         heading      list column   read csv fresh RPT
    {Field::kFrequency,      FieldCode::kFrequency,  4, "Frequency", "Frequency", "FREQUENCY",     0,  0, 0, false},
    {Field::kStep,           FieldCode::kStep,       3, "Step",      "Step",      "STEP",          1,  1, 0, false, {}, &StepTexts, &StepText},
    {Field::kTone,           FieldCode::kTone,       2, "Tone",      "Tone",      "TONE",          2,  2, 0, true,  words::kTone},
    {Field::kTxTone,         FieldCode::kIndex,     12, "TxTone",    "TxTone",    "TXTONE",        3,  3, 8, true,  {}, &ToneTexts, &ToneText},
    {Field::kRxTone,         FieldCode::kIndex,     13, "RxTone",    "RxTone",    "RXTONE",        4,  4, 8, true,  {}, &ToneTexts, &ToneText},
    {Field::kTxDcs,          FieldCode::kIndex,     14, "TxDCS",     "TxDCS",     "TXDCS",         5,  5, 0, true,  {}, &DcsTexts, &DcsText},
    {Field::kShift,          FieldCode::kShift,      1, "Shift",     "Shift",     "SHIFT",         7,  7, 0, true,  words::kShift},
    {Field::kShiftFrequency, FieldCode::kOffset,     8, "Shift frequency", "ShiftFreq.", "SHIFT FREQUENCY", 8, 8, 0, true},
    {Field::kPower,          FieldCode::kWord,      25, "Power",     "PWR",       "Power",        10, 10, 0, false, words::kPower},
    {Field::kMid,            FieldCode::kIndex,     31, "MID",       "MID",       "MID",          11, 11, 5, false, {}, &MidTexts, &MidText},
    {Field::kAtt,            FieldCode::kWord,      29, "ATT",       "ATT",       "ATT",          12, 12, 0, false, words::kAtt},
    {Field::kBatterySave,    FieldCode::kWord,      24, "BS",        "BSV",       "BS",           13, 13, 1, false, words::kBatterySave},
    {Field::kClock,          FieldCode::kFlag,      22, "Clock",     "Clock",     "Clock",        14, 14, 0, false, words::kSwitch},
    {Field::kBclo,           FieldCode::kFlag,      26, "BCLO",      "BCLO",      "BCLO",         15, 15, 0, false, words::kSwitch},
    {Field::kBandwidth,      FieldCode::kFlag,      30, "Bandwidth", "BW",        "Bandwidth",    16, 16, 0, false, words::kBandwidth},
    {Field::kName,           FieldCode::kName,      16, "Name",      "Name",      "Name",         18, 17, 0, true},
    {Field::kSkip,           FieldCode::kSkip,       0, "Skip",      "",          "Skip",         17, 18, 0, true},
    {Field::kRpt,            FieldCode::kFlag,      28, "RPT",       "RPT",       "Repeat",        9,  9, 0, true,  words::kSwitch},
    {Field::kRxDcs,          FieldCode::kIndex,     15, "RxDCS",     "RxDCS",     "RXDCS",         6,  6, 0, true,  {}, &DcsTexts, &DcsText},
}};
// clang-format on

constexpr const ChannelField& RowOf(Field field) {
  return kChannelFields[static_cast<std::size_t>(field)];
}

using FieldOrder = std::array<Field, kFieldCount>;

// The fields by a place that each row gives them. A place that is named twice or left out ends the
// compilation.
consteval FieldOrder FieldsBy(int ChannelField::*place) {
  FieldOrder order{};
  std::array<bool, kFieldCount> taken{};
  for (int i = 0; i < kFieldCount; ++i) {
    const ChannelField& row = kChannelFields[static_cast<std::size_t>(i)];
    const auto at = static_cast<std::size_t>(row.*place);
    if (static_cast<int>(row.field) != i || taken.at(at)) throw "the table is not in order";
    taken[at] = true;
    order[at] = row.field;
  }
  return order;
}

// As an owner reads a channel: RxDCS beside TxDCS, the name last.
inline constexpr FieldOrder kReadingOrder = FieldsBy(&ChannelField::reading_place);
// The columns of a channel list, behind MODEL, BANK and CHANNEL.
inline constexpr FieldOrder kCsvOrder = FieldsBy(&ChannelField::csv_place);

// The columns of the grids: the reading order without the skip flag, which is a star there.
inline constexpr std::size_t kHeadingCount = kFieldCount - 1;
inline constexpr std::array<Field, kHeadingCount> kHeadingFields = [] {
  std::array<Field, kHeadingCount> fields{};
  std::size_t column = 0;
  for (const Field field : kReadingOrder) {
    if (!RowOf(field).heading.empty()) fields.at(column++) = field;
  }
  return fields;
}();

constexpr bool CarriedInRepeaterRow(Field field) { return RowOf(field).in_repeater_row; }

constexpr std::string_view FieldName(Field field) { return RowOf(field).name; }

// The first byte of a field in a record, and how many it takes.
struct FieldBytes {
  std::size_t byte = 0;
  std::size_t count = 1;
};
constexpr FieldBytes BytesOf(Field field) {
  const ChannelField& row = RowOf(field);
  const auto byte = static_cast<std::size_t>(row.byte);
  switch (row.code) {
    case FieldCode::kFrequency:
    case FieldCode::kOffset: return {byte, 4};
    case FieldCode::kName: return {byte, kNameLength};
    default: return {byte, 1};
  }
}

inline std::span<const Word> WordsOf(Field field) { return RowOf(field).words; }

// Entries of the value list that a field indexes; empty for others.
inline std::span<const std::string_view> IndexListOf(Field field) {
  const ChannelField& row = RowOf(field);
  return row.list != nullptr ? row.list() : std::span<const std::string_view>();
}

// Text of a coded number: the word, or the entry of the value list. An index outside its list gives
// an empty text.
std::string_view CodeText(Field field, int number);

// The number itself if the field knows it as a word, otherwise 0.
int KnownCode(Field field, int number);

// Number of the word `text`, otherwise 0.
int CodeOfWord(Field field, std::string_view text);

// The cell of a coded field, as number and word.
void SetCode(ChannelRecord& record, ChannelKind kind, Field field, int number);

}  // namespace q40
