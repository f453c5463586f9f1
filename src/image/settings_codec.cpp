#include "image/settings_codec.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "image/hex.h"

namespace q40 {
namespace {

using V = SettingsValues;
using enum SettingRule;

constexpr SettingsField kFields[] = {
    {"chkChannel", &V::chkChannel, 0, 2, kExactText},
    {"Slider1", &V::Slider1, 0, 5, kRange, 30},
    {"Slider2", &V::Slider2, 0, 6, kRange, 10},
    {"cmbDWait", &V::cmbDWait, 0, 8, kRange, 9},
    {"cmbDFirst", &V::cmbDFirst, 0, 9, kRange, 9},
    {"cmbDOther", &V::cmbDOther, 0, 10, kRange, 9},
    {"cmbTB", &V::cmbTB, 0, 11, kRange,
     3},  // its fifth item is written but not read back: intended
    {"cmbTOT", &V::cmbTOT, 0, 12, kRange, 15},
    {"cmbTOTP", &V::cmbTOTP, 0, 13, kRangeTotp, 15},
    {"chkLock", &V::chkLock, 0, 14, kNonzero},
    {"chkAPO", &V::chkAPO, 0, 15, kNonzero},
    {"chkBeep", &V::chkBeep, 1, 0, kExactOne},
    {"cmbScan", &V::cmbScan, 1, 1, kScan, 2},
    {"cmbLamp", &V::cmbLamp, 1, 2, kTwoItems},
    {"cmbBat", &V::cmbBat, 1, 4, kRange, 3},
    {"cmbVod", &V::cmbVod, 1, 8, kBit6},
    {"cmbStb", &V::cmbStb, 1, 9, kRange, 2},
    {"cmbDBurst", &V::cmbDBurst, 1, 12, kRange, 9},
    {"chkScanEn", &V::chkScanEn, 2, 0, kAccess},
    {"chkPowerEn", &V::chkPowerEn, 2, 1, kAccess},
    {"chkLockEn", &V::chkLockEn, 2, 2, kAccess},
    {"chkMoniEn", &V::chkMoniEn, 2, 3, kAccess},
    {"chkToneEn", &V::chkToneEn, 2, 4, kAccess},
    {"chkBurstEn", &V::chkBurstEn, 2, 5, kAccess},
    {"chkNameEn", &V::chkNameEn, 2, 6, kAccess},
    {"chkVoxEn", &V::chkVoxEn, 2, 7, kAccess},
    {"chkAlertEn", &V::chkAlertEn, 3, 12, kAccess},
    {"chkReverseEn", &V::chkReverseEn, 3, 13, kAccess},
};

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

std::string& LineOf(CloneImage& image, int line) {
  return image.SettingsLine[static_cast<std::size_t>(line)];
}

// The two digits of a byte, "00" past the end of the line.
std::string ByteText(std::string_view line, int byte) {
  const auto at = 2 * static_cast<std::size_t>(byte);
  std::string text(line.substr(std::min(at, line.size()), 2));
  text.resize(2, '0');
  return text;
}

int DecodeField(const SettingsField& field, std::string& line) {
  const std::string text = ByteText(line, field.byte);
  const int value = HexByteValue(text, 0);
  switch (field.rule) {
    case kExactText: return text == "01" ? 1 : 0;
    case kExactOne: return value == 1 ? 1 : 0;
    case kNonzero:
    case kAccess:
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

std::string EncodeField(const SettingsField& field, int value, const std::string& line) {
  switch (field.rule) {
    case kAccess: return value != 0 ? "AA" : "00";
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

std::string StartChannel(const SettingsValues& values, const CloneImage& image) {
  if (values.chkChannel != 0) {
    const auto* const first = image.ChannelInUse.begin();
    const auto* const used = std::find(first, first + kMemoryChannelCount, true);
    return HexByteText(static_cast<int>(used - first));  // 210 ("D2") when no channel is in use
  }
  // The last of the leading decimal digits tells odd from even: "1F" is 1, "A1" is none.
  const std::string parity = ByteText(image.SettingsLine[0], kParityByte);
  const std::size_t digits = std::min(parity.find_first_not_of("0123456789"), parity.size());
  const bool odd = digits > 0 && (parity[digits - 1] - '0') % 2 != 0;
  return odd ? "D8" : "D4";
}

}  // namespace

std::span<const SettingsField> SettingsFields() { return kFields; }

const SettingsField& SettingsFieldOf(std::string_view control) {
  const auto field = std::find_if(std::begin(kFields), std::end(kFields),
                                  [&](const SettingsField& f) { return f.control == control; });
  assert(field != std::end(kFields));
  return field != std::end(kFields) ? *field : kFields[0];
}

std::string ReplaceByte(std::string_view line, std::string_view byte_text, int index) {
  if (index < 0 || index >= kBytesPerLine) return std::string(line);
  const auto before = std::min(2 * static_cast<std::size_t>(index), line.size());
  const auto after = std::min(2 * static_cast<std::size_t>(kBytesPerLine - 1 - index), line.size());
  std::string replaced(line.substr(0, before));
  replaced += byte_text;
  replaced += line.substr(line.size() - after);
  return replaced;
}

SettingsValues DecodeSettings(CloneImage& image) {
  SettingsValues values;
  for (const SettingsField& field : kFields) {
    values.*field.value = DecodeField(field, LineOf(image, field.line));
  }
  return values;
}

void EncodeSettings(const SettingsValues& values, CloneImage& image) {
  std::array<std::array<std::string, kBytesPerLine>, kSettingsLines> bytes;
  for (int line = 0; line < kSettingsLines; ++line) {
    for (int byte = 0; byte < kBytesPerLine; ++byte) {
      bytes[static_cast<std::size_t>(line)][static_cast<std::size_t>(byte)] =
          UpperCase(ByteText(LineOf(image, line), byte));
    }
  }
  const auto set = [&](int line, int byte, std::string_view text) {
    bytes[static_cast<std::size_t>(line)][static_cast<std::size_t>(byte)] = text;
  };
  for (const SettingsField& field : kFields) {
    set(field.line, field.byte,
        UpperCase(EncodeField(field, values.*field.value, LineOf(image, field.line))));
  }
  for (const ForcedByte& forced : kForcedBytes) set(forced.line, forced.byte, forced.text);
  set(0, kStartChannelByte, StartChannel(values, image));

  for (int line = 0; line < kSettingsLines; ++line) {
    LineOf(image, line).clear();
    for (const std::string& text : bytes[static_cast<std::size_t>(line)]) {
      LineOf(image, line) += text;
    }
  }
}

}  // namespace q40
