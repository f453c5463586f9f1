#include "image/channel_codec.h"

#include <algorithm>
#include <cassert>
#include <span>

#include "image/hex.h"
#include "image/name_codes.h"
#include "image/vocabulary.h"

namespace q40 {
namespace {

using Digits = std::array<char, kUnitDigits>;

// How a byte stands for a field.
enum class Code : std::uint8_t {
  kShift,      // word by number; a memory channel does not know 3 (Split)
  kTone,       // low digit as bits: 8 DCS, else 2 TSQ, else 1 Tone
  kStep,       // 2 and 5 are 12.5 kHz, everything else is 5 kHz; written as it stands
  kFrequency,  // 4 bytes BCD
  kOffset,     // 4 bytes BCD
  kIndex,      // index of a value list
  kWord,       // word by number
  kFlag,       // 1 is set; any number but 0 is written as 1
  kName,       // 6 bytes
};

struct ByteRow {
  Field field;
  std::size_t byte;
  Code code;
};

// The record, byte 0 apart. Decoding and encoding both walk these rows.
constexpr ByteRow kByteRows[] = {
    {Field::kShift, 1, Code::kShift},
    {Field::kTone, 2, Code::kTone},
    {Field::kStep, 3, Code::kStep},
    {Field::kFrequency, 4, Code::kFrequency},
    {Field::kShiftFrequency, 8, Code::kOffset},
    {Field::kTxTone, 12, Code::kIndex},
    {Field::kRxTone, 13, Code::kIndex},
    {Field::kTxDcs, 14, Code::kIndex},
    {Field::kRxDcs, 15, Code::kIndex},
    {Field::kName, 16, Code::kName},
    {Field::kClock, 22, Code::kFlag},
    {Field::kBatterySave, 24, Code::kWord},
    {Field::kPower, 25, Code::kWord},
    {Field::kBclo, 26, Code::kFlag},
    {Field::kRpt, 28, Code::kFlag},
    {Field::kAtt, 29, Code::kWord},
    {Field::kBandwidth, 30, Code::kFlag},
    {Field::kMid, 31, Code::kIndex},
};

constexpr std::size_t kFrequencyBytes = 4;
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

  [[nodiscard]] int Byte(std::size_t byte) const {
    return HexByteValue({digits.data(), digits.size()}, 2 * byte);
  }
  // Digits of `bytes` bytes with a point in the middle: 0145.5000.
  [[nodiscard]] std::string Bcd(std::size_t byte) const {
    std::string text(digits.begin() + 2 * byte, digits.begin() + 2 * (byte + kFrequencyBytes));
    return text.insert(kFrequencyBytes, 1, '.');
  }
  void SetCode(Field field, int number) {
    record.Set(kind, field, number, CodeText(field, number));
  }

