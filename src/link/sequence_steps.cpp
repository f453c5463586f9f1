#include "link/sequence_steps.h"

#include "base/plain_text.h"
#include "radio/models.h"

namespace q40 {
namespace {

// Places in the reply to the identification, counted from 0. The characters around digit and letter
// do not matter.
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

}  // namespace

// ---- how a sequence begins and ends

void SequenceSteps::Begin(Sequence sequence, std::size_t units) {
  report_ = {};
  progress_ = {};
  progress_.sequence = sequence;
  progress_.total = static_cast<int>(units);
  talked_ = false;
  StartDeadline();
  watcher_.Begin(sequence);
}

void SequenceSteps::StartDeadline() {
  constexpr int kBesideUnits = 3;  // announcement, identification, End
  link_.StartDeadline(progress_.total + kBesideUnits);
}

SequenceReport SequenceSteps::Finish(bool done) {
  if (done) report_.outcome = Outcome::kDone;
  if (report_.outcome == Outcome::kInterrupted && talked_) link_.TxEnd();
  if (!report_.damaged.empty()) {
    report_.note = DamageText(report_.damaged) + Again(progress_.sequence);
  }
  link_.StopDeadline();
  watcher_.End(report_);
  return report_;
}

bool SequenceSteps::Fail(Outcome outcome, std::string why) {
  report_.outcome = outcome;
  report_.why = std::move(why);
  return false;
}

bool SequenceSteps::FailPort() {
  report_.remedy = link_.port().Problem().remedy;
  return Fail(Outcome::kPortError, link_.port().Problem().what);
}

// A reply that is not what it must be.
bool SequenceSteps::FailReply(const std::string& reply, std::string_view command,
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

bool SequenceSteps::IsModel(int model) {
  return report_.radio_model == model ||
         Fail(Outcome::kWrongModel, "the radio is an " +
                                        std::string(ModelName(report_.radio_model)) +
                                        ", the data is for an " + std::string(ModelName(model)));
}

// ---- exchanges

bool SequenceSteps::OpenPort() {
  if (link_.OpenPort()) return true;
  return link_.StopRequested() ? Fail(Outcome::kInterrupted, "stopped") : FailPort();
}

std::string SequenceSteps::Send(const std::string& command) {
  std::string reply = link_.TxCommand(command);
  talked_ = talked_ || link_.WasSent();
  return reply;
}

bool SequenceSteps::Ask(const std::string& command, const ReplyForm& form, std::string& reply) {
  reply = Send(command);
  if (!form.Fits(reply)) return FailReply(reply, command, form);
  if (IsDamaged(command, form, reply)) report_.damaged.push_back(report_.where);
  return true;
}

bool SequenceSteps::AskExactly(const std::string& command, const ReplyForm& form,
                               std::string& reply) {
  const auto is_good = [&] { return form.Fits(reply) && !IsDamaged(command, form, reply); };
  reply = Send(command);
  if (is_good()) return true;
  // Silence is no damage, and neither is a radio that is off: then only the echo comes back.
  const std::string& received = link_.Received();
  const bool may_repeat = reply != kPortFailed && !link_.StopRequested() &&
                          !link_.DeadlineIsOver() && !received.empty() &&
                          received != command + '\n';
  if (!may_repeat) return FailReply(reply, command, form);
  Pause();
  reply = Send(command);
  if (is_good()) return true;
  if (!form.Fits(reply)) return FailReply(reply, command, form);
  report_.remedy = kCheckTheCable;
  return Fail(Outcome::kCommunicationError, "the reply was damaged twice");
}

void SequenceSteps::EndClone() {
  Pause();
  link_.TxEnd();
}

bool SequenceSteps::Announce() {
  report_.where = "announcement";
  if (!OpenPort()) return false;
  std::string reply;
  return Ask(std::string(kAnnounceCommand), kAnnounceReply, reply);
}

bool SequenceSteps::AskIdentity(std::string& reply, bool exactly) {
  report_.where = "identification";
  const std::string command(kIdentifyCommand);
  const bool answered =
      exactly ? AskExactly(command, kIdentifyReply, reply) : Ask(command, kIdentifyReply, reply);
  if (!answered) return false;
  if (reply.compare(kModelTextAt, kModelText.size(), kModelText) == 0) return true;
  report_.remedy = kCheckTheCable;
  return Fail(Outcome::kCommunicationError, "the answer does not come from an RX-Q40 radio");
}

bool SequenceSteps::TakeIdentity(const std::string& reply) {
  const char variant = reply[kVariantAt];
  if (variant < '0' || variant > '2') {
    report_.remedy = "Known are 0 (RX-Q40T), 1 (RX-Q40E) and 2 (RX-Q40T1).";
    return Fail(Outcome::kCommunicationError,
                "the radio reports the unknown variant " + Quoted(std::string(1, variant)));
  }
  report_.radio_model = variant - '0';
  report_.version_letter = reply[kVersionAt];
  progress_.radio_model = report_.radio_model;
  progress_.version_letter = report_.version_letter;
  return true;
}

void SequenceSteps::NextUnit(Unit unit) {
  report_.where = unit.Name();
  progress_.where = report_.where;
  watcher_.ShowProgress(progress_);
  ++progress_.done;
}

bool SequenceSteps::ReadUnit(Unit unit, std::string& digits) {
  NextUnit(unit);
  const std::size_t damaged = report_.damaged.size();
  std::string reply;
  if (!Ask(ReadCommand(unit.address()), kReadReply, reply)) return false;
  digits = DataOf(reply);
  if (report_.damaged.size() == damaged) watcher_.NoteHeld({unit, digits});
  return true;
}

bool SequenceSteps::ReadUnitExactly(Unit unit, std::string& digits) {
  NextUnit(unit);
  std::string reply;
  if (!AskExactly(ReadCommand(unit.address()), kReadReply, reply)) return false;
  digits = DataOf(reply);
  watcher_.NoteHeld({unit, digits});
  return true;
}

bool SequenceSteps::WriteUnit(const UnitData& data) {
  NextUnit(data.unit);
  std::string reply;
  const bool acknowledged = Ask(WriteCommand(data.unit.address(), data.digits), kWriteReply, reply);
  if (acknowledged) {
    report_.acknowledged.push_back(data);
    watcher_.NoteHeld(data);
  } else if (link_.WasSent()) {
    report_.in_flight = data.unit;
    watcher_.NotePerhapsHeld(data);
  }
  return acknowledged;
}

}  // namespace q40
