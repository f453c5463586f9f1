#include "radio/channel_codec.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <span>

#include "base/hex.h"
#include "radio/channel_fields.h"
#include "radio/name_codes.h"

namespace q40 {
namespace {

using Digits = std::array<char, kUnitDigits>;

constexpr int kSplit = 3;

// 64 upper-case digits, whatever came in.
Digits Normalised(std::string_view hex64) {
  Digits digits{};
  digits.fill('0');
  const std::size_t length = std::min(hex64.size(), digits.size());
  for (std::size_t i = 0; i < length; ++i) {
    if (IsHexDigit(hex64[i])) digits[i] = UpperCase(hex64[i]);
  }
  return digits;
}

// A decoder of one record. It never touches a row of the image; the caller stores what it made.
struct Decoder {
  ChannelKind kind;
  Digits digits;
  ChannelRecord record{};
  std::optional<CodecError> error{};  // the first index outside its list

  [[nodiscard]] int Byte(int byte) const {
    return HexByteValue({digits.data(), digits.size()}, 2 * static_cast<std::size_t>(byte));
  }
  // Digits of `bytes` bytes with a point in the middle: 0145.5000.
  [[nodiscard]] std::string Bcd(const ChannelField& row) const {
    const auto [byte, count] = BytesOf(row.field);
    std::string text(digits.begin() + 2 * byte, digits.begin() + 2 * (byte + count));
    return text.insert(count, 1, '.');
  }
  void Set(Field field, int number) { SetCode(record, kind, field, number); }

