#include "app/frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QFrame>
#include <QMimeData>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

#include "app/status_line.h"
#include "app/user_options.h"
#include "dialogs/dlg_com.h"
#include "dialogs/dlg_modify.h"
#include "dialogs/frm_about.h"
#include "dialogs/help_desk.h"
#include "document/defaults.h"
#include "pages/memory_page.h"
#include "pages/service_page.h"
#include "pages/settings_page1.h"
#include "pages/settings_page2.h"
#include "pages/special_channels.h"
#include "widgets/input_guard.h"
#include "widgets/message_box.h"
#include "widgets/outer_size.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

constexpr int kSettings1Tab = 0;
constexpr int kSettings2Tab = 1;
constexpr int kMemoryTab = 2;
constexpr std::chrono::milliseconds kLinkTimerInterval{500};

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

frmMain::frmMain(const MainOptions& options)
    : document_(FreshDocument()),
      startup_path_(options.startup_path),
      backup_folder_(options.backup_folder),
      start_pause_(options.start_pause),
      port_file_(options.program_folder, options.user_folder),
      port_(new ComPort(options.simulation, this)),
      events_(this),
      link_(port_->port(), events_.Timers(), events_),
      sequences_(link_, document_, *this),
      focus_(*this),
      status_(new StatusLine(this)),
      size_(new OuterSize(*this)) {
  setObjectName(QStringLiteral("frmMain"));
  port_->setObjectName(QStringLiteral("MSComm1"));
  setWindowTitle(Text(kWindowTitle));
  setContextMenuPolicy(Qt::NoContextMenu);
  setAcceptDrops(true);
  setStatusBar(status_);
  MakePages();
  ConnectPages();
  MakeMenus();
  MakeToolBar();
  modify_ = new dlgModify(this);
  port_->SetNumber(port_file_.Read());
  ShowDocument();
  ChangeFont();
  ShowStatus();
}

frmMain::~frmMain() = default;

// ---- start-up and exit

void frmMain::StartUp() {
  SetBusy(Busy::kStarting);
  show();
  // Timer1 serves the pause and, from then on, the link.
  auto* timer = findChild<QTimer*>(QStringLiteral("Timer1"));
  connect(timer, &QTimer::timeout, this, &frmMain::FinishStartUp, Qt::SingleShotConnection);
  timer->start(start_pause_);
}

void frmMain::FinishStartUp() {
  if (!isVisible()) return;  // closed in the meantime
  size_->Fit();
  findChild<QTimer*>(QStringLiteral("Timer1"))->setInterval(kLinkTimerInterval);
  setWindowTitle(Text(kWindowTitle));
  SwitchTab(tabs_->currentIndex());
  SetBusy(Busy::kNo);
  if (!startup_path_.empty()) {
    OpenCloneFile(startup_path_);
    startup_path_.clear();
  }
  document_.SettingsChanged = false;
  document_.MemoryChanged = false;
  ShowStatus();
  emit ready();
}

void frmMain::SetBusy(Busy busy) {
  busy_ = busy;
  if (busy == Busy::kTalking) focus_.Keep();
  guard_->SetActive(busy != Busy::kNo);
  // The pages' own shortcuts and mnemonics pass no filter.
  memory_->SetLocked(busy != Busy::kNo);
  special_->SetLocked(busy != Busy::kNo);
  if (busy == Busy::kTalking) focus_.Park();
  if (busy == Busy::kNo) focus_.Restore(*tabs_->currentWidget());
}

void frmMain::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (busy_ == Busy::kTalking) return status_->Hint(tr("The radio is being read or written."));
  // Intended: changed channels alone are not asked about.
  if (document_.SettingsChanged && !AskToSave()) return;
  port_file_.Write(port_->number());
  while (!windows_.empty()) {  // the one opened last goes first
    windows_.back()->close();
    windows_.pop_back();
  }
  if (!isMinimized()) UserOptions::RememberPlacement(size_->Placement());
  event->accept();
}

// ---- commands

void frmMain::Run(Command command) {
  // The start-up pause keeps nobody from leaving.
  const bool leaves = busy_ == Busy::kStarting && command == &frmMain::Exit;
  if (leaves || MayRun()) (this->*command)();
}

// Says so when the radio is in the way.
bool frmMain::MayRun() {
  if (busy_ == Busy::kTalking) status_->Hint(tr("Please wait until the radio is done."));
  return busy_ == Busy::kNo;
}

// Shows the page of a tab, also when it is the current one and the service page lies over it.
void frmMain::SwitchTab(int tab) {
  tabs_->setCurrentIndex(tab);
  frames_[3]->hide();
  for (int i = 0; i < tabs_->count(); ++i)
    frames_[static_cast<std::size_t>(i)]->setEnabled(i == tab);
  edit_channel_->setEnabled(tab != kSettings2Tab);
}

void frmMain::ShowService() {
  for (const std::size_t page : {0U, 1U, 2U}) frames_[page]->setEnabled(false);
  edit_channel_->setEnabled(false);
  PlaceService();
  frames_[3]->show();
  frames_[3]->raise();
  service_->setFocus();
}

// Over the current page, which keeps its size.
void frmMain::PlaceService() {
  const QWidget* page = tabs_->currentWidget();
  frames_[3]->setGeometry(QRect(page->mapTo(tabs_, QPoint(0, 0)), page->size()));
}

void frmMain::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  // After the layout has given the pages their new size.
  QTimer::singleShot(0, this, &frmMain::PlaceService);
}

void frmMain::ToggleToolBar(bool visible) {
  findChild<QToolBar*>(QStringLiteral("tbToolBar"))->setVisible(visible);
}

