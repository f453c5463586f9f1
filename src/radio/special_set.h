// The special channels of one band: VFO, CALL, RPT, PH and PL.
#pragma once

#include <array>

#include "radio/channel_record.h"
#include "radio/memory_map.h"

namespace q40 {

using SpecialSet = std::array<ChannelRecord, kSpecialChannelCount>;
// Present flags of PH and PL, in this order. VFO, CALL and RPT are always there.
using PresentPair = std::array<bool, 2>;

// Presence as a read or an opened file tells it: PH and PL are there when their frequency is not 0.
PresentPair PresentByFrequency(const SpecialSet& set);

// Whether special row k counts as present: always for VFO, CALL and RPT; PH and PL need their flag
// and a frequency.
bool EffectivelyPresent(const SpecialSet& set, PresentPair present, int k);

}  // namespace q40
