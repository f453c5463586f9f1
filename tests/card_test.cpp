// The channel card: what stands on it, and whether it fits on the paper.
#include <cstdlib>

#include <gtest/gtest.h>

#include "card/card_layout.h"
#include "document/channel_cells.h"
#include "document/defaults.h"

namespace q40 {
namespace {

TEST(Card, ARowSaysWhatOneDialsIn) {
  using F = Field;
  const struct {
    int channel;
    std::vector<std::pair<Field, const char*>> typed;
    CardCells cells;
  } cases[] = {
      {0, {{F::kFrequency, "145.5"}}, {"0", "", "145.5000", "", ""}},
      {9,
       {{F::kFrequency, "145.6"},
        {F::kName, "(A) $"},
        {F::kShift, "-Shift"},
        {F::kShiftFrequency, "0.6"},
        {F::kTone, "Tone"},
        {F::kTxTone, "88.5"}},
       {"9", "(A) $", "145.6000", "-0.6", "T 88.5"}},
      {10,
       {{F::kFrequency, "145.6"},
        {F::kShift, "+Shift"},
        {F::kShiftFrequency, "10"},
        {F::kTone, "TSQ"},
        {F::kTxTone, "88.5"},
        {F::kRxTone, "100.0"}},
       {"10", "", "145.6000", "+10.0", "TSQ 88.5/100.0"}},
      {199,
       {{F::kFrequency, "145.6125"},
        {F::kShift, "Split"},
        {F::kShiftFrequency, "1.6125"},
        {F::kTone, "TSQ"},
        {F::kTxTone, "100.0"},
        {F::kRxTone, "100.0"}},
       {"199", "", "145.6125", "Split 1.6125", "TSQ 100.0"}},
      {209,
       {{F::kFrequency, "145.6"}, {F::kTone, "DCS"}, {F::kTxDcs, "047"}, {F::kRxDcs, "023"}},
       {"D9", "", "145.6000", "", "DCS 047/023"}}};
  CloneData document = FreshData();
  EXPECT_TRUE(MakeCard(document, "", false).rows.empty());
  for (const auto& c : cases) {
    const ChannelPlace place{ChannelKind::kMemory, Band::kVhf, c.channel};
    for (const auto& [field, text] : c.typed) {
      EXPECT_EQ(SetCell(document.image, 0, place, field, text).refusal, "") << text;
    }
  }
  setenv("SOURCE_DATE_EPOCH", "1000000000", 1);
  const CardContent card = MakeCard(document, "a\n.Q40", false);
  for (const char* bad : {"", "-1", "1x", "999999999999"}) {
    setenv("SOURCE_DATE_EPOCH", bad, 1);
    EXPECT_EQ(WantedTime(), std::nullopt) << bad;
  }
  unsetenv("SOURCE_DATE_EPOCH");
  EXPECT_EQ(card.model, "RX-Q40T, version 0");
  EXPECT_EQ(card.file, "a\\x0A.Q40");
  EXPECT_EQ(card.date, "2001-09-09");
  ASSERT_EQ(card.rows.size(), std::size(cases));
  for (std::size_t i = 0; i < card.rows.size(); ++i) EXPECT_EQ(card.rows[i], cases[i].cells);

  document.image.ChannelInUse.fill(false);
  const auto special = MakeCard(document, "", true).rows;
  ASSERT_EQ(special.size(), 6U);  // neither PH nor PL
  EXPECT_EQ(special[1], (CardCells{"CALL", "VHF", "145.0000", "", ""}));
  EXPECT_EQ(special[5], (CardCells{"RPT", "UHF", "", "-5.0", "T 88.5"}));
}

// Letters of one width.
class EvenWidths final : public CardWidths {
 public:
  [[nodiscard]] double WidthOf(const std::string& text) const override {
    return 0.55 * static_cast<double>(text.size());
  }
};

CardLayout LayOut(std::size_t rows, const CardOptions& options, const char* tone = "TSQ 100.0") {
  CardContent card;
  card.rows.assign(rows, {"199", "MMMMMM", "145.6000", "-0.6", tone});
  return LayOutCard(card, options, EvenWidths());
}

TEST(Card, EveryRowFitsOnAPage) {
  const std::string broad(100, 'M');
  for (const CardPaper paper : {CardPaper::kA4, CardPaper::kLetter}) {
    for (const bool pocket : {false, true}) {
      for (const char* tone : {"", "TSQ 100.0", "TSQ 100.0/250.3", broad.c_str()}) {
        for (const std::size_t rows : {0U, 1U, 2U, 50U, 77U, 210U, 220U, 1000U}) {
          const CardLayout at = LayOut(rows, {paper, pocket}, tone);
          const auto places = [&](int pages) {
            return static_cast<std::size_t>(pages) * static_cast<std::size_t>(at.columns) *
                   static_cast<std::size_t>(at.rows);
          };
          EXPECT_GE(places(at.pages), rows);
          EXPECT_LT(places(at.pages - 1), std::max<std::size_t>(rows, 1)) << "an empty page";
          constexpr double kNearly = 1e-6;
          const CardPoint last = at.LineAt(at.columns - 1, at.rows - 1);
          EXPECT_LE(last.x + at.column_width, at.page.x + kNearly) << rows << tone;
          EXPECT_LE(last.y + at.line, at.page.y + kNearly) << rows << tone;
          EXPECT_TRUE(at.columns == 1 || at.column_step > at.column_width);
          EXPECT_GE(at.line, kLineHeight * at.size - kNearly) << rows << tone;
          EXPECT_TRUE(at.size >= kSmallestSize || tone == broad) << at.size;
          EXPECT_LE(at.size, kLargestSize);
        }
      }
    }
  }
}

TEST(Card, AsLargeAsTheSheetsAllow) {
  const struct {
    std::size_t rows;
    CardOptions options;
    int sheets, columns;
    double size;
  } cases[] = {{10, {CardPaper::kA4, false}, 1, 2, 10},
               {210, {CardPaper::kA4, false}, 1, 3, 8.5},
               {220, {CardPaper::kLetter, false}, 1, 3, 7.75},
               {210, {CardPaper::kA4, true}, 1, 1, 7.25},
               {220, {CardPaper::kLetter, true}, 1, 1, 7.25}};
  for (const auto& c : cases) {
    const CardLayout at = LayOut(c.rows, c.options);
    EXPECT_EQ(at.Sheets(), c.sheets) << c.rows;
    EXPECT_EQ(at.columns, c.columns) << c.rows;
    EXPECT_EQ(at.size, c.size) << c.rows;
  }
}

// Fold a sheet of paper and see.
TEST(Card, TheBookletIsInOrderOnceFoldedAndCut) {
  const CardLayout at = LayOut(210, {CardPaper::kA4, true});
  const char* const pages[] = {"0v", "0^", "1^", "2^", "3^", "3v", "2v", "1v"};
  for (int page = 0; page < 8; ++page) {
    CardPanel panel = at.PanelOf(page);
    EXPECT_EQ(panel.turned, pages[page][1] == 'v') << page;
    if (panel.turned) panel.at = {panel.at.x - at.page.x, panel.at.y - at.page.y};
    const double across = at.sheet.x / 4;
    const int column = pages[page][0] - '0';
    EXPECT_NEAR(panel.at.x - column * across, (across - at.page.x) / 2, 1e-6) << page;
    const double margin = (at.sheet.y / 2 - at.page.y) / 2;
    EXPECT_NEAR(panel.at.y, margin + (panel.turned ? 0 : at.sheet.y / 2), 1e-6) << page;
    EXPECT_EQ(at.PanelOf(page + 8).at.x, at.PanelOf(page).at.x) << page;
  }
}

}  // namespace
}  // namespace q40
