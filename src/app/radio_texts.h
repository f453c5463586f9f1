// What the window says about a command to the radio: while it runs, and of what came of it.
#pragma once

#include <QStringList>

#include "files/unfinished_write.h"
#include "link/safe_write.h"

namespace q40 {

// Of memory channels, not of settings.
bool MovesMemory(Sequence sequence);

// Changes what the radio holds.
bool Writes(Sequence sequence);

// "Reading memory"
QString DoingText(Sequence sequence);
// "Reading memory (RX-Q40E version A): memory channel 7, 8 of 210"
QString ProgressText(const SequenceProgress& progress);

// Why and where a sequence ended, in sentences, with what to try next.
QString ReasonText(const SequenceReport& report);

// A time as it stands in the name of a backup: "2026-11-22 01:02:03".
QString TimeText(const std::string& time);

// Of a radio of another model: which is which, then `aftermath`, then what the advice of the message
// box would do to the data.
QString WrongModelText(const SequenceReport& report, const QString& aftermath);

// What a read or an identification did that ended well, in sentences.
QString ReadText(Sequence sequence, const SequenceReport& report);

// How much of the radio is in the document after a read has broken off. Each half counts by itself:
// a broken read of the memory stays broken when the settings are read.
class PartialRead {
 public:
  void Begin(Sequence sequence);
  void SettingsArrived() { now_.settings = true; }
  void ChannelArrived(int n) { now_.channels = n + 1; }
  void End(const SequenceReport& report);
  // Other data has taken the place of all of it.
  void Forget() { kept_ = now_ = {}; }

  // The sequence begun last.
  [[nodiscard]] Sequence sequence() const { return sequence_; }
  // In sentences; empty when the document holds no part of a radio.
  [[nodiscard]] QString Text() const;

 private:
  struct Arrived {
    bool settings = false;
    int channels = 0;
  };
  Sequence sequence_ = Sequence::kIdentify;
  Arrived now_;
  Arrived kept_;  // of reads that broke off
};

struct Backup {
  QString name;  // of the file; empty: none was made
  QString path;
};

struct WriteAccount {
  bool good = false;
  QString text;
  QStringList differences;  // between what was written and what the radio holds, one each
  bool at_length = false;   // needs a window of its own
};
// `backup`: the one that brings a whole radio back.
WriteAccount AccountOf(const WriteResult& result, const Backup& backup);
// Of a write that an earlier run has not ended, in sentences.
QString UnfinishedText(const UnfinishedWrite& write, const Backup& backup);

}  // namespace q40
