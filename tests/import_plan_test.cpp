// What the rows of lists that others have made become.
#include "lists/import_plan.h"

#include <gtest/gtest.h>

#include "document/channel_cells.h"
#include "document/clone_document.h"
#include "document/defaults.h"
#include "support/foreign_lists.h"

namespace q40 {
namespace {

using namespace test;

// An RX-Q40E: 144 to 146 and 430 to 440 MHz.
CloneData Document() {
  CloneData document = FreshData();
  ChangeModel(document, 1);
  return document;
}

ImportPlan Plan(const std::string& meanings, const std::string& rows,
                const PlanOptions& options = {}, const CloneData& document = Document()) {
  return PlanImport(Read(rows, {ListEncoding::kUtf8, ';', 0}), Meanings(meanings), options,
                    document);
}

// What becomes of a row, without its line and channel.
std::string Becomes(const std::string& meanings, const std::string& row) {
  const ImportPlan plan = Plan(meanings, row);
  const PlannedRow& planned = plan.rows.at(0);
  const bool done = planned.outcome == RowOutcome::kChannel;
  return (done ? planned.becomes : planned.PlaceText()) + (planned.notes.empty() ? "" : "; ") +
         planned.NotesText();
}

TEST(ImportPlans, RowsBecomeChannels) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      // Two frequencies.
      {"output input", "438.7250;431.1250", "438.7250 -7.6000"},
      {"output input", "145.0;145.6", "145.0000 +0.6000"},
      {"output input", "145.5;145.5", "145.5000"},
      {"output input offset", "145.6;-;-0.6", "145.6000 -0.6000"},
      {"output input offset", "145.6;145.0;-1.6", "145.6000 -0.6000"},
      {"output input", "439.4;145.0",
       "439.4000; Input (radio transmits): an offset of 294.4000 MHz does not fit; the radio keeps "
       "less than 10"},
      {"output input", "439.4;429.4",
       "439.4000; Input (radio transmits): an offset of 10.0000 MHz does not fit; the radio keeps "
       "less than 10"},
      {"output input", "145.6;up", "145.6000; Input (radio transmits): \"up\" is no frequency"},
      // Offset and direction.
      {"output offset direction", "145.6;0.6;-", "145.6000 -0.6000"},
      {"output offset direction", "145.1;-0.6;+", "145.1000 +0.6000"},
      {"output offset direction", "145.6;-0.6;", "145.6000 -0.6000"},
      {"output offset direction", "145.6;0.6;", "145.6000"},
      {"output offset direction", "145.2;145.8;split", "145.2000 +0.6000"},
      {"output offset direction", "145.6;;-",
       "145.6000 -0.6000; Offset: the row has none; 0.6000 is usual"},
      {"output offset direction", "438.6;0;-",
       "438.6000 -7.6000; Offset: the row has none; 7.6000 is usual"},
      {"output offset direction", "145.6;0.6;sideways",
       "145.6000; Direction of the offset: \"sideways\" is no direction"},
      {"output direction", "145.6;off",
       "145.6000; Direction of the offset: \"off\": no channel of the radio can be kept from "
       "transmitting"},
      {"output offset", "145.6;-600", "145.6000 -0.6000"},
      {"output offset", "145.1;0.6",
       "145.1000 +0.6000; Offset: \"0.6\" has neither a sign nor a direction; it is taken as +"},
      {"output offset", "145.6;Simplex", "145.6000"},
      {"output offset", "145.1;+", "145.1000 +0.6000; Offset: the row has none; 0.6000 is usual"},
      {"output offset", "145.6;far", "145.6000; Offset: \"far\" is no offset"},
      {"output offset", "145.6;-0.6062",
       "145.6000; Offset: .6062 is no multiple of 5 or 12.5 kHz; the next below is .6050"},
      {"output offset", "145.6;-1.8",
       "145.6000 -1.8000; Shift: With -Shift by 1.8000 MHz the radio is to transmit on 143.8000 "
       "MHz, outside "
       "its VHF band"},
      // No channel at all.
      {"output name", ";A", "passed over; Output (radio receives): the row has none"},
      {"output", "high", "passed over; Output (radio receives): \"high\" is no frequency"},
      {"output", "-145.5", "passed over; Output (radio receives): \"-145.5\" is no frequency"},
      {"output", "446.0",
       "passed over; Output (radio receives): 446 MHz is outside the bands of the RX-Q40E: "
       "(144.000-145.995MHz) (430.000-439.995MHz)"},
      {"output", "1298.2",
       "passed over; Output (radio receives): 1298.2000 MHz is outside the bands of the RX-Q40E"},
      {"output", "145.0031",
       "passed over; Output (radio receives): .0031 is no multiple of 5 or 12.5 kHz; the next "
       "below is .0000"},
      // The rest.
      {"output mode power skip width", "145.5;NFM;high;x;", "145.5000 Narrow Skip"},
      {"output mode width", "145.5;NFM;25", "145.5000"},
      {"output mode", "145.5;DMR",
       "145.5000; Mode: \"DMR\" is not FM, and the radio has nothing else"},
      {"output power", "145.5;50 W", "145.5000; Power: \"50 W\" is none of Lo, Mid, Hi"},
      {"output skip", "145.5;why", "145.5000; Skip: \"why\" says neither yes nor no"},
      {"output width", "145.5;17",
       "145.5000; Bandwidth: \"17\" is no bandwidth: Narrow, Wide, 12.5, 25"},
      {"output step", "145.5;12500", "145.5000"},
      {"output step", "145.5;7",
       "145.5000; Step: \"7\" is none of 5KHz, 10KHz, 12.5KHz, 15KHz, 20KHz, 25KHz, "
       "30KHz"},
      {"output step", "145.5;25",
       "145.5000; Step: The radio and the file store 25KHz, but it is read back as 12.5KHz: a "
       "channel is "
       "read with 5KHz or 12.5KHz"},
      {"output name second-name", "145.5;home;Hill", "145.5000 HOME"},
      {"output name second-name", "145.5;;hill", "145.5000 HILL"},
      {"output name", "145.5;DB0ABC-L",
       R"(145.5000 DB0ABC; Name or call: "DB0ABC-L" becomes "DB0ABC")"},
      {"output name", "145.5;\xE6\x9D\xB1",
       "145.5000; Name or call: \"\xE6\x9D\xB1\" has no character of a name"},
  };
  for (const auto& [meanings, row, expected] : cases)
    EXPECT_EQ(Becomes(meanings, row), expected) << row;
}

