#include "link/sequences.h"

#include "image/channel_codec.h"
#include "image/defaults.h"
#include "image/plain_text.h"
#include "image/settings_codec.h"

namespace q40 {
namespace {

// Whole replies, echo included.
constexpr std::size_t kIdentifyReply = 19;
constexpr std::size_t kAnnounceReply = 11;
constexpr std::size_t kReadReply = 77;
constexpr std::size_t kWriteReply = 79;
constexpr std::string_view kAcknowledged = "OK\r\n";

// Places in the replies, counted from 0. The characters around digit and letter do not matter.
constexpr std::size_t kModelTextAt = 8;
constexpr std::string_view kModelText = "RXQ40";
constexpr std::size_t kVariantAt = 14;
constexpr std::size_t kVersionAt = 15;
constexpr std::size_t kDataAt = 11;

constexpr int kSettingsUnits = kSettingsUnitCount + 2 * kSpecialChannelCount + kDialUnitCount;

// The radio gets these frequencies in its RPT rows, whatever the rows hold. Intended.
constexpr Units100Hz RepeaterFrequency(Band band) {
  return (band == Band::kVhf ? 145 : 445) * kUnitsPerMhz;
}

SequenceReport Cancelled() {
  SequenceReport report;
  report.outcome = Outcome::kCancelled;
  report.why = "cancelled";
  return report;
}

}  // namespace

// ---- how a sequence begins, goes on and ends

void Sequences::Begin(Sequence sequence, int units) {
  report_ = {};
  progress_ = {};
  progress_.sequence = sequence;
  progress_.total = units;
  StartDeadline();
  host_.Begin(sequence);
}

void Sequences::StartDeadline() {
  constexpr int kBesideUnits = 3;  // announcement, identification, End
  link_.StartDeadline(progress_.total + kBesideUnits);
}

SequenceReport Sequences::Finish(bool done) {
  if (done) report_.outcome = Outcome::kDone;
  link_.StopDeadline();
  host_.End(report_);
  return report_;
}

bool Sequences::Fail(Outcome outcome, std::string why) {
  report_.outcome = outcome;
  report_.why = std::move(why);
  return false;
}

// A reply that is not what it must be.
bool Sequences::FailReply(const std::string& reply, std::string_view why) {
  if (link_.StopRequested()) return Fail(Outcome::kInterrupted, "stopped");
  if (reply == kPortFailed) {
    report_.remedy = link_.port().Problem().remedy;
    return Fail(Outcome::kPortError, link_.port().Problem().what);
  }
  if (link_.DeadlineIsOver()) {
    return Fail(Outcome::kCommunicationError, "the whole command took longer than it may");
  }
  if (reply == kNoReply) {
    return Fail(Outcome::kCommunicationError, "no complete answer within 2 s");
  }
  return Fail(Outcome::kCommunicationError, std::string(why));
}

void Sequences::NextUnit(std::string where) {
  report_.where = where;
  progress_.where = std::move(where);
  host_.ShowProgress(progress_);
  ++progress_.done;
}

// ---- exchanges

// Only here: a port that is lost later stays closed until the next sequence.
bool Sequences::OpenPort() { return link_.OpenPort() || FailReply(std::string(kPortFailed), {}); }

bool Sequences::IdentifyStep(IdentifyFor purpose) {
  report_.where = "identification";
  const std::string reply = link_.TxCommand(kIdentifyCommand);
  if (reply.size() != kIdentifyReply) {
    return FailReply(reply, "an answer of " + std::to_string(reply.size()) +
                                " characters instead of " + std::to_string(kIdentifyReply));
  }
  if (reply.compare(kModelTextAt, kModelText.size(), kModelText) != 0) {
    return Fail(Outcome::kCommunicationError, "the answer does not come from an RX-Q40 radio");
  }
  const char variant = reply[kVariantAt];
  if (variant < '0' || variant > '2') {
    document_.image.VersionA = false;  // also by a radio that nobody knows
    return Fail(Outcome::kCommunicationError,
                "the radio reports the unknown variant " + Quoted(std::string(1, variant)));
  }
  report_.radio_model = variant - '0';
  report_.version_letter = reply[kVersionAt];
  progress_.radio_model = report_.radio_model;
  progress_.version_letter = report_.version_letter;
  // Writing clears VersionA and never sets it, and leaves the choice of the model to the user.
  if (purpose == IdentifyFor::kWriting) {
    document_.image.VersionA = false;
    return true;
  }
  // Until then VersionA is that of the old data, which the host may save.
  if (!host_.SelectModel(report_.radio_model)) return Fail(Outcome::kCancelled, "cancelled");
  StartDeadline();  // the user may have been asked, and is no slow radio
  document_.image.VersionA = report_.version_letter == 'A';
  return true;
}

bool Sequences::Announce() {
  report_.where = "announcement";
  if (!OpenPort()) return false;
  const std::string reply = link_.TxCommand(kAnnounceCommand);
  return (reply.size() == kAnnounceReply && reply.ends_with(kAcknowledged)) ||
         FailReply(reply, "the radio does not answer OK");
}

bool Sequences::OpenForWriting() {
  if (!Announce()) return false;
  Pause();
  if (!IdentifyStep(IdentifyFor::kWriting)) return false;
  return IsDocumentsModel();
}

bool Sequences::IsDocumentsModel() {
  return report_.radio_model == document_.model ||
         Fail(Outcome::kWrongModel,
              "the radio is an " + std::string(ModelName(report_.radio_model)) +
                  ", the data is for an " + std::string(ModelName(document_.model)));
}

bool Sequences::ReadUnit(Address address, std::string& digits) {
  NextUnit(UnitName(address));
  const std::string reply = link_.TxCommand(ReadCommand(address));
  if (reply.size() != kReadReply) {
    return FailReply(reply, "an answer of " + std::to_string(reply.size()) +
                                " characters instead of " + std::to_string(kReadReply));
  }
  digits = reply.substr(kDataAt, kUnitDigits);
  return true;
}

bool Sequences::WriteUnit(Address address, std::string_view digits) {
  NextUnit(UnitName(address));
  const std::string reply = link_.TxCommand(WriteCommand(address, digits));
  if (link_.WasSent()) report_.in_flight = address;
  if (reply.size() != kWriteReply || !reply.ends_with(kAcknowledged)) {
    return FailReply(reply, "the radio does not acknowledge the write");
  }
  report_.in_flight.reset();
  report_.acknowledged.push_back({address, std::string(digits)});
  return true;
}

// ---- reading

bool Sequences::ReadSettingsLines() {
  auto& lines = document_.image.SettingsLine;
  std::string first;
  std::string second;
  if (!ReadUnit(kSettingsAddress[0], first)) return false;
  Pause();
  if (!ReadUnit(kSettingsAddress[1], second)) return false;
  lines = {first.substr(0, kBlockDigits), first.substr(kBlockDigits),
           second.substr(0, kBlockDigits), second.substr(kBlockDigits)};
  document_.settings = DecodeSettings(document_.image);
  // Data from the radio counts as unsaved, also when a later step fails.
  document_.SettingsChanged = true;
  host_.ShowSettings();
  return true;
}

// The band's store changes when all its five channels have arrived, not before.
bool Sequences::ReadSpecialChannels(Band band) {
  SpecialSet set;
  for (int k = 0; k < kSpecialChannelCount; ++k) {
    Pause();
    std::string digits;
    if (!ReadUnit(SpecialChannelAddress(band, k), digits)) return false;
    if (const auto error = DecodeSpecialChannel(digits, k, set)) {
      return Fail(Outcome::kCommunicationError, error->Message());
    }
  }
  CloneImage& image = document_.image;
  SetStoredPresent(image, band, PresentByFrequency(set));
  SpecialStore(image, band) = std::move(set);
  ShowBand(image, image.ShownBand);
  return true;
}

bool Sequences::ReadDialTexts() {
  for (int unit = 0; unit < kDialUnitCount; ++unit) {
    Pause();
    std::string digits;
    if (!ReadUnit(DialAddress(unit), digits)) return false;
    for (const int half : {0, 1}) {
      const int index = 2 * unit + half;
      const auto at = static_cast<std::size_t>(half) * kBlockDigits;
      UpDateDialData(document_.dial, digits.substr(at, kBlockDigits), index);
      host_.ShowDialText(index);
    }
  }
  return true;
}

bool Sequences::ReadMemoryChannels() {
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    std::string digits;
    if (!ReadUnit(MemoryChannelAddress(n), digits)) return false;
    if (const auto error = DecodeMemoryChannel(digits, n, document_.image)) {
      return Fail(Outcome::kCommunicationError, error->Message());
    }
    host_.ShowMemoryChannel(n);
  }
  return true;
}

