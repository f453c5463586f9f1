// What a file or a radio stores of a channel and no document can hold.
#include <algorithm>

#include "checkup/checkup.h"
#include "image/channel_codec.h"
#include "image/decimal.h"
#include "image/defaults.h"
#include "image/digits.h"
#include "image/hex.h"
#include "image/vocabulary.h"

namespace q40 {
namespace {

constexpr std::size_t kOffsetByte = 8;
constexpr std::size_t kOffsetBytes = 4;

std::string Bytes(std::string_view digits, std::size_t byte, std::size_t count) {
  return UpperCase(digits.substr(2 * byte, 2 * count));
}

// The fields whose bytes cannot all be kept, with the words for such a byte.
struct StoredRow {
  Field field;
  std::size_t byte;
  std::size_t count;
};
constexpr StoredRow kRows[] = {{Field::kShift, 1, 1},
                               {Field::kStep, 3, 1},
                               {Field::kShiftFrequency, kOffsetByte, kOffsetBytes}};

std::string Words(Field field, const std::string& digits) {
  if (field == Field::kShiftFrequency) {
    if (std::all_of(digits.begin(), digits.end(), IsDigit)) {
      return OffsetText(static_cast<Units100Hz>(std::stol(digits))) + " MHz";
    }
  } else {
    const std::string_view word = CodeText(field, HexByteValue(digits, 0));
    if (!word.empty()) return '"' + std::string(word) + '"';
  }
  return "0x" + digits;
}

struct Kept {
  Place place;
  bool in_use = false;
  std::string digits;  // that the next save gives; empty when the unit cannot be decoded
};

Kept KeptOfMemory(const Unit& unit, int n) {
  Kept kept{{Place::Where::kMemory, Band::kVhf, n}, false, {}};
  CloneDocument document = FreshDocument();
  if (LoadUnit(unit, document)) return kept;
  kept.in_use = document.image.ChannelInUse[static_cast<std::size_t>(n)];
  if (const auto lines = EncodeMemoryChannel(document.image, n)) kept.digits = lines->Joined();
  return kept;
}

Kept KeptOfSpecial(const Unit& unit, Band band, int k) {
  Kept kept{{Place::Where::kSpecial, band, k}, false, {}};
  CloneDocument document = FreshDocument();
  if (LoadUnit(unit, document)) return kept;
  const SpecialSet& set = SpecialStore(document.image, band);
  const PresentPair present = StoredPresent(document.image, band);
  kept.in_use = k != kRptRow && EffectivelyPresent(set, present, k);
  if (const auto lines = EncodeSpecialChannel(set, present, k)) kept.digits = lines->Joined();
  return kept;
}

void Compare(const Unit& unit, const Kept& kept, Findings& findings) {
  if (!kept.in_use || kept.digits.empty()) return;
  for (const StoredRow& row : kRows) {
    const std::string stored = Bytes(unit.digits, row.byte, row.count);
    const std::string opened = Bytes(kept.digits, row.byte, row.count);
    if (stored == opened) continue;
    findings.push_back({FindingKind::kStoredValueDropped, kept.place,
                        std::string(FieldName(row.field)),
                        FindingText(FindingKind::kStoredValueDropped,
                                    {Words(row.field, stored), Words(row.field, opened)})});
  }
}

}  // namespace

Findings CheckStored(std::span<const Unit> units) {
  Findings findings;
  for (const Unit& unit : units) {
    for (const Band band : kBands) {
      for (int k = 0; k < kSpecialChannelCount; ++k) {
        if (unit.address != SpecialChannelAddress(band, k)) continue;
        Compare(unit, KeptOfSpecial(unit, band, k), findings);
      }
    }
    const int offset = unit.address - MemoryChannelAddress(0);
    if (offset >= 0 && offset < kMemoryChannelCount * kUnitSize) {
      Compare(unit, KeptOfMemory(unit, offset / kUnitSize), findings);
    }
  }
  return findings;
}

}  // namespace q40
