#include "link/sequences.h"

#include "document/defaults.h"
#include "radio/channel_codec.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

SequenceReport Cancelled() {
  SequenceReport report;
  report.outcome = Outcome::kCancelled;
  report.why = "cancelled";
  return report;
}

}  // namespace

// ---- identification

bool Sequences::IdentifyStep(IdentifyFor purpose) {
  std::string reply;
  if (!AskIdentity(reply)) return false;
  if (!TakeIdentity(reply)) {
    document_.SetVersionA(false);  // also by a radio that nobody knows
    return false;
  }
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

bool Sequences::OpenForWriting() {
  if (!Announce()) return false;
  Pause();
  if (!IdentifyStep(IdentifyFor::kWriting)) return false;
  return IsDocumentsModel();
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
  EndClone();
  return Finish(true);
}

SequenceReport Sequences::RunReadMemory(const SequenceReport& before) {
  Begin(Sequence::kReadMemory, kMemoryChannelCount);
  report_.damaged = before.damaged;
  if (!OpenPort() || !IdentifyStep(IdentifyFor::kReading) || !ReadMemoryChannels()) {
    return Finish(false);
  }
  EndClone();
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
  Begin(sequence, units.size());
  report_.damaged = before.damaged;
  if (!IsData(plan) || !OpenForWriting()) return Finish(false);
  if (settings) document_.RebuildSettingsLines();
  if (!WriteUnits(units)) return Finish(false);
  EndClone();
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

}  // namespace q40
