#include "files/clone_file.h"

#include <algorithm>

#include "base/hex.h"
#include "document/defaults.h"
#include "document/document_cells.h"
#include "files/whole_file.h"
#include "radio/channel_codec.h"
#include "radio/models.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

// Lines counted from 0.
constexpr std::size_t kSettingsStart = 1;
constexpr std::size_t kVhfStart = 5;
constexpr std::size_t kUhfStart = 15;
constexpr std::size_t kMemoryStart = 35;
constexpr std::size_t kEndLine = 455;

constexpr char kDialPadding = 'Z';
constexpr std::string_view kLineEnd = "\r\n";

constexpr std::size_t SpecialStart(Band band) { return band == Band::kVhf ? kVhfStart : kUhfStart; }

FileProblem BadData(const std::string& path, std::size_t index, std::string what) {
  return {FileProblem::Kind::kBadData, path, static_cast<int>(index) + 1, std::move(what)};
}

// The record's second line starts with byte 16.
FileProblem BadRecord(const std::string& path, std::size_t index, Unit unit,
                      const CodecError& error) {
  return BadData(path, index + (error.byte >= kBlockSize ? 1 : 0),
                 ByteAt(unit, 0).place + ": " + error.Message());
}

std::optional<FileProblem> DecodeSpecialLines(const CloneLines& lines, Band band,
                                              const std::string& path, CloneImage& image) {
  SpecialSet& set = SpecialStore(image, band);
  for (int k = 0; k < kSpecialChannelCount; ++k) {
    const std::size_t index = SpecialStart(band) + 2 * static_cast<std::size_t>(k);
    if (const auto error = DecodeSpecialChannel(lines.Pair(index), k, set)) {
      return BadRecord(path, index, Unit::Special(band, k), *error);
    }
  }
  SetStoredPresent(image, band, PresentByFrequency(set));
  return std::nullopt;
}

std::optional<FileProblem> DecodeLines(const CloneLines& lines, const std::string& path,
                                       CloneData& document) {
  CloneImage& image = document.image;
  for (std::size_t k = 0; k < kSettingsLines; ++k) {
    image.SettingsLine[k] = lines.Line(kSettingsStart + k);
  }
  document.settings = DecodeSettings(image);
  for (const Band band : kBands) {
    if (auto problem = DecodeSpecialLines(lines, band, path, image)) return problem;
  }
  ShowBand(image, image.ShownBand);
  document.dial = StoredDialTexts(lines);
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    const std::size_t index = kMemoryStart + 2 * static_cast<std::size_t>(n);
    if (const auto error = DecodeMemoryChannel(lines.Pair(index), n, image)) {
      return BadRecord(path, index, Unit::Memory(n), *error);
    }
  }
  return std::nullopt;
}

std::optional<FileProblem> FirstOddDigit(const CloneLines& lines, const std::string& path) {
  for (std::size_t index = kSettingsStart; index < kEndLine; ++index) {
    if (index >= kFirstDialLine && index < kMemoryStart) continue;
    const std::string_view line = lines.Line(index);
    const auto odd = std::find_if(line.begin(), line.end(), [](char c) { return !IsHexDigit(c); });
    if (odd == line.end()) continue;
    return BadData(path, index,
                   "character " + std::to_string(odd - line.begin() + 1) +
                       (index < kVhfStart ? " is no hexadecimal digit; where no control owns the "
                                            "byte it is carried as it is"
                                          : " is no hexadecimal digit and reads as 0"));
  }
  return std::nullopt;
}

void AppendLine(std::string& text, std::string_view line) {
  text += line;
  text += kLineEnd;
}

bool AppendChannel(std::string& text, const std::optional<ChannelLines>& lines) {
  if (!lines) return false;
  AppendLine(text, lines->First());
  AppendLine(text, lines->Second());
  return true;
}

bool AppendChannels(std::string& text, const CloneImage& image, Band band) {
  const SpecialSet& set = SpecialStore(image, band);
  for (int k = 0; k < kSpecialChannelCount; ++k) {
    if (!AppendChannel(text, EncodeSpecialChannel(set, StoredPresent(image, band), k))) {
      return false;
    }
  }
  return true;
}

// A text that is longer than a line is not cut. One with a line end in it would make a file that
// nobody can open.
bool AppendDialText(std::string& text, const std::string& dial) {
  if (dial.find_first_of(kLineEnd) != std::string::npos) return false;
  AppendLine(text, DialLine(dial));
  return true;
}

OpenResult Refused(FileProblem problem) {
  OpenResult result;
  result.problem = std::move(problem);
  return result;
}

}  // namespace

