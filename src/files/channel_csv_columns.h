// The items of a record of the channel list, in their order. Used by export and import alone.
#pragma once

#include <array>
#include <string_view>

#include "radio/channel_fields.h"
#include "radio/models.h"

namespace q40 {

inline constexpr std::string_view kModelItem = "RX-Q40";  // for every variant
inline constexpr std::string_view kMemoryBank = "MEMORY";
inline constexpr std::string_view kNoName = "No";  // of a special channel

constexpr std::string_view BankOf(Band band) { return band == Band::kVhf ? "VFO VHF" : "VFO UHF"; }

// Headings of the first three items.
inline constexpr std::array<std::string_view, 3> kFirstHeadings = {"MODEL", "BANK", "CHANNEL"};

// After them, the fields of a channel in the order of kCsvOrder.
inline constexpr std::size_t kRecordItems = kFirstHeadings.size() + kCsvOrder.size();

}  // namespace q40
