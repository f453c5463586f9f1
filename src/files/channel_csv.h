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

#include "files/file_problem.h"
#include "image/clone_document.h"

namespace q40 {

// Lines end with CR LF; every item is quoted. Texts stand under the heading of their meaning.
std::string ExportChannels(const CloneImage& image);

struct ImportReport {
  std::array<bool, kMemoryChannelCount> imported{};  // memory channels that a record named
  int memory_records = 0;
  int special_records = 0;
  // Records that were passed over or are doubtful, with the line of their first item. The first 20
  // are listed, all are counted.
  struct PassedOver {
    int line = 0;
    std::string why;  // "channel "210""
  };
  std::vector<PassedOver> passed_over;
  int passed_over_count = 0;
  int unclosed_quote_line = 0;  // 0: none. Otherwise the image is as it was.
};
inline constexpr std::size_t kPassedOverListed = 20;

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
