// The commands that talk to the radio: identify, read, write. Each is a fixed script of exchanges.
//
//   Identify        KX~WHO                                                    19 characters back
//   Read Settings   Identify, 2 settings, 5 VHF, 5 UHF, 5 dialer units, End   77 for each unit
//   Read Memory     Identify, 210 memory channels, End                        77 for each unit
//   Write ...       RXQ40, KX~WHO, the same units, End                        11, 19, 79 for each
//
// Between two commands lies a pause of 10 ms, except in Read Memory and between Identify and the
// first unit of Read and Write Settings. Nothing is retried: a sequence ends at the first reply that
// is not what it must be, without an End command; one that the user stops between two units ends with
// it. What was read until then stays in the document, what was written stays in the radio.
#pragma once

#include <string>
#include <vector>

#include "document/clone_document.h"
#include "document/document_units.h"
#include "link/sequence_steps.h"
#include "link/write_plan.h"

namespace q40 {

// Everything must outlive the object. A sequence must not be started while one runs.
class Sequences : private SequenceSteps {
 public:
  Sequences(Link& link, CloneDocument& document, SequenceWatcher& watcher,
            SequenceQuestions* questions = nullptr)
      : SequenceSteps(link, watcher), document_(document), questions_(questions) {}

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

 private:
  enum class IdentifyFor : unsigned char { kReading, kWriting };

  bool IdentifyStep(IdentifyFor purpose);
  bool OpenForWriting();
  bool IsDocumentsModel() { return IsModel(document_.model()); }
  bool TakeModel();
  [[nodiscard]] bool MayGoOn(bool changed);

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

  CloneDocument& document_;
  SequenceQuestions* questions_;
};

}  // namespace q40
