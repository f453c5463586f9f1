// What a check-up can find: the kinds with their words, and the places.
#pragma once

#include <compare>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "radio/models.h"

namespace q40 {

enum class FindingKind : unsigned char {
  kSettingLost,
  kToneBurstLost,
  kSettingRewritten,
  kNoStartChannel,
  kOutOfBand,
  kDuplicateFrequency,
  kFrequencyLost,
  kStepLost,
  kSplitLost,
  kOffsetLost,
  kValueLost,
  kNameLost,
  kNoName,
  kDuplicateName,
  kShiftLeavesBand,
  kPhBelowPl,
  kLimitWithoutFrequency,
  kLimitComesBack,
  kDialLost,
  kStoredValueDropped,
};

enum class Severity : unsigned char {
  kLoss,     // a value will change
  kWarning,  // the radio is told to do something that it hardly can
  kHint,     // perhaps a slip, perhaps intended
};

// Opening a file, or reading a radio, already drops what does not survive. So a document that comes
// from there cannot show every kind; what the file itself stores is CheckStored's business.
enum class Occurs : unsigned char {
  kAnywhere,
  kBeforeSaving,  // only in a document that was edited, or took a CSV list, since it was read
};

struct FindingKindRow {
  FindingKind kind;
  std::string_view code;  // stable, for scripts
  Severity severity;
  Occurs occurs;
  std::string_view text;  // a sentence with the values %1, %2, ...
};

const FindingKindRow& RowOf(FindingKind kind);

std::string_view SeverityText(Severity severity);  // "loss", "warning", "hint"

// Where something was found. Places compare in the order in which they are listed: settings as the
// pages show them, special channels of VHF and UHF, dialer memories, memory channels.
struct Place {
  enum class Where : unsigned char { kSetting, kSpecial, kDialer, kMemory };
  Where where = Where::kSetting;
  Band band = Band::kVhf;  // of a special channel; VHF elsewhere
  int index = 0;           // of Settings(), row of the special set, dialer memory, memory channel

  // clang-tidy takes the 0 of the comparisons for a pointer.
  auto operator<=>(const Place&) const = default;  // NOLINT(modernize-use-nullptr)
};

// "channel D3", "VHF PH", "auto dialer"; of a setting its group: "settings", "DTMF", "access".
std::string PlaceText(const Place& place);

struct Finding {
  FindingKind kind;
  Place place;
  std::string field;  // "Step", "Tone Burst (Hz)", "M1"
  std::string text;   // what the radio, or the file, will do with it. Without control characters.
};

using Findings = std::vector<Finding>;

// The sentence of a kind with its values. Values are taken as they are, made printable.
std::string FindingText(FindingKind kind, std::initializer_list<std::string> values);

}  // namespace q40
