#include "document/document_parts.h"

namespace q40 {
namespace {

constexpr int kGroupBits = 7;
constexpr std::uint32_t kMore = 0x80;
constexpr int kMostShift = 28;  // of 32 bits

void AppendRecord(std::string& bytes, const ChannelRecord& record, bool marked) {
  AppendNumber(bytes, marked ? 1 : 0);
  for (const std::string& text : record.cellText) AppendText(bytes, text);
  for (const std::int32_t number : record.value) AppendNumber(bytes, number);
}

bool TakeRecord(PartReader& reader, ChannelRecord& record) {
  const bool marked = reader.Number() != 0;
  for (std::string& text : record.cellText) text = reader.Text();
  for (std::int32_t& number : record.value) number = reader.Number();
  return marked;
}

// Where a special part lies.
struct SpecialPlace {
  Band band;
  std::size_t row;
  [[nodiscard]] bool HasMark() const { return row >= kPhRow; }
  [[nodiscard]] std::size_t mark() const { return row - kPhRow; }
};
SpecialPlace SpecialAt(int part) {
  const int at = part - kFirstSpecialPart;
  return {at < kSpecialChannelCount ? Band::kVhf : Band::kUhf,
          static_cast<std::size_t>(at % kSpecialChannelCount)};
}

bool DecodeHead(std::string_view bytes, CloneData& data) {
  PartReader reader(bytes);
  const int model = reader.Number();
  const bool version_a = reader.Number() != 0;
  const bool uhf = reader.Number() != 0;
  if (!reader.IsAtEnd() || model < 0 || model >= kModelCount) return false;
  data.model = model;
  data.image.VersionA = version_a;
  data.image.ShownBand = uhf ? Band::kUhf : Band::kVhf;
  return true;
}

bool DecodeLines(std::string_view bytes, CloneData& data) {
  PartReader reader(bytes);
  SettingsLines lines;
  for (std::string& line : lines) {
    line = reader.Text();
    if (!line.empty() && line.size() != kBlockDigits) return false;
  }
  if (!reader.IsAtEnd()) return false;
  data.image.SettingsLine = std::move(lines);
  return true;
}

bool DecodeSetting(std::string_view bytes, const Setting& setting, CloneData& data) {
  PartReader reader(bytes);
  const int value = reader.Number();
  if (!reader.IsAtEnd()) return false;
  data.settings.*setting.value = value;
  return true;
}

bool DecodeDial(std::string_view bytes, std::string& dial) {
  PartReader reader(bytes);
  const std::string_view text = reader.Text();
  if (!reader.IsAtEnd()) return false;
  dial = text;
  return true;
}

bool DecodeChannel(std::string_view bytes, int part, CloneImage& image) {
  PartReader reader(bytes);
  ChannelRecord record;
  const bool marked = TakeRecord(reader, record);
  if (!reader.IsAtEnd()) return false;
  if (part >= kFirstMemoryPart) {
    const auto row = static_cast<std::size_t>(part - kFirstMemoryPart);
    image.MemoryTable[row] = std::move(record);
    image.ChannelInUse[row] = marked;
    return true;
  }
  const SpecialPlace place = SpecialAt(part);
  SpecialStore(image, place.band)[place.row] = std::move(record);
  if (!place.HasMark()) return true;
  PresentPair present = StoredPresent(image, place.band);
  present[place.mark()] = marked;
  SetStoredPresent(image, place.band, present);
  return true;
}

void EncodeChannel(const CloneImage& image, int part, std::string& bytes) {
  if (part >= kFirstMemoryPart) {
    const auto row = static_cast<std::size_t>(part - kFirstMemoryPart);
    return AppendRecord(bytes, image.MemoryTable[row], image.ChannelInUse[row]);
  }
  const SpecialPlace place = SpecialAt(part);
  AppendRecord(bytes, SpecialStore(image, place.band)[place.row],
               place.HasMark() && StoredPresent(image, place.band)[place.mark()]);
}

}  // namespace

void AppendNumber(std::string& bytes, std::int32_t number) {
  // The sign goes to the lowest bit, so that small numbers of either sign take one byte.
  const auto bits = static_cast<std::uint32_t>(number);
  std::uint32_t rest = bits << 1U ^ (number < 0 ? ~0U : 0U);
  for (; rest >= kMore; rest >>= kGroupBits) bytes += static_cast<char>(rest | kMore);
  bytes += static_cast<char>(rest);
}

void AppendText(std::string& bytes, std::string_view text) {
  AppendNumber(bytes, static_cast<std::int32_t>(text.size()));
  bytes += text;
}

std::int32_t PartReader::Number() {
  std::uint32_t rest = 0;
  for (int shift = 0; shift <= kMostShift && !failed_ && !rest_.empty(); shift += kGroupBits) {
    const std::uint32_t byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    rest |= (byte & (kMore - 1)) << shift;
    if (byte < kMore) return static_cast<std::int32_t>(rest >> 1U ^ ((rest & 1U) != 0 ? ~0U : 0U));
  }
  failed_ = true;
  return 0;
}

std::string_view PartReader::Text() {
  const std::int32_t size = Number();
  failed_ = failed_ || size < 0 || static_cast<std::size_t>(size) > rest_.size();
  if (failed_) return {};
  const std::string_view text = rest_.substr(0, static_cast<std::size_t>(size));
  rest_.remove_prefix(text.size());
  return text;
}

std::string EncodePart(const CloneData& data, int part) {
  std::string bytes;
  if (part == kHeadPart) {
    AppendNumber(bytes, data.model);
    AppendNumber(bytes, data.image.VersionA ? 1 : 0);
    AppendNumber(bytes, data.image.ShownBand == Band::kUhf ? 1 : 0);
  } else if (part == kSettingsLinesPart) {
    for (const std::string& line : data.image.SettingsLine) AppendText(bytes, line);
  } else if (part < kFirstDialPart) {
    const auto row = static_cast<std::size_t>(part - kFirstSettingPart);
    AppendNumber(bytes, data.settings.*Settings()[row].value);
  } else if (part < kFirstSpecialPart) {
    AppendText(bytes, data.dial[static_cast<std::size_t>(part - kFirstDialPart)]);
  } else {
    EncodeChannel(data.image, part, bytes);
  }
  return bytes;
}

bool DecodePart(std::string_view bytes, int part, CloneData& data) {
  if (part == kHeadPart) return DecodeHead(bytes, data);
  if (part == kSettingsLinesPart) return DecodeLines(bytes, data);
  if (part < kFirstDialPart) {
    return DecodeSetting(bytes, Settings()[static_cast<std::size_t>(part - kFirstSettingPart)],
                         data);
  }
  if (part < kFirstSpecialPart) {
    return DecodeDial(bytes, data.dial[static_cast<std::size_t>(part - kFirstDialPart)]);
  }
  return DecodeChannel(bytes, part, data.image);
}

}  // namespace q40
