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

TEST(Values, ListsHaveTheirSizesOrderAndEnds) {
  EXPECT_EQ(StepTexts().size(), 7U);
  EXPECT_EQ(ToneTexts().size(), 39U);
  EXPECT_EQ(DcsTexts().size(), 104U);
  EXPECT_EQ(MidTexts().size(), 11U);
  EXPECT_EQ(StepText(2), "12.5KHz");
  EXPECT_EQ(ToneText(8), "88.5Hz");
  EXPECT_EQ(ToneText(38), "250.3Hz");
  EXPECT_EQ(DcsText(0), "023");
  EXPECT_EQ(DcsText(103), "754");
  EXPECT_EQ(MidText(10), "10");
  for (std::size_t i = 1; i < DcsTexts().size(); ++i) EXPECT_LT(DcsTexts()[i - 1], DcsTexts()[i]);
}

TEST(GridColumns, WidthsBelongToGridColumnsFromTheRowTitleOn) {
  const int widths[19] = {500, 870, 705, 450, 690, 690, 585, 585, 495, 795,
                          500, 450, 450, 450, 450, 500, 500, 705, 850};
  for (int column = 0; column < 19; ++column) {
    EXPECT_EQ(ColumnWidthTwips(column), widths[column]) << column;
  }
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
  } cases[] = {{"a.Q40", "a.Q40"}, {"\"a b.Q40\"", "a b.Q40"}, {"x.Q4", "x.Q4"}, {"abc", ""}};
  for (const auto& c : cases) EXPECT_EQ(StartupPath(RawCommandLine(c.argument)), c.path);
}

}  // namespace
}  // namespace q40
