#include "app/frm_main.h"

#include <QCloseEvent>
#include <QTabWidget>
#include <QTimer>

#include "app/card_command.h"
#include "app/changes_desk.h"
#include "app/channel_list_command.h"
#include "app/checkup_command.h"
#include "app/file_drop.h"
#include "app/import_other_command.h"
#include "app/journal_keeper.h"
#include "app/main_menus.h"
#include "app/navigation.h"
#include "app/page_edits.h"
#include "app/radio_display.h"
#include "app/safety_net.h"
#include "app/status_line.h"
#include "app/user_options.h"
#include "checkup/finding.h"
#include "dialogs/dlg_com.h"
#include "dialogs/frm_about.h"
#include "dialogs/help_desk.h"
#include "pages/memory_page.h"
#include "pages/service_page.h"
#include "pages/settings_page1.h"
#include "pages/settings_page2.h"
#include "pages/special_channels.h"
#include "widgets/held_keys.h"
#include "widgets/outer_size.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

constexpr std::chrono::milliseconds kLinkTimerInterval{500};

}  // namespace

frmMain::frmMain(const MainOptions& options)
    : options_(options),
      status_(new StatusLine(this)),
      size_(new OuterSize(*this)),
      session_(options, this),
      prompts_(*this, *status_),
      undo_(session_, prompts_, this),
      pages_(session_.document()),
      files_(session_, prompts_, this),
      lists_(session_, prompts_, files_, this),
      radio_(session_, prompts_, files_, RadioOptions(), this),
      service_(session_, this),
      trace_(session_, prompts_, this),
      navigation_(new Navigation(pages_, *this)),
      display_(new RadioDisplay({session_, pages_, *navigation_, *status_}, *this)),
      checkup_(new CheckUpCommand(session_, *this)),
      help_(new HelpDesk(*this, [this] { return navigation_->Front(); })),
      menus_(new MainMenus(*this)),
      changes_(new ChangesDesk(
          {session_, prompts_, pages_, files_, lists_, radio_, options.backup_folder}, *this)),
      net_(new SafetyNet({session_, prompts_, files_, radio_, *display_, *menus_, *status_,
                          [this] { return MayRun(); }},
                         *this)),
      channels_(new ChannelListCommand(session_, pages_, *this)),
      editor_(pages_, session_.document(), *this),
      journal_(new JournalKeeper({session_, prompts_, files_, undo_}, options.state_folder,
                                 !options.startup_path.empty(), *this)) {
  setObjectName(QStringLiteral("frmMain"));
  setWindowTitle(Shown(kWindowTitle));
  setContextMenuPolicy(Qt::NoContextMenu);
  setStatusBar(status_);
  setCentralWidget(&navigation_->tabs());
  new HeldKeys(this);
  ConnectSession();
  ConnectEdits(pages_, session_.document());
  ConnectPages();
  ConnectCommands();
  undo_.Attach(*this, *navigation_, radio_, lists_);
  pages_.Show(kEverything);
  session_.TellReplaced();
  pages_.ChangeFont();
}

// Who edits goes first: a box that loses the focus hands over what was typed.
frmMain::~frmMain() {
  delete channels_;
  delete takeCentralWidget();
}

// The check marks, and not what is remembered of them: that may be out of reach.
RadioCommands::Options frmMain::RadioOptions() {
  return {options_.backup_folder,
          [this] {
            return RadioCommands::NetChoice{menus_->IsChecked(kBackUpEntry),
                                            menus_->IsChecked(kVerifyEntry)};
          },
          [this](Half half) { return changes_->MayWrite(half); }};
}

// ---- what is connected with what

