#include "files/channel_csv.h"

#include <gtest/gtest.h>

#include "files/csv_text.h"
#include "image/defaults.h"
#include "support/random_document.h"

namespace q40 {
namespace {

constexpr auto kMemory = ChannelKind::kMemory;

std::vector<std::string> AllItems(std::string_view text) {
  CsvItems items(text);
  std::vector<std::string> all;
  while (auto item = items.Next()) all.push_back(*item);
  return all;
}

TEST(CsvItems, QuotesSeparatorsAndLineEnds) {
  using Items = std::vector<std::string>;
  const struct {
    const char* text;
    Items items;
  } cases[] = {{"", {}},
               {"a,b\r\nc\rd\ne", {"a", "b", "c", "d", "e"}},
               {"\"a,b\",\"c\"\"d\" rest,\"e\nf\"", {"a,b", "c\"d", "e\nf"}},
               {" a , \" b \" ,c\t", {"a", " b ", "c"}},
               {"\r\n\r\na\r\n\r\n\r\nb\r\n", {"a", "b"}},
               {"a,,\"\"\r\n,b", {"a", "", "", "", "b"}},
               {"\xEF\xBB\xBF\"a\"", {"a"}},
               {"a,", {"a", ""}},
               {"\"open, and\r\nno end", {"open, and\r\nno end"}}};
  for (const auto& c : cases) EXPECT_EQ(AllItems(c.text), c.items) << c.text;
  CsvItems items("a\r\nb,\"c\nd");
  while (items.Next()) continue;
  EXPECT_EQ(items.UnclosedLine(), 2);
}

TEST(CsvExport, HeaderAndRecords) {
  CloneDocument document = FreshDocument();
  SetStoredPresent(document.image, Band::kUhf, {false, true});
  const std::string csv =
      "RX-Q40,MEMORY,D3,*145.5,12.5KHz,TSQ,88.5,250.3,23,754,-Shift,0.6,On,Hi,7,20dB,BS-2,On,On,"
      "Narrow,\"A,\"\"B\",On";
  ImportChannels(csv, document.image);
  const std::string text = ExportChannels(document.image);
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find("\r\n", at);
    ASSERT_NE(end, std::string::npos);
    lines.push_back(text.substr(at, end - at));
    at = end + 2;
  }
  ASSERT_EQ(lines.size(), 12U);
  EXPECT_EQ(
      lines[0],
      R"("MODEL","BANK","CHANNEL","FREQUENCY","STEP","TONE","TXTONE","RXTONE","TXDCS","RXDCS",)"
      R"("SHIFT","SHIFT FREQUENCY","Repeat","Power","MID","ATT","BS","Clock","BCLO",)"
      R"("Bandwidth","Name","Skip")");
  EXPECT_EQ(lines[1],
            R"("RX-Q40","VFO VHF","VFO","145.0000","5KHz","None","88.5Hz","88.5Hz","023","023",)"
            R"("None","0.6000","Off","Lo","05","Off","BS-1","Off","Off","Normal","No","Off")");
  EXPECT_EQ(lines[3], R"("RX-Q40","VFO VHF","RPT","","","Tone","88.5Hz","88.5Hz","023","023",)"
                      R"(" -Shift","0.6000","Off","","","","","","","","No","Off")");
  EXPECT_EQ(
      lines[4],
      R"("RX-Q40","VFO VHF","PH","","","","","","","","","","","","","","","","","","No","Off")");
  EXPECT_EQ(lines[10].substr(0, 33), R"("RX-Q40","VFO UHF","PL","445.0000)");
  EXPECT_EQ(lines[11],
            R"("RX-Q40","MEMORY","D3","*145.5000","12.5KHz","TSQ","88.5Hz","250.3Hz","023","754",)"
            R"(" -Shift","0.6000","On","Hi","07","20dB","BS-2","On","On","Narrow","A,""B","On")");
}

TEST(CsvImport, ExportedListsComeBackTheSame) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    CloneDocument document = test::RandomDocument(seed);
    const std::string text = ExportChannels(document.image);
    CloneDocument other = FreshDocument();
    const ImportReport report = ImportChannels(text, other.image);
    EXPECT_TRUE(report.passed_over.empty());
    for (std::size_t n = 0; n < 210; ++n) {
      EXPECT_EQ(other.image.ChannelInUse[n], document.image.ChannelInUse[n]);
      if (document.image.ChannelInUse[n]) {
        EXPECT_EQ(other.image.MemoryTable[n], document.image.MemoryTable[n]) << seed << " " << n;
      }
    }
    EXPECT_EQ(other.image.VhfSpecialSet, document.image.VhfSpecialSet);
    EXPECT_EQ(other.image.UhfSpecialSet, document.image.UhfSpecialSet);
    EXPECT_EQ(ExportChannels(other.image), text);
  }
  // A name that looks like a shift keeps its form.
  CloneImage named;
  named.ChannelInUse[0] = true;
  named.MemoryTable[0].Set(kMemory, Field::kName, 1, "+Shift");
  EXPECT_NE(ExportChannels(named).find(",\"+Shift\",\"Off\""), std::string::npos);
  // The defaults too, with their half-empty RPT rows and absent limits.
  CloneDocument document = FreshDocument();
  const std::string text = ExportChannels(document.image);
  ImportChannels(text, document.image);
  EXPECT_EQ(ExportChannels(document.image), text);
  EXPECT_EQ(document.image.VhfSpecialSet[kRptRow], FreshDocument().image.VhfSpecialSet[kRptRow]);
}

