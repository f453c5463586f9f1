// Everything that shows what has changed: the window of changes, the marks on the pages, the question
// before a write.
#pragma once

#include <string>
#include <vector>

#include <QObject>

#include "app/known_states.h"
#include "files/channel_csv.h"

class QMainWindow;
class QTimer;

namespace q40 {

class ChangesWindow;
class ChangeMarks;
class MainPages;
class Prompts;
struct Place;

class ChangesDesk final : public QObject {
  Q_OBJECT

 public:
  struct Parts {
    Session& session;
    Prompts& prompts;
    const MainPages& pages;
    FileCommands& files;
    ListCommands& lists;
    RadioCommands& radio;
    std::string backup_folder;
  };
  // All must outlive it. `window` has its menus already.
  ChangesDesk(const Parts& parts, QMainWindow& window);

  void Show();
  // Shows what a paste into the channel list has changed, and what of it was not understood.
  void ShowPaste(const QString& account, const ImportReport& report, const CloneImage& before);
  // Shows what a write would change in the radio, if the user wants to see that. False: no write.
  [[nodiscard]] bool MayWrite(Half half);

 signals:
  void opened(QWidget& window);  // to be shown
  void placeChosen(const q40::Place& place);

 private:
  struct Against {
    enum class Kind : unsigned char { kFile, kRadio, kImport, kPaste, kClone, kAsk };
    Kind kind = Kind::kFile;
    std::string path;  // of a clone file
    QString name;
    bool operator==(const Against& other) const { return kind == other.kind && path == other.path; }
  };
  // What was not taken as it was written.
  struct Incoming {
    QString account;
    ImportReport report;
  };

  void MakeWindow();
  void Fill();
  void Choose(int index);
  bool Load(const std::string& path);
  void NoteImport(const QString& account, const ImportReport& report);
  void FollowStates();
  void Refresh();
  void ShowNotes();
  void TakeBack();
  [[nodiscard]] const KnownStates::State* Chosen() const;

  Parts at_;
  QMainWindow& window_;
  KnownStates states_;
  ChangeMarks* marks_;
  ChangesWindow* changes_ = nullptr;
  QTimer* refresh_;  // one comparison for however many changes come at once
  std::vector<Against> list_;
  Against chosen_;
  KnownStates::State clone_;  // the file that was chosen
  std::string own_clone_;     // its path when it is no backup
  Incoming import_;
  Incoming paste_;
};

}  // namespace q40