// ---- writing

bool Sequences::WriteSettingsLines() {
  auto& lines = document_.image.SettingsLine;
  EncodeSettings(document_.settings, document_.image);
  if (!WriteUnit(kSettingsAddress[0], lines[0] + lines[1])) return false;
  Pause();
  return WriteUnit(kSettingsAddress[1], lines[2] + lines[3]);
}

bool Sequences::WriteSpecialChannels(Band band) {
  SpecialSet set = SpecialStore(document_.image, band);  // a working copy: the store keeps its RPT
  const PresentPair present = StoredPresent(document_.image, band);
  set[kRptRow].value[0] = RepeaterFrequency(band);
  for (int k = 0; k < kSpecialChannelCount; ++k) {
    Pause();
    const auto lines = EncodeSpecialChannel(set, present, k);
    if (!lines) return Fail(Outcome::kCommunicationError, "the channel cannot be encoded");
    if (!WriteUnit(SpecialChannelAddress(band, k), lines->Joined())) return false;
  }
  return true;
}

bool Sequences::WriteDialTexts() {
  for (int unit = 0; unit < kDialUnitCount; ++unit) {
    Pause();
    const std::string digits =
        MakeDialData(document_.dial, 2 * unit) + MakeDialData(document_.dial, 2 * unit + 1);
    if (!WriteUnit(DialAddress(unit), digits)) return false;
  }
  return true;
}