void frmMain::ToggleStatusBar(bool visible) { status_->setVisible(visible); }

void frmMain::EditCurrent() {
  if (tabs_->currentIndex() == kSettings1Tab) OpenSpecialChannel(special_->grid().CurrentRow() - 1);
  if (tabs_->currentIndex() == kMemoryTab) OpenMemoryChannel(memory_->grid().CurrentRow() - 1);
}

void frmMain::ChoosePort() {
  dlgCOM dialog(
      port_->number(), [this] { return port_->States(); }, this);
  if (dialog.exec() == QDialog::Accepted) port_->SetNumber(dialog.Number());
  ShowStatus();
}

void frmMain::About() { frmAbout(status_->port(), this).exec(); }
void frmMain::Help() { help_->Explain(focusWidget()); }

void frmMain::ShowWindow(QWidget& window) {
  std::erase(windows_, &window);
  windows_.push_back(&window);
  window.show();
  window.raise();
  window.activateWindow();
}

// ---- the status bar

void frmMain::ShowStatus() {
  QString state = HasChanges() ? tr("Changed") : tr("Not changed");
  if (!part_.Text().isEmpty()) state += tr(", part of a radio");
  status_->ShowFacts(
      {tr("%1 version %2")
           .arg(Text(ModelName(document_.model)), document_.image.VersionA ? "A" : "0"),
       tr("COM %1: %2").arg(port_->number()).arg(port_->device()), state, part_.Text()});
}

void frmMain::Edited() {
  status_->Action();
  ShowStatus();
}

void frmMain::Note(const QString& text) { status_->Result(text); }
void frmMain::NoteFailure(const QString& text) { status_->Failure(text); }

// The document starts anew, with the defaults of its model. While a radio is talked to this is part of
// what is told at the end.
void frmMain::NoteStart() {
  let_go_.clear();
  if (!path_.empty()) {
    let_go_ = tr(" Before, %1 was open.").arg(Shown(FileName(path_)));
  }
  if (busy_ == Busy::kTalking) return;
  Note(tr("Started anew with the defaults of the %1.").arg(Text(ModelName(document_.model))) +
       let_go_);
}

bool frmMain::HasChanges() const { return document_.SettingsChanged || document_.MemoryChanged; }

// ---- the document on the pages

void frmMain::ShowDocument() {
  settings1_->ShowModel(document_.model);
  ShowSettings();
  UpdateVFOData();
  ShowDialTexts();
  memory_->RedrawAll();
  ForgetImportNotes();
  part_.Forget();
  ShowStatus();
  CheckNewData();
}

void frmMain::ShowDialTexts() {
  for (int index = 0; index < kDialCount; ++index) ShowDialText(index);
}

// The dialer memories are taken over as they are edited.
void frmMain::CollectSettings() {
  settings2_->LeaveDialer();
  settings1_->TakeValues(document_.settings);
  settings2_->TakeValues(document_.settings);
}

void frmMain::ChangeFont() {
  memory_->grid().ChangeFont();
  special_->grid().ChangeFont();
}

void frmMain::UpdateVFOData() { special_->UpdateVFOData(); }

void frmMain::ChooseBand(Band band) {
  if (IsBusy()) return settings1_->ShowBand(document_.image.ShownBand);
  q40::ShowBand(document_.image, band);
  UpdateVFOData();
}

// ---- the edit dialog

void frmMain::OpenMemoryChannel(int n) {
  CloneImage& image = document_.image;
  const auto row = static_cast<std::size_t>(n);
  modify_->Prepare({.kind = ChannelKind::kMemory,
                    .index = n,
                    .band = image.ShownBand,
                    .model = settings1_->ChosenModel(),
                    .range = VersionOf(image),
                    .in_use = image.ChannelInUse[row],
                    .record = image.MemoryTable[row],
                    .fresh = image.TemplateChannel()});
  if (modify_->exec() != QDialog::Accepted) return;
  document_.MemoryChanged = true;
  image.ChannelInUse[row] = true;
  document_.SettingsChanged = true;
  image.MemoryTable[row] = modify_->Result();
  memory_->Grid1Data(n);
  Edited();
}

void frmMain::OpenSpecialChannel(int k) {
  CloneImage& image = document_.image;
  const auto row = static_cast<std::size_t>(k);
  modify_->Prepare({.kind = ChannelKind::kSpecial,
                    .index = k,
                    .band = image.ShownBand,
                    .model = settings1_->ChosenModel(),
                    .range = VersionOf(image),
                    .in_use = true,
                    .record = image.ShownSpecialSet[row],
                    .fresh = {}});
  if (modify_->exec() != QDialog::Accepted) return;
  document_.SettingsChanged = true;  // intended: MemoryChanged stays
  image.ShownSpecialSet[row] = modify_->Result();
  if (k >= kPhRow) image.ShownPresent[row - kPhRow] = true;
  StoreShownRow(image, k);
  special_->Grid2Data(k);
  Edited();
}

// ---- a file dropped on the window

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (!IsBusy() && urls.size() == 1 && urls.front().isLocalFile()) event->acceptProposedAction();
}

void frmMain::dropEvent(QDropEvent* event) {
  if (IsBusy()) return;
  event->acceptProposedAction();
  const std::string path = PathBytes(event->mimeData()->urls().front());
  // After the drop is over: a question must not keep the other program waiting.
  QTimer::singleShot(0, this, [this, path] {
    if (!IsBusy()) OpenAfterQuestion(path);
  });
}

}  // namespace q40
