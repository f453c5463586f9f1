// One channel, decoded: a row of parallel cells, each a display text and a number.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/decimal.h"

namespace q40 {

// The cells of a memory channel, in column order. A special channel (VFO, CALL, RPT, PH, PL) has no
// name and no skip flag; see ColumnOf.
enum class Field : std::uint8_t {
  kFrequency,       // number: units of 100 Hz; a skipped memory channel's text has "*" in front
  kStep,            // index of the step list
  kTone,            // 0 None, 1 Tone, 3 TSQ, 12 DCS
  kTxTone,          // index of the CTCSS list
  kRxTone,          //
  kTxDcs,           // index of the DCS list
  kShift,           // 0 None, 1 -Shift, 2 +Shift, 3 Split
  kShiftFrequency,  // number: units of 100 Hz
  kPower,           // 0 Lo, 1 Mid, 2 Hi
  kMid,             // 0..10
  kAtt,             // 0 Off, 1 10dB, 2 20dB
  kBatterySave,     // 0 Off, 1 BS-1, 2 BS-2
  kClock,           // 0 Off, 1 On
  kBclo,            // 0 Off, 1 On
  kBandwidth,       // 0 Normal, 1 Narrow
  kName,            // text of up to 6 characters; number: 1 when not empty
  kSkip,            // 0, 1; never a text
  kRpt,             // 0 Off, 1 On
  kRxDcs,           // index of the DCS list
};
inline constexpr int kFieldCount = 19;

enum class ChannelKind : std::uint8_t { kMemory, kSpecial };

inline constexpr int kMemoryColumns = 19;
inline constexpr int kSpecialColumns = 17;
inline constexpr std::size_t kNameLength = 6;

// Whether a kind of channel has a field: a special channel has neither name nor skip flag.
constexpr bool HasField(ChannelKind kind, Field field) {
  return kind == ChannelKind::kMemory || (field != Field::kName && field != Field::kSkip);
}

// Column of a field: its own number in a memory channel. A special channel stores RPT in column 15
// and RxDCS in column 16; the fields that it does not have stand for the cells behind, which nobody
// uses.
constexpr int ColumnOf(ChannelKind kind, Field field) {
  const int column = static_cast<int>(field);
  if (kind == ChannelKind::kMemory || field < Field::kName) return column;
  return HasField(kind, field) ? column - 2 : column + 2;
}

// The field in a column; the inverse of ColumnOf.
constexpr Field FieldIn(ChannelKind kind, int column) {
  if (kind == ChannelKind::kMemory || column < static_cast<int>(Field::kName)) {
    return static_cast<Field>(column);
  }
  return static_cast<Field>(column < kSpecialColumns ? column + 2 : column - 2);
}

// A plain value: 19 cells, of which a special channel uses the first 17. The empty record (all
// texts "", all numbers 0) is the state of a channel that was cleared.
struct ChannelRecord {
  std::array<std::string, kMemoryColumns> cellText;
  std::array<std::int32_t, kMemoryColumns> value{};

  // Cell of a field; the field must exist in the kind.
  [[nodiscard]] const std::string& Text(ChannelKind kind, Field field) const {
    return cellText[Index(kind, field)];
  }
  [[nodiscard]] std::int32_t Number(ChannelKind kind, Field field) const {
    return value[Index(kind, field)];
  }
  void Set(ChannelKind kind, Field field, std::int32_t number, std::string_view text) {
    value[Index(kind, field)] = number;
    cellText[Index(kind, field)] = text;
  }

  [[nodiscard]] Units100Hz Frequency() const { return value[0]; }  // column 0 in both kinds

  bool operator==(const ChannelRecord&) const = default;

 private:
  static std::size_t Index(ChannelKind kind, Field field) {
    return static_cast<std::size_t>(ColumnOf(kind, field));
  }
};

}  // namespace q40
