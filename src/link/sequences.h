// The commands that talk to the radio: identify, read, write. Each is a fixed script of exchanges.
//
//   Identify        KX~WHO                                                    19 characters back
//   Read Settings   Identify, 2 settings, 5 VHF, 5 UHF, 5 dialer units, End   77 for each unit
//   Read Memory     Identify, 210 memory channels, End                        77 for each unit
//   Write ...       RXQ40, KX~WHO, the same units, End                        11, 19, 79 for each
//   Verify          Identify, units that were written, End                    77 for each unit
//
// Between two commands lies a pause of 10 ms, except in Read Memory and between Identify and the
// first unit of Read and Write Settings. Nothing is retried: a sequence ends at the first reply that
// is not what it must be, without an End command. What was read until then stays in the document,
// what was written stays in the radio.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/clone_document.h"
#include "document/document_units.h"
#include "link/link.h"
#include "link/reply.h"
#include "link/write_plan.h"

namespace q40 {

enum class Sequence : unsigned char {
  kIdentify,
  kAutoSelect,
  kReadSettings,
  kReadMemory,
  kWriteSettings,
  kWriteMemory,
  kBackUp,  // a read of everything, into another document than the one that is shown
  kLookUp,  // the same of what is to be written, to compare it
  kVerify,
};

enum class Outcome : unsigned char {
  kDone,
  kCancelled,           // by the answer to a question; nothing more was sent
  kPortError,           // "COM Port Error"
  kCommunicationError,  // "Communication Error"
  kWrongModel,          // the radio is not of the document's model; nothing was written
  kInterrupted,         // the user stopped the program
  kDataError,           // "Data Error": what was to be written is no data; nothing was sent
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
};

// Everything must outlive the object. A sequence must not be started while one runs.
class Sequences {
 public:
  Sequences(Link& link, CloneDocument& document, SequenceWatcher& watcher,
            SequenceQuestions* questions = nullptr)
      : link_(link), document_(document), watcher_(watcher), questions_(questions) {}

  SequenceReport Identify();
  // Resets the document, identifies, loads the special channels of the radio's model.
  SequenceReport AutoSelect();
  SequenceReport ReadSettings();
  SequenceReport ReadMemory();
  // Both halves; asks once, before anything is sent.
  SequenceReport ReadAll();
  SequenceReport WriteSettings();
  SequenceReport WriteMemory();
  SequenceReport WriteAll();
  SequenceReport Write(Half half);
  // Reads the units that a write was acknowledged for into `found`, in their order. Changes nothing
  // in the document but what a write changes.
  SequenceReport Verify(const std::vector<UnitData>& written, std::vector<UnitData>& found);

 private:
  enum class IdentifyFor : unsigned char { kReading, kWriting };

  SequenceReport Finish(bool done);
  // These two note the failure and return false, so that a step can return them.
  bool Fail(Outcome outcome, std::string why);
  bool FailReply(const std::string& reply, std::string_view command, const ReplyForm& form);
  bool FailPort();
  void Begin(Sequence sequence, int units);
  void StartDeadline();
  void NextUnit(std::string where);

  bool OpenPort();
  bool IdentifyStep(IdentifyFor purpose);
  bool Announce();
  bool OpenForWriting();
  bool IsDocumentsModel();
  bool TakeModel();
  [[nodiscard]] bool MayGoOn(bool changed);
  bool Ask(const std::string& command, const ReplyForm& form, std::string& reply);
  bool ReadUnit(Unit unit, std::string& digits);
  bool WriteUnit(const UnitData& data);
  void Pause() { link_.Wait(kPauseMs); }

  bool ReadSettingsLines();
  bool ReadSpecialChannels(Band band);
  bool ReadDialTexts();
  bool ReadMemoryChannels();
  bool FailDecoding(const std::string& why);
  bool IsData(const WritePlan& plan);
  bool WriteUnits(const std::vector<UnitData>& units);
  SequenceReport RunReadSettings();
  SequenceReport RunReadMemory(const SequenceReport& before);
  SequenceReport RunWrite(Sequence sequence, const WritePlan& plan, const SequenceReport& before);

  Link& link_;
  CloneDocument& document_;
  SequenceWatcher& watcher_;
  SequenceQuestions* questions_;
  SequenceReport report_;
  SequenceProgress progress_;
};

}  // namespace q40
