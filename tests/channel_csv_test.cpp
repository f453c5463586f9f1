#include "files/channel_csv.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "files/csv_text.h"
#include "image/channel_fields.h"
#include "image/defaults.h"
#include "image/document_cells.h"
#include "support/random_document.h"

namespace q40 {
namespace {

using enum Field;

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
  CloneDocument document = FreshDocument();
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
  for (const std::string& record : records) {
    EXPECT_NE(text.find("\r\n" + record + "\r\n"), std::string::npos) << record;
  }
}

TEST(CsvImport, ExportedListsComeBackTheSame) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    CloneImage image = test::RandomDocument(seed).image;
    for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
      if (!image.ChannelInUse[n]) image.MemoryTable[n] = {};  // not exported
    }
    CloneImage other = FreshDocument().image;
    other.TemplateChannel() = image.TemplateChannel();
    EXPECT_EQ(ImportChannels(ExportChannels(image), other).passed_over_count, 0) << seed;
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
  const auto expect = [&](std::size_t item, const char* text, int number, std::string_view cell) {
    const Field field = kReadingOrder[item];
    for (const auto& base : bases) {
      CloneImage image;
      ImportChannels(record(base), image);
      auto items = base;
      items[18] = "Off";
      items[item] = text;
      ImportChannels(record(items), image);
      EXPECT_EQ(image.MemoryTable[1].Number(kMemory, field), number) << item << " " << text;
      EXPECT_EQ(image.MemoryTable[1].Text(kMemory, field), cell) << item << " " << text;
    }
  };
  const std::tuple<std::size_t, const char*, int> cases[] = {
      {1, "25KHz", 5},   {1, "7KHz", 2},   {2, "Tone", 1},  {2, "tone", 0},   {3, "250.30", 38},
      {3, "88.6", 10},   {4, "67", 0},     {5, "25", 1},    {5, "999", 50},   {6, "754", 103},
      {7, " +Shift", 2}, {7, "-Shift", 1}, {7, "Split", 3}, {7, " Split", 0}, {9, "On", 1},
      {9, "yes", 0},     {10, "Hi", 2},    {10, "", 0},     {11, "3", 3},     {11, "10", 10},
      {11, "11", 7},     {12, "10dB", 1},  {12, "20", 2},   {12, "30dB", 0},  {13, "Off", 0},
      {13, "BS-1", 1},   {13, "", 2},      {14, "On", 1},   {15, "on", 0},    {16, "Narrow", 1},
      {16, "?", 0}};
  for (const auto& [item, text, code] : cases)
    expect(item, text, code, CodeText(kReadingOrder[item], code));
  expect(0, "*146", 1'460'000, "146.0000");
  expect(0, "45.5", 455'000, "45.5000");
  expect(0, "-5", 0, ".0000");
  expect(8, "12.5", 125'000, "12.5000");

  CloneImage image;
  const ChannelRecord& channel = image.MemoryTable[1];
  auto items = bases[1];
  ImportChannels(record(items), image);
  EXPECT_EQ(channel.cellText[0], "*145.0000");
  EXPECT_EQ(channel.Number(kMemory, kSkip), 1);
  items[17] = "ABCDEFGH";
  items[18] = "yes";
  ImportChannels(record(items), image);
  EXPECT_EQ(channel.Text(kMemory, kName), "ABCDEF");
  EXPECT_EQ(channel.Number(kMemory, kSkip), 0);
  // An unused channel starts from nothing, whatever its fields still hold.
  image.ChannelInUse[1] = false;
  items[3] = "no tone";
  ImportChannels(record(items), image);
  EXPECT_EQ(channel.Text(kMemory, kTxTone), "67.0Hz");
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

TEST(CsvImport, ForeignAndBrokenRecordsCostNothingElse) {
  CloneImage image;
  const auto report = ImportChannels("MODEL,BANK\n\n\"other radio\",1,2\nRX-Q20,MEMORY,7" + kRest +
                                         "RX-Q40,MEMORY,210" + kRest + "RX-Q40,MEMORY,3" + kRest,
                                     image);
  ASSERT_EQ(report.passed_over.size(), 1U);
  EXPECT_EQ(report.passed_over[0].line, 5);
  EXPECT_EQ(std::count(image.ChannelInUse.begin(), image.ChannelInUse.end(), true), 1);
  EXPECT_TRUE(image.ChannelInUse[3]);
}

TEST(CsvImport, ARecordThatEndsAnywhereIsPassedOver) {
  const std::string record = "RX-Q40,MEMORY,3" + kItems + ",N,Off";
  for (std::size_t end = record.find(','); end != std::string::npos;
       end = record.find(',', end + 1)) {
    CloneImage image;
    const auto report = ImportChannels(record.substr(0, end), image);
    ASSERT_EQ(report.passed_over_count, 1) << end;
    EXPECT_EQ(report.passed_over[0].why, "items are missing");
    EXPECT_EQ(image, CloneImage());
  }
}

// A channel may have the name of the radio.
TEST(CsvImport, AShortRecordTakesTheNextOneInAndSaysSo) {
  const std::pair<std::string, int> cases[] = {
      // and the line that is passed over
      {",145,5KHz\nRX-Q40,MEMORY,2" + kRest, 2},
      {kItems + ",RX-Q40,MEMORY,2\n", 1},  // the skip item is missing, or the next record came
      {kItems + ",RX-Q40,Off\n", 0}};
  for (const auto& [rest, line] : cases) {
    CloneImage image;
    const auto report = ImportChannels("RX-Q40,MEMORY,1" + rest, image);
    ASSERT_EQ(report.passed_over_count, line == 0 ? 0 : 1) << rest;
    EXPECT_TRUE(line == 0 || report.passed_over[0].line == line) << rest;
    EXPECT_TRUE(image.ChannelInUse[1]);
    EXPECT_FALSE(image.ChannelInUse[2]);
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

TEST(CsvImport, ManyForeignRecordsAreCountedAndAFewListed) {
  std::string text;
  for (int i = 0; i < 1000; ++i) text += "RX-Q40,\"\x1B[2J" + std::string(5000, 'x') + "\"\n";
  CloneImage image;
  const auto report = ImportChannels(text, image);
  EXPECT_EQ(report.passed_over_count, 1000);
  ASSERT_EQ(report.passed_over.size(), 20U);
  EXPECT_EQ(report.passed_over[0].why, "bank \"\\x1B[2J" + std::string(28, 'x') + "...\"");
}

TEST(CsvImport, EmptyItemsOfTheRepeaterRowKeepWhatItDoesNotCarry) {
  CloneImage image = FreshDocument().image;
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
  CloneDocument document = FreshDocument();
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
