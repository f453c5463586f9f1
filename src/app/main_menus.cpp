#include "app/main_menus.h"

#include <array>

#include <QAction>
#include <QMainWindow>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>

#include "app/user_options.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

struct ToolBarButton {
  const char* key;
  QStyle::StandardPixmap icon;
};
constexpr ToolBarButton kToolBarButtons[] = {{"New", QStyle::SP_FileIcon},
                                             {"Open", QStyle::SP_DialogOpenButton},
                                             {"Save", QStyle::SP_DialogSaveButton},
                                             {"Help", QStyle::SP_DialogHelpButton}};

// A key that no row names does nothing.
Command CommandOfKey(std::string_view key) {
  for (const CommandRow& row : CommandRows()) {
    if (key == row.toolbar_key) return row.command;
  }
  return Command::kNone;
}

}  // namespace

MainMenus::MainMenus(QMainWindow& window) : QObject(&window), window_(window) {
  MakeMenus();
  MakeToolBar();
}

void MainMenus::MakeMenus() {
  std::array<QMenu*, 6> menus{};
  for (const CommandRow& row : CommandRows()) {
    QMenu*& menu = menus[static_cast<std::size_t>(row.menu)];
    if (menu == nullptr) {
      menu = window_.menuBar()->addMenu(QString::fromUtf8(MenuCaption(row.menu)));
    }
    if (row.name == nullptr) {
      menu->addSeparator();
    } else if (row.name == std::string_view(kRecentFilesEntry)) {
      AddRecentFiles(*menu, row);
    } else {
      menu->addAction(MakeEntry(row));
    }
  }
  for (const CommandHint& hint : CommandHints()) {
    Entry(hint.name).setStatusTip(QString::fromUtf8(hint.text));
  }
  // Without an action, and in no menu.
  for (const char* name : {"mnuFilePageSetup", "mnuFilePrint"}) {
    auto* action = new QAction(&window_);
    action->setObjectName(QLatin1String(name));
    action->setEnabled(false);
  }
}

QAction* MainMenus::MakeEntry(const CommandRow& row) {
  auto* action = new QAction(QString::fromUtf8(row.caption), &window_);
  action->setObjectName(QLatin1String(row.name));
  QList<QKeySequence> keys = QKeySequence::keyBindings(row.standard_key);
  const QKeySequence own(QLatin1String(row.shortcut));
  if (!own.isEmpty() && !keys.contains(own)) keys << own;
  action->setShortcuts(keys);
  if (row.command != Command::kNone) {
    action->setCheckable(row.marks);
    connect(action, &QAction::triggered, this, [this, action, row] {
      if (row.marks) action->setChecked(!action->isChecked());  // the command says when it is on
      emit chosen(row.command);
    });
    return action;
  }
  action->setCheckable(true);
  if (*row.option != '\0') {
    action->setChecked(UserOptions::IsOn(row.option));
    connect(action, &QAction::toggled, this,
            [option = row.option](bool on) { UserOptions::SetOn(option, on); });
  } else {
    action->setChecked(true);
    connect(action, &QAction::toggled, this, [this, bar = row.shows](bool on) {
      window_.findChild<QWidget*>(QLatin1String(bar))->setVisible(on);
    });
  }
  return action;
}

QAction& MainMenus::Entry(const char* name) const {
  return *window_.findChild<QAction*>(QLatin1String(name));
}

void MainMenus::SetEnabled(const char* name, bool enabled) { Entry(name).setEnabled(enabled); }
void MainMenus::SetChecked(const char* name, bool checked) { Entry(name).setChecked(checked); }
bool MainMenus::IsChecked(const char* name) const { return Entry(name).isChecked(); }

// ---- the recent files

void MainMenus::AddRecentFiles(QMenu& menu, const CommandRow& row) {
  QMenu* recent = menu.addMenu(QString::fromUtf8(row.caption));
  recent->setObjectName(QLatin1String(row.name));
  recent->setToolTipsVisible(true);
  connect(recent, &QMenu::aboutToShow, this, [this, recent] { FillRecentFiles(*recent); });
}

// By name; the tool tip has the path.
void MainMenus::FillRecentFiles(QMenu& menu) {
  menu.clear();
  int number = 0;
  for (const std::string& path : UserOptions::RecentFiles()) {
    QString name = Shown(FileName(path));
    name.replace(QLatin1Char('&'), QLatin1String("&&"));
    QAction* action = menu.addAction(QStringLiteral("&%1 ").arg(++number) + name);
    action->setToolTip(PlainToolTip(Shown(path)));
    connect(action, &QAction::triggered, this, [this, path] { emit recentFileChosen(path); });
  }
  if (number == 0) menu.addAction(tr("No files yet"))->setEnabled(false);
}

// ---- the toolbar

void MainMenus::MakeToolBar() {
  QToolBar* bar = window_.addToolBar(tr("Toolbar"));
  bar->setObjectName(QStringLiteral("tbToolBar"));
  bar->setMovable(false);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  bar->setIconSize(QSize(16, 16));
  for (const ToolBarButton& button : kToolBarButtons) {
    QAction* action =
        bar->addAction(window_.style()->standardIcon(button.icon), QLatin1String(button.key));
    connect(action, &QAction::triggered, this,
            [this, command = CommandOfKey(button.key)] { emit chosen(command); });
  }
}

}  // namespace q40
