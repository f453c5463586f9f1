// Undo and Redo. Listens to what the session tells of the document, makes steps of it, and names them: no
// other command knows that there is a history.
#pragma once

#include <vector>

#include <QObject>
#include <QPointer>
#include <QString>

#include "app/radio_texts.h"
#include "document/clone_document.h"
#include "document/history.h"

class QAction;
class QWidget;

namespace q40 {

class ListCommands;
class Navigation;
class Prompts;
class RadioCommands;
class Session;
class frmMain;

class UndoCommands final : public QObject {
  Q_OBJECT

 public:
  // Both must outlive it. To be made before whoever else listens to the document: a step is taken
  // before a path or a message follows from it.
  UndoCommands(Session& session, Prompts& prompts, QObject* parent);

  // The window has its menus and pages. What is there when it is ready is where the way back ends.
  void Attach(frmMain& window, Navigation& navigation, const RadioCommands& radio,
              const ListCommands& lists);

  void Undo() { Move(&History::CanUndo, &History::UndoLabel, &History::Undo, tr("Undone: %1.")); }
  void Redo() {
    Move(&History::CanRedo, &History::RedoLabel, &History::Redo, tr("Done again: %1."));
  }
  // Of the step that has just been made.
  void NameStep(const QString& name);

 private:
  void Start();
  void Note(const DocumentChange& change);
  void NotePath();
  void NoteSaved();
  void NoteBusy();
  void NoteSequence(Sequence sequence);
  void NoteFocus(const QWidget* now);
  void Take(const DocumentChange& change);
  void TakeTransfer();
  void Amend();
  void Move(bool (History::*can)() const, const History::Label& (History::*label)() const,
            const History::Facts& (History::*go)(CloneData&, int&), const QString& account);
  void Show(const History::Facts& facts);
  void Offer();
  [[nodiscard]] bool IsFilledIn(const DocumentChange& change) const;
  History::Facts Facts();

  Session& session_;
  Prompts& prompts_;
  History history_;
  std::vector<PartialRead> parts_;  // by the tags of the history
  QWidget* window_ = nullptr;
  Navigation* navigation_ = nullptr;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
  QPointer<const QWidget> visited_;  // the control in which the last step was made
  QString transfer_;                 // name of the reading that runs
  bool replaces_ = false;            // it has started anew
  bool opening_ = false;             // the last step opened a file whose name follows
  bool started_ = false;
  bool moving_ = false;
};

}  // namespace q40
