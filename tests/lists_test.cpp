// Lists that others have made: how they are read, guessed, mapped, and what their rows become.
#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>

#include "document/channel_cells.h"
#include "document/clone_document.h"
#include "document/defaults.h"
#include "lists/foreign_list.h"
#include "lists/import_plan.h"
#include "lists/list_numbers.h"
#include "lists/list_tones.h"
#include "lists/list_words.h"
#include "lists/mapping_folder.h"
#include "lists/short_name.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

using test::TempFolder;

ForeignList Read(std::string_view bytes, const ListForm& form = {}) {
  ForeignList list;
  const auto problem = ReadForeignList(bytes, "the list", form, list);
  EXPECT_FALSE(problem) << problem->Message();
  return list;
}

std::string Joined(const std::vector<std::string>& items, char with) {
  std::string text;
  for (const std::string& item : items) text += (text.empty() ? "" : std::string(1, with)) + item;
  return text;
}

// The meanings of the columns, by their names.
std::string Names(const ColumnMeanings& meanings) {
  std::vector<std::string> names;
  for (const Meaning meaning : meanings) names.emplace_back(RowOf(meaning).name);
  return Joined(names, ' ');
}
ColumnMeanings Meanings(const std::string& names) {
  ColumnMeanings meanings;
  std::istringstream in(names);
  for (std::string name; in >> name;) meanings.push_back(MeaningNamed(name).value());
  return meanings;
}

// "145.5;HOME" in two bytes a character, as spreadsheet programs save "Unicode text".
std::string Utf16(std::string_view text, bool little) {
  std::string bytes;
  for (const char c : text) bytes += little ? std::string{c, '\0'} : std::string{'\0', c};
  return bytes;
}

// ---- reading

TEST(ForeignLists, AreReadHoweverTheyAreStored) {
  constexpr auto kNoHeadings = ListForm{ListEncoding::kGuess, '\0', 0};
  const struct {
    std::string bytes;
    std::string read;  // encoding, separator, line of the headings: headings: rows
    ListForm form{};
  } cases[] = {
      {"Name,Freq\nA,145.5\n", "UTF-8 comma 1: Name/Freq: 2 A/145.5"},
      {"\xEF\xBB\xBFName;Freq\r\nB\xC3\xB6,x;145,5", "UTF-8 semicolon 1: Name/Freq: 2 Bö,x/145,5"},
      {"Name;Freq\nB\xF6;145,5\n", "Latin-1 semicolon 1: Name/Freq: 2 Bö/145,5"},
      {"\xFF\xFE" + Utf16("Name\tFreq\r\nA\t145,5\r\n", true),
       "UTF-16, little-endian tab 1: Name/Freq: 2 A/145,5"},
      {Utf16("Name|Freq\rA|145.5", false), "UTF-16, big-endian bar 1: Name/Freq: 2 A/145.5"},
      // A pair of halves, one half alone, and half a unit.
      {std::string("\xFF\xFE\x3D\xD8\x00\xDE,\x00\x00\xD8,\x00\x35", 13),
       "UTF-16, little-endian comma 0: //: 1 \xF0\x9F\x98\x80/\xEF\xBF\xBD/\xEF\xBF\xBD"},
      {"A title, of two parts\n\n;;\nCall;Output\nA;145,5\nB;145,6",
       "UTF-8 semicolon 4: Call/Output: "
       "5 A/145,5 6 B/145,6"},
      {"A,145.5,1\nB,145.6", "UTF-8 comma 0: //: 1 A/145.5/1 2 B/145.6"},
      {"one\ntwo", "UTF-8 comma 0: : 1 one 2 two"},
      {"\"Call \"\"C\"\"\",\"Out\nput\"\n \"A\" b,145.5",
       "UTF-8 comma 1: Call \"C\"/Out\nput: 3 A b/145.5"},
      {"Name,Freq\nA,145.5\n", "UTF-8 comma 0: /: 1 Name/Freq 2 A/145.5", kNoHeadings},
      {"a;b,c\n", "UTF-8 comma 1: a;b/c:", {ListEncoding::kUtf8, ',', 1}},
      {"A\xF6;1", "UTF-8 semicolon 0: /: 1 A\xEF\xBF\xBD/1", {ListEncoding::kUtf8, ';', 0}},
  };
  for (const auto& [bytes, expected, form] : cases) {
    const ForeignList list = Read(bytes, form);
    std::string read = std::string(EncodingText(list.form.encoding)) + ' ' +
                       std::string(SeparatorText(list.form.separator)) + ' ' +
                       std::to_string(list.heading_line) + ": " + list.headings[0];
    for (std::size_t c = 1; c < list.Columns(); ++c) read += '/' + list.headings[c];
    read += ':';
    for (const ListRow& row : list.rows) {
      read += ' ' + std::to_string(row.line) + ' ' + Joined(row.items, '/');
    }
    EXPECT_EQ(read, expected);
  }
}