bool Sequences::WriteMemoryChannels() {
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    Pause();
    const auto lines = EncodeMemoryChannel(document_.image, n);
    if (!lines) return Fail(Outcome::kCommunicationError, "the channel cannot be encoded");
    if (!WriteUnit(MemoryChannelAddress(n), lines->Joined())) return false;
  }
  return true;
}

// ---- the commands

SequenceReport Sequences::Identify() {
  Begin(Sequence::kIdentify, 0);
  return Finish(OpenPort() && IdentifyStep(IdentifyFor::kReading));
}

SequenceReport Sequences::AutoSelect() {
  const bool changed = document_.SettingsChanged || document_.MemoryChanged;
  if (changed && !host_.AskToSave()) return Cancelled();
  document_.SettingsChanged = false;
  document_.MemoryChanged = false;
  host_.New();
  Begin(Sequence::kAutoSelect, 0);
  if (!OpenPort() || !IdentifyStep(IdentifyFor::kReading)) return Finish(false);
  LoadSpecialDefaults(document_.image, document_.model);
  host_.ShowSpecialChannels();
  return Finish(true);
}

SequenceReport Sequences::RunReadSettings() {
  Begin(Sequence::kReadSettings, kSettingsUnits);
  const bool channels_read = OpenPort() && IdentifyStep(IdentifyFor::kReading) &&
                             ReadSettingsLines() && ReadSpecialChannels(Band::kVhf) &&
                             ReadSpecialChannels(Band::kUhf);
  host_.ShowSpecialChannels();
  if (!channels_read || !ReadDialTexts()) return Finish(false);
  Pause();
  link_.TxEnd();
  return Finish(true);
}

SequenceReport Sequences::RunReadMemory() {
  Begin(Sequence::kReadMemory, kMemoryChannelCount);
  if (!OpenPort() || !IdentifyStep(IdentifyFor::kReading) || !ReadMemoryChannels()) {
    return Finish(false);
  }
  Pause();
  link_.TxEnd();
  document_.MemoryChanged = true;  // data from the radio counts as unsaved
  return Finish(true);
}

SequenceReport Sequences::ReadSettings() {
  if (document_.SettingsChanged && !host_.AskToSave()) {
    return Cancelled();
  }
  document_.SettingsChanged = false;
  return RunReadSettings();
}

SequenceReport Sequences::ReadMemory() {
  if (document_.MemoryChanged && !host_.AskToSave()) {
    return Cancelled();
  }
  document_.MemoryChanged = false;
  return RunReadMemory();
}

SequenceReport Sequences::ReadAll() {
  // Asked once and first: a Yes between the halves would save half-read data over the user's file.
  const bool changed = document_.SettingsChanged || document_.MemoryChanged;
  if (changed && !host_.AskToSave()) return Cancelled();
  const bool memory_changed = document_.MemoryChanged;  // false once the answer has saved it
  const int model = document_.model;
  document_.SettingsChanged = false;
  document_.MemoryChanged = false;
  SequenceReport settings = RunReadSettings();
  if (settings.outcome == Outcome::kDone) return RunReadMemory();
  // The channels are still the user's, unless another model has replaced them.
  if (document_.model == model) document_.MemoryChanged = memory_changed;
  return settings;
}

SequenceReport Sequences::WriteSettings() {
  Begin(Sequence::kWriteSettings, kSettingsUnits);
  if (!OpenForWriting() || !WriteSettingsLines() || !WriteSpecialChannels(Band::kVhf) ||
      !WriteSpecialChannels(Band::kUhf) || !WriteDialTexts()) {
    return Finish(false);
  }
  Pause();
  link_.TxEnd();
  return Finish(true);
}

SequenceReport Sequences::WriteMemory() {
  Begin(Sequence::kWriteMemory, kMemoryChannelCount);
  if (!OpenForWriting() || !WriteMemoryChannels()) return Finish(false);
  Pause();
  link_.TxEnd();
  return Finish(true);
}

SequenceReport Sequences::WriteAll() {
  SequenceReport settings = WriteSettings();
  if (settings.outcome != Outcome::kDone) return settings;
  SequenceReport memory = WriteMemory();
  memory.acknowledged.insert(memory.acknowledged.begin(), settings.acknowledged.begin(),
                             settings.acknowledged.end());
  return memory;
}

SequenceReport Sequences::Write(Half half) {
  switch (half) {
    case Half::kSettings: return WriteSettings();
    case Half::kMemory: return WriteMemory();
    default: return WriteAll();
  }
}

SequenceReport Sequences::Verify(const std::vector<Unit>& written, std::vector<Unit>& found) {
  Begin(Sequence::kVerify, static_cast<int>(written.size()));
  if (!OpenPort() || !IdentifyStep(IdentifyFor::kWriting) || !IsDocumentsModel()) {
    return Finish(false);
  }
  for (const Unit& unit : written) {
    Pause();
    found.push_back({unit.address, {}});
    if (!ReadUnit(unit.address, found.back().digits)) return Finish(false);
  }
  Pause();
  link_.TxEnd();
  return Finish(true);
}

}  // namespace q40
