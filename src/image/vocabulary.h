// The words that stand for coded numbers in the cells of a channel. One list a field, used by the
// codec, the CSV file and the edit dialog.
#pragma once

#include <span>
#include <string_view>

#include "image/channel_record.h"

namespace q40 {

struct Word {
  int number;
  std::string_view text;
};

// Words of a field in the order of their numbers; the first entry (number 0) is the word for every
// number that is not listed. Empty for fields without words (frequencies, indexes, name, skip).
std::span<const Word> WordsOf(Field field);

// Entries of the value list that a field indexes (step, tones, DCS codes, MID); empty for others.
std::span<const std::string_view> IndexListOf(Field field);

// Text of a coded number: the word, or the entry of the value list. An index outside its list gives
// an empty text.
std::string_view CodeText(Field field, int number);

// The number itself if the field knows it as a word, otherwise 0.
int KnownCode(Field field, int number);

// Number of the word `text`, otherwise 0.
int CodeOfWord(Field field, std::string_view text);

// What a field is called where people read it: "Frequency", "TxTone", "BS".
std::string_view FieldName(Field field);

}  // namespace q40
