// Every value of a clone file by the one name that it has in JSON: a place ("Settings", "Memory D3") and
// a name in it ("Volume", "Frequency"). The places and names are those of `diff` and `lint`.
#pragma once

#include <string>
#include <vector>

#include "document/document_cells.h"
#include "radio/channel_fields.h"

namespace q40 {

enum class ItemKind : unsigned char {
  kModel,
  kVersion,
  kSetting,      // index of Settings()
  kCarriedByte,  // of the settings; no control shows it
  kOtherBits,    // of a byte that a control shares
  kOddByte,      // one that a control or the program makes, where the file holds something else
  kDialText,     // index 0..9
  kOddDialText,  // one that nobody can type
  kInUse,        // of a channel, as all that follow
  kField,
  kStoredData,  // the bytes as they are, where the fields do not say them
};

struct CloneItem {
  ItemKind kind;
  std::string place;
  std::string name;
  Unit unit = Unit::Settings(0);
  std::size_t index = 0;  // of a setting or dialer memory; byte of its unit
  Field field = Field::kFrequency;
};

// All of them, in the order in which they are printed; those of a place need not follow each other.
const std::vector<CloneItem>& CloneItems();

}  // namespace q40