void frmMain::ConnectSession() {
  connect(&session_, &Session::changed, this, &frmMain::ShowChange);
  connect(&session_, &Session::pathChanged, this, &frmMain::ShowTitle);
  connect(&session_, &Session::factsChanged, this, &frmMain::ShowStatus);
  connect(&session_, &Session::settling, &pages_.settings2(), &SettingsPage2::LeaveDialer);
  display_->Follow(radio_);
  display_->Follow(service_);
  connect(display_, &RadioDisplay::opened, this, &frmMain::ShowWindow);
  connect(checkup_, &CheckUpCommand::opened, this, &frmMain::ShowWindow);
  connect(changes_, &ChangesDesk::opened, this, &frmMain::ShowWindow);
  connect(changes_, &ChangesDesk::placeChosen, checkup_, &CheckUpCommand::placeChosen);
  connect(&net_->backups(), &BackupsCommand::opened, this, &frmMain::ShowWindow);
  // The journal ends the program when the radio is quiet.
  connect(journal_, &JournalKeeper::endRequested, &net_->stop(),
          [this] { net_->stop().StopThen([] {}); });
  connect(channels_, &ChannelListCommand::opened, this, &frmMain::ShowWindow);
  connect(channels_, &ChannelListCommand::noted, changes_, &ChangesDesk::ShowPaste);
  connect(help_, &HelpDesk::opened, this, &frmMain::ShowWindow);
}

void frmMain::ConnectPages() {
  const auto run = [this](Command command) { return [this, command] { Run(command); }; };
  const auto note = [this](const QString& text) { prompts_.Note(text); };
  for (const SettingsPage* page : {static_cast<SettingsPage*>(&pages_.settings1()),
                                   static_cast<SettingsPage*>(&pages_.settings2())}) {
    connect(page, &SettingsPage::readRequested, this, run(Command::kReadSettings));
    connect(page, &SettingsPage::writeRequested, this, run(Command::kWriteSettings));
  }
  const SettingsPage1* settings = &pages_.settings1();
  connect(settings, &SettingsPage1::modelChosen, this, &frmMain::ChooseModel);
  connect(settings, &SettingsPage1::bandChosen, this, &frmMain::ChooseBand);
  connect(settings, &SettingsPage1::autoSelectRequested, this, run(Command::kAutoSelect));
  const MemoryPage* memory = &pages_.memory();
  connect(memory, &MemoryPage::readRequested, this, run(Command::kReadMemory));
  connect(memory, &MemoryPage::writeRequested, this, run(Command::kWriteMemory));
  connect(memory, &MemoryPage::noted, this, note);
  connect(memory, &MemoryPage::openRequested, this, [this](int n) {
    if (!IsBusy()) editor_.OpenMemory(n);
  });
  const SpecialChannels* special = &pages_.special();
  connect(special, &SpecialChannels::noted, this, note);
  connect(special, &SpecialChannels::openRequested, this, [this](int k) {
    if (!IsBusy()) editor_.OpenSpecial(k);
  });
}

void frmMain::ConnectCommands() {
  connect(menus_, &MainMenus::chosen, this, &frmMain::Run);
  connect(menus_, &MainMenus::recentFileChosen, this, [this](const std::string& path) {
    if (MayRun()) files_.OpenRecentFile(path);
  });
  auto* drop = new FileDrop(*this, [this] { return !IsBusy(); });
  connect(drop, &FileDrop::dropped, &files_, &FileCommands::OpenAfterQuestion);
  connect(&pages_.service(), &ServicePage::readRequested, &service_, &ServiceCommands::ReadBlock);
  connect(&pages_.service(), &ServicePage::dumpRequested, this,
          [this] { Run(Command::kServiceDump); });
  connect(&trace_, &TraceCommand::keptChanged, this,
          [this](bool kept) { menus_->SetChecked(kTraceEntry, kept); });
  connect(navigation_, &Navigation::pageShown, this,
          [this](bool has_channels) { menus_->SetEnabled(kEditChannelEntry, has_channels); });
  connect(navigation_, &Navigation::bandWanted, this, [this](Band band) {
    pages_.settings1().ShowBand(band);
    ChooseBand(band);
  });
  connect(&lists_, &ListCommands::imported, this,
          [this](const ImportReport& report) { pages_.ShowImported(report); });
  connect(&lists_, &ListCommands::accounted, checkup_, &CheckUpCommand::KeepNotes);
  connect(&radio_, &RadioCommands::channelsRead, checkup_, &CheckUpCommand::ForgetNotes);
  connect(checkup_, &CheckUpCommand::notesKept, this,
          [this](bool kept) { menus_->SetEnabled(kImportNotesEntry, kept); });
  connect(checkup_, &CheckUpCommand::checkRequested, this, [this] { Run(Command::kCheckAgain); });
  connect(checkup_, &CheckUpCommand::placeChosen, this, [this](const Place& place) {
    if (MayRun()) navigation_->GoTo(place);
  });
  connect(net_, &SafetyNet::restWanted, this, [this] { Run(Command::kWriteRest); });
  connect(this, &frmMain::ready, &net_->units(), &UnitCommands::FindRest);
}

