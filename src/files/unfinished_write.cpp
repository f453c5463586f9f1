#include "files/unfinished_write.h"

#include <algorithm>
#include <cstdint>

#include "base/hex.h"
#include "files/whole_file.h"
#include "radio/models.h"

namespace q40 {
namespace {

constexpr std::string_view kHeader = "Korvex RX-Q40 unfinished write 1";
constexpr std::size_t kAddressDigits = 4;
constexpr std::size_t kMostKnown = 15;  // far more than a radio can be left with
constexpr std::size_t kLongestLine = kAddressDigits + (2 + kMostKnown) * (1 + kUnitDigits);
constexpr std::size_t kLongestFile = 256 + kUnitCount * kLongestLine;

std::string SumOf(std::string_view text) {
  std::uint32_t sum = 2166136261U;
  for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 16777619U;
  std::string digits;
  for (int shift = 24; shift >= 0; shift -= 8) {
    digits += HexByteText(static_cast<int>(sum >> shift & 0xFFU));
  }
  return digits;
}

std::string EndLine(std::size_t count, std::string_view before) {
  return "end " + std::to_string(count) + ' ' + SumOf(before) + '\n';
}

std::string AddressOf(Unit unit) {
  const int address = unit.address();
  return HexByteText(address >> 8) + HexByteText(address);
}

bool IsDigits(std::string_view word, std::size_t count) {
  return word.size() == count && std::all_of(word.begin(), word.end(), IsHexDigit);
}

std::vector<std::string_view> Split(std::string_view text, char mark) {
  std::vector<std::string_view> parts;
  while (true) {
    const auto at = text.find(mark);
    parts.push_back(text.substr(0, at));
    if (at == std::string_view::npos) return parts;
    text.remove_prefix(at + 1);
  }
}

// "0200 TARGET KNOWN": a unit behind `last` on the wire.
std::optional<UnitSwap> SwapOf(std::string_view line, int last) {
  const auto words = Split(line, ' ');
  if (words.size() < 2 || words.size() > 2 + kMostKnown || !IsDigits(words[0], kAddressDigits)) {
    return std::nullopt;
  }
  for (std::size_t i = 1; i < words.size(); ++i) {
    if (!IsDigits(words[i], kUnitDigits)) return std::nullopt;
  }
  const int address = HexByteValue(words[0], 0) << 8 | HexByteValue(words[0], 2);
  const auto unit = Unit::At(static_cast<Address>(address));
  if (!unit || unit->place() <= last) return std::nullopt;
  UnitSwap swap{{*unit, std::string(words[1])}, {}};
  for (std::size_t i = 2; i < words.size(); ++i) swap.known.emplace_back(words[i]);
  return swap;
}

// The lines between the header and the end. Empty: they are as they must be.
std::string ReadLines(const std::vector<std::string_view>& lines, UnfinishedWrite& write) {
  constexpr std::string_view kModel = "model ";
  constexpr std::string_view kTime = "time ";
  const bool starts = lines.size() > 3 && lines[0] == kHeader && lines[1].starts_with(kModel) &&
                      lines[2].starts_with(kTime);
  if (!starts) return "not an unfinished write";
  const std::string_view model = lines[1].substr(kModel.size());
  if (model.size() != 1 || model[0] < '0' || model[0] >= '0' + kModelCount) {
    return "an unknown model";
  }
  write.model = model[0] - '0';
  write.time = lines[2].substr(kTime.size());
  int last = -1;
  for (std::size_t i = 3; i < lines.size(); ++i) {
    auto swap = SwapOf(lines[i], last);
    if (!swap) return "line " + std::to_string(i + 1) + " is no unit";
    last = swap->target.unit.place();
    write.swaps.push_back(std::move(*swap));
  }
  return {};
}

}  // namespace

std::string UnfinishedWriteText(const UnfinishedWrite& write) {
  std::string text(kHeader);
  text += "\nmodel " + std::to_string(write.model) + "\ntime " + write.time + '\n';
  for (const UnitSwap& swap : write.swaps) {
    text += AddressOf(swap.target.unit) + ' ' + swap.target.digits;
    for (const std::string& known : swap.known) text += ' ' + known;
    text += '\n';
  }
  return text + EndLine(write.swaps.size(), text);
}

std::optional<FileProblem> ReadUnfinishedWrite(std::string_view text, const std::string& path,
                                               UnfinishedWrite& write) {
  write = {};
  const auto problem = [&](std::string what) {
    return FileProblem{FileProblem::Kind::kBadData, path, 0, std::move(what)};
  };
  const auto end = text.rfind("\nend ");
  if (end == std::string_view::npos) return problem("not an unfinished write, or not all of it");
  const std::string_view body = text.substr(0, end + 1);
  if (std::string what = ReadLines(Split(body.substr(0, end), '\n'), write); !what.empty()) {
    return problem(std::move(what));
  }
  if (text.substr(end + 1) != EndLine(write.swaps.size(), body)) {
    return problem("the sum of its characters is wrong");
  }
  return std::nullopt;
}

std::optional<FileProblem> OpenUnfinishedWrite(const std::string& path, UnfinishedWrite& write) {
  std::string text;
  if (auto problem = ReadFile(path, kLongestFile, text)) return problem;
  return ReadUnfinishedWrite(text, path, write);
}

std::optional<FileProblem> SaveUnfinishedWrite(const std::string& path,
                                               const UnfinishedWrite& write, FileSystem& system) {
  return WriteFile(path, UnfinishedWriteText(write), system);
}

UnfinishedWrite Over(const UnfinishedWrite& earlier, UnfinishedWrite later) {
  if (earlier.model != later.model) return later;
  for (const UnitSwap& old : earlier.swaps) {
    const auto at =
        std::lower_bound(later.swaps.begin(), later.swaps.end(), old.target.unit,
                         [](const UnitSwap& swap, Unit unit) { return swap.target.unit < unit; });
    if (at == later.swaps.end() || at->target.unit != old.target.unit) {
      later.swaps.insert(at, old);
    } else if (at->known.empty() && !old.known.empty()) {
      at->known = RestOf(std::vector<UnitSwap>{old}).front().known;
    }
  }
  return later;
}

std::optional<UnfinishedWrite> Without(const UnfinishedWrite& write, const UnfinishedWrite& done) {
  if (write.model != done.model) return write;
  UnfinishedWrite left{write.model, write.time, {}};
  for (const UnitSwap& swap : write.swaps) {
    const bool is_done =
        std::any_of(done.swaps.begin(), done.swaps.end(),
                    [&](const UnitSwap& other) { return other.target.unit == swap.target.unit; });
    if (!is_done) left.swaps.push_back(swap);
  }
  if (left.swaps.empty()) return std::nullopt;
  return left;
}

}  // namespace q40
