// Which tone a channel gets, of all that a row says about tones.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lists/list_tones.h"
#include "lists/list_words.h"
#include "lists/meaning.h"

namespace q40 {

struct ToneRow {
  std::optional<ToneKind> kind;  // no value: the list has no such column
  ToneItem sent, heard, both;
  ToneItem dcs_sent, dcs_heard, dcs_both;
};

// The fields of the channel; a text that is empty leaves its field.
struct ToneChoice {
  std::string kind;  // "None", "Tone", "TSQ", "DCS"
  std::string tx_tone, rx_tone;
  std::string tx_dcs, rx_dcs;
  struct Unfit {
    Meaning column;
    std::string why;
  };
  std::vector<Unfit> unfit;
};

// The kind decides where there is one; without it: a CTCSS tone before a DCS code, one that is sent before
// one that is only heard, which no channel can have.
ToneChoice ChooseTone(const ToneRow& row);

}  // namespace q40
