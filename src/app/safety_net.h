// What keeps a radio from being left half written, connected with each other: writing changes and the
// rest of a write, the backups, and stopping.
#pragma once

#include "app/backups_command.h"
#include "app/stop_control.h"
#include "app/unit_commands.h"

namespace q40 {

class MainMenus;
class RadioDisplay;

class SafetyNet final : public QObject {
  Q_OBJECT

 public:
  struct Parts {
    Session& session;
    Prompts& prompts;
    FileCommands& files;
    RadioCommands& radio;
    RadioDisplay& display;
    MainMenus& menus;
    StatusLine& status;
    std::function<bool()> may_run;  // says so when not
  };
  // All must outlive it.
  SafetyNet(const Parts& at, QWidget& window);

  [[nodiscard]] UnitCommands& units() { return units_; }
  [[nodiscard]] BackupsCommand& backups() { return backups_; }
  [[nodiscard]] StopControl& stop() { return stop_; }

 signals:
  void restWanted();  // from the report of a write that broke off

 private:
  UnitCommands units_;
  BackupsCommand& backups_;
  StopControl& stop_;
};

}  // namespace q40
