#include <cctype>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "app/tables/grid_columns.h"
#include "app/tables/models.h"
#include "app/tables/startup_path.h"
#include "app/tables/values.h"

namespace q40 {
namespace {

TEST(Models, HeaderLinesHave32CharactersAndFindTheirModel) {
  const char* const lines[4][2] = {
      {"Korvex RX-Q40T Clone 0 FileStart", "Korvex RX-Q40T Clone A FileStart"},
      {"Korvex RX-Q40E Clone 0 FileStart", "Korvex RX-Q40E Clone A FileStart"},
      {"Korvex RX-Q40T1 Clone0 FileStart", "Korvex RX-Q40T1 CloneA FileStart"},
      {"Korvex RX-Q20A Clone 0 FileStart", "Korvex RX-Q20A Clone A FileStart"}};
  for (int model = 0; model < 4; ++model) {
    for (int version = 0; version < 2; ++version) {
      const std::string_view line = lines[model][version];
      EXPECT_EQ(line.size(), 32U);
      EXPECT_EQ(HeaderLine(model, version), line);
      EXPECT_EQ(HeaderLineAt(model + 5 * version), line);
      const auto match = FindHeaderLine(line);
      ASSERT_TRUE(match);
      EXPECT_EQ(match->model, model);
      EXPECT_EQ(match->version, version);
    }
  }
  for (const int index : {-1, 4, 9, 10}) EXPECT_EQ(HeaderLineAt(index), "") << index;
  EXPECT_EQ(kCloneFileEndLine, "Korvex  RX-Q40  Clone  File  End");
  EXPECT_FALSE(FindHeaderLine("Korvex RX-Q40T1 Clone 0 FileStart"));
}

TEST(Models, NamesInAnyLetterCase) {
  const char* const names[] = {"RX-Q40T", "RX-Q40E", "RX-Q40T1", "RX-Q20A"};
  for (int model = 0; model < 4; ++model) {
    const std::string name = names[model];
    EXPECT_EQ(ModelName(model), name);
    EXPECT_EQ(FindModel(name), model);
    std::string lower;
    for (const char c : name) lower += static_cast<char>(std::tolower(c));
    EXPECT_EQ(FindModel(lower), model);
  }
  for (const char* other : {"", "RX-Q40", "RX-Q40T2", "RX-Q40T1 "}) {
    EXPECT_FALSE(FindModel(other)) << other;
  }
}

TEST(Models, LimitsOfEveryModelAndVersion) {
  const struct {
    Band band;
    int model, range, lower, upper;
    const char* text;
  } rows[] = {
      {Band::kVhf, 0, 0, 136, 174, "(136.000-173.995MHz)"},
      {Band::kVhf, 1, 0, 144, 146, "(144.000-145.995MHz)"},
      {Band::kVhf, 2, 0, 136, 174, "(136.000-173.995MHz)"},
      {Band::kVhf, 3, 0, 0, 0, ""},
      {Band::kVhf, 0, 1, 0, 174, "(136.000-173.995MHz)"},
      {Band::kVhf, 1, 1, 0, 174, "(136.000-173.995MHz)"},
      {Band::kVhf, 2, 1, 0, 174, "(136.000-173.995MHz)"},
      {Band::kVhf, 3, 1, 0, 0, ""},
      {Band::kUhf, 0, 0, 400, 512, "(400.000-511.995MHz)"},
      {Band::kUhf, 1, 0, 430, 440, "(430.000-439.995MHz)"},
      {Band::kUhf, 2, 0, 400, 512, "(400.000-511.995MHz)"},
      {Band::kUhf, 3, 0, 0, 0, ""},
      {Band::kUhf, 0, 1, 0, 512, "(400.000-511.995MHz)"},
      {Band::kUhf, 1, 1, 0, 512, "(400.000-511.995MHz)"},
      {Band::kUhf, 2, 1, 0, 512, "(400.000-511.995MHz)"},
      {Band::kUhf, 3, 1, 0, 0, ""},
  };
  for (const auto& row : rows) {
    const BandTable& table = BandTableOf(row.band);
    const std::string where = std::to_string(row.model) + "/" + std::to_string(row.range);
    EXPECT_EQ(table.BandLimit(row.model, row.range, kLowerBound), row.lower) << where;
    EXPECT_EQ(table.BandLimit(row.model, row.range, kUpperBound), row.upper) << where;
    EXPECT_EQ(table.BandText(row.model, row.range), row.text) << where;
    EXPECT_EQ(table.Contains(row.lower, row.model, row.range), row.upper > 0) << where;
    EXPECT_FALSE(table.Contains(row.upper, row.model, row.range)) << where;
  }
}

std::string Joined(std::span<const std::string_view> list) {
  std::string text;
  for (const std::string_view entry : list) text.append(entry).append(" ");
  return text;
}

TEST(Values, ListsInFull) {
  EXPECT_EQ(Joined(StepTexts()), "5KHz 10KHz 12.5KHz 15KHz 20KHz 25KHz 30KHz ");
  EXPECT_EQ(Joined(ToneTexts()),
            "67.0Hz 69.3Hz 71.9Hz 74.4Hz 77.0Hz 79.7Hz 82.5Hz 85.4Hz 88.5Hz 91.5Hz 94.8Hz 97.4Hz "
            "100.0Hz 103.5Hz 107.2Hz 110.9Hz 114.8Hz 118.8Hz 123.0Hz 127.3Hz 131.8Hz 136.5Hz "
            "141.3Hz 146.2Hz 151.4Hz 156.7Hz 162.2Hz 167.9Hz 173.8Hz 179.9Hz 186.2Hz 192.8Hz "
            "203.5Hz 210.7Hz 218.1Hz 225.7Hz 233.6Hz 241.8Hz 250.3Hz ");
  EXPECT_EQ(Joined(DcsTexts()),
            "023 025 026 031 032 036 043 047 051 053 054 065 071 072 073 074 114 115 116 122 125 "
            "131 132 134 143 145 152 155 156 162 165 172 174 205 212 223 225 226 243 244 245 246 "
            "251 252 255 261 263 265 266 271 274 306 311 315 325 331 332 343 346 351 356 364 365 "
            "371 411 412 413 423 431 432 445 446 452 454 455 462 464 465 466 503 506 516 523 526 "
            "532 546 565 606 612 624 627 631 632 654 662 664 703 712 723 731 732 734 743 754 ");
  EXPECT_EQ(Joined(MidTexts()), "00 01 02 03 04 05 06 07 08 09 10 ");
  EXPECT_EQ(DcsText(103), "754");
}

// The caller's mistake: ends a debug build, and gives an empty text otherwise.
TEST(Tables, IndexesOutsideTheTables) {
  const std::function<std::string_view()> calls[] = {
      [] { return StepText(7); },
      [] { return ToneText(-1); },
      [] { return DcsText(104); },
      [] { return MidText(11); },
      [] { return ModelName(4); },
      [] { return ModelName(-1); },
      [] { return HeaderLine(4, 0); },
      [] { return HeaderLine(0, 2); },
      [] { return HeaderLine(0, -1); },
      [] { return BandTableOf(Band::kVhf).BandText(-1, 0); },
      [] {
        const int limit = BandTableOf(Band::kUhf).BandLimit(0, 2, kUpperBound);
        return limit == 0 ? std::string_view() : std::string_view("a limit");
      }};
  for (const auto& call : calls) EXPECT_DEBUG_DEATH(EXPECT_EQ(call(), ""), "Valid|inside");
}

TEST(GridColumns, WidthsBelongToGridColumnsFromTheRowTitleOn) {
  const int widths[19] = {500, 870, 705, 450, 690, 690, 585, 585, 495, 795,
                          500, 450, 450, 450, 450, 500, 500, 705, 850};
  for (int column = 0; column < 19; ++column) {
    EXPECT_EQ(ColumnWidthTwips(column), widths[column]) << column;
  }
  EXPECT_EQ(ColumnWidthTwips(-1), 0);
  EXPECT_EQ(ColumnWidthTwips(19), 0);
}

TEST(StartupPath, DropsTheQuotesOfARawCommandLine) {
  const struct {
    const char* raw;
    const char* path;
  } raw_cases[] = {{"", ""}, {"abcde", ""}, {"\"a.Q\"", ""}, {"\"a.Q4\"", "a.Q4"}};
  for (const auto& c : raw_cases) EXPECT_EQ(StartupPath(c.raw), c.path) << c.raw;

  const struct {
    const char* argument;
    const char* path;
  } cases[] = {{"a.Q40", "a.Q40"},     {"\"a b.Q40\"", "a b.Q40"}, {"x.Q4", "x.Q4"}, {"abc", ""},
               {"\"a.Q40", "\"a.Q40"}, {"a.Q40\"", "a.Q40\""},     {"\"", ""}};
  for (const auto& c : cases) EXPECT_EQ(StartupPath(RawCommandLine(c.argument)), c.path);
}

}  // namespace
}  // namespace q40
