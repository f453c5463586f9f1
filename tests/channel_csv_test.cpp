#include "files/channel_csv.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "document/defaults.h"
#include "document/document_cells.h"
#include "files/channel_table.h"
#include "files/csv_text.h"
#include "radio/channel_fields.h"
#include "support/import_messages.h"
#include "support/random_document.h"

namespace q40 {
namespace {

using enum Field;
using test::Messages;

constexpr auto kMemory = ChannelKind::kMemory;

// What follows the channel in a record, up to the name.
const std::string kItems = ",145,5KHz,None,67,67,023,023,None,0,Off,Lo,0,Off,Off,Off,Off,Normal";
const std::string kRest = kItems + ",,Off\r\n";

TEST(CsvItems, QuotesSeparatorsAndLineEnds) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"", {}},
      {"a,b\r\nc\rd\ne", {"a", "b", "c", "d", "e"}},
      {"\"a,b\",\"c\"\"d\" rest,\"e\nf\"", {"a,b", "c\"d", "e\nf"}},
      {" a , \" b \" ,c\t", {"a", " b ", "c"}},
      {"\r\n\r\na\r\n\r\n\r\nb\r\n", {"a", "b"}},
      {"a,,\"\"\r\n,b", {"a", "", "", "", "b"}},
      {"\xEF\xBB\xBF\"a\"", {"a"}},
      {"a,", {"a", ""}},
      {"\"open, and\r\nno end", {"open, and\r\nno end"}}};
  for (const auto& [text, expected] : cases) {
    CsvItems items(text);
    for (const std::string& item : expected) EXPECT_EQ(items.Next(), item) << text;
    EXPECT_FALSE(items.Next()) << text;
    EXPECT_EQ(items.UnclosedLine(), std::string_view(text).ends_with("no end") ? 1 : 0) << text;
  }
}

TEST(CsvExport, HeaderAndRecords) {
  CloneData document = FreshData();
  ImportChannels(
      "RX-Q40,MEMORY,D3,*145.5,12.5KHz,TSQ,88.5,250.3,23,754,-Shift,0.6,On,Hi,7,20dB,BS-2,On,On,"
      "Narrow,\"A,\"\"B\",On",
      document.image);
  const std::string text = ExportChannels(document.image);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 12);
  EXPECT_TRUE(text.starts_with(
      R"("MODEL","BANK","CHANNEL","FREQUENCY","STEP","TONE","TXTONE","RXTONE","TXDCS","RXDCS",)"
      R"("SHIFT","SHIFT FREQUENCY","Repeat","Power","MID","ATT","BS","Clock","BCLO",)"
      R"("Bandwidth","Name","Skip")"
      "\r\n"))
      << text;
  const std::string records[] = {
      R"("RX-Q40","VFO VHF","VFO","145.0000","5KHz","None","88.5Hz","88.5Hz","023","023",)"
      R"("None","0.6000","Off","Lo","05","Off","BS-1","Off","Off","Normal","No","Off")",
      R"("RX-Q40","VFO VHF","RPT","","","Tone","88.5Hz","88.5Hz","023","023",)"
      R"(" -Shift","0.6000","Off","","","","","","","","No","Off")",
      R"("RX-Q40","VFO VHF","PH","","","","","","","","","","","","","","","","","","No","Off")",
      R"("RX-Q40","MEMORY","D3","*145.5000","12.5KHz","TSQ","88.5Hz","250.3Hz","023","754",)"
      R"(" -Shift","0.6000","On","Hi","07","20dB","BS-2","On","On","Narrow","A,""B","On")"};
  for (const std::string& record : records)
    EXPECT_NE(text.find("\r\n" + record + "\r\n"), std::string::npos) << record;
}