TEST(ImportPlans, WhichToneDecides) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"tone-sent", "67.0", "Tone 67.0"},
      {"tone-sent tone-heard", "67.0;67.0", "TSQ 67.0"},
      {"tone-sent tone-heard", "67.0;88.5", "TSQ 67.0 88.5"},
      {"tone-both", "67.0", "TSQ 67.0"},
      {"tone-sent tone-both", "67.0;88.5", "TSQ 67.0 88.5"},
      {"dcs-both", "023", "DCS 023"},
      {"dcs-sent dcs-heard", "023;025", "DCS 023 025"},
      {"dcs-sent", "023", "DCS 023; DCS code sent: 023 is heard too: DCS works both ways"},
      {"tone-sent dcs-both", "67.0;023",
       "Tone 67.0; DCS code sent and heard: left out: the channel has the CTCSS tone 67.0Hz"},
      {"tone-sent tone-heard", "67.0;D023",
       "Tone 67.0; Tone heard: left out: the channel has the CTCSS tone 67.0Hz"},
      {"tone-sent tone-heard", "D023;67.0",
       "; Tone heard: 67.0Hz cannot be heard where the DCS code 023 is sent"},
      {"tone-heard", "67.0", "; Tone heard: 67.0Hz is only heard; the radio would send it too"},
      {"tone-sent tone-heard", "100.1;67.0",
       "; Tone sent: \"100.1\" is no CTCSS tone of the radio; Tone heard: 67.0Hz is only heard; "
       "the radio "
       "would send it too"},
      {"tone-both", "100.1", "; Tone sent and heard: \"100.1\" is no CTCSS tone of the radio"},
      {"tone-kind tone-sent tone-both", ";67.0;88.5", ""},
      {"tone-kind tone-sent tone-both", "Tone;67.0;88.5", "Tone 67.0"},
      {"tone-kind tone-sent tone-both", "TSQL;67.0;88.5", "TSQ 88.5"},
      {"tone-kind tone-sent tone-heard", "TSQL;67.0;88.5", "TSQ 67.0 88.5"},
      {"tone-kind tone-sent", "TSQL;67.0", "TSQ 67.0"},
      {"tone-kind tone-sent dcs-both dcs-heard", "DTCS;67.0;023;025", "DCS 023 025"},
      {"tone-kind tone-sent dcs-polarity", "DCS;D023;NN", "DCS 023"},
      {"dcs-both dcs-polarity", "023;RN",
       "; DCS polarity: \"RN\" is not normal; the radio knows no inverted codes"},
      {"tone-sent dcs-polarity", "67.0;RN", "Tone 67.0"},
      {"tone-kind tone-sent", "DCS;67.0", "; Kind of tone: the row has no DCS code for it"},
      {"tone-kind tone-sent", "Tone;D023", "; Tone sent: 023 is no CTCSS tone"},
      {"tone-kind tone-sent", "Tone;", "; Kind of tone: the row has no CTCSS tone for it"},
      {"tone-kind tone-sent", "Cross;67.0",
       "; Kind of tone: \"Cross\" is none of None, Tone, TSQ, DCS"},
      {"tone-kind tone-sent", "none;100.1", ""},
  };
  for (const auto& [meanings, row, expected] : cases) {
    const std::string text =
        *expected == '\0' || *expected == ';' ? expected : ' ' + std::string(expected);
    EXPECT_EQ(Becomes("output " + std::string(meanings), "145.5;" + std::string(row)),
              "145.5000" + text)
        << meanings << ' ' << row;
  }
}

