// Channel records: decode, encode, decode again. One byte says which channel (0..9 a special one,
// then the memory channels), the rest are the digits.
#include "base/hex.h"
#include "document/clone_image.h"
#include "target.h"

namespace q40::fuzz {
namespace {

struct Channel {
  ChannelKind kind = ChannelKind::kMemory;
  Band band = Band::kVhf;
  int index = 0;

  [[nodiscard]] std::optional<CodecError> Decode(std::string_view digits, CloneImage& image) const {
    if (kind == ChannelKind::kMemory) return DecodeMemoryChannel(digits, index, image);
    SpecialSet& set = SpecialStore(image, band);
    const auto error = DecodeSpecialChannel(digits, index, set);
    if (!error) SetStoredPresent(image, band, PresentByFrequency(set));
    return error;
  }
  [[nodiscard]] std::string Encode(const CloneImage& image) const {
    const auto lines =
        kind == ChannelKind::kMemory
            ? EncodeMemoryChannel(image, index)
            : EncodeSpecialChannel(SpecialStore(image, band), StoredPresent(image, band), index);
    Check(lines.has_value(), "what was decoded can be encoded");
    return std::string(lines->Joined());
  }
  [[nodiscard]] CloneImage Decoded(std::string_view digits) const {
    CloneImage image;
    Check(!Decode(digits, image), "what was encoded can be decoded");
    return image;
  }
  [[nodiscard]] const ChannelRecord& Record(const CloneImage& image) const {
    const auto row = static_cast<std::size_t>(index);
    return kind == ChannelKind::kMemory ? image.MemoryTable[row] : SpecialStore(image, band)[row];
  }
};

Channel ChannelOf(int number) {
  if (number < kSpecialChannelCount) return {ChannelKind::kSpecial, Band::kVhf, number};
  number -= kSpecialChannelCount;
  if (number < kSpecialChannelCount) return {ChannelKind::kSpecial, Band::kUhf, number};
  return {ChannelKind::kMemory, Band::kVhf, (number - kSpecialChannelCount) % kMemoryChannelCount};
}

constexpr auto kOffsetColumn = static_cast<std::size_t>(Field::kShiftFrequency);  // in both kinds

Units100Hz OffsetReadAgain(Units100Hz offset) {
  return offset < 1000 * kUnitsPerMhz ? offset % (10 * kUnitsPerMhz) : offset;
}

}  // namespace

void Run(Input input) {
  const Channel channel = ChannelOf(input.Byte());
  CloneImage first;
  if (const auto error = channel.Decode(input.Rest(), first)) {
    Check(first == CloneImage(), "a record that cannot be decoded changes nothing");
    Check(error->byte >= 0 && error->byte < kUnitSize && !error->Message().empty(),
          "an error names a byte of the record");
    return;
  }
  const std::string once = channel.Encode(first);
  Check(std::all_of(once.begin(), once.end(), IsHexDigit), "a record is 64 digits");
  const CloneImage second = channel.Decoded(once);
  // What the codec narrows (step, Split, tone mode) it narrows when it reads, so the numbers survive.
  // All but one: an offset in digits that are no decimal ones ("453A.443E") may be read as 10 MHz or
  // more, and loses its leading digits when it is read again.
  auto expected = channel.Record(first).value;
  std::int32_t& offset = expected[kOffsetColumn];
  const bool same_offset = offset == OffsetReadAgain(offset);
  offset = OffsetReadAgain(offset);
  Check(channel.Record(second).value == expected, "the numbers of a channel come back");
  Check(first.ChannelInUse == second.ChannelInUse, "in use stays in use");
  // A ")" of a name is written as 5C; that comes back as "(", which is written as 5c.
  const std::string twice = channel.Encode(second);
  Check(!same_offset || UpperCase(once) == UpperCase(twice),
        "a record that was encoded is encoded alike again");
  const CloneImage third = channel.Decoded(twice);
  Check(third == second, "a channel that was encoded and decoded stays as it is");
  Check(channel.Encode(third) == twice, "a record that was encoded twice stays as it is");
}

}  // namespace q40::fuzz
