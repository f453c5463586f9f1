// Whether the edit dialog or the settings pages could make a value, asked about a whole value instead of
// key by key. An answer is empty when they could, otherwise it says why not: "is not in the band, ...".
//
// What a document holds already came from a radio or a file; nobody asks about that here.
#pragma once

#include <string>
#include <string_view>

#include "document/clone_image.h"
#include "radio/dial_text.h"

namespace q40 {

// The channel whose value is asked about.
struct EditedChannel {
  ChannelKind kind = ChannelKind::kMemory;
  Band band = Band::kVhf;  // of a special channel
  int row = 0;             // of the special set, 0..4
  int model = 0;
  int range = kVersionPlain;
  bool in_use = false;
  // Its frequency text, to whose MHz the dialog goes back; empty: there is none to go back to.
  std::string frequency{};

  [[nodiscard]] bool IsRepeaterRow() const {
    return kind == ChannelKind::kSpecial && row == kRptRow;
  }
};

// Whether the dialog can change a field of the repeater-access row. BCLO it can, although the row does
// not carry it.
bool ChangesInRepeaterRow(Field field);
// Whether a channel may be set to Split. The radio keeps it in VFO and CALL only, but a memory channel
// offers it as well.
constexpr bool OffersSplit(ChannelKind kind, int row) {
  return kind == ChannelKind::kMemory || row < kRptRow;
}

// The value of a field in `record`, which must be one that the field knows.
std::string WhyNotField(const ChannelRecord& record, Field field, const EditedChannel& channel);
// Memory `index`, 0..9.
std::string WhyNotDialText(std::string_view text, int index);

}  // namespace q40