// A record of channel 1 with one item changed, imported over a channel whose every code differs.
TEST(CsvImport, VocabularyAndFallbacks) {
  const struct {
    std::size_t item;  // 0: FREQUENCY
    const char* text;
    Field field;
    int number;
    const char* cell;
  } cases[] = {{0, "*146", Field::kFrequency, 1'460'000, "146.0000"},
               {0, "45.5", Field::kFrequency, 455'000, "45.5000"},
               {0, "-5", Field::kFrequency, 0, ".0000"},
               {0, "", Field::kFrequency, 0, ".0000"},
               {1, "25KHz", Field::kStep, 5, "25KHz"},
               {1, "7KHz", Field::kStep, 2, "12.5KHz"},
               {2, "Tone", Field::kTone, 1, "Tone"},
               {2, "tone", Field::kTone, 0, "None"},
               {3, "250.30", Field::kTxTone, 38, "250.3Hz"},
               {3, "88.6", Field::kTxTone, 10, "94.8Hz"},
               {4, "67", Field::kRxTone, 0, "67.0Hz"},
               {5, "25", Field::kTxDcs, 1, "025"},
               {5, "999", Field::kTxDcs, 50, "274"},
               {6, "754", Field::kRxDcs, 103, "754"},
               {7, " +Shift", Field::kShift, 2, "+Shift"},
               {7, "-Shift", Field::kShift, 1, "-Shift"},
               {7, "Split", Field::kShift, 3, "Split"},
               {7, " Split", Field::kShift, 0, "None"},
               {8, "12.5", Field::kShiftFrequency, 125'000, "12.5000"},
               {9, "On", Field::kRpt, 1, "On"},
               {9, "yes", Field::kRpt, 0, "Off"},
               {10, "Hi", Field::kPower, 2, "Hi"},
               {10, "", Field::kPower, 0, "Lo"},
               {11, "3", Field::kMid, 3, "03"},
               {11, "10", Field::kMid, 10, "10"},
               {11, "11", Field::kMid, 7, "07"},
               {12, "10dB", Field::kAtt, 1, "10dB"},
               {12, "20", Field::kAtt, 2, "20dB"},
               {12, "30dB", Field::kAtt, 0, "Off"},
               {13, "Off", Field::kBatterySave, 0, "Off"},
               {13, "BS-1", Field::kBatterySave, 1, "BS-1"},
               {13, "", Field::kBatterySave, 2, "BS-2"},
               {14, "On", Field::kClock, 1, "On"},
               {15, "on", Field::kBclo, 0, "Off"},
               {16, "Narrow", Field::kBandwidth, 1, "Narrow"},
               {16, "?", Field::kBandwidth, 0, "Normal"},
               {17, "ABCDEFGH", Field::kName, 1, "ABCDEF"},
               {17, "", Field::kName, 0, ""},
               {18, "yes", Field::kSkip, 0, ""}};
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
  for (const auto& c : cases) {
    for (const auto& base : bases) {
      CloneImage image;
      ImportChannels(record(base), image);
      auto items = base;
      items[c.item] = c.text;
      items[18] = c.item == 18 ? c.text : "Off";
      ImportChannels(record(items), image);
      EXPECT_EQ(image.MemoryTable[1].Number(kMemory, c.field), c.number) << c.item << " " << c.text;
      EXPECT_EQ(image.MemoryTable[1].Text(kMemory, c.field), c.cell) << c.item << " " << c.text;
    }
  }
  CloneImage image;
  auto items = bases[0];
  items[18] = "On";
  ImportChannels(record(items), image);
  EXPECT_EQ(image.MemoryTable[1].cellText[0], "*145.0000");
  EXPECT_EQ(image.MemoryTable[1].value[16], 1);
  // An unused channel starts from nothing, whatever its fields still hold.
  image.ChannelInUse[1] = false;
  items[3] = "no tone";
  ImportChannels(record(items), image);
  EXPECT_EQ(image.MemoryTable[1].Text(kMemory, Field::kTxTone), "67.0Hz");
}

TEST(CsvImport, ChannelsAndBanks) {
  const std::string rest =
      ",145,5KHz,None,67,67,023,023,None,0,Off,Lo,0,Off,Off,Off,Off,Normal,,Off\n";
  const struct {
    const char* channel;
    int n;  // -1: passed over
  } cases[] = {{"0", 0},
               {"209", 209},
               {"D7", 207},
               {"D12", 202},
               {" 5", 5},
               {"*5", 5},
               {"12.0", 12},
               {"* 12", 12},
               {"5.", 5},
               {"5...", -1},
               {"0.0.0", -1},
               {"210", -1},
               {"abc", -1},
               {"-1", -1},
               {"12abc", -1},
               {"D", -1},
               {"d3", -1},
               {"12.5", -1},
               {"99999999999999999999", -1}};
  for (const auto& c : cases) {
    CloneImage image;
    const auto report = ImportChannels("RX-Q40,MEMORY," + std::string(c.channel) + rest, image);
    EXPECT_EQ(report.memory_records, c.n >= 0 ? 1 : 0) << c.channel;
    EXPECT_EQ(report.passed_over.size(), c.n >= 0 ? 0U : 1U) << c.channel;
    for (int n = 0; n < 210; ++n)
      EXPECT_EQ(image.ChannelInUse[static_cast<std::size_t>(n)], n == c.n);
  }
  for (const char* head : {"RX-Q40,MEMORY,\"\"", "RX-Q40,VFO,0", "RX-Q20,MEMORY,0",
                           "RX-Q40,VFO VHF,vfo", "RX-Q40,RX-Q40,MEMORY,0"}) {
    CloneImage image;
    const CloneImage before = image;
    ImportChannels(head + rest, image);
    EXPECT_EQ(image, before) << head;
  }
}

TEST(CsvImport, ForeignAndBrokenRecordsCostNothingElse) {
  const std::string rest =
      ",145,5KHz,None,67,67,023,023,None,0,Off,Lo,0,Off,Off,Off,Off,Normal,,Off";
  CloneImage image;
  const ImportReport report =
      ImportChannels("MODEL,BANK,CHANNEL\n\n\"other radio\",1,2\nRX-Q40,MEMORY,210" + rest +
                         "\nRX-Q40,MEMORY,3" + rest + "\nRX-Q40,MEMORY,4,145,5KHz",
                     image);
  EXPECT_EQ(report.memory_records, 1);
  ASSERT_EQ(report.passed_over.size(), 2U);
  EXPECT_EQ(report.passed_over[0].line, 4);
  EXPECT_EQ(report.passed_over[1].line, 6);
  EXPECT_TRUE(image.ChannelInUse[3]);
  EXPECT_FALSE(image.ChannelInUse[4]);
}

TEST(CsvImport, ARecordThatEndsAnywhereIsPassedOver) {
  const std::string record =
      "RX-Q40,MEMORY,3,145,5KHz,None,67,67,023,023,None,0,Off,Lo,0,Off,Off,Off,Off,Normal,N,Off";
  for (std::size_t end = record.find(','); end != std::string::npos;
       end = record.find(',', end + 1)) {
    CloneImage image;
    const auto report = ImportChannels(record.substr(0, end), image);
    ASSERT_EQ(report.passed_over_count, 1) << end;
    EXPECT_EQ(report.passed_over[0].why, "items are missing");
    EXPECT_EQ(image, CloneImage());
  }
}

TEST(CsvImport, AShortRecordTakesTheNextOneInAndSaysSo) {
  const std::string rest =
      ",145,5KHz,None,67,67,023,023,None,0,Off,Lo,0,Off,Off,Off,Off,Normal,,Off\n";
  CloneImage image;
  const auto report = ImportChannels("RX-Q40,MEMORY,1,145,5KHz\nRX-Q40,MEMORY,2" + rest, image);
  EXPECT_TRUE(image.ChannelInUse[1]);
  EXPECT_FALSE(image.ChannelInUse[2]);
  ASSERT_EQ(report.passed_over_count, 1);
  EXPECT_EQ(report.passed_over[0].line, 1);
}

TEST(CsvImport, AChannelMayHaveTheNameOfTheRadio) {
  const std::string head =
      "RX-Q40,MEMORY,1,145,5KHz,None,67,67,023,023,None,0,Off,Lo,0,Off,Off,Off,";
  const struct {
    const char* rest;
    int passed_over;
  } cases[] = {
      {"Off,Normal,RX-Q40,Off\n", 0},
      {"Off,Normal,RX-Q40,MEMORY,2\n", 1},  // the skip item is missing, or the next record came
      {"Off,RX-Q40,MEMORY,2\n", 1}};
  for (const auto& c : cases) {
    CloneImage image;
    EXPECT_EQ(ImportChannels(head + c.rest, image).passed_over_count, c.passed_over) << c.rest;
    EXPECT_TRUE(image.ChannelInUse[1]);
  }
}

TEST(CsvImport, AQuoteThatNeverClosesChangesNothing) {
  const std::string rest = ",145,5KHz,None,67,67,023,023,None,0,Off,Lo,0,Off,Off,Off,Off,Normal,,";
  CloneImage image = test::RandomDocument(9).image;
  const CloneImage before = image;
  const auto report =
      ImportChannels("RX-Q40,MEMORY,1" + rest + "Off\nRX-Q40,MEMORY,2" + rest + "\"On", image);
  EXPECT_EQ(image, before);
  const auto problem = ProblemOf(report, "a.csv");
  ASSERT_TRUE(problem);
  EXPECT_EQ(problem->line, 2);
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
  const CloneImage before = image;
  ImportChannels("RX-Q40,VFO UHF,RPT" + std::string(19, ','), image);
  const ChannelRecord& rpt = image.UhfSpecialSet[kRptRow];
  EXPECT_EQ(image.VhfSpecialSet, before.VhfSpecialSet);
  EXPECT_EQ(rpt.Frequency(), 4'450'000);
  EXPECT_EQ(rpt.cellText[0], "");
  EXPECT_EQ(rpt.Text(ChannelKind::kSpecial, Field::kTone), "None");  // carried, so it falls back
  EXPECT_EQ(rpt.Text(ChannelKind::kSpecial, Field::kShift), "None");
  EXPECT_EQ(rpt.Number(ChannelKind::kSpecial, Field::kMid), 5);
  EXPECT_EQ(rpt.Number(ChannelKind::kSpecial, Field::kBatterySave), 1);
}

TEST(CsvImport, ListsAreLimitedInSize) {
  const std::string most(kLongestCsv, ' ');
  EXPECT_FALSE(CheckCsvSize(most, "a.csv"));
  const auto problem = CheckCsvSize(most + ' ', "a.csv");
  ASSERT_TRUE(problem);
  EXPECT_EQ(problem->Message(), "a.csv: longer than 16 MiB, no channel list");
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
  EXPECT_EQ(document.image.VhfSpecialSet[kCallRow].value[15], 1);
  EXPECT_EQ(document.image.VhfSpecialSet[kPlRow], ChannelRecord());
  EXPECT_EQ(StoredPresent(document.image, Band::kUhf), (PresentPair{true, false}));
  EXPECT_EQ(StoredPresent(document.image, Band::kVhf), (PresentPair{false, false}));
  EXPECT_EQ(document.image.ShownSpecialSet, document.image.UhfSpecialSet);
  EXPECT_EQ(document.image.ShownPresent, (PresentPair{true, false}));
}

}  // namespace
}  // namespace q40
