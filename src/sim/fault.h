// Things that go wrong with a radio, for the simulated one to do on purpose.
//
//   KIND[=VALUE][@WHERE][+]
//
//   @0200           the exchange that names this address, a multiple of 16
//   @WHO @RXQ40 @END  the one with this command
//   @#7             the seventh exchange since the start; @#1 when nothing is named
//   +               from that exchange on; otherwise once
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "radio/memory_map.h"

namespace q40 {

enum class FaultKind : unsigned char {
  kSilence,        // silence: nothing comes back
  kEchoOnly,       // echo-only: the echo comes, the answer does not
  kNoEcho,         // no-echo: the answer comes, the echo does not
  kBadEcho,        // bad-echo: one character of the echo is another
  kShort,          // short: an answer with one character too few
  kLong,           // long: one too many
  kNonHex,         // non-hex=N: "ZZ" in byte N of the data (0)
  kNotGood,        // ng: "NG" instead of "OK"
  kPieces,         // pieces=MS: the answer in pieces of ten characters, MS apart (50)
  kLate,           // late=MS: the answer comes MS later (2500)
  kStray,          // stray=N: N foreign characters before the answer (3)
  kOtherAddress,   // other-address: the data of the next unit
  kNotStored,      // not-stored: a write is acknowledged but not kept
  kHangUp,         // hang-up=MS: the line is closed; once: it is back after MS (1000)
  kWrongIdentity,  // wrong-identity=TEXT: TEXT instead of the identity ("RXQ41-0A-")
};

struct Fault {
  FaultKind kind = FaultKind::kSilence;
  int number = 0;                      // MS or N
  std::string text;                    // TEXT
  std::optional<std::string> command;  // "0200", "WHO", "RXQ40", "END"
  int exchange = 1;                    // when there is no command
  bool stays = false;
  bool happened = false;
};

// The fault that a text describes, or no value and the reason in `why`.
std::optional<Fault> ParseFault(std::string_view text, std::string& why);

// One line for each kind, for --help.
std::string FaultHelp();

// Whether the fault happens in this exchange (counted from 1) with this command. Remembers that it
// did.
bool Happens(Fault& fault, int exchange, std::string_view command);

}  // namespace q40
