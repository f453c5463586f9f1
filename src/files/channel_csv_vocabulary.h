// What the words and numbers of a channel list mean.
#pragma once

#include <string>
#include <string_view>

#include "radio/channel_record.h"

namespace q40 {

struct ItemReading {
  int code = 0;
  std::string text;        // of the channel's cell, as the edit dialog writes it
  bool as_written = true;  // the code means what the item says
};

// What a channel that holds `before` in the field gets for an item. An unknown word takes the
// fallback of its column.
//
// "As written" is whatever means the same: "none" for None, 67 for 67.0Hz, 145,5000 for 145.5000.
// So is an empty item that changes nothing; but a frequency is not empty.
ItemReading ReadItem(Field field, const std::string& item, int before);

// Whether an item under the heading of a field that special channels do not have says so, or
// nothing.
bool SaysNothing(Field field, std::string_view item);

}  // namespace q40
