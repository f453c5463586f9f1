// The commands that talk to the radio. The sequences run here, on the window's thread, and hand it to
// the event loop while they wait.
#pragma once

#include <functional>
#include <string>

#include <QObject>
#include <QStringList>

#include "app/write_keeper.h"
#include "link/safe_write.h"
#include "link/sequences.h"

namespace q40 {

class FileCommands;
class Prompts;
class Session;

class RadioCommands final : public QObject, private SequenceQuestions, private SequenceWatcher {
  Q_OBJECT

 public:
  // What the user has switched on for writing.
  struct NetChoice {
    bool back_up = false;
    bool verify = false;
  };
  struct Options {
    std::string backup_folder;  // made when it is needed
    std::function<NetChoice()> net = [] { return NetChoice{}; };
    // Asked before anything is written, when the document is whole.
    std::function<bool(Half half)> may_write = [](Half) { return true; };
  };
  using Reading = SequenceReport (Sequences::*)();

  // The first three must outlive it.
  RadioCommands(Session& session, Prompts& prompts, FileCommands& files, Options options,
                QObject* parent = nullptr);

  // Reads a half of a radio of its model into `radio`, which is not the document that is shown. False:
  // the user has been told why not.
  bool LookUp(CloneData& radio, Half half);
  // A command that reads, or identifies.
  void Read(Reading sequence);
  void Write(Half half);
  // Shows what a write would change, where the user wants that. False: nothing is to be written.
  bool MayWrite(Half half);
  // What is to be written to a radio of a model, and how. Everything that goes with a write goes with
  // it: the user is told, and can go on when it breaks off.
  struct Job {
    int model = 0;
    std::vector<UnitData> planned;
    std::function<WriteResult(SequenceWatcher& watcher, const WriteNet& net)> write;
    QString aside;  // one more thing to tell, a sentence with a blank before it
  };
  void Run(const Job& job);
  // Reads all that the radio holds into a new file among the backups. False: the user was told why not.
  bool BackUp();
  // The same from the menu, which first brings the page that shows the data to the front; `first` is
  // the sequence that the reading begins with.
  void ReadFromMenu(Reading sequence, Sequence first);
  void WriteFromMenu(Half half);

  [[nodiscard]] const WriteKeeper& keeper() const { return keeper_; }

 signals:
  void pageWanted(q40::Sequence sequence);
  void writeStarting();
  // Of one sequence: it begins to talk, comes forward, has ended; after all messages about its end it
  // is over.
  void begun(q40::Sequence sequence);
  void progressed(const q40::SequenceProgress& progress);
  void ended();
  void over();
  // How it has ended.
  void told(q40::Sequence sequence, const q40::SequenceReport& report);
  // Channels have arrived in the document.
  void channelsRead();
  // A write that is worth a window of its own.
  void writeTold(const QString& text, const QStringList& differences);

 private:
  bool AskToSave() override;
  bool SelectModel(int model) override;
  void Begin(Sequence sequence) override;
  void ShowProgress(const SequenceProgress& progress) override;
  void End(const SequenceReport& report) override;
  void NoteHeld(const UnitData& data) override;
  void NotePerhapsHeld(const UnitData& data) override;

  void NoteArrival(const DocumentChange& change);
  void ReportRead(const SequenceReport& report);
  void ReportWrite(const WriteResult& result, const QString& aside);
  void ComEnd1();
  void ComEnd2();
  void ComEnd3();
  void NoteEnd(const QString& why);

  Session& session_;
  Prompts& prompts_;
  FileCommands& files_;
  Options options_;
  WriteKeeper keeper_;
  Sequences sequences_;
  bool follow_pages_ = false;  // a menu entry brings the pages to the front
};

}  // namespace q40
