#include "radio/settings_codec.h"

#include <algorithm>
#include <array>

#include "base/hex.h"

namespace q40 {
namespace {

using enum SettingRule;

struct ForcedByte {
  int line;
  int byte;
  std::string_view text;
};

// Written with these values whatever the radio held.
constexpr ForcedByte kForcedBytes[] = {{0, 0, "A5"}, {0, 1, "00"}, {0, 7, "00"}, {1, 3, "00"},
                                       {1, 5, "00"}, {1, 6, "00"}, {1, 15, "01"}};

constexpr int kBytesPerLine = 16;
constexpr int kParityByte = 3;      // of line 0, read as a decimal number
constexpr std::size_t kVoxBit = 1;  // second character of the high digit's bits

std::string& LineOf(SettingsLines& lines, int line) {
  return lines[static_cast<std::size_t>(line)];
}

// The two digits of a byte, "00" past the end of the line.
std::string ByteText(std::string_view line, int byte) {
  const auto at = 2 * static_cast<std::size_t>(byte);
  std::string text(line.substr(std::min(at, line.size()), 2));
  text.resize(2, '0');
  return text;
}

int DecodeField(const Setting& field, std::string& line) {
  const std::string text = ByteText(line, field.byte);
  const int value = HexByteValue(text, 0);
  switch (field.rule) {
    case kExactText: return text == "01" ? 1 : 0;
    case kExactOne: return value == 1 ? 1 : 0;
    case kNonzero:
    case kLockFlag:
    case kTwoItems: return value != 0 ? 1 : 0;
    case kScan: return std::min(value, 2);
    case kBit6: return HexDigitToBits(text[0])[kVoxBit] == '1' ? 1 : 0;
    case kRange:
    case kRangeTotp: break;
  }
  if (value <= field.top) return value;
  // Intended: the line of cmbTOTP keeps the byte that is out of range.
  if (field.rule == kRange) line = ReplaceByte(line, "00", field.byte);
  return 0;
}

std::string EncodeField(const Setting& field, int value, const std::string& line) {
  switch (field.rule) {
    case kLockFlag: return value != 0 ? "AA" : "00";
    case kExactText:
    case kExactOne:
    case kNonzero: return value != 0 ? "01" : "00";
    case kBit6: {
      const std::string text = ByteText(line, field.byte);
      std::string bits = HexDigitToBits(text[0]);
      bits[kVoxBit] = value == 1 ? '1' : '0';
      return {BitsToHexDigit(bits), text[1]};
    }
    default: return HexByteText(value);
  }
}

std::string StartChannel(const SettingsValues& values, int first_used_channel,
                         const SettingsLines& lines) {
  if (values.chkChannel != 0) return HexByteText(first_used_channel);
  // The last of the leading decimal digits tells odd from even: "1F" is 1, "A1" is none.
  const std::string parity = ByteText(lines[0], kParityByte);
  const std::size_t digits = std::min(parity.find_first_not_of("0123456789"), parity.size());
  const bool odd = digits > 0 && (parity[digits - 1] - '0') % 2 != 0;
  return odd ? "D8" : "D4";
}

}  // namespace

std::string ReplaceByte(std::string_view line, std::string_view byte_text, int index) {
  if (index < 0 || index >= kBytesPerLine) return std::string(line);
  const auto before = std::min(2 * static_cast<std::size_t>(index), line.size());
  const auto after = std::min(2 * static_cast<std::size_t>(kBytesPerLine - 1 - index), line.size());
  std::string replaced(line.substr(0, before));
  replaced += byte_text;
  replaced += line.substr(line.size() - after);
  return replaced;
}

SettingsValues DecodeSettings(SettingsLines& lines) {
  SettingsValues values;
  for (const Setting& field : Settings()) {
    values.*field.value = DecodeField(field, LineOf(lines, field.line));
  }
  return values;
}

void EncodeSettings(const SettingsValues& values, int first_used_channel, SettingsLines& lines) {
  std::array<std::array<std::string, kBytesPerLine>, kSettingsLines> bytes;
  for (int line = 0; line < kSettingsLines; ++line) {
    for (int byte = 0; byte < kBytesPerLine; ++byte) {
      bytes[static_cast<std::size_t>(line)][static_cast<std::size_t>(byte)] =
          UpperCase(ByteText(LineOf(lines, line), byte));
    }
  }
  const auto set = [&](int line, int byte, std::string_view text) {
    bytes[static_cast<std::size_t>(line)][static_cast<std::size_t>(byte)] = text;
  };
  for (const Setting& field : Settings()) {
    set(field.line, field.byte,
        UpperCase(EncodeField(field, values.*field.value, LineOf(lines, field.line))));
  }
  for (const ForcedByte& forced : kForcedBytes) set(forced.line, forced.byte, forced.text);
  set(0, kStartChannelByte, StartChannel(values, first_used_channel, lines));

  for (int line = 0; line < kSettingsLines; ++line) {
    LineOf(lines, line).clear();
    for (const std::string& text : bytes[static_cast<std::size_t>(line)]) {
      LineOf(lines, line) += text;
    }
  }
}

}  // namespace q40
