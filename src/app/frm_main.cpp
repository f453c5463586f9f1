#include "app/frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFrame>
#include <QLabel>
#include <QMimeData>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

#include "app/dlg_com.h"
#include "app/frm_about.h"
#include "app/help_window.h"
#include "app/input_guard.h"
#include "app/service_page.h"
#include "app/user_options.h"
#include "editor/dlg_modify.h"
#include "editor/memory_page.h"
#include "editor/message_box.h"
#include "editor/special_channels.h"
#include "image/defaults.h"
#include "settings/settings_page1.h"
#include "settings/settings_page2.h"

namespace q40 {
namespace {

constexpr int kSettings1Tab = 0;
constexpr int kSettings2Tab = 1;
constexpr int kMemoryTab = 2;
constexpr std::chrono::milliseconds kLinkTimerInterval{500};
constexpr int kNoteMs = 15000;
constexpr int kFailureNoteMs = 60000;
constexpr int kTwipsPerPixel = 15;  // at 96 dpi
constexpr int kWindowWidthTwips = 12370;
constexpr int kWindowHeightTwips = 8305;

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

int Pixels(int twips) { return (twips + kTwipsPerPixel / 2) / kTwipsPerPixel; }

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
      sequences_(link_, document_, *this) {
  setObjectName(QStringLiteral("frmMain"));
  port_->setObjectName(QStringLiteral("MSComm1"));
  setWindowTitle(Text(kWindowTitle));
  setContextMenuPolicy(Qt::NoContextMenu);
  setAcceptDrops(true);
  resize(Pixels(kWindowWidthTwips), Pixels(kWindowHeightTwips));
  MakePages();
  ConnectPages();
  MakeStatusBar();
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
  guard_->SetActive(busy != Busy::kNo);
  // The pages' own shortcuts and mnemonics pass no filter.
  memory_->SetLocked(busy != Busy::kNo);
  special_->SetLocked(busy != Busy::kNo);
}

void frmMain::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (busy_ == Busy::kTalking) return Note(tr("The radio is being read or written."));
  // Intended: changed channels alone are not asked about.
  if (document_.SettingsChanged && !AskToSave()) return;
  port_file_.Write(port_->number());
  while (!windows_.empty()) {  // the one opened last goes first
    windows_.back()->close();
    windows_.pop_back();
  }
  if (!isMinimized()) UserOptions::RememberPlacement(frameGeometry());
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
  if (busy_ == Busy::kTalking) Note(tr("Please wait until the radio is done."));
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

void frmMain::ToggleStatusBar(bool visible) { statusBar()->setVisible(visible); }

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

void frmMain::About() { frmAbout(port_label_->text(), this).exec(); }

void frmMain::Help() {
  if (help_ == nullptr) help_ = new HelpWindow(this);
  ShowWindow(*help_);
}

void frmMain::ShowWindow(QWidget& window) {
  std::erase(windows_, &window);
  windows_.push_back(&window);
  window.show();
  window.raise();
  window.activateWindow();
}

// ---- the status bar

void frmMain::ShowStatus() {
  model_label_->setText(
      tr("%1 version %2")
          .arg(Text(ModelName(document_.model)), document_.image.VersionA ? "A" : "0"));
  port_label_->setText(tr("COM %1: %2").arg(port_->number()).arg(port_->device()));
  file_label_->setText(HasChanges() ? tr("Changed") : tr("Not changed"));
}

void frmMain::Note(const QString& text) {
  constexpr std::chrono::milliseconds kReadingTime{2000};
  statusBar()->showMessage(text, kNoteMs);
  note_stays_.setRemainingTime(kReadingTime);
}

void frmMain::NoteFailure(const QString& text) { statusBar()->showMessage(text, kFailureNoteMs); }

// A long message takes the place of the permanent texts, and a longer one can be read in its tool
// tip.
void frmMain::MakeRoomFor(const QString& message) {
  QStatusBar* bar = statusBar();
  bar->setToolTip(message);
  const int needed = bar->fontMetrics().horizontalAdvance(message);
  constexpr int kAroundALabel = 12;  // and around the message, and the size grip
  int taken = 5 * kAroundALabel;
  for (const QLabel* label : {model_label_, port_label_, file_label_}) {
    taken += label->sizeHint().width() + kAroundALabel;
  }
  const bool fits = needed + taken <= bar->width();
  for (QLabel* label : {model_label_, port_label_, file_label_}) label->setVisible(fits);
}

bool frmMain::HasChanges() const { return document_.SettingsChanged || document_.MemoryChanged; }

// ---- the document on the pages

void frmMain::ShowDocument() {
  settings1_->ShowModel(document_.model);
  ShowSettings();
  UpdateVFOData();
  ShowDialTexts();
  memory_->RedrawAll();
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
  ShowStatus();
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
  ShowStatus();
}

// ---- a file dropped on the window

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (!IsBusy() && urls.size() == 1 && urls.front().isLocalFile()) event->acceptProposedAction();
}

void frmMain::dropEvent(QDropEvent* event) {
  if (IsBusy()) return;
  event->acceptProposedAction();
  const std::string path = event->mimeData()->urls().front().toLocalFile().toStdString();
  // After the drop is over: a question must not keep the other program waiting.
  QTimer::singleShot(0, this, [this, path] {
    if (!IsBusy()) OpenAfterQuestion(path);
  });
}

}  // namespace q40