TEST(CsvImport, ExportedListsComeBackTheSame) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    CloneImage image = test::RandomDocument(seed).image;
    for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
      if (!image.ChannelInUse[n]) image.MemoryTable[n] = {};  // not exported
    }
    CloneImage other = FreshData().image;
    other.TemplateChannel() = image.TemplateChannel();
    const ImportReport report = ImportChannels(ExportChannels(image), other);
    EXPECT_TRUE(report.Whole()) << seed << testing::PrintToString(Messages(report));
    EXPECT_EQ(other.ChannelInUse, image.ChannelInUse) << seed;
    EXPECT_EQ(other.MemoryTable, image.MemoryTable) << seed;
    EXPECT_EQ(other.VhfSpecialSet, image.VhfSpecialSet) << seed;
    EXPECT_EQ(other.UhfSpecialSet, image.UhfSpecialSet) << seed;
  }
  // A name that looks like a shift keeps its form.
  CloneImage named;
  named.ChannelInUse[0] = true;
  named.MemoryTable[0].Set(kMemory, kName, 1, "+Shift");
  EXPECT_NE(ExportChannels(named).find(",\"+Shift\",\"Off\""), std::string::npos);
}

// A record of channel 1 with one item changed, imported over a channel whose every code differs. The
// items behind the channel stand in the order in which lists are read, but skip comes last.
TEST(CsvImport, VocabularyAndFallbacks) {
  // Two bases, so that for every field one differs from the code that a case expects.
  const std::vector<std::string> bases[] = {
      {"145", "12.5KHz", "DCS", "94.8", "94.8", "274", "274", "+Shift", "5", "Off", "Mid", "7",
       "Off", "BS-1", "Off", "Off", "Normal", "N", "Off"},
      {"145", "12.5KHz", "TSQ", "94.8", "94.8", "274", "274", "Split", "5", "On", "Hi", "7", "20dB",
       "Off", "On", "On", "Narrow", "N", "On"}};
  const auto record = [](const std::vector<std::string>& items) {
    std::string text = "RX-Q40,MEMORY,1";
    for (const std::string& item : items) text += ",\"" + item + '"';
    return text + "\r\n";
  };
  const auto expect = [&](std::size_t item, const char* text, int number, std::string_view cell,
                          bool as_written) {
    const Field field = kReadingOrder[item];
    for (const auto& base : bases) {
      CloneImage image;
      ImportChannels(record(base), image);
      auto items = base;
      items[18] = "Off";
      items[item] = text;
      const ImportReport report = ImportChannels(record(items), image);
      EXPECT_EQ(report.Whole(), as_written) << item << " " << text;
      EXPECT_EQ(image.MemoryTable[1].Number(kMemory, field), number) << item << " " << text;
      EXPECT_EQ(image.MemoryTable[1].Text(kMemory, field), cell) << item << " " << text;
    }
  };
  // Item, its text, the code; the last tells whether that is what was written.
  const std::tuple<std::size_t, const char*, int, bool> cases[] = {
      {1, "25KHz", 5, true},   {1, "7KHz", 2, false},   {1, "12.5kHz", 2, true},
      {1, "25kHz", 2, false},  {2, "Tone", 1, true},    {2, "tone", 0, false},
      {2, "none", 0, true},    {3, "250.30", 38, true}, {3, "88.6", 10, false},
      {3, "88,5", 10, false},  {4, "67", 0, true},      {4, "67,0 hz", 0, true},
      {5, "25", 1, true},      {5, "999", 50, false},   {5, "25N", 1, false},
      {6, "754", 103, true},   {7, " +Shift", 2, true}, {7, "-Shift", 1, true},
      {7, "Split", 3, true},   {7, " Split", 0, false}, {7, "#NAME?", 0, false},
      {9, "On", 1, true},      {9, "yes", 0, false},    {10, "Hi", 2, true},
      {10, "hi", 0, false},    {10, "", 0, false},      {11, "3", 3, true},
      {11, "10", 10, true},    {11, "11", 7, false},    {11, "5.0", 7, false},
      {11, "", 7, true},       {12, "10dB", 1, true},   {12, "20", 2, true},
      {12, "30dB", 0, false},  {13, "Off", 0, true},    {13, "BS-1", 1, true},
      {13, "", 2, false},      {14, "On", 1, true},     {15, "on", 0, false},
      {16, "Narrow", 1, true}, {16, "?", 0, false}};
  for (const auto& [item, text, code, as_written] : cases)
    expect(item, text, code, CodeText(kReadingOrder[item], code), as_written);
  const std::tuple<std::size_t, const char*, int, const char*, bool> numbers[] = {
      {0, "*146", 1'460'000, "146.0000", true},
      {0, "45.5", 455'000, "45.5000", true},
      {0, "-5", 0, ".0000", false},
      {0, "", 0, ".0000", false},
      {0, "145,7125", 1'450'000, "145.0000", false},
      {0, "145,0000", 1'450'000, "145.0000", true},
      {0, "145.712500 MHz", 1'457'125, "145.7125", true},
      {0, "145.71255", 1'457'126, "145.7126", false},
      {0, "145abc", 1'450'000, "145.0000", false},
      {0, "12E3", 120'000, "12.0000", false},
      {8, "12.5", 125'000, "12.5000", true},
      {8, "1.2.3", 12'000, "1.2000", false}};
  for (const auto& [item, text, number, cell, as_written] : numbers)
    expect(item, text, number, cell, as_written);

  // An unused channel starts from nothing, whatever its fields still hold.
  CloneImage image;
  auto items = bases[1];
  ImportChannels(record(items), image);
  image.ChannelInUse[1] = false;
  items[3] = "no tone";
  ImportChannels(record(items), image);
  EXPECT_EQ(image.MemoryTable[1].Text(kMemory, kTxTone), "67.0Hz");
}

TEST(CsvImport, ChannelsAndBanks) {
  const std::pair<const char*, std::size_t> channels[] = {{"0", 0},     {"209", 209}, {"D7", 207},
                                                          {"D12", 202}, {" 5", 5},    {"*5", 5},
                                                          {"12.0", 12}, {"* 12", 12}, {"5.", 5}};
  for (const auto& [channel, n] : channels) {
    CloneImage image;
    const auto report = ImportChannels("RX-Q40,MEMORY," + std::string(channel) + kRest, image);
    EXPECT_EQ(report.memory_records, 1) << channel;
    EXPECT_EQ(std::count(image.ChannelInUse.begin(), image.ChannelInUse.end(), true), 1) << channel;
    EXPECT_TRUE(image.ChannelInUse[n]) << channel;
  }
  for (const char* head :
       {"MEMORY,5...", "MEMORY,0.0.0", "MEMORY,210", "MEMORY,abc", "MEMORY,-1", "MEMORY,12abc",
        "MEMORY,D", "MEMORY,d3", "MEMORY,12.5", "MEMORY,99999999999999999999", "MEMORY,\"\"",
        "VFO,0", "VFO VHF,vfo", "RX-Q40,MEMORY,0"}) {
    CloneImage image;
    EXPECT_EQ(ImportChannels("RX-Q40," + std::string(head) + kRest, image).passed_over_count, 1)
        << head;
    EXPECT_EQ(image, CloneImage()) << head;
  }
}

// One list, and everything that is to be said of it.
TEST(CsvImport, NotesNameTheLineTheColumnAndWhatWasWritten) {
  using Notes = std::vector<std::string>;
  const std::string one = "RX-Q40,MEMORY,1";
  const std::pair<std::string, Notes> cases[] = {
      {one + kRest + "RX-Q40,VFO VHF,PH,," + std::string(17, 'x') + std::string(17, ','), {}},
      {"MODEL,BANK\n\n\"other radio\",1,2\nRX-Q20,MEMORY,7" + kRest + "RX-Q40,MEMORY,210" + kRest +
           one + kRest,
       {"line 3: passed over to line 4: begins with \"other radio\" instead of \"RX-Q40\"",
        "line 5: passed over, channel \"210\""}},
      {one + kItems + ",ABCDEFGH,Off",
       {R"(line 1, Name: stored as "ABCDEF"; written was "ABCDEFGH")"}},
      {one + kItems + ",,yes", {R"(line 1, Skip: stored as Off; written was "yes")"}},
      {one + kItems + ",\"A\"B,Off",
       {R"(line 1, Name: passed over behind the closing quote: "B")"}},
      {one + kRest + one + kRest,
       {"line 2, CHANNEL: channel 1 stands in line 1 too; this record replaces that one"}},
      {"RX-Q40,MEMORY,D12" + kRest, {R"(line 1, CHANNEL: stored as D2; written was "D12")"}},
      {one + kItems + ",,Off,,x,y\n",
       {R"(line 1: has more than 22 items; passed over from "x" on)"}},
      {"RX-Q40,VFO UHF,PL,x" + kItems.substr(4) + ",No,On",
       {R"(line 1, FREQUENCY: stored as .0000; written was "x")"}},
      {"RX-Q40,VFO UHF,CALL" + kItems + ",X,Off",
       {R"(line 1, Name: a special channel has none; written was "X")"}},
      // A channel may have the name of the radio.
      {one + kItems + ",RX-Q40,Off\n", {}},
      {one + kItems + ",RX-Q40,MEMORY,2\n",
       {R"(line 1, Skip: stored as Off; written was "MEMORY")",
        "line 1: passed over, taken for the rest of channel 1 of line 1, which has 20 of 22 "
        "items"}},
      {one + kItems + ",A\nRX-Q40,MEMORY,2" + kRest,
       {R"(line 1, Skip: stored as Off; written was "RX-Q40")",
        "line 2: passed over, taken for the rest of channel 1 of line 1, which has 21 of 22 "
        "items"}},
      {"RX-Q40,MEMORY\nRX-Q40,MEMORY,2" + kRest + one + kRest,
       {R"(line 1: passed over, channel "RX-Q40")",
        "line 2: passed over, taken for the rest of the record of line 1, which has 2 of 22 "
        "items"}},
      {one + kItems + ",\"A" + kRest + "RX-Q40,MEMORY,2" + kItems + ",\"B\",Off",
       {"line 1, Name: passed over inside the quotes of one item: 1 record; is a quote missing?",
        R"(line 1, Name: passed over behind the closing quote: "B"")",
        R"(line 1, Name: stored as "A,145,"; written was "A,145,5KHz,None,67,67,023,023,No...")"}}};
  for (const auto& [text, expected] : cases) {
    CloneImage image;
    EXPECT_EQ(Messages(ImportChannels(text, image)), expected) << text;
    EXPECT_EQ(image.ChannelInUse[1], text.find(one) != std::string::npos);
    EXPECT_FALSE(image.ChannelInUse[2]);
  }
}

TEST(CsvImport, WhatIsNoListSaysWhatItIs) {
  const std::string list = "RX-Q40,MEMORY,1" + kRest;
  const auto with = [](std::string text, char separator) {
    std::replace(text.begin(), text.end(), ',', separator);
    return text;
  };
  std::string wide = "\xFF\xFE";
  for (const char c : with(list, '\t')) wide += {c, '\0'};
  const std::pair<std::string, std::string_view> cases[] = {
      {with(list, ';'), "columns are separated by semicolons; "},
      {with("\"RX-Q40\",\"MEMORY\",\"1\"", ';') + ",7125\"",
       "columns are separated by semicolons; "},
      {with(list, '\t'), "columns are separated by tabs; "},
      {wide, "the text is UTF-16; "},
      {wide.substr(2), "the text is UTF-16; "},
      {"", "no channel of an RX-Q40"},
      {"dear diary;\nhello\n", "no channel of an RX-Q40"}};
  for (const auto& [text, why] : cases) {
    CloneImage image;
    const ImportReport report = ImportChannels(text, image);
    EXPECT_TRUE(report.no_list.starts_with(why)) << report.no_list;
    EXPECT_EQ(report.note_count, 0);
    EXPECT_FALSE(report.Whole());
    EXPECT_EQ(image, CloneImage());
  }
}

TEST(CsvImport, ARecordThatEndsAnywhereIsPassedOver) {
  const std::string record = "RX-Q40,MEMORY,3" + kItems + ",N,Off";
  for (std::size_t end = record.find(','); end != std::string::npos;
       end = record.find(',', end + 1)) {
    CloneImage image;
    const auto report = ImportChannels(record.substr(0, end), image);
    ASSERT_EQ(report.passed_over_count, 1) << end;
    EXPECT_EQ(report.notes.at(0).Message(), "line 1: passed over, items are missing");
    EXPECT_EQ(image, CloneImage());
  }
}

TEST(CsvImport, AQuoteThatNeverClosesChangesNothing) {
  CloneImage image = test::RandomDocument(9).image;
  const CloneImage before = image;
  const auto report =
      ImportChannels("RX-Q40,MEMORY,1" + kRest + "RX-Q40,MEMORY,2" + kItems + ",,\"On", image);
  EXPECT_EQ(image, before);
  EXPECT_EQ(ProblemOf(report, "a.csv").value().line, 2);
}

TEST(CsvImport, AllNotesAreCountedAndTheFirstListed) {
  std::string text = "RX-Q40,MEMORY,1" + kRest;
  for (int i = 0; i < 998; ++i) text += "RX-Q40,\"\x1B[2J" + std::string(5000, 'x') + "\"\n";
  CloneImage image;
  ImportReport report = ImportChannels(text, image);
  EXPECT_EQ(report.notes[0].text, "passed over, bank \"\\x1B[2J" + std::string(28, 'x') + "...\"");
  // What a check-up finds stands at the line of the channel, under its column's heading.
  const ListedChannel channel{kMemory, Band::kVhf, 1};
  report.AddLoss({kMemory, Band::kVhf, 2}, "Step", "of a channel that the list does not name");
  report.AddLoss(channel, "TxTone", "first");
  report.AddLoss(channel, "Name", "second");
  EXPECT_EQ(report.notes[0].Message(), "line 1, TXTONE: first");
  EXPECT_EQ(report.notes[1].channel, channel);
  report.AddLoss(channel, "Name", "one too many");
  EXPECT_EQ(report.notes.size(), kNotesListed);
  EXPECT_EQ(report.note_count, 1001);
  EXPECT_EQ(report.loss_count, 3);
}

TEST(CsvImport, EmptyItemsOfTheRepeaterRowKeepWhatItDoesNotCarry) {
  CloneImage image = FreshData().image;
  ImportChannels("RX-Q40,VFO UHF,RPT" + std::string(19, ','), image);
  const ChannelRecord& rpt = image.UhfSpecialSet[kRptRow];
  EXPECT_EQ(rpt.Frequency(), 4'450'000);
  EXPECT_EQ(rpt.cellText[0], "");
  EXPECT_EQ(rpt.Text(ChannelKind::kSpecial, kTone), "None");  // carried, so it falls back
  EXPECT_EQ(rpt.Number(ChannelKind::kSpecial, kMid), 5);
}

TEST(CsvImport, ListsAreLimitedInSize) {
  const std::string most(kLongestCsv, ' ');
  EXPECT_FALSE(CheckCsvSize(most, "a.csv"));
  EXPECT_EQ(CheckCsvSize(most + ' ', "a.csv").value().Message(),
            "a.csv: longer than 16 MiB, no channel list");
}

TEST(CsvImport, SpecialRowsGoToTheirBandAndFrequencyDecidesPresence) {
  CloneData document = FreshData();
  ShowBand(document.image, Band::kUhf);
  const std::string rest =
      ",5KHz,None,67,67,023,025,Split,0,On,Lo,0,Off,Off,Off,Off,Normal,No,Off\n";
  ImportChannels("RX-Q40,VFO VHF,CALL,146" + rest + "RX-Q40,VFO UHF,PH,440" + rest +
                     "RX-Q40,VFO VHF,PL,0" + rest,
                 document.image);
  EXPECT_EQ(document.image.VhfSpecialSet[kCallRow].cellText[0], "146.0000");
  EXPECT_EQ(document.image.VhfSpecialSet[kCallRow].value[16], 1);
  EXPECT_EQ(document.image.VhfSpecialSet[kPlRow], ChannelRecord());
  EXPECT_EQ(StoredPresent(document.image, Band::kUhf), (PresentPair{true, false}));
  EXPECT_EQ(StoredPresent(document.image, Band::kVhf), (PresentPair{false, false}));
  EXPECT_EQ(document.image.ShownSpecialSet, document.image.UhfSpecialSet);
}

}  // namespace
}  // namespace q40
