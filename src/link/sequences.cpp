#include "link/sequences.h"

#include "base/plain_text.h"
#include "document/defaults.h"
#include "radio/channel_codec.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

// Places in the replies, counted from 0. The characters around digit and letter do not matter.
constexpr std::size_t kModelTextAt = 8;
constexpr std::string_view kModelText = "RXQ40";
constexpr std::size_t kVariantAt = 14;
constexpr std::size_t kVersionAt = 15;

// What to do about damaged replies.
const char* Again(Sequence sequence) {
  switch (sequence) {
    case Sequence::kReadSettings:
    case Sequence::kReadMemory: return "; read again";
    case Sequence::kWriteSettings:
    case Sequence::kWriteMemory: return "; write again";
    default: return "; try again";
  }
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
  watcher_.Begin(sequence);
}

void Sequences::StartDeadline() {
  constexpr int kBesideUnits = 3;  // announcement, identification, End
  link_.StartDeadline(progress_.total + kBesideUnits);
}

SequenceReport Sequences::Finish(bool done) {
  if (done) report_.outcome = Outcome::kDone;
  if (!report_.damaged.empty()) {
    report_.note = DamageText(report_.damaged) + Again(progress_.sequence);
  }
  link_.StopDeadline();
  watcher_.End(report_);
  return report_;
}

bool Sequences::Fail(Outcome outcome, std::string why) {
  report_.outcome = outcome;
  report_.why = std::move(why);
  return false;
}

bool Sequences::FailPort() {
  report_.remedy = link_.port().Problem().remedy;
  return Fail(Outcome::kPortError, link_.port().Problem().what);
}

// A reply that is not what it must be.
bool Sequences::FailReply(const std::string& reply, std::string_view command,
                          const ReplyForm& form) {
  if (link_.StopRequested()) return Fail(Outcome::kInterrupted, "stopped");
  if (reply == kPortFailed) return FailPort();
  report_.remedy = kCheckTheCable;
  if (link_.DeadlineIsOver()) {
    return Fail(Outcome::kCommunicationError, "the whole command took longer than it may");
  }
  BadReply bad = JudgeReply(command, form, link_.Received(), reply == kNoReply);
  report_.remedy = std::move(bad.remedy);
  return Fail(Outcome::kCommunicationError, std::move(bad.why));
}

void Sequences::NextUnit(std::string where) {
  report_.where = where;
  progress_.where = std::move(where);
  watcher_.ShowProgress(progress_);
  ++progress_.done;
}

// ---- exchanges

// Only here: a port that is lost later stays closed until the next sequence.
bool Sequences::OpenPort() {
  if (link_.OpenPort()) return true;
  return link_.StopRequested() ? Fail(Outcome::kInterrupted, "stopped") : FailPort();
}

// Sends a command. False: no reply of its form came back.
bool Sequences::Ask(const std::string& command, const ReplyForm& form, std::string& reply) {
  reply = link_.TxCommand(command);
  if (!form.Fits(reply)) return FailReply(reply, command, form);
  if (IsDamaged(command, form, reply)) report_.damaged.push_back(report_.where);
  return true;
}

bool Sequences::IdentifyStep(IdentifyFor purpose) {
  report_.where = "identification";
  std::string reply;
  if (!Ask(std::string(kIdentifyCommand), kIdentifyReply, reply)) return false;
  if (reply.compare(kModelTextAt, kModelText.size(), kModelText) != 0) {
    report_.remedy = kCheckTheCable;
    return Fail(Outcome::kCommunicationError, "the answer does not come from an RX-Q40 radio");
  }
  const char variant = reply[kVariantAt];
  if (variant < '0' || variant > '2') {
    document_.SetVersionA(false);  // also by a radio that nobody knows
    report_.remedy = "Known are 0 (RX-Q40T), 1 (RX-Q40E) and 2 (RX-Q40T1).";
    return Fail(Outcome::kCommunicationError,
                "the radio reports the unknown variant " + Quoted(std::string(1, variant)));
  }
  report_.radio_model = variant - '0';
  report_.version_letter = reply[kVersionAt];
  progress_.radio_model = report_.radio_model;
  progress_.version_letter = report_.version_letter;
  // Writing clears VersionA and never sets it, and leaves the choice of the model to the user.
  if (purpose == IdentifyFor::kWriting) {
    document_.SetVersionA(false);
    return true;
  }
  // Until then VersionA is that of the old data, which the host may save.
  if (!TakeModel()) return false;
  StartDeadline();  // the user may have been asked, and is no slow radio
  document_.SetVersionA(report_.version_letter == 'A');
  return true;
}

