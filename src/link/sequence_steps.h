// The steps that sequences are made of: how one begins, asks, moves a unit, fails and ends.
#pragma once

#include <string>
#include <string_view>

#include "link/link.h"
#include "link/reply.h"
#include "link/sequence.h"

namespace q40 {

// Steps that return a bool note what went wrong in the report and return false, so that a script of
// them ends at the first that fails. Link and watcher must outlive the object.
class SequenceSteps {
 protected:
  SequenceSteps(Link& link, SequenceWatcher& watcher) : link_(link), watcher_(watcher) {}

  void Begin(Sequence sequence, std::size_t units);
  void StartDeadline();
  // A sequence that the user has stopped ends with the End command, so that the radio leaves its clone
  // mode; one that failed ends without.
  SequenceReport Finish(bool done);
  bool Fail(Outcome outcome, std::string why);
  bool FailPort();
  // Without a radio of this model.
  bool IsModel(int model);

  // Opens the port. Only at the beginning: one that is lost later stays closed until the next sequence.
  bool OpenPort();
  bool Announce();
  // The 19 characters of the radio's answer, which come from an RX-Q40.
  bool AskIdentity(std::string& reply, bool exactly = false);
  // Model and version out of that answer, into the report.
  bool TakeIdentity(const std::string& reply);
  void Pause() { link_.Wait(kPauseMs); }
  // A pause, then the End command.
  void EndClone();

  // Sends a command whose reply must have this form. One that has it and is damaged goes into the
  // report.
  bool Ask(const std::string& command, const ReplyForm& form, std::string& reply);
  // The same, of a reply that must not be damaged: it is asked for once more.
  bool AskExactly(const std::string& command, const ReplyForm& form, std::string& reply);
  bool ReadUnit(Unit unit, std::string& digits);
  bool ReadUnitExactly(Unit unit, std::string& digits);
  bool WriteUnit(const UnitData& data);

  Link& link_;
  SequenceWatcher& watcher_;
  SequenceReport report_;
  SequenceProgress progress_;

 private:
  bool FailReply(const std::string& reply, std::string_view command, const ReplyForm& form);
  std::string Send(const std::string& command);
  void NextUnit(Unit unit);

  bool talked_ = false;  // something of this sequence has reached the port
};

}  // namespace q40