// The step is that of the frequency, although the offset went in later.
TEST(ImportPlans, AChannelIsWhatTheDialogMakes) {
  const ImportPlan plan = Plan("output offset tone-both power skip name step",
                               "145.6125;-0.6;67.0;hi;1;lake;", {.first_channel = 7});
  CloneDocument document(Document());
  CloneImage by_hand = document.image();
  const ChannelPlace place{ChannelKind::kMemory, Band::kVhf, 7};
  const std::pair<Field, const char*> edits[] = {
      {Field::kFrequency, "145.6125"}, {Field::kShiftFrequency, "0.6"}, {Field::kShift, "-Shift"},
      {Field::kStep, "12.5"},          {Field::kTone, "TSQ"},           {Field::kTxTone, "67.0"},
      {Field::kRxTone, "67.0"},        {Field::kPower, "Hi"},           {Field::kSkip, "On"},
      {Field::kName, "LAKE"}};
  for (const auto& [field, text] : edits)
    EXPECT_EQ(SetCell(by_hand, 1, place, field, text).refusal, "");
  const CloneImage filled = Filled(plan, document.image());
  EXPECT_EQ(filled, by_hand);
  EXPECT_TRUE(document.StoreChannels(filled));
  EXPECT_TRUE(document.SettingsChanged() && document.MemoryChanged());
}

// A channel in use, with a frequency and a name.
void Use(CloneData& document, int n, const std::string& name) {
  const ChannelPlace place{ChannelKind::kMemory, Band::kVhf, n};
  EXPECT_EQ(SetCell(document.image, 1, place, Field::kFrequency, "145.2").refusal, "");
  EXPECT_EQ(SetCell(document.image, 1, place, Field::kName, name).refusal, "");
}

std::string Account(const ImportPlan& plan) {
  std::string text;
  for (const PlannedRow& row : plan.rows) text += row.Message() + '\n';
  return text + plan.Summary() + (plan.Whole() ? ", whole" : "");
}

TEST(ImportPlans, PlacesAndFilters) {
  CloneData document = Document();
  Use(document, 207, "OLD");
  EXPECT_EQ(FirstFreeChannel(document.image), 0);
  const std::string rows = "145.5;NFM\n50.1;FM\n145.6;DMR\n145.7;\n145.8;FM\n145.9;FM";
  EXPECT_EQ(
      Account(Plan("output mode", rows,
                   {.first_channel = 206, .only_fm = true, .only_own_bands = true}, document)),
      "line 1: channel D6 becomes 145.5000 Narrow\n"
      "line 2: left out, 50.1: outside the bands of the RX-Q40E\n"
      "line 3: left out, 145.6: \"DMR\" is not FM\n"
      "line 4: channel D8 becomes 145.7000\n"
      "line 5: channel D9 becomes 145.8000\n"
      "line 6: no place, 145.9: no channel is left\n"
      "3 channels, 2 rows left out, 1 row without a place");
  EXPECT_EQ(
      Account(Plan("output mode", "145.5\n145.6\n145.7;DMR", {206, true, true, false}, document)),
      "line 1: channel D6 becomes 145.5000\n"
      "line 2: channel D7 becomes 145.6000; replaces 145.2000 OLD\n"
      "line 3: left out, 145.7: \"DMR\" is not FM\n"
      "2 channels, 1 row left out, whole");
  EXPECT_EQ(Account(Plan("output channel", "145.5;d7\n145.6;003\n145.7;3\n145.8;200\n145.9;", {},
                         document)),
            "line 1: no place, 145.5: Channel number: D7 is in use\n"
            "line 2: channel 3 becomes 145.6000\n"
            "line 3: no place, 145.7: Channel number: 3 is filled by line 2\n"
            "line 4: no place, 145.8: Channel number: \"200\" is none: 0-199, D0-D9\n"
            "line 5: no place, 145.9: Channel number: \"\" is none: 0-199, D0-D9\n"
            "1 channel, 4 rows without a place");
  // No band is known of this model.
  ChangeModel(document, 3);
  EXPECT_EQ(Account(Plan("output", "145.5", {}, document)),
            "line 1: passed over, 145.5: Output (radio receives): Nothing is known of the bands of "
            "the RX-Q20A\n"
            "0 channels, 1 row passed over");
}

// Not even with a name that comes later, or with one that is there already.
TEST(ImportPlans, AShortenedNameIsNeverGivenTwice) {
  CloneData document = Document();
  Use(document, 0, "HAMBR3");
  Use(document, 1, "GONE");
  const ImportPlan plan = Plan("output name",
                               "145.5;Hamburg\n145.525;Hamburg\n145.55;hambrg\n145.575;A\n145.6;a\n"
                               "145.625;G.one..",
                               {1, true, false, false}, document);
  std::vector<std::string> names;
  for (const PlannedRow& row : plan.rows) {
    names.push_back(row.record.Text(ChannelKind::kMemory, Field::kName));
  }
  EXPECT_EQ(Joined(names, ' '), "HAMBR2 HAMBR4 HAMBRG A A G ONE");
}

}  // namespace
}  // namespace q40
