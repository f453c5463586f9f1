#include "checkup/finding.h"

#include <cassert>

#include "base/digits.h"
#include "base/plain_text.h"
#include "radio/memory_map.h"
#include "radio/settings_table.h"

namespace q40 {
namespace {

using enum FindingKind;
using enum Severity;
using enum Occurs;

constexpr FindingKindRow kKinds[] = {
    {kSettingLost, "setting-lost", kLoss, kBeforeSaving,
     R"(The radio and the file store "%1", but it is read back as "%2".)"},
    {kToneBurstLost, "tone-burst-lost", kLoss, kBeforeSaving,
     "The radio and the file store \"%1\", but it is read back as \"%2\": the radio knows only the "
     "first four."},
    {kSettingRewritten, "setting-rewritten", kLoss, kAnywhere,
     "The byte 0x%1 holds %2, which is shown as \"%3\"; the next save or write makes it %4."},
    {kNoStartChannel, "no-start-channel", kWarning, kAnywhere,
     "No memory channel is in use: the radio is told to start with number %1, which it does not "
     "have."},
    {kOutOfBand, "out-of-band", kWarning, kAnywhere,
     "%1 MHz is stored as it is, but the %2 covers only %3."},
    {kDuplicateFrequency, "duplicate-frequency", kHint, kAnywhere,
     "%1 MHz is also the frequency of %2; the radio keeps both."},
    {kFrequencyLost, "frequency-lost", kLoss, kBeforeSaving,
     "The radio and the file store %1 MHz, but it is read back as %2 MHz: the thousands of MHz are "
     "not read."},
    {kStepLost, "step-lost", kLoss, kBeforeSaving,
     "The radio and the file store %1, but it is read back as %2: a channel is read with 5KHz or "
     "12.5KHz."},
    {kSplitLost, "split-lost", kLoss, kBeforeSaving,
     R"(The radio and the file store "%1", but a memory channel is read back with "%2".)"},
    {kOffsetLost, "offset-lost", kLoss, kBeforeSaving,
     "The radio and the file store %1 MHz, but it is read back as %2 MHz: of an offset of 10 MHz "
     "or more the leading digits are not read."},
    {kValueLost, "value-lost", kLoss, kBeforeSaving,
     R"(The radio and the file store "%1", but it is read back as "%2".)"},
    // From a file or a radio for the ")" alone, which is read and never written.
    {kNameLost, "name-lost", kLoss, kAnywhere, R"("%1" is read back as "%2": %3.)"},
    {kNoName, "no-name", kHint, kAnywhere, "The channel is stored without a name."},
    {kDuplicateName, "duplicate-name", kHint, kAnywhere,
     "The radio stores the name \"%1\" here and in %2."},
    {kShiftLeavesBand, "shift-leaves-band", kWarning, kAnywhere,
     "With %1 by %2 MHz the radio is to transmit on %3 MHz, outside its %4 band."},
    {kPhBelowPl, "ph-below-pl", kWarning, kAnywhere,
     "PH, %1 MHz, lies below PL, %2 MHz: between them the radio has nothing to scan."},
    {kLimitWithoutFrequency, "limit-without-frequency", kLoss, kBeforeSaving,
     "The radio and the file store %1 as absent: a frequency of 0 stands for that."},
    {kLimitComesBack, "limit-comes-back", kLoss, kBeforeSaving,
     "The radio gets %1 as absent, but %2 MHz stays stored: read back, from the file too, %1 is "
     "there. \"Clear %1\" empties it."},
    {kDialLost, "dial-lost", kLoss, kAnywhere,
     R"(The file keeps "%1", the radio gets "%2": up to 16 characters of 0-9, A-D, * and #.)"},
    {kStoredValueDropped, "stored-value-dropped", kLoss, kAnywhere,
     "The file stores %1, but it is opened as %2, and the next save or write makes it that."},
};

constexpr bool InOrder() {
  for (std::size_t i = 0; i < std::size(kKinds); ++i) {
    if (static_cast<std::size_t>(kKinds[i].kind) != i) return false;
  }
  return static_cast<std::size_t>(kStoredValueDropped) + 1 == std::size(kKinds);
}
static_assert(InOrder(), "a kind is found by its number");

std::string_view GroupText(SettingsGroup group) {
  switch (group) {
    case SettingsGroup::kDtmf: return "DTMF";
    case SettingsGroup::kAccess: return "access";
    default: return "settings";
  }
}

}  // namespace

const FindingKindRow& RowOf(FindingKind kind) { return kKinds[static_cast<std::size_t>(kind)]; }

std::string_view SeverityText(Severity severity) {
  switch (severity) {
    case kLoss: return "loss";
    case kWarning: return "warning";
    default: return "hint";
  }
}

std::string PlaceText(const Place& place) {
  const auto index = static_cast<std::size_t>(place.index);
  switch (place.where) {
    case Place::Where::kSetting: return std::string(GroupText(Settings()[index].group));
    case Place::Where::kSpecial:
      return std::string(BandName(place.band)) + ' ' + std::string(kSpecialRowTitles[index]);
    case Place::Where::kDialer: return "auto dialer";
    default: return "channel " + ChannelTitle(place.index);
  }
}

// In one pass: a "%1" inside a value is no place for another one.
std::string FindingText(FindingKind kind, std::initializer_list<std::string> values) {
  std::string_view rest = RowOf(kind).text;
  std::string text;
  for (auto at = rest.find('%'); at != std::string_view::npos; at = rest.find('%')) {
    const auto value = static_cast<std::size_t>(rest[at + 1] - '1');
    assert(IsDigit(rest[at + 1]) && value < values.size());
    text += rest.substr(0, at);
    text += Printable(values.begin()[value]);
    rest.remove_prefix(at + 2);
  }
  return text += rest;
}

}  // namespace q40