// The radio's model for the document, if somebody can be asked for it.
bool Sequences::TakeModel() {
  if (questions_ == nullptr) return IsDocumentsModel();
  return questions_->SelectModel(report_.radio_model) || Fail(Outcome::kCancelled, "cancelled");
}

// Whether changes that would be lost are saved, or given up by the user.
bool Sequences::MayGoOn(bool changed) {
  return !changed || questions_ == nullptr || questions_->AskToSave();
}

bool Sequences::Announce() {
  report_.where = "announcement";
  if (!OpenPort()) return false;
  std::string reply;
  return Ask(std::string(kAnnounceCommand), kAnnounceReply, reply);
}

bool Sequences::OpenForWriting() {
  if (!Announce()) return false;
  Pause();
  if (!IdentifyStep(IdentifyFor::kWriting)) return false;
  return IsDocumentsModel();
}

bool Sequences::IsDocumentsModel() {
  return report_.radio_model == document_.model() ||
         Fail(Outcome::kWrongModel,
              "the radio is an " + std::string(ModelName(report_.radio_model)) +
                  ", the data is for an " + std::string(ModelName(document_.model())));
}

bool Sequences::ReadUnit(Unit unit, std::string& digits) {
  NextUnit(unit.Name());
  std::string reply;
  if (!Ask(ReadCommand(unit.address()), kReadReply, reply)) return false;
  digits = DataOf(reply);
  return true;
}

bool Sequences::WriteUnit(const UnitData& data) {
  NextUnit(data.unit.Name());
  std::string reply;
  const bool acknowledged = Ask(WriteCommand(data.unit.address(), data.digits), kWriteReply, reply);
  if (link_.WasSent()) report_.in_flight = data.unit;
  if (!acknowledged) return false;
  report_.in_flight.reset();
  report_.acknowledged.push_back(data);
  return true;
}

// ---- reading

bool Sequences::ReadSettingsLines() {
  std::string first;
  std::string second;
  if (!ReadUnit(Unit::Settings(0), first)) return false;
  Pause();
  if (!ReadUnit(Unit::Settings(1), second)) return false;
  document_.TakeSettingsLines({first.substr(0, kBlockDigits), first.substr(kBlockDigits),
                               second.substr(0, kBlockDigits), second.substr(kBlockDigits)});
  return true;
}

// The cable is only to blame when the reply was damaged.
bool Sequences::FailDecoding(const std::string& why) {
  const bool damaged = !report_.damaged.empty() && report_.damaged.back() == report_.where;
  report_.remedy = damaged ? "The reply was damaged. " + std::string(kCheckTheCable)
                           : "Store that channel anew at the radio, then read again.";
  return Fail(Outcome::kCommunicationError, "the channel cannot be decoded: " + why);
}

// The band's store changes when all its five channels have arrived, not before.
bool Sequences::ReadSpecialChannels(Band band) {
  SpecialSet set;
  for (int k = 0; k < kSpecialChannelCount; ++k) {
    Pause();
    std::string digits;
    if (!ReadUnit(Unit::Special(band, k), digits)) return false;
    if (const auto error = DecodeSpecialChannel(digits, k, set)) {
      return FailDecoding(error->Message());
    }
  }
  document_.TakeSpecialSet(band, std::move(set));
  return true;
}

bool Sequences::ReadDialTexts() {
  for (int pair = 0; pair < kDialUnitCount; ++pair) {
    Pause();
    std::string digits;
    if (!ReadUnit(Unit::Dialer(pair), digits)) return false;
    for (const int half : {0, 1}) {
      const auto at = static_cast<std::size_t>(half) * kBlockDigits;
      document_.TakeDialBlock(2 * pair + half, digits.substr(at, kBlockDigits));
    }
  }
  return true;
}

bool Sequences::ReadMemoryChannels() {
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    std::string digits;
    if (!ReadUnit(Unit::Memory(n), digits)) return false;
    if (const auto error = document_.TakeMemoryChannel(n, digits)) {
      return FailDecoding(error->Message());
    }
  }
  return true;
}

// ---- writing

bool Sequences::IsData(const WritePlan& plan) {
  const auto bad = FirstBadUnit(plan);
  if (!bad) return true;
  report_.where = bad->where;
  report_.remedy = "Read the radio again, or correct the clone file.";
  return Fail(Outcome::kDataError, bad->why);
}

bool Sequences::WriteUnits(const std::vector<UnitData>& units) {
  // The first settings unit follows the identification at once.
  bool pause = progress_.sequence == Sequence::kWriteMemory;
  for (const UnitData& data : units) {
    if (pause) Pause();
    pause = true;
    if (!WriteUnit(data)) return false;
  }
  return true;
}

// ---- the commands

