// Channel records as the radio stores them: 32 bytes, exchanged as 64 hexadecimal digits.
//
//   byte   content
//   0      0x80 in use; 0x08 skip (memory channels). Special: 0x80, but 0x00 for an absent PH or PL
//   1      shift: 0 None, 1 -Shift, 2 +Shift, 3 Split (special channels only)
//   2      tone mode: 0 None, 1 Tone, 3 TSQ, C DCS
//   3      step index
//   4-7    frequency, 8 BCD digits in units of 100 Hz, thousands of MHz first
//   8-11   shift frequency, same form
//   12 13  TxTone, RxTone index          22  clock shift        28  RPT
//   14 15  TxDCS, RxDCS index            24  battery save       29  ATT
//   16-21  name (memory channels)        25  power              30  bandwidth, 1 narrow
//   23 27  always 00                     26  BCLO               31  MID
//
// What does not survive: a step other than 12.5 kHz is read as 5 kHz unless its byte is 5 (then
// 12.5 kHz); a frequency loses its thousands digit; an offset from 10 to 999.9999 MHz loses all digits
// but the last before the point, while one whose thousands digit is not 0 keeps them; Split in a memory
// channel is read as None; names, see name_codes.h. All of this is how the program serves the radio.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "radio/special_set.h"

namespace q40 {

// Why a record cannot be decoded: the byte of the record whose index is outside its list.
struct CodecError {
  int byte = 0;
  int value = 0;
  // "byte 12 (TxTone) holds 0x63, which is outside its list"
  [[nodiscard]] std::string Message() const;
};

// Two lines of 32 digits: bytes 0-15 and bytes 16-31.
struct ChannelLines {
  std::array<char, kUnitDigits> digits{};
  [[nodiscard]] std::string_view Joined() const { return {digits.data(), digits.size()}; }
  [[nodiscard]] std::string_view First() const { return Joined().substr(0, kBlockDigits); }
  [[nodiscard]] std::string_view Second() const { return Joined().substr(kBlockDigits); }
};

// Fills a memory channel from 64 digits; missing digits and characters that are no digits read as 0.
// On an error it stays as it was. In a channel that is not in use an index outside its list reads as
// 0, so that an erased radio can be read.
[[nodiscard]] std::optional<CodecError> DecodeMemoryChannel(std::string_view hex64,
                                                            ChannelRecord& record, bool& in_use);

// Digits of a memory channel. No value when a number of the record is outside its list, which no
// reader, editor or import lets happen.
[[nodiscard]] std::optional<ChannelLines> EncodeMemoryChannel(const ChannelRecord& record,
                                                              bool in_use);

// The same for row k (0..4: VFO, CALL, RPT, PH, PL) of a special set. The tolerance for unused
// channels applies to a PH or PL whose frequency is 0.
[[nodiscard]] std::optional<CodecError> DecodeSpecialChannel(std::string_view hex64, int k,
                                                             SpecialSet& set);
[[nodiscard]] std::optional<ChannelLines> EncodeSpecialChannel(const SpecialSet& set,
                                                               PresentPair present, int k);

}  // namespace q40