  void Row(const ByteRow& row);
  void Index(const ByteRow& row);
  void Name(const ByteRow& row);
};

int ToneModeOf(int byte) {
  if ((byte & 8) != 0) return 12;
  if ((byte & 2) != 0) return 3;
  return byte & 1;
}

void Decoder::Index(const ByteRow& row) {
  int index = Byte(row.byte);
  if (static_cast<std::size_t>(index) >= IndexListOf(row.field).size()) {
    if (!error) error = CodecError{static_cast<int>(row.byte), index};
    index = 0;
  }
  SetCode(row.field, index);
}

void Decoder::Name(const ByteRow& row) {
  std::string name;
  for (std::size_t i = 0; i < kNameLength; ++i) {
    const char character = NameCharacter(Byte(row.byte + i));
    if (character != '\0') name += character;
  }
  record.Set(kind, Field::kName, name.empty() ? 0 : 1, name);
}

void Decoder::Row(const ByteRow& row) {
  const int value = row.code == Code::kName ? 0 : Byte(row.byte);
  switch (row.code) {
    case Code::kShift:
      SetCode(row.field,
              value == kSplit && kind == ChannelKind::kMemory ? 0 : KnownCode(row.field, value));
      break;
    case Code::kTone: SetCode(row.field, ToneModeOf(value)); break;
    case Code::kStep: SetCode(row.field, value == 2 || value == 5 ? 2 : 0); break;
    case Code::kFrequency: {
      const std::string text = Bcd(row.byte).substr(1);  // intended: without the thousands
      record.Set(kind, row.field, LeadingFrequency(text), text);
      break;
    }
    case Code::kOffset: {
      std::string text = Bcd(row.byte);
      // Intended: 0012.6000 becomes 2.6000, but 1012.6000 stays.
      if (text.front() == '0') text.erase(0, 3);
      record.Set(kind, row.field, LeadingFrequency(text), text);
      break;
    }
    case Code::kIndex: Index(row); break;
    case Code::kWord: SetCode(row.field, KnownCode(row.field, value)); break;
    case Code::kFlag: SetCode(row.field, value == 1 ? 1 : 0); break;
    case Code::kName: Name(row); break;
  }
}

Decoder DecodeRecord(ChannelKind kind, std::string_view hex64) {
  Decoder decoder{kind, Normalised(hex64)};
  for (const ByteRow& row : kByteRows) {
    if (HasField(kind, row.field)) decoder.Row(row);
  }
  return decoder;
}

bool InsideItsList(Field field, int number) {
  const auto list = IndexListOf(field);
  return number >= 0 && (list.empty() || static_cast<std::size_t>(number) < list.size());
}

template <std::size_t Size>
void Put(ChannelLines& lines, std::size_t byte, const std::array<char, Size>& digits) {
  std::copy(digits.begin(), digits.end(), lines.digits.begin() + 2 * byte);
}

// Every byte but byte 0, which belongs to the caller.
std::optional<ChannelLines> EncodeRecord(ChannelKind kind, const ChannelRecord& record) {
  ChannelLines lines;
  lines.digits.fill('0');
  for (const ByteRow& row : kByteRows) {
    if (!HasField(kind, row.field)) continue;
    const int number = record.Number(kind, row.field);
    const bool encodable = InsideItsList(row.field, number);
    assert(encodable);
    if (!encodable) return std::nullopt;
    switch (row.code) {
      case Code::kFrequency:
      case Code::kOffset: Put(lines, row.byte, FrequencyDigits(number)); break;
      case Code::kName: Put(lines, row.byte, NameDigits(record.Text(kind, row.field))); break;
      case Code::kFlag: Put(lines, row.byte, HexByte(number != 0 ? 1 : 0)); break;
      default: Put(lines, row.byte, HexByte(number)); break;
    }
  }
  return lines;
}

std::string_view FieldNameAt(int byte) {
  const auto row = std::find_if(std::begin(kByteRows), std::end(kByteRows),
                                [&](auto& r) { return static_cast<int>(r.byte) == byte; });
  return row == std::end(kByteRows) ? std::string_view("flags") : FieldName(row->field);
}

}  // namespace

std::optional<FieldBytes> BytesOf(Field field) {
  const auto row = std::find_if(std::begin(kByteRows), std::end(kByteRows),
                                [&](const ByteRow& r) { return r.field == field; });
  if (row == std::end(kByteRows)) return std::nullopt;
  switch (row->code) {
    case Code::kFrequency:
    case Code::kOffset: return FieldBytes{row->byte, kFrequencyBytes};
    case Code::kName: return FieldBytes{row->byte, kNameLength};
    default: return FieldBytes{row->byte, 1};
  }
}

std::string CodecError::Message() const {
  return "byte " + std::to_string(byte) + " (" + std::string(FieldNameAt(byte)) + ") holds 0x" +
         HexByteText(value) + ", which is outside its list";
}

std::optional<CodecError> DecodeMemoryChannel(std::string_view hex64, int n, CloneImage& image) {
  assert(n >= 0 && n < kMemoryChannelCount);
  constexpr auto kKind = ChannelKind::kMemory;
  Decoder decoder = DecodeRecord(kKind, hex64);
  const bool in_use = decoder.digits[0] == '8';
  const bool skip = decoder.digits[1] == '8';
  if (decoder.error && in_use) return decoder.error;

  ChannelRecord& record = decoder.record;
  record.Set(kKind, Field::kSkip, skip ? 1 : 0, "");
  if (skip) record.cellText[0].insert(0, 1, '*');
  image.MemoryTable[static_cast<std::size_t>(n)] = std::move(record);
  image.ChannelInUse[static_cast<std::size_t>(n)] = in_use;
  return std::nullopt;
}

std::optional<ChannelLines> EncodeMemoryChannel(const CloneImage& image, int n) {
  assert(n >= 0 && n < kMemoryChannelCount);
  const ChannelRecord& record = image.MemoryTable[static_cast<std::size_t>(n)];
  auto lines = EncodeRecord(ChannelKind::kMemory, record);
  if (!lines) return std::nullopt;
  if (image.ChannelInUse[static_cast<std::size_t>(n)]) lines->digits[0] = '8';
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
