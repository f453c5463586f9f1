// The items of a record of the channel list, in their order. Used by export and import alone.
#pragma once

#include <array>
#include <string_view>

#include "app/tables/models.h"
#include "image/channel_record.h"

namespace q40 {

inline constexpr std::string_view kModelItem = "RX-Q40";  // for every variant
inline constexpr std::string_view kMemoryBank = "MEMORY";
inline constexpr std::string_view kNoName = "No";  // of a special channel

constexpr std::string_view BankOf(Band band) { return band == Band::kVhf ? "VFO VHF" : "VFO UHF"; }

// Headings of the three items in front.
inline constexpr std::array<std::string_view, 3> kFirstHeadings = {"MODEL", "BANK", "CHANNEL"};

struct CsvColumn {
  std::string_view heading;
  Field field;
};

// Items 4 to 22.
inline constexpr std::array kCsvColumns = {
    CsvColumn{"FREQUENCY", Field::kFrequency},
    CsvColumn{"STEP", Field::kStep},
    CsvColumn{"TONE", Field::kTone},
    CsvColumn{"TXTONE", Field::kTxTone},
    CsvColumn{"RXTONE", Field::kRxTone},
    CsvColumn{"TXDCS", Field::kTxDcs},
    CsvColumn{"RXDCS", Field::kRxDcs},
    CsvColumn{"SHIFT", Field::kShift},
    CsvColumn{"SHIFT FREQUENCY", Field::kShiftFrequency},
    CsvColumn{"Repeat", Field::kRpt},
    CsvColumn{"Power", Field::kPower},
    CsvColumn{"MID", Field::kMid},
    CsvColumn{"ATT", Field::kAtt},
    CsvColumn{"BS", Field::kBatterySave},
    CsvColumn{"Clock", Field::kClock},
    CsvColumn{"BCLO", Field::kBclo},
    CsvColumn{"Bandwidth", Field::kBandwidth},
    CsvColumn{"Name", Field::kName},
    CsvColumn{"Skip", Field::kSkip},
};
inline constexpr std::size_t kRecordItems = kFirstHeadings.size() + kCsvColumns.size();

}  // namespace q40
