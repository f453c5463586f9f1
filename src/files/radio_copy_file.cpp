#include "files/radio_copy_file.h"

#include <algorithm>

#include "base/hex.h"
#include "files/whole_file.h"
#include "radio/dial_text.h"
#include "radio/models.h"

namespace q40 {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

bool IsHex(std::string_view text) { return std::all_of(text.begin(), text.end(), IsHexDigit); }

void LoadTexts(const UnitData& data, DialTexts& texts) {
  for (const int half : {0, 1}) {
    const auto at = static_cast<std::size_t>(half) * kBlockDigits;
    UpDateDialData(texts, data.digits.substr(at, kBlockDigits), 2 * data.unit.index() + half);
  }
}

std::string EncodedTexts(Unit unit, const DialTexts& texts) {
  return MakeDialData(texts, 2 * unit.index()) + MakeDialData(texts, 2 * unit.index() + 1);
}

void AppendLines(std::string& text, const std::string& digits) {
  text.append(digits, 0, kCloneLineLength).append(kLineEnd);
  text.append(digits, kCloneLineLength).append(kLineEnd);
}

void AppendTexts(std::string& text, Unit unit, const DialTexts& texts) {
  const auto first = static_cast<std::size_t>(unit.index()) * 2;
  for (const std::size_t half : {0U, 1U}) {
    std::string line = texts[first + half];
    line.resize(kCloneLineLength, 'Z');
    text.append(line).append(kLineEnd);
  }
}

std::string AddressLine(const UnitData& data) {
  const int address = data.unit.address();
  return HexByteText(address >> 8) + HexByteText(address) + ' ' + data.digits;
}

// The digits of a dialer unit that a line behind the end tells; empty when there is no such line.
std::string DigitsBehind(std::string_view rest, Unit unit, const DialTexts& texts) {
  const std::string start = AddressLine({unit, {}});
  const auto at = rest.find(start);
  if (at == std::string_view::npos || (at > 0 && rest[at - 1] != '\n' && rest[at - 1] != '\r')) {
    return {};
  }
  const std::string digits(rest.substr(at + start.size(), kUnitDigits));
  if (digits.size() != kUnitDigits || !IsHex(digits)) return {};
  DialTexts spelled = texts;
  LoadTexts({unit, digits}, spelled);
  return spelled == texts ? digits : std::string();
}

FileProblem BadLine(const std::string& path, std::size_t line, std::string what) {
  return {FileProblem::Kind::kBadData, path, static_cast<int>(line), std::move(what)};
}

}  // namespace

std::string RadioCopyText(const RadioCopy& copy) {
  std::string text(HeaderLine(copy.model, copy.version_letter == 'A' ? kVersionA : kVersionPlain));
  text += kLineEnd;
  std::string behind;
  for (const UnitData& data : copy.units) {
    if (data.unit.kind() != Unit::Kind::kDialer) {
      AppendLines(text, data.digits);
      continue;
    }
    DialTexts texts;
    LoadTexts(data, texts);
    AppendTexts(text, data.unit, texts);
    if (EncodedTexts(data.unit, texts) != UpperCase(data.digits)) {
      behind.append(AddressLine(data)).append(kLineEnd);
    }
  }
  return text.append(kCloneFileEndLine).append(kLineEnd).append(behind);
}

std::optional<FileProblem> ReadRadioCopy(std::string_view text, const std::string& path,
                                         RadioCopy& copy) {
  copy = {};
  CloneLines lines;
  std::string_view rest;
  if (auto problem = SplitCloneText(text, path, lines, &rest)) return problem;
  const auto header = FindHeaderLine(lines.Line(0));
  if (!header) return BadLine(path, 1, "not the header of a clone file");
  if (lines.Line(kCloneLineCount - 1) != kCloneFileEndLine) {
    return BadLine(path, kCloneLineCount, "not the end line of a clone file");
  }
  copy.model = header->model;
  copy.version_letter = header->version == kVersionA ? 'A' : '0';
  const DialTexts texts = StoredDialTexts(lines);
  std::vector<UnitData> stored = StoredUnits(lines);
  auto next = stored.begin();
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    if (unit.kind() != Unit::Kind::kDialer) {
      if (!IsHex(next->digits)) {
        return BadLine(path, 0, unit.Name() + " holds a character that is no hexadecimal digit");
      }
      copy.units.push_back(std::move(*next++));
      continue;
    }
    std::string digits = DigitsBehind(rest, unit, texts);
    if (digits.empty()) digits = EncodedTexts(unit, texts);
    copy.units.push_back({unit, std::move(digits)});
  }
  return std::nullopt;
}

std::optional<FileProblem> OpenRadioCopy(const std::string& path, RadioCopy& copy) {
  std::string text;
  if (auto problem = ReadFile(path, kLongestRadioCopy, text)) return problem;
  return ReadRadioCopy(text, path, copy);
}

std::optional<FileProblem> SaveRadioCopy(const std::string& path, const RadioCopy& copy) {
  return WriteFile(path, RadioCopyText(copy), NewFilesOnly());
}

}  // namespace q40