  void Row(const ChannelField& row);
  void Index(const ChannelField& row);
  void Name(const ChannelField& row);
};

int ToneModeOf(int byte) {
  if ((byte & 8) != 0) return 12;
  if ((byte & 2) != 0) return 3;
  return byte & 1;
}

void Decoder::Index(const ChannelField& row) {
  int index = Byte(row.byte);
  if (static_cast<std::size_t>(index) >= IndexListOf(row.field).size()) {
    if (!error) error = CodecError{row.byte, index};
    index = 0;
  }
  Set(row.field, index);
}

void Decoder::Name(const ChannelField& row) {
  std::string name;
  for (int i = 0; i < static_cast<int>(kNameLength); ++i) {
    const char character = NameCharacter(Byte(row.byte + i));
    if (character != '\0') name += character;
  }
  record.Set(kind, Field::kName, name.empty() ? 0 : 1, name);
}

void Decoder::Row(const ChannelField& row) {
  const int value = row.code == FieldCode::kName ? 0 : Byte(row.byte);
  switch (row.code) {
    case FieldCode::kShift:
      Set(row.field,
          value == kSplit && kind == ChannelKind::kMemory ? 0 : KnownCode(row.field, value));
      break;
    case FieldCode::kTone: Set(row.field, ToneModeOf(value)); break;
    case FieldCode::kStep: Set(row.field, value == 2 || value == 5 ? 2 : 0); break;
    case FieldCode::kFrequency: {
      const std::string text = Bcd(row).substr(1);  // intended: without the thousands
      record.Set(kind, row.field, LeadingFrequency(text), text);
      break;
    }
    case FieldCode::kOffset: {
      std::string text = Bcd(row);
      // Intended: 0012.6000 becomes 2.6000, but 1012.6000 stays.
      if (text.front() == '0') text.erase(0, 3);
      record.Set(kind, row.field, LeadingFrequency(text), text);
      break;
    }
    case FieldCode::kIndex: Index(row); break;
    case FieldCode::kWord: Set(row.field, KnownCode(row.field, value)); break;
    case FieldCode::kFlag: Set(row.field, value == 1 ? 1 : 0); break;
    case FieldCode::kName: Name(row); break;
    case FieldCode::kSkip: break;  // byte 0 belongs to the caller
  }
}

Decoder DecodeRecord(ChannelKind kind, std::string_view hex64) {
  Decoder decoder{kind, Normalised(hex64)};
  for (const ChannelField& row : kChannelFields) {
    if (HasField(kind, row.field)) decoder.Row(row);
  }
  return decoder;
}

bool InsideItsList(Field field, int number) {
  const auto list = IndexListOf(field);
  return number >= 0 && (list.empty() || static_cast<std::size_t>(number) < list.size());
}

template <std::size_t Size>
void Put(ChannelLines& lines, std::ptrdiff_t byte, const std::array<char, Size>& digits) {
  std::copy(digits.begin(), digits.end(), lines.digits.begin() + 2 * byte);
}

// Every byte but byte 0, which belongs to the caller.
std::optional<ChannelLines> EncodeRecord(ChannelKind kind, const ChannelRecord& record) {
  ChannelLines lines;
  lines.digits.fill('0');
  for (const ChannelField& row : kChannelFields) {
    if (!HasField(kind, row.field) || row.code == FieldCode::kSkip) continue;
    const int number = record.Number(kind, row.field);
    const bool encodable = InsideItsList(row.field, number);
    assert(encodable);
    if (!encodable) return std::nullopt;
    switch (row.code) {
      case FieldCode::kFrequency:
      case FieldCode::kOffset: Put(lines, row.byte, FrequencyDigits(number)); break;
      case FieldCode::kName: Put(lines, row.byte, NameDigits(record.Text(kind, row.field))); break;
      case FieldCode::kFlag: Put(lines, row.byte, HexByte(number != 0 ? 1 : 0)); break;
      default: Put(lines, row.byte, HexByte(number)); break;
    }
  }
  return lines;
}

std::string_view FieldNameAt(int byte) {
  const auto* const row =
      std::find_if(kChannelFields.begin(), kChannelFields.end(),
                   [&](const ChannelField& r) { return r.byte == byte && r.byte != 0; });
  return row == kChannelFields.end() ? std::string_view("flags") : row->name;
}

}  // namespace

std::string CodecError::Message() const {
  return "byte " + std::to_string(byte) + " (" + std::string(FieldNameAt(byte)) + ") holds 0x" +
         HexByteText(value) + ", which is outside its list";
}

std::optional<CodecError> DecodeMemoryChannel(std::string_view hex64, ChannelRecord& record,
                                              bool& in_use) {
  constexpr auto kKind = ChannelKind::kMemory;
  Decoder decoder = DecodeRecord(kKind, hex64);
  const bool used = decoder.digits[0] == '8';
  const bool skip = decoder.digits[1] == '8';
  if (decoder.error && used) return decoder.error;

  record = std::move(decoder.record);
  record.Set(kKind, Field::kSkip, skip ? 1 : 0, "");
  if (skip) record.cellText[0].insert(0, 1, '*');
  in_use = used;
  return std::nullopt;
}

std::optional<ChannelLines> EncodeMemoryChannel(const ChannelRecord& record, bool in_use) {
  auto lines = EncodeRecord(ChannelKind::kMemory, record);
  if (!lines) return std::nullopt;
  if (in_use) lines->digits[0] = '8';
  if (record.Number(ChannelKind::kMemory, Field::kSkip) == 1) lines->digits[1] = '8';
  return lines;
}

std::optional<CodecError> DecodeSpecialChannel(std::string_view hex64, int k, SpecialSet& set) {
  assert(k >= 0 && k < kSpecialChannelCount);
  Decoder decoder = DecodeRecord(ChannelKind::kSpecial, hex64);
  const bool empty_limit = k >= kPhRow && decoder.record.Frequency() == 0;
  if (decoder.error && !empty_limit) return decoder.error;
  set[static_cast<std::size_t>(k)] = std::move(decoder.record);
  return std::nullopt;
}

std::optional<ChannelLines> EncodeSpecialChannel(const SpecialSet& set, PresentPair present,
                                                 int k) {
  assert(k >= 0 && k < kSpecialChannelCount);
  auto lines = EncodeRecord(ChannelKind::kSpecial, set[static_cast<std::size_t>(k)]);
  if (lines && EffectivelyPresent(set, present, k)) lines->digits[0] = '8';
  return lines;
}

}  // namespace q40
