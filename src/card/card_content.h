// What stands on a channel card: a heading, and one row of short texts for each channel in use.
#pragma once

#include <array>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/clone_data.h"

namespace q40 {

inline constexpr std::size_t kCardColumns = 5;
using CardCells = std::array<std::string, kCardColumns>;

// Number, name, frequency in MHz, shift in MHz, tone.
inline constexpr std::array<std::string_view, kCardColumns> kCardHeadings = {"Ch", "Name", "MHz",
                                                                             "Shift", "Tone"};

struct CardContent {
  std::string model;  // "RX-Q40E, version A"
  std::string file;   // name of the data, for people
  std::string date;   // "2026-11-22"
  std::vector<CardCells> rows;
};

// The memory channels in use, in their order. `special`: behind them the special channels of both
// bands, with the name of the band for their own. All texts are printable.
CardContent MakeCard(const CloneData& document, std::string_view file, bool special);

// The time that SOURCE_DATE_EPOCH names, for a card that is to be the same, byte for byte, every time.
std::optional<std::time_t> WantedTime();

// What to say where a card would be empty; rows are never missing with the special channels.
inline constexpr std::string_view kNoChannelInUse = "no channel is in use";

}  // namespace q40
