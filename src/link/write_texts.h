// What a write that did not end well left in the radio, in words.
#pragma once

#include <string>
#include <vector>

#include "link/safe_write.h"

namespace q40 {

// Of a half, one sentence: "settings and channels 0 to 41 written, channel 42 perhaps (sent, but not
// acknowledged), 43 onwards as before".
std::string WrittenText(const SequenceReport& write, Half half);

// "settings area 1, channels 3 to 7 and 12"; `units` in the order of the wire.
std::string UnitsText(const std::vector<UnitData>& units);
// The same of a few units; the number of many: "57 blocks".
std::string FewUnitsText(const std::vector<UnitData>& units);

// How the user goes on after a write that did not end well. Empty: there is no such way.
struct WayOut {
  std::string restore;  // brings the backup back
  std::string go_on;    // writes the rest
  // The radio held a part when this write began, and `restore` is of before that: the ways are told
  // whatever this write did.
  bool has_a_part = false;
};
// Those that make sense: "To go on: ", "To bring the backup back: ".
std::vector<std::string> WayTexts(const WriteResult& result, const WayOut& ways);
// What a write did that did not end well, in sentences, and the ways out of it that make sense.
std::string AftermathText(const WriteResult& result, const WayOut& ways);

}  // namespace q40
