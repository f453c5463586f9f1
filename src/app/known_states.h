// States of the data that the document can be compared with: the file and the radio as they were last.
#pragma once

#include <optional>
#include <vector>

#include <QObject>

#include "document/clone_data.h"
#include "link/sequences.h"

namespace q40 {

class FileCommands;
class ListCommands;
class RadioCommands;
class Session;

class KnownStates final : public QObject {
  Q_OBJECT

 public:
  struct State {
    QString name;  // "radio.Q40, as opened", "The radio, as read at 14:05"
    CloneData data;
    Half half = Half::kBoth;  // what of the data is known
  };

  // All must outlive it.
  KnownStates(Session& session, FileCommands& files, ListCommands& lists, RadioCommands& radio,
              QObject* parent);

  // The file as last opened or saved. Without one the data as it began.
  [[nodiscard]] const State& file() const { return file_; }
  [[nodiscard]] bool has_file() const { return has_file_; }
  // The radio as last read or written. Empty: what it holds is not known.
  [[nodiscard]] const std::optional<State>& radio() const { return radio_; }
  [[nodiscard]] bool KnowsRadio(Half half) const;
  // What a write of what is loaded would change in the radio, if KnowsRadio.
  [[nodiscard]] std::vector<CellDifference> ChangesOfWrite(Half half) const;
  // The document before the last import.
  [[nodiscard]] const std::optional<State>& before_import() const { return before_import_; }
  // Before the last paste into the channel list that was not understood as a whole.
  [[nodiscard]] const std::optional<State>& before_paste() const { return before_paste_; }

  // The radio holds this half of `data`: it was `how`, "read" or "written".
  void KeepRadio(const CloneData& data, Half half, const QString& how);
  void KeepBeforePaste(const CloneImage& before);

 signals:
  void changed();

 private:
  void KeepFile(bool saved);
  void KeepNew();
  void KeepBeforeImport(const std::string& path);
  void NoteSequence(Sequence sequence, const SequenceReport& report);
  void ForgetRadio(Half half);
  void ForgetIncoming();
  void NameRadio();

  Session& session_;
  State file_;
  bool has_file_ = false;
  std::optional<State> radio_;
  QString radio_how_;  // "read at 14:05"
  std::optional<State> before_import_;
  std::optional<State> before_paste_;
};

}  // namespace q40
