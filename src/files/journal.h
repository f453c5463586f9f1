// What a window that was interrupted leaves behind: the document as it was, and as it was last saved. A
// clone file cannot hold all of that; a journal is exact.
//
//   "RX-Q40 journal 1" LF, then numbers and texts as in document_parts.h: time, paths, all parts of the
//   present state, the parts in which the saved one differs; at the end a checksum of what is before it
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "document/clone_data.h"

namespace q40 {

struct Journal {
  struct State {
    CloneData data;
    std::string path;  // of the clone file; empty: none
  };
  std::int64_t time = 0;  // of the last change, in seconds since 1970
  State saved;            // or opened, or started anew
  State now;
};

inline constexpr std::size_t kLongestJournal = std::size_t{4} << 20U;

std::string JournalText(const Journal& journal);
// No value: this is no journal, one of another version, or not as it was written.
[[nodiscard]] std::optional<Journal> JournalFrom(std::string_view text);

}  // namespace q40
