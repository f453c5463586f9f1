// Whether the edit dialog or the settings pages could make a value, asked about a whole value instead of
// key by key. Who asks says in his own words why not.
//
// What a document holds already came from a radio or a file: the dialog leaves it as it is.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "document/channel_cells.h"
#include "radio/dial_text.h"

namespace q40 {

// The channel whose value is asked about.
struct EditedChannel {
  ChannelPlace place;
  int model = 0;  // 0..3
  int range = kVersionPlain;
  bool in_use = false;
  // What the dialog opens with; null: nothing, every value is asked about. Not owned.
  const ChannelRecord* base = nullptr;
};
// An empty memory channel opens with the template. It looks into the image.
EditedChannel EditedChannelOf(const CloneImage& image, int model, const ChannelPlace& place);

// The repeater-access row carries only some fields.
constexpr bool IsRepeaterRow(const ChannelPlace& place) {
  return place.kind == ChannelKind::kSpecial && place.index == kRptRow;
}
// Whether the dialog can change a field of the repeater-access row. BCLO it can, although the row does
// not carry it.
bool ChangesInRepeaterRow(Field field);
// Whether a channel may be set to Split. The radio keeps it in VFO and CALL only, but a memory channel
// offers it as well.
constexpr bool OffersSplit(ChannelKind kind, int row) {
  return kind == ChannelKind::kMemory || row < kRptRow;
}

// What the dialog has against a value.
struct Objection {
  enum class To : std::uint8_t {
    kNothing,
    kRow,        // the repeater-access row cannot change the field
    kMhz,        // outside the bands
    kFraction,   // no multiple of 5 or 12.5 kHz; detail: the nearest below, "145.7000"
    kOffset,     // 100 MHz and more
    kSplit,      // not offered to this channel
    kCharacter,  // of a name; detail: the first one, quoted
    kLength,     // of a name
  };
  To to = To::kNothing;
  std::string detail{};
};
// The number of a field that the channel has, one that a list knows; of a name the text, in capitals.
Objection ObjectionTo(const EditedChannel& channel, Field field, int number, std::string_view name);

// As the end of a sentence that begins with the value in `record`: "is longer than 6 characters". Empty:
// the dialog could make it.
std::string WhyNotField(const ChannelRecord& record, Field field, const EditedChannel& channel);
// The same of dialer memory `index`, 0..9.
std::string WhyNotDialText(std::string_view text, int index);

// The ranges between which the dialog lets the channel choose: "(136.000-173.995MHz)", each behind the
// name of its band where `named`. Empty for a model without any.
std::string BandTexts(const EditedChannel& channel, bool named);

}  // namespace q40
