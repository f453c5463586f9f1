// What all sequences have in common: how they end, what they ask and whom they tell.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "radio/unit.h"

namespace q40 {

enum class Sequence : unsigned char {
  kIdentify,
  kAutoSelect,
  kReadSettings,
  kReadMemory,
  kWriteSettings,
  kWriteMemory,
  kBackUp,  // a read of everything, digit by digit
  kLookUp,  // a read of what is to be written, to show the differences
  kVerify,
  kCompare,     // is the radio still as it is known?
  kRestore,     // a copy of a radio, digit by digit
  kWriteUnits,  // those that have changed
};

enum class Outcome : unsigned char {
  kDone,
  kCancelled,           // by the answer to a question; nothing more was sent
  kPortError,           // "COM Port Error"
  kCommunicationError,  // "Communication Error"
  kWrongModel,          // the radio is not of the document's model; nothing was written
  kInterrupted,         // the user stopped the program
  kDataError,           // "Data Error": what was to be written is no data; nothing was sent
  kNotAsKnown,          // the radio holds something else than it was known to; nothing was written
};

// Message boxes. All have this title and a critical icon.
inline constexpr const char* kErrorTitle = "ERROR";
inline constexpr const char* kPortErrorText = "COM Port Error";
inline constexpr const char* kCommunicationErrorText = "Communication Error";
inline constexpr const char* kWrongModelText =
    "Model is not correct\r\nPlease select model or click Auto Select";

// What a sequence did, for those who tell the user.
struct SequenceReport {
  Outcome outcome = Outcome::kDone;
  // Why it ended early, in words: "nothing came back within 2 s".
  std::string why;
  // What to try next, in sentences; may be empty.
  std::string remedy;
  // Where: "identification", "memory channel D3". Empty before the first exchange.
  std::string where;
  // Units that the radio acknowledged, in the order written.
  std::vector<UnitData> acknowledged;
  // The unit that was sent last and not acknowledged: the radio may have stored it or not.
  std::optional<Unit> in_flight;
  // From the identification; -1 and '\0' before.
  int radio_model = -1;
  char version_letter = '\0';
  // Where replies had the right form and were damaged all the same: the sequence went on. In the second
  // half of a command that moves both, this tells of the first half too.
  std::vector<std::string> damaged;
  // The same as one line without a full stop, bounded in length, with what to do: "1 reply was damaged:
  // memory channel 5; read again". Empty when there is nothing to tell.
  std::string note;
};

struct SequenceProgress {
  Sequence sequence = Sequence::kIdentify;
  int done = 0;   // units finished
  int total = 0;  // units of the sequence
  std::string where;
  // The radio that is talked to, as it has identified itself. A backup's radio need not be what the
  // document says.
  int radio_model = -1;
  char version_letter = '\0';
};

// What a sequence asks the user. Without anybody to ask there is nothing to save, and a radio of
// another model than the document's ends the sequence.
class SequenceQuestions {
 public:
  SequenceQuestions() = default;
  virtual ~SequenceQuestions() = default;
  SequenceQuestions(const SequenceQuestions&) = delete;
  SequenceQuestions& operator=(const SequenceQuestions&) = delete;

  // "Save changes to settings?" False ends the command with nothing done: the user cancelled, or
  // the save did not happen.
  virtual bool AskToSave() = 0;
  // Makes `model` the document's model as if the user had chosen it: another model starts the
  // document anew, after a question when it has unsaved changes. False: the user cancelled.
  virtual bool SelectModel(int model) = 0;
};

// Who is told how a sequence goes. Calls come on the thread that runs it, between exchanges. What it
// does to the document, the document's own listener hears.
class SequenceWatcher {
 public:
  SequenceWatcher() = default;
  virtual ~SequenceWatcher() = default;
  SequenceWatcher(const SequenceWatcher&) = delete;
  SequenceWatcher& operator=(const SequenceWatcher&) = delete;

  // The sequence begins to talk. Every Begin is followed by one End.
  virtual void Begin(Sequence /*sequence*/) {}
  // Before each exchange that moves a unit.
  virtual void ShowProgress(const SequenceProgress& /*progress*/) {}
  virtual void End(const SequenceReport& /*report*/) {}

  // The radio has told what it holds in a unit, or has acknowledged it, digit by digit.
  virtual void NoteHeld(const UnitData& /*data*/) {}
  // It was sent this and has not acknowledged it: it holds this or what it held before.
  virtual void NotePerhapsHeld(const UnitData& /*data*/) {}
};

}  // namespace q40
