// The channel list as a CSV text, for spreadsheet programs.
//
// A header record, then one record of 22 items for every special channel of both bands and for
// every memory channel in use.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "image/clone_document.h"

namespace q40 {

// Lines end with CR LF; every item is quoted. Texts stand under the heading of their meaning.
std::string ExportChannels(const CloneImage& image);

struct ImportReport {
  std::array<bool, kMemoryChannelCount> imported{};  // memory channels that a record named
  int memory_records = 0;
  int special_records = 0;
  // Records that were passed over, with the line of their first item: "line 7: channel "210"".
  struct PassedOver {
    int line = 0;
    std::string why;
  };
  std::vector<PassedOver> passed_over;
  int unclosed_quote_line = 0;  // 0: none
};

// Takes the channels of a CSV text into the image. Records are read item by item and need not begin
// on a new line. What does not fit is passed over; an unknown word takes the fallback of its
// column; a last record with items missing is dropped whole. Channels that the text does not name
// stay. Shows the band that was shown before.
ImportReport ImportChannels(std::string_view text, CloneImage& image);

// Longest CSV text that is read from a file.
inline constexpr std::size_t kLongestCsv = 16U << 20U;

}  // namespace q40
