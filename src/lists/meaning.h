// What a column of a foreign list can mean.
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace q40 {

enum class Meaning : unsigned char {
  kIgnored,
  kOutput,     // the frequency on which the radio receives: the output of a repeater
  kInput,      // on which it transmits: the input of a repeater
  kOffset,     // between them, with a sign or without one
  kDirection,  // of the offset: + - simplex, and other words
  kToneKind,   // Tone, TSQL, DCS: which of the tones count
  kToneSent,   // CTCSS tone, or a DCS code that says that it is one ("D023")
  kToneHeard,  // the same, for which the squelch waits
  kToneBoth,   // one for both
  kDcsSent,    // DCS code, also as a bare number
  kDcsHeard,
  kDcsBoth,
  kDcsPolarity,
  kName,        // also a call
  kSecondName,  // where the name is empty: mostly the place
  kStep,
  kMode,   // FM, NFM, DMR, ...
  kWidth,  // Narrow, Wide, 12.5, 25
  kPower,
  kSkip,
  kChannel,  // the memory channel into which the row goes
};
inline constexpr std::size_t kMeaningCount = 21;

struct MeaningRow {
  Meaning meaning;
  std::string_view name;   // in a mapping file; stable: "tone-sent"
  std::string_view words;  // for a list to choose from: "Tone sent"
};
// In the order of the enumeration, which is also a good one for a list to choose from.
inline constexpr std::array<MeaningRow, kMeaningCount> kMeanings = {{
    {Meaning::kIgnored, "ignored", "(ignored)"},
    {Meaning::kOutput, "output", "Output (radio receives)"},
    {Meaning::kInput, "input", "Input (radio transmits)"},
    {Meaning::kOffset, "offset", "Offset"},
    {Meaning::kDirection, "direction", "Direction of the offset"},
    {Meaning::kToneKind, "tone-kind", "Kind of tone"},
    {Meaning::kToneSent, "tone-sent", "Tone sent"},
    {Meaning::kToneHeard, "tone-heard", "Tone heard"},
    {Meaning::kToneBoth, "tone-both", "Tone sent and heard"},
    {Meaning::kDcsSent, "dcs-sent", "DCS code sent"},
    {Meaning::kDcsHeard, "dcs-heard", "DCS code heard"},
    {Meaning::kDcsBoth, "dcs-both", "DCS code sent and heard"},
    {Meaning::kDcsPolarity, "dcs-polarity", "DCS polarity"},
    {Meaning::kName, "name", "Name or call"},
    {Meaning::kSecondName, "second-name", "Second name"},
    {Meaning::kStep, "step", "Step"},
    {Meaning::kMode, "mode", "Mode"},
    {Meaning::kWidth, "width", "Bandwidth"},
    {Meaning::kPower, "power", "Power"},
    {Meaning::kSkip, "skip", "Skip"},
    {Meaning::kChannel, "channel", "Channel number"},
}};

constexpr const MeaningRow& RowOf(Meaning meaning) {
  return kMeanings[static_cast<std::size_t>(meaning)];
}
std::optional<Meaning> MeaningNamed(std::string_view name);

// One for each column of a list, in their order. Columns beyond its end are ignored.
using ColumnMeanings = std::vector<Meaning>;

}  // namespace q40
