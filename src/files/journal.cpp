#include "files/journal.h"

#include <algorithm>

#include "document/defaults.h"
#include "document/document_parts.h"

namespace q40 {
namespace {

constexpr std::string_view kMark = "RX-Q40 journal 1\n";
constexpr std::size_t kChecksumBytes = 8;
constexpr unsigned kByteBits = 8;
constexpr unsigned kHalf = 32;

// FNV-1a, 64 bits: it has to find a torn or a spoiled file, not a forged one.
std::string Checksum(std::string_view bytes) {
  std::uint64_t sum = 14695981039346656037U;
  for (const char byte : bytes) sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211U;
  std::string text;
  for (std::size_t i = 0; i < kChecksumBytes; ++i, sum >>= kByteBits) {
    text += static_cast<char>(sum & 0xFFU);
  }
  return text;
}

// The lists show what these values index.
bool IsInRange(const CloneData& data) {
  return std::all_of(Settings().begin(), Settings().end(), [&](const Setting& setting) {
    const int value = data.settings.*setting.value;
    const int last =
        setting.items.empty() ? setting.top : static_cast<int>(setting.items.size()) - 1;
    return value >= 0 && value <= last;
  });
}

bool TakePart(PartReader& reader, int part, CloneData& data) {
  return part >= 0 && part < kPartCount && DecodePart(reader.Text(), part, data);
}

bool TakeStates(PartReader& reader, Journal& journal) {
  journal.now.data = FreshData();
  for (int part = 0; part < kPartCount; ++part) {
    if (!TakePart(reader, part, journal.now.data)) return false;
  }
  journal.saved.data = journal.now.data;
  for (int count = reader.Number(); count > 0; --count) {
    if (!TakePart(reader, reader.Number(), journal.saved.data)) return false;
  }
  for (CloneData* data : {&journal.now.data, &journal.saved.data}) {
    ShowBand(data->image, data->image.ShownBand);
  }
  return reader.IsAtEnd() && IsInRange(journal.now.data) && IsInRange(journal.saved.data);
}

}  // namespace

std::string JournalText(const Journal& journal) {
  std::string text(kMark);
  const auto time = static_cast<std::uint64_t>(journal.time);
  AppendNumber(text, static_cast<std::int32_t>(time >> kHalf));
  AppendNumber(text, static_cast<std::int32_t>(time));
  AppendText(text, journal.now.path);
  AppendText(text, journal.saved.path);
  std::string differing;
  int count = 0;
  for (int part = 0; part < kPartCount; ++part) {
    const std::string now = EncodePart(journal.now.data, part);
    const std::string saved = EncodePart(journal.saved.data, part);
    AppendText(text, now);
    if (now == saved) continue;
    AppendNumber(differing, part);
    AppendText(differing, saved);
    ++count;
  }
  AppendNumber(text, count);
  text += differing;
  return text + Checksum(text);
}

std::optional<Journal> JournalFrom(std::string_view text) {
  if (text.size() < kMark.size() + kChecksumBytes || !text.starts_with(kMark)) return std::nullopt;
  const std::string_view summed = text.substr(0, text.size() - kChecksumBytes);
  if (Checksum(summed) != text.substr(summed.size())) return std::nullopt;
  PartReader reader(summed.substr(kMark.size()));
  Journal journal;
  const auto high = static_cast<std::uint32_t>(reader.Number());
  const auto low = static_cast<std::uint32_t>(reader.Number());
  journal.time = static_cast<std::int64_t>(std::uint64_t{high} << kHalf | low);
  journal.now.path = reader.Text();
  journal.saved.path = reader.Text();
  if (!TakeStates(reader, journal)) return std::nullopt;
  return journal;
}

}  // namespace q40