TEST(ForeignLists, ThatAreNoneAreRefusedWhole) {
  std::string rows;
  for (std::size_t i = 0; i < kMostListRows; ++i) rows += "a,145.5\n";
  EXPECT_EQ(Read(rows).rows.size(), kMostListRows);
  const std::string item(kLongestListItem, 'a');
  const std::string commas(kMostListColumns - 1, ',');
  EXPECT_EQ(Read("a," + item + "\n1" + commas).Columns(), kMostListColumns);
  const std::pair<std::string, const char*> cases[] = {
      {"", "the list: there is nothing in the list"},
      {"\n,,\n", "the list: there is nothing in the list"},
      {"a\r\nb\rc\x01", "the list, line 3: control characters; this is no list"},
      {std::string("a,bcdef\0", 8), "the list, line 1: control characters; this is no list"},
      {"a,b\n1,\"2\n3", "the list, line 2: the quote that begins here is never closed"},
      {"a,b\n1,a" + item, "the list, line 2: an item is longer than 1000 bytes"},
      {"a\n1," + commas, "the list, line 2: more than 100 columns"},
      {rows + "a,b\n", "the list, line 10001: more than 10000 rows"},
      {std::string(kLongestList + 1, 'a'), "the list: a list of more than 16 MiB"},
  };
  for (const auto& [bytes, message] : cases) {
    ForeignList list = Read("a,145.5");
    const auto problem = ReadForeignList(bytes, "the list", {}, list);
    EXPECT_EQ(problem ? problem->Message() : "", message);
    EXPECT_EQ(list.rows.size(), 1U);
  }
}

// ---- items

