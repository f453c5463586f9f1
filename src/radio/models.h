// The four model variants of the radio: names, clone-file header lines, band limits.
//
// Everything model-dependent is keyed by the model index 0..3, the index of the model option that
// the user selects. The radio itself reports only 0, 1 or 2 (see link/sequences.h). BuildTables in
// models.cpp fills the tables while the program is compiled; nothing changes them afterwards.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace q40 {

inline constexpr int kModelCount = 4;

enum class Band { kVhf, kUhf };
inline constexpr std::array kBands = {Band::kVhf, Band::kUhf};

constexpr std::string_view BandName(Band band) { return band == Band::kVhf ? "VHF" : "UHF"; }

// Version "0" or "A", as the radio reports it; picks the header line and the frequency ranges.
inline constexpr int kVersionPlain = 0;
inline constexpr int kVersionA = 1;

inline constexpr int kLowerBound = 0;
inline constexpr int kUpperBound = 1;

struct RadioModel {
  std::string_view name;                        // "RX-Q40T"
  std::array<std::string_view, 2> header_line;  // clone-file line 0, by version
};

// Frequency ranges of one band for every model.
struct BandTable {
  // Display text of the range, "(136.000-173.995MHz)"; empty for RX-Q20A.
  [[nodiscard]] std::string_view BandText(int model, int range) const;
  // Limit in whole MHz. A frequency is inside when lower <= MHz < upper, MHz being its integer
  // part.
  [[nodiscard]] int BandLimit(int model, int range, int bound) const;
  // Whether the integer part of a frequency lies in the range of the model.
  [[nodiscard]] bool Contains(int mhz, int model, int range) const;

  std::array<std::string_view, 8> text{};  // model + 4 * range
  std::array<int, 16> limit_mhz{};         // model + 4 * range + 8 * bound
};

std::string_view ModelName(int model);

// Header line of a clone file, 32 characters. model 0..3, version 0 or 1.
std::string_view HeaderLine(int model, int version);

struct HeaderMatch {
  int model = 0;
  int version = kVersionPlain;
};
// The model whose header line equals `line` exactly.
std::optional<HeaderMatch> FindHeaderLine(std::string_view line);

// The model of that name ("RX-Q40E"); letter case does not matter.
std::optional<int> FindModel(std::string_view name);

// Ranges of one band. The limits in force for the special channels are those of the shown band.
const BandTable& BandTableOf(Band band);

inline constexpr std::string_view kCloneFileEndLine = "Korvex  RX-Q40  Clone  File  End";
inline constexpr std::string_view kWindowTitle = "Korvex RX-Q40 Clone Utility";

}  // namespace q40
