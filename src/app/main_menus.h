// The window's menus and toolbar, made of the routing table.
#pragma once

#include <string>

#include <QObject>

#include "app/routing.h"

class QAction;
class QMainWindow;
class QMenu;

namespace q40 {

class MainMenus final : public QObject {
  Q_OBJECT

 public:
  // Adds them to the window, which has its status bar already.
  explicit MainMenus(QMainWindow& window);

  // Of an entry, by its object name.
  void SetEnabled(const char* name, bool enabled);
  void SetChecked(const char* name, bool checked);
  [[nodiscard]] bool IsChecked(const char* name) const;

 signals:
  void chosen(q40::Command command);
  void recentFileChosen(const std::string& path);

 private:
  void MakeMenus();
  QAction* MakeEntry(const CommandRow& row);
  void AddRecentFiles(QMenu& menu, const CommandRow& row);
  void FillRecentFiles(QMenu& menu);
  void MakeToolBar();
  [[nodiscard]] QAction& Entry(const char* name) const;

  QMainWindow& window_;
};

}  // namespace q40
