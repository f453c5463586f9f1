// The window's parts: pages, menus, toolbar, status bar.
#include <QApplication>
#include <QFrame>
#include <QMenuBar>
#include <QScrollArea>
#include <QStyle>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include "app/frm_main.h"
#include "app/routing.h"
#include "app/status_line.h"
#include "app/user_options.h"
#include "dialogs/dlg_modify.h"
#include "dialogs/help_desk.h"
#include "pages/memory_page.h"
#include "pages/service_page.h"
#include "pages/settings_page1.h"
#include "pages/settings_page2.h"
#include "pages/special_channels.h"
#include "widgets/held_keys.h"
#include "widgets/input_guard.h"

namespace q40 {
namespace {

// So low that the pages need no scroll bar under the usual title bars, which are part of the window's
// height.
constexpr int kAbovePage = 3;
constexpr int kBetweenRows = 3;

// A page frame. What does not fit into the window scrolls.
QFrame* MakeFrame(int index, QWidget* page) {
  QMargins margins = page->layout()->contentsMargins();
  margins.setTop(kAbovePage);
  margins.setBottom(kAbovePage);
  page->layout()->setContentsMargins(margins);
  page->layout()->setSpacing(kBetweenRows);
  auto* frame = new QFrame;
  frame->setObjectName(QStringLiteral("Frame1_%1").arg(index));
  auto* area = new QScrollArea(frame);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setAccessibleName(QObject::tr("Page"));
  area->setWidgetResizable(true);
  area->setWidget(page);
  auto* layout = new QVBoxLayout(frame);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(area);
  return frame;
}

struct ToolBarButton {
  const char* key;
  QStyle::StandardPixmap icon;
};
constexpr ToolBarButton kToolBarButtons[] = {{"New", QStyle::SP_FileIcon},
                                             {"Open", QStyle::SP_DialogOpenButton},
                                             {"Save", QStyle::SP_DialogSaveButton},
                                             {"Help", QStyle::SP_DialogHelpButton}};

}  // namespace

void frmMain::MakePages() {
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName(QStringLiteral("TabStrip1"));
  tabs_->setAccessibleName(tr("Pages"));
  special_ = new SpecialChannels(document_, nullptr);
  settings1_ = new SettingsPage1(special_, nullptr);
  settings2_ = new SettingsPage2(nullptr);
  memory_ = new MemoryPage(document_, nullptr);
  service_ = new ServicePage(nullptr);
  const struct {
    const char* caption;
    QWidget* page;
  } pages[] = {{"Settings 1", settings1_}, {"Settings 2", settings2_}, {"Memory", memory_}};
  for (int i = 0; i < 3; ++i) {
    frames_[static_cast<std::size_t>(i)] = MakeFrame(i, pages[i].page);
    tabs_->addTab(frames_[static_cast<std::size_t>(i)], QString::fromUtf8(pages[i].caption));
  }
  // The fourth frame lies where the others do, but no tab leads to it.
  frames_[3] = MakeFrame(3, service_);
  frames_[3]->setParent(tabs_);
  frames_[3]->setAutoFillBackground(true);
  frames_[3]->hide();
  setCentralWidget(tabs_);
  guard_ = new InputGuard({frames_.begin(), frames_.end()}, this);
  help_ = new HelpDesk(
      *this, [this] { return frames_[3]->isVisible() ? frames_[3] : tabs_->currentWidget(); });
  connect(help_, &HelpDesk::opened, this, &frmMain::ShowWindow);
  new HeldKeys(this);
}

void frmMain::ConnectPages() {
  const auto guarded = [this](Command command) { return [this, command] { Run(command); }; };
  const auto edited = [this] {
    document_.SettingsChanged = true;
    Edited();
  };
  connect(tabs_, &QTabWidget::currentChanged, this, &frmMain::SwitchTab);
  connect(tabs_, &QTabWidget::tabBarClicked, this, [this](int tab) {
    if (tab >= 0) SwitchTab(tab);
  });
  for (SettingsPage* page :
       {static_cast<SettingsPage*>(settings1_), static_cast<SettingsPage*>(settings2_)}) {
    connect(page, &SettingsPage::edited, this, edited);
    connect(page, &SettingsPage::readRequested, this, guarded(&frmMain::ReadSettings));
    connect(page, &SettingsPage::writeRequested, this, guarded(&frmMain::WriteSettings));
  }
  connect(settings1_, &SettingsPage1::modelChosen, this, &frmMain::ChooseModel);
  connect(settings1_, &SettingsPage1::bandChosen, this, &frmMain::ChooseBand);
  connect(settings1_, &SettingsPage1::autoSelectRequested, this, guarded(&frmMain::AutoSelect));
  connect(settings2_, &SettingsPage2::dialEdited, this, [this](int index, const std::string& text) {
    document_.dial[static_cast<std::size_t>(index)] = text;
  });
  connect(memory_, &MemoryPage::readRequested, this, guarded(&frmMain::ReadMemory));
  connect(memory_, &MemoryPage::writeRequested, this, guarded(&frmMain::WriteMemory));
  connect(memory_, &MemoryPage::edited, this, &frmMain::Edited);
  connect(memory_, &MemoryPage::noted, this, &frmMain::Note);
  connect(special_, &SpecialChannels::noted, this, &frmMain::Note);
  connect(memory_, &MemoryPage::openRequested, this, [this](int n) {
    if (!IsBusy()) OpenMemoryChannel(n);
  });
  connect(special_, &SpecialChannels::edited, this, &frmMain::Edited);
  connect(special_, &SpecialChannels::openRequested, this, [this](int k) {
    if (!IsBusy()) OpenSpecialChannel(k);
  });
  connect(service_, &ServicePage::readRequested, this, &frmMain::ServiceRead);
  connect(service_, &ServicePage::dumpRequested, this, guarded(&frmMain::ServiceDump));
}

void frmMain::MakeMenus() {
  std::array<QMenu*, 6> menus{};
  for (const CommandRow& row : CommandRow::All()) {
    QMenu*& menu = menus[static_cast<std::size_t>(row.menu)];
    if (menu == nullptr) menu = menuBar()->addMenu(QString::fromUtf8(MenuCaption(row.menu)));
    if (row.name == nullptr) {
      menu->addSeparator();
    } else if (row.name == std::string_view(kRecentFilesEntry)) {
      QMenu* recent = menu->addMenu(QString::fromUtf8(row.caption));
      recent->setObjectName(QLatin1String(row.name));
      recent->setToolTipsVisible(true);
      connect(recent, &QMenu::aboutToShow, this, [this, recent] { FillRecentFiles(*recent); });
    } else {
      AddCommand(*menu, row);
    }
  }
  for (const CommandHint& hint : CommandHints()) {
    findChild<QAction*>(QLatin1String(hint.name))->setStatusTip(QString::fromUtf8(hint.text));
  }
  edit_channel_ = findChild<QAction*>(QStringLiteral("mnuEditUndo"));
  // Without an action, and in no menu.
  for (const char* name : {"mnuFilePageSetup", "mnuFilePrint"}) {
    auto* action = new QAction(this);
    action->setObjectName(QLatin1String(name));
    action->setEnabled(false);
  }
}

QAction* frmMain::AddCommand(QMenu& menu, const CommandRow& row) {
  auto* action = new QAction(QString::fromUtf8(row.caption), this);
  action->setObjectName(QLatin1String(row.name));
  QList<QKeySequence> keys = QKeySequence::keyBindings(row.standard_key);
  const QKeySequence own(QLatin1String(row.shortcut));
  if (!own.isEmpty() && !keys.contains(own)) keys << own;
  action->setShortcuts(keys);
  if (row.toggle != nullptr) {
    action->setCheckable(true);
    action->setChecked(true);
    connect(action, &QAction::toggled, this, row.toggle);
  } else if (*row.option != '\0') {
    action->setCheckable(true);
    action->setChecked(UserOptions::IsOn(row.option));
    connect(action, &QAction::toggled, this,
            [option = row.option](bool on) { UserOptions::SetOn(option, on); });
  } else {
    connect(action, &QAction::triggered, [this, run = row.run] { Run(run); });
  }
  menu.addAction(action);
  return action;
}

void frmMain::MakeToolBar() {
  QToolBar* bar = addToolBar(tr("Toolbar"));
  bar->setObjectName(QStringLiteral("tbToolBar"));
  bar->setMovable(false);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  bar->setIconSize(QSize(16, 16));
  for (const ToolBarButton& button : kToolBarButtons) {
    QAction* action = bar->addAction(style()->standardIcon(button.icon), QLatin1String(button.key));
    action->setData(QLatin1String(button.key));
  }
  connect(bar, &QToolBar::actionTriggered,
          [this](const QAction* action) { RunToolBarKey(action->data().toString()); });
}

// A key that no row names does nothing.
void frmMain::RunToolBarKey(const QString& key) {
  for (const CommandRow& row : CommandRow::All()) {
    if (row.run != nullptr && !key.isEmpty() && key == QLatin1String(row.toolbar_key)) Run(row.run);
  }
}

}  // namespace q40
