// A trace: what went over the line to the radio, as text, one line an event. People read it, and a
// program gets every byte back from it.
//
//   # rxq40 trace 1
//        0 = open
//       20 > KX~WHO\r\n
//       31 < KX~WHO\r\nRXQ40-1A-\r\n
//     2040 = lost: /dev/ttyUSB0 was disconnected
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_problem.h"

namespace q40 {

inline constexpr std::string_view kTraceTitle = "# rxq40 trace 1";  // the first line

struct TraceEvent {
  enum class Kind : char {
    kSent = '>',     // in one piece
    kArrived = '<',  // what one look at the input brought
    kPort = '=',     // what became of the port: kTraceOpen and so on
  };
  std::chrono::milliseconds at{0};  // since the start of the trace
  Kind kind = Kind::kPort;
  std::string bytes;
  int line = 0;  // of the file, counted from 1
};

// What a kPort event begins with; a reason may follow.
inline constexpr std::string_view kTraceOpen = "open";
inline constexpr std::string_view kTraceNotOpened = "not opened";
inline constexpr std::string_view kTraceClosed = "closed";
inline constexpr std::string_view kTraceLost = "lost";

// Printable ASCII as it is, a backslash as \\, CR and LF as \r and \n, any other byte as \xNN.
std::string TraceText(std::string_view bytes);
// With its line end.
std::string TraceLine(const TraceEvent& event);

// The events of a whole trace. Lines that are empty or begin with "#" may stand anywhere behind the
// title. `path` is for the message about what is no trace.
[[nodiscard]] std::optional<FileProblem> ParseTrace(std::string_view text, const std::string& path,
                                                    std::vector<TraceEvent>& events);

}  // namespace q40
