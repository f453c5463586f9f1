// Keeps unsaved work where a crash does not reach it, and offers it at the next start.
//
// Written half a second after a change, and not again and again while changes come. While the radio is
// talked to nothing is written: a slow disk would make the window miss replies, and what the radio has
// told it can tell again. What the user had before is in the journal by then.
#pragma once

#include <memory>
#include <string>

#include <QObject>
#include <QTimer>

#include "document/clone_document.h"
#include "files/journal.h"
#include "files/journal_folder.h"

namespace q40 {

class FileCommands;
class Prompts;
class Session;
class UndoCommands;
class frmMain;

class JournalKeeper final : public QObject {
  Q_OBJECT

 public:
  struct Parts {
    Session& session;
    Prompts& prompts;
    FileCommands& files;
    UndoCommands& undo;
  };
  // All of them must outlive it. It begins when the window is ready, whose child it is. Without a folder
  // it does nothing.
  JournalKeeper(const Parts& parts, std::string folder, bool opens_a_file, frmMain& window);

  // Asks about what was left, one after the other.
  void OfferAll();
  // The window closes as it should: what is unsaved now is not wanted.
  void Forget();
  // The program is to end now: what is unsaved is kept, and nobody is asked. While the radio is talked to
  // the end of that is awaited; whoever can stop it hears of it.
  void End();

 signals:
  void endRequested();

 private:
  void Start();
  void Note(const DocumentChange& change);
  void NotePath();
  void NoteBusy();
  void Await();
  void Keep();
  void ExpectEnd();
  bool eventFilter(QObject* watched, QEvent* event) override;
  [[nodiscard]] bool IsUnsaved() const;
  [[nodiscard]] bool IsTalking() const;

  struct Left {
    std::unique_ptr<JournalFile> file;
    Journal journal;
  };
  std::vector<Left> FindLeft(bool in_boxes);
  enum class Answer : unsigned char { kRestore, kDiscard, kLater };
  Answer Ask(const Journal& journal);
  bool Restore(const Journal& journal);
  void Announce();
  void Offer(bool possible);

  Parts at_;
  std::string folder_;
  bool opens_a_file_;
  frmMain& window_;
  QTimer* due_;
  std::unique_ptr<JournalFile> file_;  // none while nothing is unsaved
  Journal::State saved_;
  bool started_ = false;
  bool failed_ = false;  // and that has been said
  bool ending_ = false;
};

}  // namespace q40
