// Channels as a table on the clipboard: a text that spreadsheet programs paste, and what they copy.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/channel_csv.h"

namespace q40 {

// Tab separated, a line of headings first; lines end with LF. Values as tables show them.
std::string TableText(const CloneImage& image, std::span<const ChannelPlace> places,
                      std::span<const Field> fields);
// The same as an HTML table.
std::string TableHtml(const CloneImage& image, std::span<const ChannelPlace> places,
                      std::span<const Field> fields);

// A table as it was copied, taken apart.
struct CopiedTable {
  struct Row {
    int line = 0;  // from 1
    std::vector<std::string> items;
    bool special = false;  // its BANK says that it was a special channel
  };
  std::vector<std::optional<Field>> columns;  // no value: passed over
  std::vector<Row> rows;                      // without the headings
  std::vector<ImportNote> unknown;            // headings that are none
};
// Columns are separated by tabs, by semicolons, or, in a channel list, by commas. A first line of
// headings (those of the tables, the grids or a channel list, in any order) says what the columns
// are; without one they are `fields`, from the first on, and what is beyond them is noted.
CopiedTable ReadTable(std::string_view text, std::span<const Field> fields);

// Puts the rows into the places, one after the other; there must be as many. What is refused, or not
// understood, leaves its field as it is and is noted; a row without any value empties its channel. With
// `as_stored` (the text is of ExportRows) a memory channel becomes what it was, also where the rules
// of editing would refuse it. `model` 0..3.
ImportReport PasteTable(const CopiedTable& table, bool as_stored, int model,
                        std::span<const ChannelPlace> places, CloneImage& image);

}  // namespace q40
