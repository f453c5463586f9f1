// Lists that others have made: how they are read, guessed and mapped.
#include <filesystem>

#include <gtest/gtest.h>

#include "document/defaults.h"
#include "lists/foreign_list.h"
#include "lists/import_plan.h"
#include "lists/list_numbers.h"
#include "lists/list_tones.h"
#include "lists/list_words.h"
#include "lists/mapping_folder.h"
#include "lists/short_name.h"
#include "support/foreign_lists.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

using namespace test;

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
      {"Name\tX\tFreq\nA\t\t\"145,5\"", "UTF-8 tab 1: Name/X/Freq: 2 A//145,5"},
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
      {"\xC2\x96 0.6", "-", 600'000, 600'000},
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
      {"0,0 Hz", false, kNone, ""},
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
                                                       {"Abcdfghj", "ABCDFG"},
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
       "output direction tone-kind tone-both dcs-both dcs-polarity dcs-heard"},
      {"Eingang MHz;Ausgang MHz;Tonruf;CTCSS;Rufz.\n145,0;145,6;1750;67,0;A",
       "input output ignored tone-sent name"},
      {"Freq In,Freq Out,Tone Out,Tone In\n145.0,145.6,88.5,67.0",
       "input output tone-heard tone-sent"},
      {"Frequenz in MHz;Ton in Hz;Shift +/-;Ablage in kHz\n145,6;67,0;-;600",
       "output tone-sent direction offset"},
      {"Freq,Dup,rTone,cTone,DCS Dec,Show Name\n145.6,-,67.0,88.5,023,Large",
       "output direction tone-sent tone-both dcs-heard ignored"},
      {"Ton Empfang;Ton Senden;RX DCS;Sende-QRG;Empfangsfrequenz;Wide/Narrow\n"
       "67,0;88,5;025;145,0;145,6;N",
       "tone-heard tone-sent dcs-heard input output width"},
      {"Raster kHz;Output;Input;+/-;Decode;Encode\n25;145.6;-0.6;;;67.0",
       "step output offset direction tone-heard tone-sent"},
      // What stands below must agree: watts are no power, a number is no town, a name no frequency.
      {"Name,Location,Frequency,Power,RX\nA,1,145.6,50 W,yes",
       "name ignored output ignored ignored"},
      {"Name,Frequency,Step,Power,Skip,Channel\nA,145.6,12.5,High,,7",
       "name output step power skip ignored"},
      {"Output,Frequency\n145.6,145.7", "output ignored"},
      {"Station,Channel Name,Frequency\nA,B,145.6", "second-name name output"},
      {"Frequency,Output Freq\n145.6,145.7", "ignored output"},
      {"Place,kHz\nA,145600\nB,145700", "second-name output"},
      {"DB0A;438,725;431,125;-;67,0;X;FM",
       "name output input direction tone-sent second-name mode"},
      {"145.6,-0.6,88.5,67.0,A\n145.5,-,-,-,B", "output offset tone-sent tone-heard name"},
      {"Downlink,Uplink,Downlink Tone,Lat\n145.6,145.0,67.0,52.5",
       "output input tone-heard ignored"},
      {"Call,Lat,Lon,MHZahl\nA,52.5,13.4,145.6", "name ignored ignored output"},
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
      {head + "name", R"(map, line 4: there is no "=" in "name")"},
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

}  // namespace
}  // namespace q40
