// The clone file "*.Q40": 456 lines of 32 characters, plain ASCII.
//
//   line      content (counted from 1)
//   1         header: model and version
//   2-5       the four settings lines
//   6-15      VHF special channels VFO, CALL, RPT, PH, PL, two lines each
//   16-25     UHF special channels
//   26-35     dialer memories M1 to M9, St: the text, padded with "Z"
//   36-455    memory channels 0 to 209, two lines each
//   456       end line
//
// Lines are written with CR LF; CR LF, LF, CR and a missing last line end are read. Whatever
// follows line 456 is ignored.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_problem.h"
#include "document/clone_data.h"
#include "files/file_system.h"
#include "radio/unit.h"

namespace q40 {

inline constexpr std::size_t kCloneLineCount = 456;
inline constexpr std::size_t kCloneLineLength = 32;
// 456 proper lines never take more, so whatever follows need not be read.
inline constexpr std::size_t kLongestCloneFile = kCloneLineCount * (kCloneLineLength + 2);

// The lines of a file, whose number and lengths are right. Indexed from 0.
struct CloneLines {
  std::array<char, kCloneLineCount * kCloneLineLength> text{};
  [[nodiscard]] std::string_view Line(std::size_t index) const {
    return std::string_view(text.data(), text.size())
        .substr(index * kCloneLineLength, kCloneLineLength);
  }
  // Lines `index` and `index` + 1 joined: one channel record.
  [[nodiscard]] std::string_view Pair(std::size_t index) const {
    return std::string_view(text.data(), text.size())
        .substr(index * kCloneLineLength, 2 * kCloneLineLength);
  }
};

// Splits a text into lines and checks their number and lengths. `path` only names the file in the
// problem. `rest`: what follows the last line.
[[nodiscard]] std::optional<FileProblem> SplitCloneText(std::string_view text,
                                                        const std::string& path, CloneLines& lines,
                                                        std::string_view* rest = nullptr);

// The line in which a unit begins; it takes this one and the next. No value for the dialer memories,
// which are texts in a file.
std::optional<std::size_t> FirstLineOf(Unit unit);
inline constexpr std::size_t kHeaderLine = 0;
inline constexpr std::size_t kFirstDialLine = 25;

// The lines as a file has them.
std::string CloneTextOf(const CloneLines& lines);
// Dialer text in a line of its own, when it is not longer than one.
std::string DialLine(std::string text);

// The settings and channels of a file as the radio's units, in the order of the wire. The dialer
// memories, texts in a file, are none of them.
std::vector<UnitData> StoredUnits(const CloneLines& lines);
// The texts of the dialer memories, without their padding.
DialTexts StoredDialTexts(const CloneLines& lines);

struct OpenResult {
  std::optional<FileProblem> problem;
  // The file is of another model, so the document was reset to that model's defaults. May be true
  // together with a problem: the end line is checked only after the model was selected (intended).
  bool model_changed = false;
  // Of a file that was opened: the first character of a hexadecimal line that is no digit, if there
  // is one. Worth knowing, but no reason to refuse the file.
  std::optional<FileProblem> odd_digit;
};

// Opens a clone file. A file that is refused for its lines or its header leaves the data untouched;
// one with a bad end line or with a channel that cannot be decoded leaves the model and VersionA of
// its header behind, and nothing else.
OpenResult OpenCloneFile(const std::string& path, CloneData& document);
// The same from a text. `path` only names the file in the problem.
OpenResult OpenCloneText(std::string_view text, const std::string& path, CloneData& document);

// Whether the file at `path` begins with the header of a clone file.
[[nodiscard]] bool IsCloneFile(const std::string& path);

// The 456 lines of data under the header of `model` (0..3), the settings lines rebuilt from the
// settings values. No value for another model, and for data that no file can hold.
[[nodiscard]] std::optional<std::string> CloneFileText(const CloneData& document, int model);

// Replaces the file at `path`. On failure the old file stays.
[[nodiscard]] std::optional<FileProblem> SaveCloneFile(const std::string& path,
                                                       const CloneData& document, int model,
                                                       FileSystem& system = SystemFiles());

}  // namespace q40
