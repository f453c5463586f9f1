// A copy of a radio as a clone file: the digits of settings and channels stand in its lines as they came.
//
// The dialer memories are texts in a clone file. Bytes that a text does not give back (an erased
// memory is FF) stand in lines of their own behind line 456, where readers of clone files look no more:
//
//   1D20 FFFF...   the address of a dialer unit, a blank, its 64 digits
//
// Such a line counts only as long as the texts in the file are still the ones that it spells.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "files/clone_file.h"

namespace q40 {

// `copy`: whole, every unit of 64 digits.
std::string RadioCopyText(const RadioCopy& copy);

// Any clone file as a copy of a radio, without decoding its channels. On a problem (lines, header, end
// line, a character that is no digit) the copy is undefined. `path` only names the file in it.
[[nodiscard]] std::optional<FileProblem> ReadRadioCopy(std::string_view text,
                                                       const std::string& path, RadioCopy& copy);

// From and into a file. An existing file is never replaced: a copy may be the only one.
[[nodiscard]] std::optional<FileProblem> OpenRadioCopy(const std::string& path, RadioCopy& copy);
[[nodiscard]] std::optional<FileProblem> SaveRadioCopy(const std::string& path,
                                                       const RadioCopy& copy);

// 456 proper lines, and one of a dialer unit for each of the five.
inline constexpr std::size_t kLongestRadioCopy = kLongestCloneFile + 5 * (5 + kUnitDigits + 2);

}  // namespace q40
