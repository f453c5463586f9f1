#include "radio/models.h"

#include <algorithm>
#include <cassert>
#include <cctype>

namespace q40 {
namespace {

constexpr int kRangeCount = 2;

struct ModelTables {
  std::array<RadioModel, kModelCount> models{};
  std::array<BandTable, 2> bands{};
};

constexpr std::size_t LimitIndex(int model, int range, int bound) {
  return static_cast<std::size_t>(model) + 4 * static_cast<std::size_t>(range) +
         8 * static_cast<std::size_t>(bound);
}

struct RangeRow {
  Band band;
  int model;
  int range;
  int lower_mhz;
  int upper_mhz;
  std::string_view text;
};

// RX-Q20A has no rows: its texts are empty and its limits 0, so no frequency passes. Intended.
constexpr RangeRow kRangeRows[] = {
    {Band::kVhf, 0, kVersionPlain, 136, 174, "(136.000-173.995MHz)"},
    {Band::kVhf, 1, kVersionPlain, 144, 146, "(144.000-145.995MHz)"},
    {Band::kVhf, 2, kVersionPlain, 136, 174, "(136.000-173.995MHz)"},
    {Band::kVhf, 0, kVersionA, 136, 174, "(136.000-173.995MHz)"},
    {Band::kVhf, 1, kVersionA, 136, 174, "(136.000-173.995MHz)"},
    {Band::kVhf, 2, kVersionA, 136, 174, "(136.000-173.995MHz)"},
    {Band::kUhf, 0, kVersionPlain, 400, 512, "(400.000-511.995MHz)"},
    {Band::kUhf, 1, kVersionPlain, 430, 440, "(430.000-439.995MHz)"},
    {Band::kUhf, 2, kVersionPlain, 400, 512, "(400.000-511.995MHz)"},
    {Band::kUhf, 0, kVersionA, 400, 512, "(400.000-511.995MHz)"},
    {Band::kUhf, 1, kVersionA, 400, 512, "(400.000-511.995MHz)"},
    {Band::kUhf, 2, kVersionA, 400, 512, "(400.000-511.995MHz)"},
};

constexpr void FillRange(BandTable& table, const RangeRow& row) {
  const auto lower = LimitIndex(row.model, row.range, kLowerBound);
  const auto upper = LimitIndex(row.model, row.range, kUpperBound);
  table.text[lower] = row.text;
  // Intended: a version "A" radio has no lower limit (0), although its text names one. Anything
  // below the upper limit passes.
  table.limit_mhz[lower] = row.range == kVersionA ? 0 : row.lower_mhz;
  table.limit_mhz[upper] = row.upper_mhz;
}

constexpr ModelTables BuildTables() {
  ModelTables tables;
  // The RX-Q40T1 lines have no blank before the version: every header line is 32 characters.
  tables.models = {{
      {"RX-Q40T", {"Korvex RX-Q40T Clone 0 FileStart", "Korvex RX-Q40T Clone A FileStart"}},
      {"RX-Q40E", {"Korvex RX-Q40E Clone 0 FileStart", "Korvex RX-Q40E Clone A FileStart"}},
      {"RX-Q40T1", {"Korvex RX-Q40T1 Clone0 FileStart", "Korvex RX-Q40T1 CloneA FileStart"}},
      {"RX-Q20A", {"Korvex RX-Q20A Clone 0 FileStart", "Korvex RX-Q20A Clone A FileStart"}},
  }};
  for (const RangeRow& row : kRangeRows) {
    FillRange(tables.bands[static_cast<std::size_t>(row.band)], row);
  }
  return tables;
}

constexpr ModelTables kTables = BuildTables();

constexpr bool ValidModel(int model) { return model >= 0 && model < kModelCount; }
constexpr bool ValidPair(int model, int range) {
  return ValidModel(model) && range >= 0 && range < kRangeCount;
}

}  // namespace

std::string_view BandTable::BandText(int model, int range) const {
  assert(ValidPair(model, range));
  return ValidPair(model, range) ? text[LimitIndex(model, range, kLowerBound)] : std::string_view();
}

int BandTable::BandLimit(int model, int range, int bound) const {
  assert(ValidPair(model, range));
  return ValidPair(model, range) ? limit_mhz[LimitIndex(model, range, bound == 0 ? 0 : 1)] : 0;
}

bool BandTable::Contains(int mhz, int model, int range) const {
  return mhz >= BandLimit(model, range, kLowerBound) && mhz < BandLimit(model, range, kUpperBound);
}

std::string_view ModelName(int model) {
  assert(ValidModel(model));
  return ValidModel(model) ? kTables.models[static_cast<std::size_t>(model)].name
                           : std::string_view();
}

std::string_view HeaderLine(int model, int version) {
  assert(ValidPair(model, version));
  if (!ValidPair(model, version)) return {};
  const RadioModel& row = kTables.models[static_cast<std::size_t>(model)];
  return row.header_line[static_cast<std::size_t>(version)];
}

std::optional<HeaderMatch> FindHeaderLine(std::string_view line) {
  for (int model = 0; model < kModelCount; ++model) {
    for (const int version : {kVersionPlain, kVersionA}) {
      if (line == HeaderLine(model, version)) return HeaderMatch{model, version};
    }
  }
  return std::nullopt;
}

std::optional<int> FindModel(std::string_view name) {
  const auto same = [](char a, char b) {
    return std::toupper(static_cast<unsigned char>(a)) ==
           std::toupper(static_cast<unsigned char>(b));
  };
  for (int model = 0; model < kModelCount; ++model) {
    const std::string_view known = ModelName(model);
    if (std::equal(known.begin(), known.end(), name.begin(), name.end(), same)) return model;
  }
  return std::nullopt;
}

const BandTable& BandTableOf(Band band) { return kTables.bands[static_cast<std::size_t>(band)]; }

}  // namespace q40
