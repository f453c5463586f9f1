// The program's window. Builds the pages, the menus and the commands, and connects them.
#pragma once

#include <vector>

#include <QMainWindow>

#include "app/channel_editor.h"
#include "app/file_commands.h"
#include "app/list_commands.h"
#include "app/main_options.h"
#include "app/main_pages.h"
#include "app/radio_commands.h"
#include "app/routing.h"
#include "app/service_commands.h"
#include "app/session.h"
#include "app/trace_command.h"
#include "app/undo_commands.h"
#include "app/window_prompts.h"

namespace q40 {

class ChangesDesk;
class ChannelListCommand;
class CheckUpCommand;
class HelpDesk;
class JournalKeeper;
class MainMenus;
class Navigation;
class OuterSize;
class RadioDisplay;
class SafetyNet;

class frmMain final : public QMainWindow {  // NOLINT: the window's given name
  Q_OBJECT

 public:
  explicit frmMain(const MainOptions& options);
  ~frmMain() override;

  // Shows the window. After the prescribed pause, during which no command runs, the start-up file
  // is opened and the window is ready.
  void StartUp();

  [[nodiscard]] const CloneDocument& document() const { return session_.document(); }
  // A sequence, a service read or the start-up pause is running.
  [[nodiscard]] bool IsBusy() const { return session_.IsBusy(); }

 signals:
  void ready();  // start-up is over

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ConnectSession();
  void ConnectPages();
  void ConnectCommands();
  RadioCommands::Options RadioOptions();

  void Run(Command command);
  void Execute(Command command);
  [[nodiscard]] bool MayRun();
  void FinishStartUp();

  void ShowTitle();
  void ShowStatus();
  void ShowChange(const DocumentChange& change);
  void ShowWindow(QWidget& window);
  void ChooseModel(int model);
  void ChooseBand(Band band);
  void ChoosePort();
  void About();

  MainOptions options_;
  StatusLine* status_;
  OuterSize* size_;
  Session session_;
  WindowPrompts prompts_;
  UndoCommands undo_;
  MainPages pages_;
  FileCommands files_;
  ListCommands lists_;
  RadioCommands radio_;
  ServiceCommands service_;
  TraceCommand trace_;
  Navigation* navigation_;
  RadioDisplay* display_;
  CheckUpCommand* checkup_;
  HelpDesk* help_;
  MainMenus* menus_;
  ChangesDesk* changes_;
  SafetyNet* net_;
  ChannelListCommand* channels_;
  ChannelEditor editor_;
  JournalKeeper* journal_;
  std::vector<QWidget*> windows_;  // opened from this one, in that order; they belong to it
};

}  // namespace q40