SequenceReport Sequences::Identify() {
  Begin(Sequence::kIdentify, 0);
  return Finish(OpenPort() && IdentifyStep(IdentifyFor::kReading));
}

SequenceReport Sequences::AutoSelect() {
  if (!MayGoOn(document_.HasChanges())) return Cancelled();
  document_.New();
  Begin(Sequence::kAutoSelect, 0);
  if (!OpenPort() || !IdentifyStep(IdentifyFor::kReading)) return Finish(false);
  document_.LoadSpecialDefaults();
  return Finish(true);
}

SequenceReport Sequences::RunReadSettings() {
  Begin(Sequence::kReadSettings, kSettingsUnits);
  if (!OpenPort() || !IdentifyStep(IdentifyFor::kReading) || !ReadSettingsLines() ||
      !ReadSpecialChannels(Band::kVhf) || !ReadSpecialChannels(Band::kUhf) || !ReadDialTexts()) {
    return Finish(false);
  }
  Pause();
  link_.TxEnd();
  return Finish(true);
}

SequenceReport Sequences::RunReadMemory(const SequenceReport& before) {
  Begin(Sequence::kReadMemory, kMemoryChannelCount);
  report_.damaged = before.damaged;
  if (!OpenPort() || !IdentifyStep(IdentifyFor::kReading) || !ReadMemoryChannels()) {
    return Finish(false);
  }
  Pause();
  link_.TxEnd();
  document_.FinishMemoryRead();
  return Finish(true);
}

SequenceReport Sequences::ReadSettings() {
  if (!MayGoOn(document_.SettingsChanged())) return Cancelled();
  document_.ForgetSettingsChanges();
  return RunReadSettings();
}

SequenceReport Sequences::ReadMemory() {
  if (!MayGoOn(document_.MemoryChanged())) return Cancelled();
  document_.ForgetMemoryChanges();
  return RunReadMemory({});
}

SequenceReport Sequences::ReadAll() {
  // Asked once and first: a Yes between the halves would save half-read data over the user's file.
  if (!MayGoOn(document_.HasChanges())) return Cancelled();
  const bool memory_changed = document_.MemoryChanged();  // false once the answer has saved it
  const int model = document_.model();
  document_.ForgetChanges();
  SequenceReport settings = RunReadSettings();
  if (settings.outcome == Outcome::kDone) return RunReadMemory(settings);
  // The channels are still the user's, unless another model has replaced them.
  if (memory_changed && document_.model() == model) document_.KeepMemoryChanges();
  return settings;
}

// `plan` is all that the command sends, in both halves: nothing of it goes out when a part is no data.
SequenceReport Sequences::RunWrite(Sequence sequence, const WritePlan& plan,
                                   const SequenceReport& before) {
  const bool settings = sequence == Sequence::kWriteSettings;
  const std::vector<UnitData>& units = settings ? plan.settings : plan.memory;
  Begin(sequence, static_cast<int>(units.size()));
  report_.damaged = before.damaged;
  if (!IsData(plan) || !OpenForWriting()) return Finish(false);
  if (settings) document_.RebuildSettingsLines();
  if (!WriteUnits(units)) return Finish(false);
  Pause();
  link_.TxEnd();
  return Finish(true);
}

SequenceReport Sequences::Write(Half half) {
  const WritePlan plan = MakeWritePlan(document_.data(), half);
  if (half == Half::kMemory) return RunWrite(Sequence::kWriteMemory, plan, {});
  SequenceReport settings = RunWrite(Sequence::kWriteSettings, plan, {});
  if (half == Half::kSettings || settings.outcome != Outcome::kDone) return settings;
  SequenceReport memory = RunWrite(Sequence::kWriteMemory, plan, settings);
  memory.acknowledged.insert(memory.acknowledged.begin(), settings.acknowledged.begin(),
                             settings.acknowledged.end());
  return memory;
}

SequenceReport Sequences::WriteSettings() { return Write(Half::kSettings); }
SequenceReport Sequences::WriteMemory() { return Write(Half::kMemory); }
SequenceReport Sequences::WriteAll() { return Write(Half::kBoth); }

SequenceReport Sequences::Verify(const std::vector<UnitData>& written,
                                 std::vector<UnitData>& found) {
  Begin(Sequence::kVerify, static_cast<int>(written.size()));
  if (!OpenPort() || !IdentifyStep(IdentifyFor::kWriting) || !IsDocumentsModel()) {
    return Finish(false);
  }
  for (const UnitData& data : written) {
    Pause();
    found.push_back({data.unit, {}});
    if (!ReadUnit(data.unit, found.back().digits)) return Finish(false);
  }
  Pause();
  link_.TxEnd();
  return Finish(true);
}

}  // namespace q40
