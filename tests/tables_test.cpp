#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pages/grid_columns.h"
#include "programs/startup_path.h"
#include "radio/models.h"

namespace q40 {
namespace {

TEST(Models, HeaderLinesHave32CharactersAndFindTheirModel) {
  for (int model = 0; model < kModelCount; ++model) {
    for (const int version : {kVersionPlain, kVersionA}) {
      const std::string_view line = HeaderLine(model, version);
      EXPECT_EQ(line.size(), 32U) << line;
      EXPECT_EQ(FindHeaderLine(line).value().model, model);
      EXPECT_EQ(FindHeaderLine(line).value().version, version);
    }
  }
}

TEST(Models, AreFoundByTheirWholeNameInAnyLetterCase) {
  const char* const names[] = {"RX-Q40T", "rx-q40e", "Rx-Q40t1", "RX-Q20A"};
  for (int model = 0; model < kModelCount; ++model) EXPECT_EQ(FindModel(names[model]), model);
  for (const char* other : {"", "RX-Q40", "RX-Q40T2", "RX-Q40T1 "})
    EXPECT_FALSE(FindModel(other)) << other;
}

TEST(Models, LimitsOfEveryModelAndVersion) {
  const std::tuple<Band, std::vector<int>, int, int, int, const char*> rows[] = {
      {Band::kVhf, {0, 2}, 0, 136, 174, "(136.000-173.995MHz)"},
      {Band::kVhf, {1}, 0, 144, 146, "(144.000-145.995MHz)"},
      {Band::kVhf, {0, 1, 2}, 1, 0, 174, "(136.000-173.995MHz)"},
      {Band::kVhf, {3}, 0, 0, 0, ""},
      {Band::kUhf, {0, 2}, 0, 400, 512, "(400.000-511.995MHz)"},
      {Band::kUhf, {1}, 0, 430, 440, "(430.000-439.995MHz)"},
      {Band::kUhf, {0, 1, 2}, 1, 0, 512, "(400.000-511.995MHz)"},
      {Band::kUhf, {3}, 1, 0, 0, ""},
  };
  for (const auto& [band, models, range, lower, upper, text] : rows) {
    const BandTable& table = BandTableOf(band);
    for (const int model : models) {
      EXPECT_EQ(table.BandLimit(model, range, kLowerBound), lower) << model << text;
      EXPECT_EQ(table.BandLimit(model, range, kUpperBound), upper) << model << text;
      EXPECT_EQ(table.BandText(model, range), text) << model;
      EXPECT_EQ(table.Contains(lower, model, range), upper > 0) << model << text;
      EXPECT_FALSE(table.Contains(upper, model, range)) << model << text;
    }
  }
}

TEST(GridColumns, WidthsBelongToGridColumnsFromTheRowTitleOn) {
  const int widths[][2] = {{-1, 0}, {0, 500}, {1, 870}, {17, 705}, {18, 850}, {19, 0}};
  for (const auto [column, width] : widths) EXPECT_EQ(ColumnWidthTwips(column), width) << column;
}

TEST(StartupPath, DropsTheQuotesOfARawCommandLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"a.Q40", "a.Q40"},     {"\"a b.Q40\"", "a b.Q40"}, {"x.Q4", "x.Q4"}, {"abc", ""},
      {"\"a.Q40", "\"a.Q40"}, {"a.Q40\"", "a.Q40\""},     {"\"", ""},       {"", ""}};
  for (const auto& [argument, path] : cases) EXPECT_EQ(StartupPath(RawCommandLine(argument)), path);
}

}  // namespace
}  // namespace q40
