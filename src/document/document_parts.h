// A document as a row of small parts, each a string of bytes: what a history compares and keeps, and
// what a journal stores. Exact: texts, numbers, marks, and what cleared channels still hold.
//
//   head            model, version, shown band
//   settings lines  as the radio or the file gave them
//   settings        one part each, in the order of Settings()
//   dialer          M1 to M9, St
//   special         VHF VFO to PL, UHF VFO to PL: record and mark
//   memory          0 to 209: record and mark; 210: the template
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "document/clone_data.h"

namespace q40 {

inline constexpr int kHeadPart = 0;
inline constexpr int kSettingsLinesPart = 1;
inline constexpr int kFirstSettingPart = 2;
// Each member of SettingsValues is a setting.
inline constexpr int kFirstDialPart =
    kFirstSettingPart + static_cast<int>(sizeof(SettingsValues) / sizeof(int));
inline constexpr int kFirstSpecialPart = kFirstDialPart + kDialCount;
inline constexpr int kFirstMemoryPart = kFirstSpecialPart + 2 * kSpecialChannelCount;
inline constexpr int kPartCount = kFirstMemoryPart + kMemoryRows;

constexpr int SpecialPart(Band band, int k) {
  return kFirstSpecialPart + (band == Band::kUhf ? kSpecialChannelCount : 0) + k;
}

// part: 0..kPartCount - 1.
std::string EncodePart(const CloneData& data, int part);
// Takes a part into `data`; its settings lines and values stay as independent as they are. False: these
// are no such bytes, and the part is as it was. The shown special channels follow when all parts are
// in: ShowBand.
[[nodiscard]] bool DecodePart(std::string_view bytes, int part, CloneData& data);

// Numbers and texts as bytes, for those who store them beside parts.
void AppendNumber(std::string& bytes, std::int32_t number);
void AppendText(std::string& bytes, std::string_view text);
// Takes them back. Once there is none where one should be, every further one is 0 or empty.
class PartReader {
 public:
  explicit PartReader(std::string_view bytes) : rest_(bytes) {}
  std::int32_t Number();
  std::string_view Text();
  // All was good, and all was taken.
  [[nodiscard]] bool IsAtEnd() const { return !failed_ && rest_.empty(); }

 private:
  std::string_view rest_;
  bool failed_ = false;
};

}  // namespace q40
