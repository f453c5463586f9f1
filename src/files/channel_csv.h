// The channel list as a CSV text, for spreadsheet programs.
//
// A header record, then one record of 22 items for every special channel of both bands and for
// every memory channel in use.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_problem.h"
#include "document/channel_cells.h"
#include "document/clone_data.h"

namespace q40 {

// Lines end with CR LF; every item is quoted. Texts stand under the heading of their meaning.
std::string ExportChannels(const CloneImage& image);

// The same for these channels alone, in this order. One that is not in use is a record of empty items.
std::string ExportRows(const CloneImage& image, std::span<const ChannelPlace> places);

// The channel that a record of a list names.
using ListedChannel = ChannelPlace;

// Something in a list that is not stored as written, or not stored at all.
struct ImportNote {
  int line = 0;      // on which the record begins, counted from 1
  std::string item;  // heading of its column, "FREQUENCY"; empty: the record as a whole
  std::string text;  // "stored as 145.0000; written was "145,7125"". Without control characters.
  std::optional<ListedChannel> channel{};  // where it went; no value when no channel took it

  // "line 12, FREQUENCY: stored as 145.0000; written was "145,7125""
  [[nodiscard]] std::string Message() const;
};
inline constexpr std::size_t kNotesListed = 1000;

// What became of a list. The notes only inform; the image does not depend on them.
struct ImportReport {
  // Line of the record that set a channel, 0 when none did; of two records the later one.
  std::array<int, kMemoryChannelCount> imported{};
  std::array<std::array<int, kSpecialChannelCount>, 2> imported_special{};  // VHF, UHF
  int memory_records = 0;
  int special_records = 0;
  int passed_over_count = 0;  // records that set no channel
  // In the order of their lines. The first kNotesListed are listed, all are counted.
  std::vector<ImportNote> notes;
  int note_count = 0;
  int loss_count = 0;  // how many of them came from AddLoss
  // Why the text set no channel at all: "the columns are separated by semicolons; ...". Empty when
  // it set one. It is not among the notes.
  std::string no_list;
  int unclosed_quote_line = 0;  // 0: none. Otherwise the image is as it was.

  // Whether everything in the list was understood. What the clone file will not keep of it (losses)
  // is another matter.
  [[nodiscard]] bool Whole() const;

  // Adds what a check-up found about a channel: a value that was taken as written, but will not be
  // kept. `field` is the field's name. Nothing when the list did not set the channel.
  void AddLoss(const ListedChannel& channel, std::string_view field, std::string text);
};

// Takes the channels of a CSV text into the image. Records are read item by item and need not begin
// on a new line. What does not fit is passed over; an unknown word takes the fallback of its
// column; a last record with items missing is dropped whole. Channels that the text does not name
// stay. Shows the band that was shown before.
ImportReport ImportChannels(std::string_view text, CloneImage& image);

// Longest CSV text. Reading asks for one byte more and then checks, so that nothing is cut
// silently.
inline constexpr std::size_t kLongestCsv = 16U << 20U;
[[nodiscard]] std::optional<FileProblem> CheckCsvSize(std::string_view text,
                                                      const std::string& name);

// Why an import left the image as it was; no value when it did not.
[[nodiscard]] std::optional<FileProblem> ProblemOf(const ImportReport& report,
                                                   const std::string& name);

}  // namespace q40