std::optional<FileProblem> SplitCloneText(std::string_view text, const std::string& path,
                                          CloneLines& lines, std::string_view* rest) {
  for (std::size_t index = 0; index < kCloneLineCount; ++index) {
    if (text.empty()) {
      return BadData(
          path, index,
          "the file ends here; a clone file has " + std::to_string(kCloneLineCount) + " lines");
    }
    const auto end =
        std::find_if(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; });
    const auto length = static_cast<std::size_t>(end - text.begin());
    if (length > kCloneLineLength && length == text.size()) {
      return BadData(path, index, "more than 32 characters; every line must have exactly 32");
    }
    if (length != kCloneLineLength) {
      return BadData(path, index, std::to_string(length) + " characters instead of 32");
    }
    std::copy_n(text.begin(), kCloneLineLength, lines.text.begin() + index * kCloneLineLength);
    text.remove_prefix(length);
    text.remove_prefix(text.starts_with(kLineEnd) ? 2 : std::min<std::size_t>(1, text.size()));
  }
  if (rest != nullptr) *rest = text;
  return std::nullopt;
}

std::optional<std::size_t> FirstLineOf(Unit unit) {
  const auto offset = 2 * static_cast<std::size_t>(unit.index());
  switch (unit.kind()) {
    case Unit::Kind::kSettings: return kSettingsStart + offset;
    case Unit::Kind::kSpecial: return SpecialStart(unit.band()) + offset;
    case Unit::Kind::kMemory: return kMemoryStart + offset;
    default: return std::nullopt;
  }
}

std::string CloneTextOf(const CloneLines& lines) {
  std::string text;
  text.reserve(kLongestCloneFile);
  for (std::size_t i = 0; i < kCloneLineCount; ++i) AppendLine(text, lines.Line(i));
  return text;
}

std::string DialLine(std::string text) {
  if (text.size() < kCloneLineLength) text.resize(kCloneLineLength, kDialPadding);
  return text;
}

DialTexts StoredDialTexts(const CloneLines& lines) {
  DialTexts texts;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const std::string_view padded = lines.Line(kFirstDialLine + i);
    texts[i] = padded.substr(0, padded.find_last_not_of(kDialPadding) + 1);
  }
  return texts;
}

std::vector<UnitData> StoredUnits(const CloneLines& lines) {
  std::vector<UnitData> units;
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    if (const auto line = FirstLineOf(unit))
      units.push_back({unit, std::string(lines.Pair(*line))});
  }
  return units;
}

OpenResult OpenCloneText(std::string_view text, const std::string& path, CloneData& document) {
  CloneLines lines;
  if (auto problem = SplitCloneText(text, path, lines)) return Refused(std::move(*problem));
  const auto header = FindHeaderLine(lines.Line(kHeaderLine));
  if (!header) return Refused(BadData(path, kHeaderLine, "not the header of a clone file"));

  OpenResult result;
  result.model_changed = ChangeModel(document, header->model);
  document.image.VersionA = header->version == kVersionA;
  if (lines.Line(kEndLine) != kCloneFileEndLine) {
    result.problem = BadData(path, kEndLine, "not the end line of a clone file");
    return result;
  }
  CloneData opened = document;
  result.problem = DecodeLines(lines, path, opened);
  if (result.problem) return result;
  document = std::move(opened);
  result.odd_digit = FirstOddDigit(lines, path);
  return result;
}

bool IsCloneFile(const std::string& path) {
  std::string text;
  return !ReadFile(path, kCloneLineLength, text) && FindHeaderLine(text);
}

OpenResult OpenCloneFile(const std::string& path, CloneData& document) {
  std::string text;
  if (auto problem = ReadFile(path, kLongestCloneFile, text)) return Refused(std::move(*problem));
  return OpenCloneText(text, path, document);
}

std::optional<std::string> CloneFileText(const CloneData& document, int model) {
  if (model < 0 || model >= kModelCount) return std::nullopt;
  const CloneImage& image = document.image;
  std::string text;
  text.reserve(kLongestCloneFile);
  AppendLine(text, HeaderLine(model, VersionOf(image)));
  for (const std::string& line : EncodedSettings(document.settings, image)) AppendLine(text, line);
  for (const Band band : kBands) {
    if (!AppendChannels(text, image, band)) return std::nullopt;
  }
  for (const std::string& dial : document.dial) {
    if (!AppendDialText(text, dial)) return std::nullopt;
  }
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    if (!AppendChannel(text, EncodeMemoryChannel(image, n))) return std::nullopt;
  }
  AppendLine(text, kCloneFileEndLine);
  return text;
}

std::optional<FileProblem> SaveCloneFile(const std::string& path, const CloneData& document,
                                         int model, FileSystem& system) {
  const auto text = CloneFileText(document, model);
  if (!text) {
    return FileProblem{FileProblem::Kind::kCannotWrite, path, 0, "the data cannot be encoded"};
  }
  return WriteFile(path, *text, system);
}

}  // namespace q40
