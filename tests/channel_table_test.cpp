// Channels as a table on the clipboard.
#include "files/channel_table.h"

#include <gtest/gtest.h>

#include "document/defaults.h"
#include "radio/channel_fields.h"
#include "support/import_messages.h"
#include "support/random_document.h"

namespace q40 {
namespace {

using enum Field;
using test::Messages;

constexpr auto kMemory = ChannelKind::kMemory;

std::vector<ChannelPlace> MemoryPlaces(std::initializer_list<int> rows) {
  std::vector<ChannelPlace> places;
  for (const int n : rows) places.push_back({kMemory, Band::kVhf, n});
  return places;
}

// Whatever stands in a document is copied and pasted without loss as a list; as a table, what the rules
// of editing take.
TEST(ChannelTable, CopiedRowsComeBack) {
  CloneData document = test::RandomDocument(7);
  CloneImage& image = document.image;
  image.ChannelInUse[2] = false;
  const auto from = MemoryPlaces({0, 1, 2, 3, 4});
  const auto to = MemoryPlaces({200, 201, 202, 203, 204});
  CloneImage pasted = image;
  const auto list = ReadTable(ExportRows(image, from), {});
  EXPECT_EQ(Messages(PasteTable(list, true, 0, to, pasted)), std::vector<std::string>());
  for (std::size_t n = 0; n < 5; ++n) {
    EXPECT_EQ(pasted.ChannelInUse[200 + n], image.ChannelInUse[n]) << n;
    if (!image.ChannelInUse[n]) continue;
    EXPECT_EQ(pasted.MemoryTable[200 + n].value, image.MemoryTable[n].value) << n;
    EXPECT_EQ(pasted.MemoryTable[200 + n].cellText[0], image.MemoryTable[n].cellText[0]) << n;
  }
  CloneImage fresh = FreshData().image;
  SetCell(fresh, 0, from[0], kFrequency, "145.6125");
  SetCell(fresh, 0, from[0], kShift, "-Shift");
  RecordAt(fresh, from[0]).Set(kMemory, kName, 1, "A<B");
  const std::string text = TableText(fresh, from, kReadingOrder);
  EXPECT_EQ(text.substr(0, text.find("Tone,")), "Channel\tFrequency, MHz\tStep, kHz\tTone\tTx");
  const std::string html = TableHtml(fresh, from, std::vector{kFrequency, kName});
  EXPECT_NE(html.find("<td>0</td><td sdval=\"145.6125\" sdnum=\"1033;\">145.6125</td>"
                      "<td sdnum=\"1033;0;@\">A&lt;B</td></tr>\n<tr><td>1</td><td></td>"),
            std::string::npos)
      << html;
  RecordAt(fresh, from[0]).Set(kMemory, kName, 1, "1.5");
  EXPECT_NE(TableHtml(fresh, from, std::vector{kName}).find("@\">1.5</td>"), std::string::npos);
  CloneImage again = FreshData().image;
  again.ChannelInUse[201] = true;
  PasteTable(ReadTable(TableText(fresh, from, std::vector{kFrequency, kShift}), {}), false, 0, to,
             again);
  EXPECT_EQ(CellText(again, to[0], kShift), "-Shift");
  EXPECT_EQ(CellText(again, to[0], kName), "");
  EXPECT_FALSE(InUse(again, to[1]));
}

TEST(ChannelTable, PasteTakesWhatSpreadsheetsCopyAndNotesTheRest) {
  const std::vector<Field> shown = {kFrequency, kName, kTone};
  const struct {
    const char* name;
    std::string text;
    std::string cells;  // of channels 5 and 6: frequency, name, tone
    std::vector<std::string> notes;
  } cases[] = {
      {"without headings",
       "145,6125\thome\tTSQ\r\n433.5\n",
       "145.6125 HOME TSQ|433.5000 OLD None",
       {}},
      {"one row",
       "Frequency\n",
       "145.0000  None|145.0000 OLD None",
       {"line 1, Frequency, MHz: \"Frequency\" is no frequency in MHz with four digits behind the "
        "point. Written was \"Frequency\"."}},
      {"headings in any order",
       "Name\tNotes\tfrequency\nX\tnear\t145.5\nY\t\t\n",
       "145.5000 X None|145.0000 Y None",
       {"line 1, Notes: no heading of a channel's field; the column was passed over"}},
      {"semicolons",
       "TONE;NAME;NAME\nDCS;A;B\n",
       "145.0000 A DCS|145.0000 OLD None",
       {"line 1, NAME: a second column with this heading was passed over"}},
      {"of a list",
       "\"MODEL\",\"BANK\",\"FREQUENCY\",\"Name\"\r\n\"RX-Q40\",\"VFO VHF\",\"145.5000\",\"No\"",
       "145.5000  None|145.0000 OLD None",
       {}},
      {"a quoted line end",
       "145.5\t\"A\nB\"\n",
       "145.5000  None|145.0000 OLD None",
       {"line 1, Name: \"\\x0A\" is no character of a name. Written was \"A\\x0AB\"."}},
      {"too many columns",
       "145.5\tA\tTSQ\t1\t2\n",
       "145.5000 A TSQ|145.0000 OLD None",
       {"line 1: passed over beyond the last column that is shown: 2 items"}},
      {"an empty row", "145.5\n\n", "145.5000  None|  ", {}},
      {"no frequency", "\tA\n", "145.0000 A None|145.0000 OLD None", {}},
  };
  CloneImage before = FreshData().image;
  const auto places = MemoryPlaces({5, 6});
  for (const auto& place : places) PutRecord(before, place, before.TemplateChannel());
  SetCell(before, 0, places[1], kName, "OLD");
  for (const auto& c : cases) {
    CloneImage image = before;
    const ImportReport report = PasteTable(ReadTable(c.text, shown), false, 0, places, image);
    std::string cells;
    for (const auto& place : places) {
      if (!cells.empty()) cells += '|';
      cells += CellText(image, place, kFrequency) + ' ' + CellText(image, place, kName) + ' ' +
               CellText(image, place, kTone);
    }
    EXPECT_EQ(cells, c.cells) << c.name;
    EXPECT_EQ(Messages(report), c.notes) << c.name;
  }
  // Into an empty channel, and into special ones.
  CloneImage image = before;
  const std::vector<ChannelPlace> other = {{kMemory, {}, 9},
                                           {ChannelKind::kSpecial, Band::kVhf, kVfoRow},
                                           {ChannelKind::kSpecial, Band::kUhf, kPlRow}};
  EXPECT_EQ(Messages(PasteTable(ReadTable("\tA\n\n430.5\tB\n", shown), false, 0, other, image)),
            std::vector<std::string>(
                {"line 1: passed over: the channel is empty, and begins with a frequency",
                 "line 2: an empty row; VHF VFO cannot be empty and stays as it is",
                 "line 3, Name: A special channel has none. Written was \"B\"."}));
  EXPECT_EQ(CellText(image, other[2], kFrequency), "430.5000");
  // A word that a column knows is a value of it.
  EXPECT_EQ(ReadTable("Tone\nNone\n", std::vector{kTone}).rows.size(), 2U);
}

}  // namespace
}  // namespace q40