TEST(ListItems, Numbers) {
  const std::tuple<const char*, const char*, std::int64_t, std::int64_t> cases[] = {
      // item, sign and unit, Hz of a frequency, Hz of an offset; -1: none
      {"145.6125", "", 145'612'500, 145'612},
      {" 145,6125 MHz", "mhz", 145'612'500, 145'612'500},
      {"145612.5", "", 145'612'500, 145'612},
      {"438.725.000", "", 438'725'000, 438'725'000},
      {"438,725.000", "", 438'725'000, 438'725},
      {"145612,5 kHz", "khz", 145'612'500, 145'612'500},
      {"1.2982 GHz", "ghz", 1'298'200'000, 1'298'200'000},
      {"-0,6", "-", 600'000, 600'000},
      {"+ 7600", "+", 7'600'000'000, 7'600'000},
      {"\xE2\x88\x92"
       "600000",
       "-", 600'000'000, 600'000},
      {"99.9", "", 99'900'000, 99'900'000},
      {"145.59999996", "", 145'600'000, 145'600},
      {".5", "", 500'000, 500'000},
      {"10000", "", 10'000'000, 10'000'000},
      {"9999.9", "", 9'999'900'000, 9'999'900},
      {"145 furlongs", "furlongs", -1, -1},
  };
  for (const auto& [item, sign_and_unit, frequency, offset] : cases) {
    const auto number = NumberIn(item);
    ASSERT_TRUE(number) << item;
    std::string text = number->unit;
    if (number->sign != '\0') text.insert(0, 1, number->sign);
    EXPECT_EQ(text, sign_and_unit) << item;
    EXPECT_EQ(HzOfFrequency(*number).value_or(-1), frequency) << item;
    EXPECT_EQ(HzOfOffset(*number).value_or(-1), offset) << item;
  }
  for (const char* item :
       {"", "-", "MHz", ".", "1.2.3", "14.5,6.7", "145.5/145.6", "12345678901", "1,2345.6"})
    EXPECT_FALSE(NumberIn(item)) << item;
  EXPECT_EQ(MhzText(145'612'500) + ' ' + MhzText(446'006'250) + ' ' + MhzText(600'000),
            "145.6125 446.00625 0.6000");
}

TEST(ListItems, Words) {
  const auto direction = [](std::string_view item) {
    const auto found = DirectionIn(item);
    return found ? "0-+sx"[static_cast<int>(*found)] : '?';
  };
  std::string directions;
  for (const char* item : {"", "Simplex", "--", "-", "minus", "-DUP", "Shift -", "+", "up",
                           "+ Shift", "split", "off", "+/-", "left"})
    directions += direction(item);
  EXPECT_EQ(directions, "000----+++sx??");

  const std::pair<const char*, const char*> modes[] = {
      {"FM", "kf"},    {"NFM", "kfn"},         {"FM-N", "kfn"}, {"DMR/FM", "kf"},
      {"D-STAR", "k"}, {"C4FM", "k"},          {"", ""},        {"FM Narrow", "kfn"},
      {"Narrow", ""},  {"analogue, DMR", "kf"}};
  for (const auto& [item, expected] : modes) {
    const ModeItem mode = ModeIn(item);
    EXPECT_EQ(std::string(mode.known ? "k" : "") + (mode.fm ? "f" : "") + (mode.narrow ? "n" : ""),
              expected)
        << item;
  }

  using Reader = std::optional<std::string_view> (*)(std::string_view);
  const std::tuple<Reader, const char*, const char*> words[] = {
      {WidthIn, "12.5", "Narrow"},   {WidthIn, "12500 Hz", "Narrow"},
      {WidthIn, "25 kHz", "Normal"}, {WidthIn, "20", "Normal"},
      {WidthIn, "15", "?"},          {WidthIn, "wide", "Normal"},
      {WidthIn, "0", "?"},           {WidthIn, "huge", "?"},
      {PowerIn, "High", "Hi"},       {PowerIn, "M", "Mid"},
      {PowerIn, "low", "Lo"},        {PowerIn, "5 W", "?"},
      {SkipIn, "S", "On"},           {SkipIn, "No", "Off"},
      {SkipIn, "L/O", "On"},         {SkipIn, "perhaps", "?"}};
  for (const auto& [read, item, expected] : words)
    EXPECT_EQ(read(item).value_or("?"), expected) << item;
}

TEST(ListItems, Tones) {
  using enum ToneItem::Kind;
  const std::tuple<const char*, bool, ToneItem::Kind, const char*> cases[] = {
      {"88.5", false, kCtcss, "88.5Hz"},
      {"88,5 Hz", false, kCtcss, "88.5Hz"},
      {"CTCSS 67", false, kCtcss, "67.0Hz"},
      {"T 127.30", false, kCtcss, "127.3Hz"},
      {"885", false, kCtcss, "88.5Hz"},
      {"D023", false, kDcs, "023"},
      {"dcs 23", false, kDcs, "023"},
      {"754N", false, kDcs, "754"},
      {"23", true, kDcs, "023"},
      {"CTCSS 88.5", true, kCtcss, "88.5Hz"},
      {"off", false, kNone, ""},
      {"0.0", false, kNone, ""},
      {"--", true, kNone, ""},
      {"100.1", false, kUnfit, "\"100.1\" is no CTCSS tone of the radio."},
      {"88.55", false, kUnfit, "\"88.55\" is no CTCSS tone of the radio."},
      {"1750 Hz", false, kUnfit, "1750 Hz is sent by a key; no channel holds it."},
      {"yes", false, kUnfit, "\"yes\" is no tone."},
      {"D018", false, kUnfit, "\"D018\" is no DCS code of the radio."},
      {"88.5", true, kUnfit, "\"88.5\" is no DCS code of the radio."},
      {"D023I", false, kUnfit, "\"D023I\" is inverted; the radio knows no inverted codes."},
  };
  for (const auto& [item, bare_is_dcs, kind, text] : cases) {
    const ToneItem tone = ToneIn(item, bare_is_dcs);
    EXPECT_EQ(tone.kind, kind) << item;
    EXPECT_EQ(tone.text, text) << item;
  }
}

TEST(ListItems, ShortNames) {
  const std::pair<const char*, const char*> cases[] = {{"DB0ABC-L", "DB0ABC"},
                                                       {"DB0ABC", "DB0ABC"},
                                                       {"W1AW Hill", "W1AW"},
                                                       {"2E0AAA/P", "2E0AAA"},
                                                       {"ABC-DEFG", "ABCDFG"},
                                                       {"Hamburg", "HAMBRG"},
                                                       {"Frankfurt", "FRNKFR"},
                                                       {"Z\xC3\xBCrich", "ZUERCH"},
                                                       {"a b", "A B"},
                                                       {"am See 1", "AMSEE1"},
                                                       {"Aue-Nord", "AUENRD"},
                                                       {"caf\xC3\xA9,x", "CAFE X"},
                                                       {"x (1)", "X (1"},
                                                       {"Eiou Aeiou", "EIOUAE"},
                                                       {"  ", ""},
                                                       {"\xE6\x9D\xB1\xE4\xBA\xAC", ""},
                                                       {"O'Hara's", "OHARAS"},
                                                       {"AB CD EFG", "ABCDFG"}};
  for (const auto& [text, name] : cases) EXPECT_EQ(ShortName(text), name) << text;
  NamesGiven given;
  for (int i = 0; i < 8; ++i) given.Distinct("HAMBRG");
  EXPECT_EQ(given.Distinct("HAMBRG"), "HAMBR9");
  EXPECT_EQ(given.Distinct("HAMBRG"), "HAMB10");
  EXPECT_EQ(given.Distinct("AB"), "AB");
}

// ---- guesses and mappings

TEST(Mappings, AreGuessed) {
  const std::pair<const char*, const char*> cases[] = {
      {"Call,Output,Input,CTCSS,Town\nA,145.6,145.0,67.0,X",
       "name output input tone-sent second-name"},
      {"Rufzeichen;Ausgabefrequenz;Ablage;Subton;Ort\nA;145,6;-0,6;67,0;X",
       "name output offset tone-sent second-name"},
      {"RX,TX,rxTone,TXTONE,Mode,Bandwidth\n145.6,145.0,67.0,88.5,FM,25",
       "output input tone-heard tone-sent mode width"},
      {"Frequency,Shift,Offset,Tone,Tone Freq\n145.6,-,0.6,TSQL,67.0",
       "output direction offset tone-kind tone-sent"},
      {"Frequency,Duplex,Tone,cToneFreq,DCS Code,DCS Polarity,RX DCS\n145.6,+,Tone,67.0,023,NN,025",
       "output direction tone-kind tone-both dcs-both ignored dcs-heard"},
      // What stands below must agree: watts are no power, a number is no town, a name no frequency.
      {"Name,Location,Frequency,Power,RX\nA,1,145.6,50 W,yes",
       "name ignored output ignored ignored"},
      {"Name,Frequency,Step,Power,Skip,Channel\nA,145.6,12.5,High,,7",
       "name output step power skip ignored"},
      {"Output,Frequency\n145.6,145.7", "output ignored"},
      {"Place,kHz\nA,145600\nB,145700", "second-name output"},
      {"DB0A;438,725;431,125;-;67,0;X;FM",
       "name output input direction tone-sent second-name mode"},
      {"145.6,-0.6,88.5,67.0,A", "output offset tone-sent tone-heard name"},
      {"Umbenannt;Zahl\nA;145,6\nB;145,7", "name output"},
      {"a,b\nc,d", "name second-name"},
  };
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(Names(GuessMapping(Read(text))), expected) << text;
}

TEST(Mappings, SayWhyTheyCannotBeUsed) {
  EXPECT_EQ(WhyNotUsable(Meanings("name output ignored ignored")), "");
  EXPECT_EQ(WhyNotUsable(Meanings("name input")),
            "no column is the output frequency, on which the radio receives");
  EXPECT_EQ(WhyNotUsable(Meanings("output name name")), "two columns are \"Name or call\"");
  EXPECT_EQ(PlanImport(Read("a"), Meanings("name"), {}, FreshData()).problem,
            "no column is the output frequency, on which the radio receives");
}

TEST(Mappings, AreKeptAndFoundAgain) {
  const ForeignList list = Read("Name;Tone;Tone;\"RX \"\"kHz\"\"\nX\";\nA;67,0;88,5;145600;1",
                                {ListEncoding::kLatin1, ';', 1});
  const ColumnMeanings meanings = Meanings("name tone-sent tone-heard output skip");
  const KeptMapping kept = KeptOf(list, meanings);
  const std::string text = MappingText(kept);
  EXPECT_EQ(
      text,
      "rxq40-map = 1\nencoding = latin-1\nseparator = semicolon\nheadings = 1\n\"Name\" = name\n"
      "column 2 = tone-sent\ncolumn 3 = tone-heard\n\"RX \"\"kHz\"\" X\" = output\ncolumn 5 = "
      "skip\n");
  KeptMapping again;
  ASSERT_FALSE(ReadMapping(text, "map", again));
  EXPECT_EQ(again, kept);
  std::vector<std::string> missing;
  EXPECT_EQ(MeaningsFor(list, again, missing), meanings);
  EXPECT_TRUE(missing.empty());
  // Other columns, another order, other capitals.
  EXPECT_EQ(Names(MeaningsFor(Read("NA ME,x\nA,145.5"), again, missing)), "name tone-sent");
  EXPECT_EQ(Joined(missing, ';'),
            "there is no column 3;no column has the heading \"RX \"kHz\" X\";there is no column 5");
}

TEST(Mappings, AreReadOrRefusedWithTheirLine) {
  const std::string head = "\xEF\xBB\xBF# ours\r\n\r\nrxq40-map = 1\r\n";
  KeptMapping kept;
  ASSERT_FALSE(ReadMapping(
      head + "headings=none\nseparator = tab\nencoding = utf-16le\n\"A=B\"=output", "map", kept));
  const KeptMapping expected{{ListEncoding::kUtf16Le, '\t', 0}, {{"A=B", 0, Meaning::kOutput}}};
  EXPECT_EQ(kept, expected);
  const std::pair<std::string, const char*> cases[] = {
      {"", "map: no mapping: the line \"rxq40-map = 1\" is missing"},
      {"rxq40-map = 2", "map, line 1: version \"2\" is not known; 1 is"},
      {"\"A\" = name", "map, line 1: the first line is not \"rxq40-map = 1\""},
      {head + "rxq40-map = 1", "map, line 4: rxq40-map stands twice"},
      {head + "name", "map, line 4: there is no \"=\" in \"name\""},
      {head + "colour = red", "map, line 4: \"colour\" is not known"},
      {head + "separator = dot", "map, line 4: \"dot\" is no separator"},
      {head + "encoding = ", "map, line 4: \"\" is no encoding"},
      {head + "headings = 0", "map, line 4: \"0\" is no headings"},
      {head + "headings = 1\nheadings = 1", "map, line 5: headings stands twice"},
      {head + "column 0 = name", "map, line 4: \"0\" is no column: 1 to 100"},
      {head + "column 101 = name", "map, line 4: \"101\" is no column: 1 to 100"},
      {head + "column 1 = nam", "map, line 4: \"nam\" is no meaning of a column"},
      {head + "column 1 = name\ncolumn 1 = output", "map, line 5: the column stands twice"},
      {head + "\"A b\" = name\n\"ab\" = output", "map, line 5: the column stands twice"},
      {head + "column 1 = name\n\"A\" = name", "map, line 5: two columns are \"name\""},
      {head + "\"A = name", "map, line 4: the quote is never closed"},
      {head + "\"\" = name", "map, line 4: an empty heading"},
      {head + "\"A\" b = name", "map, line 4: \"b\" stands behind the heading"},
      {head + std::string(kLongestMapping, '#'), "map: a mapping of more than 65536 bytes"},
  };
  for (const auto& [text, message] : cases) {
    const auto problem = ReadMapping(text, "map", kept);
    EXPECT_EQ(problem ? problem->Message() : "", message);
    EXPECT_EQ(kept, expected);
  }
}

TEST(Mappings, AreKeptUnderNames) {
  const TempFolder folder;
  const std::string maps = MappingFolder(folder / "user");
  EXPECT_TRUE(MappingNames(maps).empty());
  KeptMapping kept{{}, {{"A", 0, Meaning::kOutput}}};
  ASSERT_FALSE(StoreMapping(maps, "our club", kept));
  ASSERT_FALSE(StoreMapping(maps, "K\xC3\xB6ln", kept));
  std::filesystem::copy(maps + "/our club.map", maps + "/a.b.map");
  std::filesystem::create_directory(maps + "/folder.map");
  EXPECT_EQ(Joined(MappingNames(maps), ';'), "K\xC3\xB6ln;our club");
  KeptMapping loaded;
  ASSERT_FALSE(LoadMapping(maps, "our club", loaded));
  EXPECT_EQ(loaded, kept);
  EXPECT_FALSE(DeleteMapping(maps, "our club"));
  EXPECT_TRUE(DeleteMapping(maps, "our club"));
  EXPECT_TRUE(LoadMapping(maps, "our club", loaded));
  for (const char* name :
       {"", "auto", "../x", "a.b", " a", "a\n", "12345678901234567890123456789012345678901"}) {
    EXPECT_NE(WhyNotMappingName(name), "") << name;
    EXPECT_TRUE(StoreMapping(maps, name, kept)) << name;
    EXPECT_TRUE(LoadMapping(maps, name, loaded)) << name;
    EXPECT_TRUE(DeleteMapping(maps, name)) << name;
  }
  EXPECT_EQ(Joined(MappingNames(maps), ';'), "K\xC3\xB6ln");
}

// ---- plans

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
       "145.5000 DB0ABC; Name or call: \"DB0ABC-L\" becomes \"DB0ABC\""},
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
      {"tone-kind tone-sent", "DCS;D023", "DCS 023"},
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
  const std::string rows = "145.5;FM\n50.1;FM\n145.6;DMR\n145.7;\n145.8;FM\n145.9;FM";
  EXPECT_EQ(
      Account(Plan("output mode", rows,
                   {.first_channel = 206, .only_fm = true, .only_own_bands = true}, document)),
      "line 1: channel D6 becomes 145.5000\n"
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
  EXPECT_EQ(Account(Plan("output channel", "145.5;d7\n145.6;003\n145.7;3\n145.8;210\n145.9;", {},
                         document)),
            "line 1: no place, 145.5: Channel number: D7 is in use\n"
            "line 2: channel 3 becomes 145.6000\n"
            "line 3: no place, 145.7: Channel number: 3 is filled by line 2\n"
            "line 4: no place, 145.8: Channel number: \"210\" is none: 0-199, D0-D9\n"
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
