// The rules of the edit dialog, what its controls hold, and the commands on the list of channels.
#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "document/channel_cells.h"
#include "document/clone_document.h"
#include "document/defaults.h"
#include "document/dialog_values.h"
#include "document/edit_rules.h"
#include "document/memory_edit.h"
#include "radio/channel_fields.h"
#include "support/random_document.h"

namespace q40 {
namespace {

using enum Field;

constexpr auto kMemory = ChannelKind::kMemory;
constexpr auto kSpecial = ChannelKind::kSpecial;

// ---- rules

TEST(EditRules, MhzOfAMemoryChannel) {
  const std::tuple<const char*, int, int, bool, const char*, const char*> cases[] = {
      {"173", 0, 0, true, "145.0000", "173"}, {"174", 0, 0, true, "*145.0000", "145"},
      {"174", 0, 0, false, "", "145"},        {"399", 0, 0, false, "", "145"},
      {"512", 0, 0, false, "", "445"},        {"440", 1, 0, false, "", "435"},
      {"136", 1, 0, false, "", "145"},        {"100", 1, 1, true, "145.0000", "100"},
      {"600", 1, 1, false, "", "435"},        {"600", 0, 1, false, "", "445"},
      {"145", 3, 0, false, "", "445"},        {"", 0, 0, true, "45.5000", "45"},
      {"512", 0, 0, true, "1234.5000", "123"}};
  for (const auto& [typed, model, range, in_use, current, mhz] : cases)
    EXPECT_EQ(CheckedMemoryMhz(typed, model, range, in_use, current), mhz) << typed;
}

TEST(EditRules, MhzOfASpecialChannelIsThatOfItsBand) {
  const std::tuple<const char*, Band, int, int, const char*> cases[] = {
      {"136", Band::kVhf, 0, 0, "136"}, {"135", Band::kVhf, 0, 0, "146"},
      {"174", Band::kVhf, 0, 0, "146"}, {"430", Band::kVhf, 0, 0, "146"},
      {"430", Band::kUhf, 0, 0, "430"}, {"440", Band::kUhf, 1, 0, "146"},
      {"50", Band::kVhf, 1, 1, "50"},   {"", Band::kUhf, 0, 0, "146"},
      {"145", Band::kVhf, 3, 0, "146"}};
  for (const auto& [typed, band, model, range, mhz] : cases)
    EXPECT_EQ(CheckedSpecialMhz(typed, band, model, range, "146.5000"), mhz) << typed;
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
  const char* const odd[][2] = {{"12a9", "1200"}, {"12509", "1250"}, {"-5", "0000"}};
  for (const auto [typed, tuned] : odd) EXPECT_EQ(TuneFraction(typed).digits, tuned);
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
  EXPECT_EQ(DialogCaption(198) + DialogCaption(199) + DialogCaption(209), "CH198CHD-1CHD9");
}

TEST(EditRules, AFrequencyIsFoundInWhatIsPasted) {
  const char* const cases[][2] = {{"145.6125 MHz", "145/6125"},
                                  {"-0,6", "0/6"},
                                  {"438.725.000", "438/725000"},
                                  {"7., 14.5", "14/5"},
                                  {"145.", "none"},
                                  {".5", "none"},
                                  {"", "none"}};
  for (const auto [pasted, expected] : cases) {
    const auto found = WholeFrequency(pasted);
    EXPECT_EQ(found ? found->mhz + '/' + found->fraction : "none", expected) << pasted;
  }
  EXPECT_EQ(WithoutPoint(",.5."), "5.");
}

// Keys as they are typed, "!" for leaving the offset and "F" for showing the frequency; behind it
// the keys with which the cursor jumps.
TEST(EditRules, TheCursorJumpsAfterSoManyKeys) {
  const std::tuple<const char*, int, const char*> cases[] = {
      {"145145", 3, "..j..j"}, {"1xx45", 3, "..j.."},  {"xxx", 3, "..j"},
      {"\b145", 3, "...j"},    {"14\b", 3, "..j"},     {"12", 2, ".j"},
      {"14!567", 3, ".....j"}, {"14F567", 3, ".....j"}};
  for (const auto& [keys, jump_after, jumps] : cases) {
    KeyCounter counter;
    std::string found;
    for (const char key : std::string(keys)) {
      if (key == '!') counter.ForgetTyping();
      if (key == 'F') counter.Reset();
      const bool typed = key != '!' && key != 'F';
      found += typed && counter.Typed(key, !FrequencyKey(key), jump_after) ? 'j' : '.';
    }
    EXPECT_EQ(found, jumps) << keys;
  }
}

// ---- what the dialog holds

TEST(DialogValues, OptionsStandInTheOrderOfTheDialog) {
  const std::tuple<Field, int, int> cases[] = {
      {kTone, 0, 0},      {kTone, 1, 1},      {kTone, 3, 2},      {kTone, 12, 3},
      {kTone, 2, kUnset}, {kBandwidth, 0, 1}, {kBandwidth, 1, 0}, {kShift, 3, 3},
      {kStep, 6, 6},      {kRxDcs, 103, 103}, {kSkip, 1, 1},      {kPower, 3, kUnset}};
  for (const auto& [field, number, choice] : cases) {
    ChannelRecord record;
    record.Set(kMemory, field, number, "before");
    const DialogValues values = ValuesOf(record, kMemory, false);
    EXPECT_EQ(values[field], choice) << FieldName(field) << number;
    // And back: an option that is not set keeps number and text.
    const ChannelRecord after = RecordOf(values, kMemory, false, record);
    EXPECT_EQ(after.Number(kMemory, field), number) << FieldName(field);
    EXPECT_EQ(after.Text(kMemory, field), choice == kUnset ? "before" : CodeText(field, number));
  }
}

TEST(DialogValues, AChannelComesOutAsItWentIn) {
  const CloneImage image = test::RandomDocument(31).image;
  for (const ChannelRecord& record : image.MemoryTable) {
    EXPECT_EQ(RecordOf(ValuesOf(record, kMemory, false), kMemory, false, {}), record);
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
  values.name = "\303\204ABCDEFG";  // the first character has two bytes
  values[kSkip] = 1;
  const ChannelRecord record = RecordOf(values, kMemory, false, {});
  EXPECT_EQ(record.Text(kMemory, kFrequency), "*45.5000");
  EXPECT_EQ(record.Text(kMemory, kShiftFrequency), "0.6500");
  EXPECT_EQ(record.Text(kMemory, kName), "\303\204ABCDE");
  values.name = "";
  EXPECT_EQ(RecordOf(values, kMemory, false, record).Number(kMemory, kName), 0);
}

TEST(DialogValues, TheRepeaterRowKeepsTheNumbersOfWhatItDoesNotShow) {
  ChannelRecord rpt = test::RandomDocument(32).image.VhfSpecialSet[kRptRow];
  for (const Field field : {kBclo, kRpt, kClock}) rpt.Set(kSpecial, field, 1, "On");
  const DialogValues values = ValuesOf(rpt, kSpecial, true);
  EXPECT_EQ(values.mhz + values.fraction, "Repeaterr");
  ChannelRecord expected = rpt;
  for (const Field field : {kStep, kPower, kMid, kAtt, kBatterySave, kBandwidth}) {
    EXPECT_EQ(values[field], kUnset) << FieldName(field);
    expected.Set(kSpecial, field, rpt.Number(kSpecial, field), "");
  }
  for (const Field field : {kRpt, kClock, kBclo}) {
    EXPECT_EQ(values[field], 0) << FieldName(field);
    expected.Set(kSpecial, field, 0, "Off");
  }
  expected.Set(kSpecial, kFrequency, rpt.Frequency(), "");
  EXPECT_EQ(RecordOf(values, kSpecial, true, rpt), expected);
}

// ---- the list of channels

constexpr std::size_t kLast = kMemoryChannelCount - 1;

// Moves the channels from `from` to `to` round, so that the one at `middle` comes first.
void Rotate(CloneImage& image, std::size_t from, std::size_t middle, std::size_t to) {
  const auto rotate = [&](auto& list) {
    std::rotate(list.begin() + from, list.begin() + middle, list.begin() + to);
  };
  rotate(image.MemoryTable);
  rotate(image.ChannelInUse);
}

TEST(MemoryEdit, InsertMovesBackAndDeleteForwardAndKeepsTheTailOfTheLast) {
  CloneImage before = test::RandomDocument(33).image;
  before.ChannelInUse[kLast] = true;
  for (const std::size_t n : {0U, 5U, 208U, 209U}) {
    CloneImage image = before;
    InsertMemoryChannel(image, static_cast<int>(n));
    CloneImage expected = before;
    Rotate(expected, n, kLast, kLast + 1);
    expected.MemoryTable[n] = {};
    expected.ChannelInUse[n] = false;
    EXPECT_EQ(image, expected) << n;

    image = expected = before;
    DeleteMemoryChannel(image, static_cast<int>(n));
    Rotate(expected, n, n + 1, kLast + 1);
    ChannelRecord& last = expected.MemoryTable[kLast] = before.MemoryTable[kLast];
    std::fill_n(last.value.begin(), 9, 0);  // up to MID, which stays
    std::fill_n(last.cellText.begin(), 9, std::string());
    expected.ChannelInUse[kLast] = false;
    EXPECT_EQ(image, expected) << n;
  }
}

TEST(MemoryEdit, ClearEmptiesChannelsAndNothingElse) {
  CloneImage image = test::RandomDocument(33).image;
  CloneImage expected = image;
  ClearAllMemoryChannels(image);
  std::fill_n(expected.MemoryTable.begin(), kMemoryChannelCount, ChannelRecord());
  std::fill_n(expected.ChannelInUse.begin(), kMemoryChannelCount, false);
  EXPECT_EQ(image, expected);
}

TEST(MemoryEdit, ClearingALimitReachesTheStoreOfTheShownBand) {
  CloneImage image = test::RandomDocument(33).image;
  SetStoredPresent(image, Band::kUhf, {true, true});
  ShowBand(image, Band::kUhf);
  const CloneImage before = image;
  for (const int k : {kVfoRow, kCallRow, kRptRow}) ClearShownLimit(image, k);
  EXPECT_EQ(image, before);
  ClearShownLimit(image, kPlRow);
  CloneImage expected = before;
  expected.ShownSpecialSet[kPlRow] = expected.UhfSpecialSet[kPlRow] = {};
  expected.ShownPresent = {true, false};
  SetStoredPresent(expected, Band::kUhf, {true, false});
  EXPECT_EQ(image, expected);
}

// Row by row: which channels (by their frequencies, 0 is empty) stand where after a command on many.
TEST(MemoryEdit, ManyAtOnce) {
  const struct {
    const char* name;
    std::function<void(CloneImage&, MemoryRows)> run;
    std::vector<int> rows;
    std::vector<int> after;  // the first eight channels, which were 5 0 3 0 4 3 1 9
  } cases[] = {
      {"insert",
       [](auto& i, auto) { InsertMemoryChannels(i, 1, 2); },
       {},
       {5, 0, 0, 0, 3, 0, 4, 3}},
      {"delete", DeleteMemoryChannels, {0, 2, 3}, {0, 4, 3, 1, 9, 0, 0, 0}},
      {"duplicate", DuplicateMemoryChannels, {0, 2}, {5, 0, 3, 5, 3, 0, 4, 3}},
      {"up",
       [](auto& i, auto r) { EXPECT_EQ(MoveMemoryChannels(i, r, 1), 1); },
       {2, 4},
       {5, 3, 4, 0, 0, 3, 1, 9}},
      {"down",
       [](auto& i, auto r) { EXPECT_EQ(MoveMemoryChannels(i, r, 6), 4); },
       {0, 2},
       {0, 0, 4, 3, 5, 3, 1, 9}},
      {"sort",
       [](auto& i, auto r) { SortMemoryChannels(i, r, kFrequency, false); },
       {0, 1, 2, 4, 5, 6},
       {1, 3, 3, 0, 4, 5, 0, 9}},
      {"sort back",
       [](auto& i, auto r) { SortMemoryChannels(i, r, kName, true); },
       {0, 1, 6, 7},
       {9, 5, 3, 0, 4, 3, 1, 0}},
      {"gaps", CloseMemoryGaps, {1, 2, 3, 4, 5}, {5, 3, 4, 3, 0, 0, 1, 9}},
  };
  CloneImage before = FreshData().image;
  for (const auto& [n, frequency] : {std::pair{0, 5}, {2, 3}, {4, 4}, {5, 3}, {6, 1}, {7, 9}}) {
    const ChannelPlace place{kMemory, {}, n};
    PutRecord(before, place, before.TemplateChannel());
    RecordAt(before, place).Set(kMemory, kFrequency, frequency, "");
    RecordAt(before, place).Set(kMemory, kName, 1, std::to_string(frequency));
  }
  for (const auto& c : cases) {
    CloneImage image = before;
    c.run(image, c.rows);
    std::vector<int> after;
    for (std::size_t n = 0; n < 8; ++n) {
      after.push_back(image.ChannelInUse[n] ? image.MemoryTable[n].Frequency() : 0);
    }
    EXPECT_EQ(after, c.after) << c.name;
  }
  before.ChannelInUse[208] = true;
  EXPECT_EQ(WouldFallOff(before, 3, 2), std::vector{208});
  EXPECT_EQ(WouldFallOff(before, 209, 2), std::vector<int>());
  EXPECT_EQ(NumberedName("A007", 2) + NumberedName("HOME", 1) + NumberedName("", 3), "A009HOME24");
}

// ---- one cell: what a table takes, what it refuses, and what follows

TEST(ChannelCells, TakeWhatTheDialogTakesAndRefuseWhatItRepairs) {
  const ChannelPlace home{kMemory, {}, 7};
  const ChannelPlace empty{kMemory, {}, 8};
  const ChannelPlace odd{kMemory, {}, 9};  // from a radio: no key makes its frequency
  const ChannelPlace vfo{kSpecial, Band::kVhf, kVfoRow};
  const ChannelPlace rpt{kSpecial, Band::kUhf, kRptRow};
  const ChannelPlace ph{kSpecial, Band::kUhf, kPhRow};
  const struct {
    ChannelPlace place;
    Field field;
    const char* typed;
    const char* shown;    // afterwards
    const char* refusal;  // the beginning of it; empty: taken
    const char* also = "";
  } cases[] = {
      {home, kFrequency, "145.6125", "145.6125", "", "Step 12.5KHz"},
      {home, kFrequency, " 145,6 MHz", "145.6000", ""},
      {home, kFrequency, "438.725.000", "438.7250", ""},
      {home, kFrequency, "145.61301", "145.0000", "\"145.61301\" is no frequency"},
      {home, kFrequency, "145.613", "145.0000", ".6130 is no multiple of 5 or 12.5 kHz; the next"},
      {home, kFrequency, "200", "145.0000", "200 MHz is outside the bands of the RX-Q40T: (136"},
      {home, kFrequency, "14x", "145.0000", "\"14x\" is no frequency"},
      {home, kFrequency, "", "145.0000", "A channel has a frequency"},
      {home, kShiftFrequency, "7,6125", "7.6125", "", "Step 12.5KHz"},
      {home, kShiftFrequency, "-0.6", "0.6000", "\"-0.6\" is no offset"},
      {home, kShiftFrequency, "100", "0.6000", "\"100\" is no offset"},
      {home, kName, "home=1", "HOME=1", ""},
      {home, kName, "A?)", "A?)", ""},
      {home, kName, "", "", ""},
      {home, kName, "A.B", "", "\".\" is no character"},
      {home, kName, "ÄB", "", "\"Ä\" is no character"},
      {home, kName, "SEVENTH", "", "Six characters fit"},
      {home, kTone, "ts", "TSQ", ""},
      {home, kTone, "t", "None", "\"t\" is none of None, Tone, TSQ, DCS."},
      {home, kTxTone, "100", "100.0", ""},
      {home, kTxTone, "88,5 hz", "88.5", ""},
      {home, kTxTone, "88", "88.5", ""},
      {home, kRxDcs, "23", "023", ""},
      {home, kRxDcs, "1", "023", "\"1\" is not in the list."},
      {home, kMid, "7", "07", ""},
      {home, kAtt, "20 dB", "20", ""},
      {home, kBandwidth, "narrow", "Narrow", ""},
      {home, kShift, "Split", "Split", ""},
      {home, kSkip, "on", "On", ""},
      {odd, kFrequency, "600,0013", "600.0013", ""},
      {odd, kFrequency, "600.005", "600.0050", ""},
      {odd, kFrequency, "600.0014", "600.0013", ".0014 is no multiple"},
      {empty, kFrequency, "430", "430.0000", ""},
      {empty, kName, "X", "", "The channel is empty"},
      {vfo, kFrequency, "430", "145.0000", "430 MHz is outside the bands"},
      {vfo, kName, "X", "", "A special channel has none."},
      {vfo, kShift, "Split", "Split", ""},
      {rpt, kShift, "Split", "-Shift", "\"Split\" is none of None, -Shift, +Shift."},
      {rpt, kPower, "Hi", "", "The repeater row does not carry it."},
      {rpt, kStep, "5", "", "The repeater row does not carry it."},
      {rpt, kFrequency, "430", "", "The repeater row does not carry it."},
      {rpt, kTone, "DCS", "DCS", ""},
      {ph, kPower, "Hi", "", "The channel is empty"},
      {ph, kFrequency, "430", "430.0000", ""},
  };
  CloneImage before = FreshData().image;
  for (const auto& place : {home, odd}) PutRecord(before, place, before.TemplateChannel());
  RecordAt(before, odd).Set(kMemory, kFrequency, 6'000'013, "600.0013");
  for (const auto& c : cases) {
    CloneImage image = before;
    const CellResult result = SetCell(image, 0, c.place, c.field, c.typed);
    EXPECT_EQ(CellText(image, c.place, c.field), c.shown) << c.typed;
    EXPECT_EQ(result.refusal.substr(0, std::string_view(c.refusal).size()), c.refusal) << c.typed;
    EXPECT_EQ(result.refusal.empty(), *c.refusal == '\0') << c.typed << result.refusal;
    EXPECT_EQ(result.also, c.also) << c.typed;
    EXPECT_TRUE(result.refusal.empty() || image == before) << c.typed;
  }
  CloneImage image = before;
  SetCell(image, 0, home, kSkip, "On");
  EXPECT_EQ(RecordAt(image, home).cellText[0], "*145.0000");
  EXPECT_FALSE(ClearRecord(image, vfo));
  SetCell(image, 0, ph, kFrequency, "430");
  EXPECT_TRUE(ClearRecord(image, ph));
  EXPECT_EQ(StoredPresent(image, Band::kUhf), PresentPair());
}

}  // namespace
}  // namespace q40
