// The rules of the edit dialog, what its controls hold, and the commands on the list of channels.
#include <gtest/gtest.h>

#include "image/dialog_values.h"
#include "image/edit_rules.h"
#include "image/memory_edit.h"
#include "image/vocabulary.h"
#include "support/random_document.h"

namespace q40 {
namespace {

constexpr auto kMemory = ChannelKind::kMemory;
constexpr auto kSpecial = ChannelKind::kSpecial;

// ---- rules

TEST(EditRules, MhzOfAMemoryChannel) {
  const struct {
    const char* typed;
    int model, range;
    bool in_use;
    const char* current;
    const char* mhz;
  } cases[] = {{"173", 0, 0, true, "145.0000", "173"}, {"174", 0, 0, true, "*145.0000", "145"},
               {"174", 0, 0, false, "", "145"},        {"399", 0, 0, false, "", "145"},
               {"512", 0, 0, false, "", "445"},        {"440", 1, 0, false, "", "435"},
               {"136", 1, 0, false, "", "145"},        {"100", 1, 1, true, "145.0000", "100"},
               {"600", 1, 1, false, "", "435"},        {"600", 0, 1, false, "", "445"},
               {"145", 3, 0, false, "", "445"},        {"", 0, 0, true, "45.5000", "45"},
               {"512", 0, 0, true, "1234.5000", "123"}};
  for (const auto& c : cases) {
    EXPECT_EQ(CheckedMemoryMhz(c.typed, c.model, c.range, c.in_use, c.current), c.mhz) << c.typed;
  }
}

TEST(EditRules, MhzOfASpecialChannelIsThatOfItsBand) {
  const struct {
    const char* typed;
    Band band;
    int model, range;
    const char* mhz;
  } cases[] = {{"136", Band::kVhf, 0, 0, "136"}, {"135", Band::kVhf, 0, 0, "146"},
               {"174", Band::kVhf, 0, 0, "146"}, {"430", Band::kVhf, 0, 0, "146"},
               {"430", Band::kUhf, 0, 0, "430"}, {"440", Band::kUhf, 1, 0, "146"},
               {"50", Band::kVhf, 1, 1, "50"},   {"", Band::kUhf, 0, 0, "146"},
               {"145", Band::kVhf, 3, 0, "146"}};
  for (const auto& c : cases) {
    EXPECT_EQ(CheckedSpecialMhz(c.typed, c.band, c.model, c.range, "146.5000"), c.mhz) << c.typed;
  }
}

TEST(EditRules, EveryFractionIsTunedInIntegers) {
  for (int units = 0; units < 10'000; ++units) {
    const std::string text = std::to_string(10'000 + units).substr(1);
    int expected = units;
    while (expected % 50 != 0 && expected % 125 != 0) --expected;
    const TunedFraction tuned = TuneFraction(text);
    EXPECT_EQ(std::stoi(tuned.digits), expected);
    EXPECT_EQ(tuned.step, expected % 50 == 0 ? 0 : 2);
  }
  EXPECT_EQ(TuneFrequency("145.0130").text, "145.0125");
  EXPECT_EQ(TuneFrequency("145.0130").step, 2);
  EXPECT_EQ(TuneFraction("12a9").digits, "1200");
  EXPECT_EQ(TuneFraction("12").digits, "1200");
  EXPECT_EQ(TuneFraction("12509").digits, "1250");
  EXPECT_EQ(TuneFraction("-5").digits, "0000");
  EXPECT_EQ(WholeMhz("*145.5000") + "/" + FractionDigits("*145.5000"), "145/5000");
  EXPECT_EQ(WholeMhz("145") + "/" + FractionDigits("145"), "145/");
}

TEST(EditRules, KeysInTheOrderOfTheRule) {
  std::string frequency;
  std::string name;
  std::string dial;
  for (int c = 1; c < 128; ++c) {
    if (const auto key = FrequencyKey(static_cast<char>(c))) frequency += *key;
    if (const auto key = NameKey(static_cast<char>(c))) name += *key;
    if (const auto key = DialKey(static_cast<char>(c))) dial += *key;
  }
  EXPECT_EQ(frequency, "\b0123456789");
  EXPECT_EQ(name, "\b #$()*+-/0123456789=ABCD\\_ABCDEFGHIJKLMNOPQRSTUVWXYZ");
  EXPECT_EQ(dial, "\b#*0123456789ABCDABCD");
  EXPECT_EQ(DialCharacters("12-3\b a*E#\n"), "123A*#");
  EXPECT_EQ(DialogCaption(198), "CH198");
  EXPECT_EQ(DialogCaption(199), "CHD-1");
  EXPECT_EQ(DialogCaption(209), "CHD9");
}

// Keys as they are typed, "!" for leaving the offset and "F" for showing the frequency; behind it
// the keys with which the cursor jumps.
TEST(EditRules, TheCursorJumpsAfterSoManyKeys) {
  const struct {
    const char* keys;
    int jump_after;
    const char* jumps;
  } cases[] = {{"145145", 3, "--j--j"},
               {"1xx45", 3, "--j--"},
               {"xxx", 3, "--j"},
               {"\b145", 3, "---j"},
               {"14\b", 3, "--j"},
               {"12", 2, "-j"},
               {"14!567", 3,
                "--"
                "-"
                "--j"},
               {"14F567", 3,
                "---"
                "--j"}};
  for (const auto& c : cases) {
    KeyCounter counter;
    std::string jumps;
    for (const char key : std::string(c.keys)) {
      if (key == '!') counter.ForgetTyping();
      if (key == 'F') counter.Reset();
      const bool typed = key != '!' && key != 'F';
      jumps += typed && counter.Typed(key, !FrequencyKey(key), c.jump_after) ? 'j' : '-';
    }
    EXPECT_EQ(jumps, c.jumps) << c.keys;
  }
}

// ---- what the dialog holds

TEST(DialogValues, OptionsStandInTheOrderOfTheDialog) {
  const struct {
    Field field;
    int number;
    int choice;
  } cases[] = {{Field::kTone, 0, 0},      {Field::kTone, 1, 1},        {Field::kTone, 3, 2},
               {Field::kTone, 12, 3},     {Field::kTone, 2, kUnset},   {Field::kBandwidth, 0, 1},
               {Field::kBandwidth, 1, 0}, {Field::kShift, 3, 3},       {Field::kStep, 6, 6},
               {Field::kRxDcs, 103, 103}, {Field::kBatterySave, 2, 2}, {Field::kSkip, 1, 1},
               {Field::kPower, 1, 1},     {Field::kPower, 3, kUnset}};
  for (const auto& c : cases) {
    ChannelRecord record;
    record.Set(kMemory, c.field, c.number, "before");
    const DialogValues values = ValuesOf(record, kMemory, false);
    EXPECT_EQ(values[c.field], c.choice) << FieldName(c.field) << c.number;
    // And back: an option that is not set keeps number and text.
    const ChannelRecord after = RecordOf(values, kMemory, false, record);
    EXPECT_EQ(after.Number(kMemory, c.field), c.number) << FieldName(c.field);
    EXPECT_EQ(after.Text(kMemory, c.field),
              c.choice == kUnset ? "before" : CodeText(c.field, c.number));
  }
}

TEST(DialogValues, AChannelComesOutAsItWentIn) {
  const CloneImage image = test::RandomDocument(31).image;
  for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
    const ChannelRecord& record = image.MemoryTable[n];
    EXPECT_EQ(RecordOf(ValuesOf(record, kMemory, false), kMemory, false, {}), record) << n;
  }
  for (const ChannelRecord& record : image.UhfSpecialSet) {
    EXPECT_EQ(RecordOf(ValuesOf(record, kSpecial, false), kSpecial, false, {}), record);
  }
}

TEST(DialogValues, TextsAreCheckedOnTheWayBack) {
  DialogValues values = ValuesOf({}, kMemory, false);
  values.mhz = "45";
  values.fraction = "5";
  values.offset_mhz = "";
  values.offset_fraction = "65";
  values.name =
      "\xC3\x84"
      "ABCDEFG";
  values[Field::kSkip] = 1;
  const ChannelRecord record = RecordOf(values, kMemory, false, {});
  EXPECT_EQ(record.Text(kMemory, Field::kFrequency), "*45.5000");
  EXPECT_EQ(record.Frequency(), 455'000);
  EXPECT_EQ(record.Text(kMemory, Field::kShiftFrequency), "0.6500");
  EXPECT_EQ(record.Number(kMemory, Field::kShiftFrequency), 6'500);
  EXPECT_EQ(record.Text(kMemory, Field::kName),
            "\xC3\x84"
            "ABCDE");
  EXPECT_EQ(record.Number(kMemory, Field::kName), 1);
  values.name = "";
  EXPECT_EQ(RecordOf(values, kMemory, false, record).Number(kMemory, Field::kName), 0);
}

TEST(DialogValues, TheRepeaterRowKeepsTheNumbersOfWhatItDoesNotShow) {
  ChannelRecord rpt = test::RandomDocument(32).image.VhfSpecialSet[kRptRow];
  rpt.Set(kSpecial, Field::kBclo, 1, "On");
  rpt.Set(kSpecial, Field::kRpt, 1, "On");
  const DialogValues values = ValuesOf(rpt, kSpecial, true);
  EXPECT_EQ(values.mhz + values.fraction, "Repeaterr");
  EXPECT_EQ(values.offset_mhz, WholeMhz(rpt.Text(kSpecial, Field::kShiftFrequency)));
  for (const Field field : {Field::kStep, Field::kPower, Field::kMid, Field::kAtt,
                            Field::kBatterySave, Field::kBandwidth}) {
    EXPECT_EQ(values[field], kUnset) << FieldName(field);
  }
  for (const Field field : {Field::kRpt, Field::kClock, Field::kBclo}) EXPECT_EQ(values[field], 0);
  const ChannelRecord after = RecordOf(values, kSpecial, true, rpt);
  for (int column = 0; column < kSpecialColumns; ++column) {
    const Field field = FieldIn(kSpecial, column);
    const bool unset = field == Field::kFrequency || values[field] == kUnset;
    const bool unticked = field == Field::kRpt || field == Field::kClock || field == Field::kBclo;
    if (field == Field::kShiftFrequency) continue;
    EXPECT_EQ(after.Number(kSpecial, field), unticked ? 0 : rpt.Number(kSpecial, field)) << column;
    EXPECT_EQ(after.Text(kSpecial, field), unset      ? ""
                                           : unticked ? "Off"
                                                      : rpt.Text(kSpecial, field))
        << column;
  }
  EXPECT_EQ(after.Text(kSpecial, Field::kShiftFrequency),
            rpt.Text(kSpecial, Field::kShiftFrequency));
}

TEST(Columns, OfASpecialChannelSkipNameAndSkipFlag) {
  EXPECT_EQ(ColumnOf(kSpecial, Field::kBandwidth), 14);
  EXPECT_EQ(ColumnOf(kSpecial, Field::kRpt), 15);
  EXPECT_EQ(ColumnOf(kSpecial, Field::kRxDcs), 16);
  for (const ChannelKind kind : {kMemory, kSpecial}) {
    for (int column = 0; column < kMemoryColumns; ++column) {
      EXPECT_EQ(ColumnOf(kind, FieldIn(kind, column)), column);
      EXPECT_EQ(HasField(kind, FieldIn(kind, column)), kind == kMemory || column < 17) << column;
    }
  }
}

// ---- the list of channels

// Where each channel of a list of 210 came from: its old number, -1 for an empty one.
std::vector<int> Origins(const CloneImage& before, const CloneImage& after) {
  std::vector<int> origins;
  for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
    const auto old =
        std::find(before.MemoryTable.begin(), before.MemoryTable.end() - 1, after.MemoryTable[n]);
    const auto from = old - before.MemoryTable.begin();
    const bool empty = from == kMemoryChannelCount;
    EXPECT_EQ(after.MemoryTable[n] == ChannelRecord(), empty) << n;
    EXPECT_EQ(after.ChannelInUse[n], !empty && before.ChannelInUse[static_cast<std::size_t>(from)])
        << n;
    origins.push_back(empty ? -1 : static_cast<int>(from));
  }
  return origins;
}

CloneImage NumberedImage() {
  CloneImage image = test::RandomDocument(33).image;
  for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
    image.MemoryTable[n].value[0] = static_cast<int>(1'000'000 + n);
  }
  return image;
}

TEST(MemoryEdit, InsertMovesBackAndDropsTheLast) {
  const CloneImage before = NumberedImage();
  for (const int n : {0, 5, 208, 209}) {
    CloneImage image = before;
    InsertMemoryChannel(image, n);
    std::vector<int> origins;
    for (int i = 0; i < kMemoryChannelCount; ++i) origins.push_back(i < n ? i : i - 1);
    origins[static_cast<std::size_t>(n)] = -1;
    EXPECT_EQ(Origins(before, image), origins) << n;
    EXPECT_EQ(image.TemplateChannel(), before.TemplateChannel());
  }
}

TEST(MemoryEdit, DeleteMovesForwardAndKeepsTheTailOfTheLast) {
  const CloneImage before = NumberedImage();
  for (const int n : {0, 5, 208, 209}) {
    CloneImage image = before;
    DeleteMemoryChannel(image, n);
    for (int i = 0; i < kMemoryChannelCount - 1; ++i) {
      const auto from = static_cast<std::size_t>(i < n ? i : i + 1);
      const auto row = static_cast<std::size_t>(i);
      EXPECT_EQ(image.MemoryTable[row], before.MemoryTable[from]) << n << " " << i;
      EXPECT_EQ(image.ChannelInUse[row], before.ChannelInUse[from]) << n << " " << i;
    }
    const ChannelRecord& last = image.MemoryTable[209];
    for (std::size_t column = 0; column < kMemoryColumns; ++column) {
      const bool kept = column >= 9;  // from MID on
      EXPECT_EQ(last.value[column], kept ? before.MemoryTable[209].value[column] : 0) << column;
      EXPECT_EQ(last.cellText[column], kept ? before.MemoryTable[209].cellText[column] : "");
    }
    EXPECT_FALSE(image.ChannelInUse[209]);
    EXPECT_EQ(image.TemplateChannel(), before.TemplateChannel());
  }
}

TEST(MemoryEdit, ClearEmptiesChannelsAndNothingElse) {
  CloneImage image = NumberedImage();
  CloneImage expected = image;
  ClearMemoryChannel(image, 7);
  expected.MemoryTable[7] = {};
  expected.ChannelInUse[7] = false;
  EXPECT_EQ(image, expected);
  ClearAllMemoryChannels(image);
  for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
    expected.MemoryTable[n] = {};
    expected.ChannelInUse[n] = false;
  }
  EXPECT_EQ(image, expected);
}

TEST(MemoryEdit, ClearingALimitReachesTheStoreOfTheShownBand) {
  CloneImage image = NumberedImage();
  SetStoredPresent(image, Band::kUhf, {true, true});
  ShowBand(image, Band::kUhf);
  EXPECT_EQ(&LimitsInForce(image), &BandTableOf(Band::kUhf));
  const CloneImage before = image;
  for (const int k : {kVfoRow, kCallRow, kRptRow}) ClearShownLimit(image, k);
  EXPECT_EQ(image, before);
  ClearShownLimit(image, kPlRow);
  CloneImage expected = before;
  expected.ShownSpecialSet[kPlRow] = expected.UhfSpecialSet[kPlRow] = {};
  expected.ShownPresent = {true, false};
  SetStoredPresent(expected, Band::kUhf, {true, false});
  EXPECT_EQ(image, expected);
  ClearShownLimit(image, kPhRow);
  EXPECT_EQ(StoredPresent(image, Band::kUhf), PresentPair());
  EXPECT_EQ(image.UhfSpecialSet[kPhRow], ChannelRecord());
}

}  // namespace
}  // namespace q40