// ---- start-up and exit

void frmMain::StartUp() {
  session_.SetBusy(Session::Busy::kStarting);
  show();
  // Timer1 serves the pause and, from then on, the link.
  auto* timer = findChild<QTimer*>(QStringLiteral("Timer1"));
  connect(timer, &QTimer::timeout, this, &frmMain::FinishStartUp, Qt::SingleShotConnection);
  timer->start(options_.start_pause);
}

void frmMain::FinishStartUp() {
  if (!isVisible()) return;  // closed in the meantime
  size_->Fit();
  findChild<QTimer*>(QStringLiteral("Timer1"))->setInterval(kLinkTimerInterval);
  setWindowTitle(Shown(kWindowTitle));
  navigation_->SwitchTab(navigation_->tabs().currentIndex());
  session_.SetBusy(Session::Busy::kNo);
  if (!options_.startup_path.empty()) files_.OpenCloneFile(options_.startup_path);
  session_.document().ForgetChanges();
  ShowStatus();
  emit ready();
}

void frmMain::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (session_.busy() == Session::Busy::kTalking) return net_->stop().AskToClose();
  // Intended: changed channels alone are not asked about.
  if (document().SettingsChanged() && !files_.AskToSave()) return;
  session_.KeepPortNumber();
  while (!windows_.empty()) {  // the one opened last goes first
    windows_.back()->close();
    windows_.pop_back();
  }
  if (!isMinimized()) UserOptions::RememberPlacement(size_->Placement());
  journal_->Forget();
  event->accept();
}

// ---- commands

void frmMain::Run(Command command) {
  // The start-up pause keeps nobody from leaving.
  const bool leaves = session_.busy() == Session::Busy::kStarting && command == Command::kExit;
  if (leaves || MayRun()) Execute(command);
}

// Says so when the radio is in the way.
bool frmMain::MayRun() {
  if (session_.busy() == Session::Busy::kTalking) {
    status_->Hint(tr("Please wait until the radio is done."));
  }
  return !IsBusy();
}

