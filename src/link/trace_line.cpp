#include "link/trace_line.h"

#include <algorithm>
#include <charconv>

#include "base/hex.h"

namespace q40 {
namespace {

constexpr std::size_t kTimeWidth = 7;

bool IsPrintable(char c) { return c >= ' ' && c <= '~'; }

// The byte that an escape behind its backslash stands for; removes the escape from the text.
std::optional<char> TakeEscape(std::string_view& text) {
  constexpr std::size_t kHexLength = 3;  // "x1B"
  const char sign = text.empty() ? '\0' : text[0];
  const bool is_hex =
      sign == 'x' && text.size() >= kHexLength && IsHexDigit(text[1]) && IsHexDigit(text[2]);
  const int value = is_hex ? HexByteValue(text, 1) : 0;
  if (!is_hex && sign != 'r' && sign != 'n' && sign != '\\') return std::nullopt;
  text.remove_prefix(is_hex ? kHexLength : 1);
  if (is_hex) return static_cast<char>(value);
  if (sign == '\\') return sign;
  return sign == 'r' ? '\r' : '\n';
}

// No value: something that TraceText does not write.
std::optional<std::string> BytesOf(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    const char c = text[0];
    text.remove_prefix(1);
    if (!IsPrintable(c)) return std::nullopt;
    const auto byte = c == '\\' ? TakeEscape(text) : std::optional(c);
    if (!byte) return std::nullopt;
    bytes += *byte;
  }
  return bytes;
}

// A line with an event. False, and what is wrong with it in `why`.
bool ParseEvent(std::string_view line, TraceEvent& event, std::string& why) {
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  std::chrono::milliseconds::rep at = 0;
  const auto time = std::from_chars(line.data(), line.data() + line.size(), at);
  if (time.ec != std::errc() || at < 0) {
    why = "it does not begin with a time in milliseconds";
    return false;
  }
  line.remove_prefix(static_cast<std::size_t>(time.ptr - line.data()));
  const char sign = line.size() > 2 && line[0] == ' ' && line[2] == ' ' ? line[1] : '\0';
  const auto bytes = BytesOf(line.substr(std::min<std::size_t>(line.size(), 3)));
  event.at = std::chrono::milliseconds(at);
  event.kind = static_cast<TraceEvent::Kind>(sign);
  if (sign != '>' && sign != '<' && sign != '=') {
    why = "no >, < or = between two blanks behind the time";
  } else if (!bytes) {
    why = "a character or an escape that no trace has";
  } else if (bytes->empty()) {
    why = "nothing behind the sign";
  } else {
    event.bytes = *bytes;
  }
  return !event.bytes.empty();
}

}  // namespace

std::string TraceText(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    if (c == '\r') {
      text += "\\r";
    } else if (c == '\n') {
      text += "\\n";
    } else if (c == '\\') {
      text += "\\\\";
    } else if (IsPrintable(c)) {
      text += c;
    } else {
      text += "\\x" + HexByteText(static_cast<unsigned char>(c));
    }
  }
  return text;
}

std::string TraceLine(const TraceEvent& event) {
  std::string line = std::to_string(event.at.count());
  line.insert(0, kTimeWidth - std::min(line.size(), kTimeWidth), ' ');
  return line + ' ' + static_cast<char>(event.kind) + ' ' + TraceText(event.bytes) + '\n';
}

std::optional<FileProblem> ParseTrace(std::string_view text, const std::string& path,
                                      std::vector<TraceEvent>& events) {
  int number = 1;
  const auto problem = [&](std::string what) {
    return FileProblem{FileProblem::Kind::kBadData, path, number, std::move(what)};
  };
  const std::string_view title = text.substr(0, text.find_first_of("\r\n"));
  if (title != kTraceTitle) {
    return problem("no trace: it does not begin with \"" + std::string(kTraceTitle) + '"');
  }
  for (; !text.empty(); ++number) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return problem("the line is not whole; remove it");
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);  // a mail may have added it
    if (line.empty() || line[0] == '#') continue;
    TraceEvent event;
    std::string why;
    if (!ParseEvent(line, event, why)) return problem(why);
    event.line = number;
    if (!events.empty() && event.at < events.back().at) {
      return problem("its time lies before that of the event above");
    }
    events.push_back(std::move(event));
  }
  return std::nullopt;
}

}  // namespace q40