void frmMain::Execute(Command command) {
  using S = Sequences;
  switch (command) {
    case Command::kNone: return;
    case Command::kNew: return files_.NewCommand();
    case Command::kOpen: return files_.Open();
    case Command::kSave: files_.Save(); return;
    case Command::kSaveAs: files_.SaveAs(pages_.settings1().ChosenModel()); return;
    case Command::kRestoreUnsaved: return journal_->OfferAll();
    case Command::kImport: return lists_.Import();
    case Command::kImportOther:
      return ImportOther({session_, prompts_, lists_, options_.user_folder}, *this);
    case Command::kExport: return lists_.Export();
    case Command::kExit: close(); return;
    case Command::kUndo: return undo_.Undo();
    case Command::kRedo: return undo_.Redo();
    case Command::kEditChannel: return editor_.OpenCurrent(navigation_->tabs().currentIndex());
    case Command::kReadSettings: return radio_.Read(&S::ReadSettings);
    case Command::kReadMemory: return radio_.Read(&S::ReadMemory);
    case Command::kWriteSettings: return radio_.Write(Half::kSettings);
    case Command::kWriteMemory: return radio_.Write(Half::kMemory);
    case Command::kAutoSelect: return radio_.Read(&S::AutoSelect);
    case Command::kMenuReadSettings:
      return radio_.ReadFromMenu(&S::ReadSettings, Sequence::kReadSettings);
    case Command::kMenuReadMemory:
      return radio_.ReadFromMenu(&S::ReadMemory, Sequence::kReadMemory);
    case Command::kMenuReadAll: return radio_.ReadFromMenu(&S::ReadAll, Sequence::kReadSettings);
    case Command::kMenuWriteSettings: return radio_.WriteFromMenu(Half::kSettings);
    case Command::kMenuWriteMemory: return radio_.WriteFromMenu(Half::kMemory);
    case Command::kMenuWriteAll: return radio_.WriteFromMenu(Half::kBoth);
    case Command::kWriteChanges: return net_->units().WriteChanges();
    case Command::kWriteRest: return net_->units().WriteRest();
    case Command::kBackups: return net_->backups().Show();
    case Command::kChoosePort: return ChoosePort();
    case Command::kCheckUp: return checkup_->Show();
    case Command::kCheckAgain: return checkup_->CheckAgain();
    case Command::kChannelList: return channels_->Show();
    case Command::kCard: return CardCommand(session_, prompts_, *this).Run();
    case Command::kImportNotes: return checkup_->ShowNotes();
    case Command::kChanges: return changes_->Show();
    case Command::kService: return navigation_->ShowService();
    case Command::kServiceDump: return service_.Dump();
    case Command::kTrace: return trace_.Toggle();
    case Command::kHelp: return help_->Explain(focusWidget());
    case Command::kAbout: return About();
  }
}

// An option that may not be chosen goes back to what the document has.
void frmMain::ChooseModel(int model) {
  if (IsBusy() || !files_.SelectModel(model)) pages_.settings1().ShowModel(document().model());
}

void frmMain::ChooseBand(Band band) {
  if (IsBusy()) return pages_.settings1().ShowBand(document().image().ShownBand);
  session_.document().ChooseBand(band);
}

void frmMain::ChoosePort() {
  dlgCOM dialog(
      session_.port().number(), [this] { return session_.port().States(); }, this);
  if (dialog.exec() == QDialog::Accepted) session_.port().SetNumber(dialog.Number());
  ShowStatus();
}

void frmMain::About() { frmAbout(status_->port(), this).exec(); }

// ---- what the window shows of the session

void frmMain::ShowTitle() {
  QString title = Shown(kWindowTitle);
  if (!session_.path().empty()) title += QStringLiteral(" - ") + Shown(FileName(session_.path()));
  // "[*]" in a title is a mark of the toolkit's own.
  setWindowTitle(title.replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
  ShowStatus();
}

void frmMain::ShowStatus() {
  const QString part = session_.part().Text();
  QString state = document().HasChanges() ? tr("Changed") : tr("Not changed");
  if (!part.isEmpty()) state += tr(", part of a radio");
  status_->ShowFacts(
      {tr("%1 version %2")
           .arg(Shown(ModelName(document().model())), document().image().VersionA ? "A" : "0"),
       tr("COM %1: %2").arg(session_.port().number()).arg(session_.port().device()), state, part});
}

void frmMain::ShowChange(const DocumentChange& change) {
  pages_.Show(change);
  if (change.edit) status_->Action();
  if (change.edit || change.model) ShowStatus();
}

void frmMain::ShowWindow(QWidget& window) {
  std::erase(windows_, &window);
  windows_.push_back(&window);
  window.show();
  window.raise();
  window.activateWindow();
}

// After the layout has given the pages their new size.
void frmMain::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  QTimer::singleShot(0, navigation_, &Navigation::PlaceService);
}

}  // namespace q40
