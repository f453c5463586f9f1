// The window's radio commands. The sequences run here, on the window's thread, and hand it to the
// event loop while they wait.
#include <cctype>

#include <QAction>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>
#include <QTabWidget>

#include "app/frm_main.h"
#include "app/report_window.h"
#include "app/routing.h"
#include "app/service_page.h"
#include "app/user_options.h"
#include "editor/memory_page.h"
#include "editor/message_box.h"
#include "editor/special_channels.h"
#include "files/clone_file.h"
#include "image/hex.h"
#include "settings/settings_page1.h"
#include "settings/settings_page2.h"

namespace q40 {
namespace {

constexpr int kSettings1Tab = 0;
constexpr int kMemoryTab = 2;

bool MovesMemory(Sequence sequence) {
  return sequence == Sequence::kReadMemory || sequence == Sequence::kWriteMemory;
}

QString Doing(Sequence sequence) {
  switch (sequence) {
    case Sequence::kReadSettings: return frmMain::tr("Reading settings");
    case Sequence::kReadMemory: return frmMain::tr("Reading memory");
    case Sequence::kWriteSettings: return frmMain::tr("Writing settings");
    case Sequence::kWriteMemory: return frmMain::tr("Writing memory");
    case Sequence::kBackUp: return frmMain::tr("Backing up the radio");
    case Sequence::kVerify: return frmMain::tr("Verifying");
    default: return frmMain::tr("Identifying the radio");
  }
}

// Why and where a sequence ended, a sentence, with what to try next.
QString Reason(const SequenceReport& report) {
  std::string text = report.why + '.';
  if (report.outcome == Outcome::kCommunicationError) text = report.where + ": " + text;
  if (!report.remedy.empty()) text += ' ' + report.remedy;
  text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
  return QString::fromStdString(text);
}

}  // namespace

// ---- commands

void frmMain::AutoSelect() { Talk(&Sequences::AutoSelect); }
void frmMain::ReadSettings() { Talk(&Sequences::ReadSettings); }
void frmMain::ReadMemory() { Talk(&Sequences::ReadMemory); }
void frmMain::WriteSettings() { Write(Half::kSettings); }
void frmMain::WriteMemory() { Write(Half::kMemory); }
void frmMain::MenuReadSettings() {
  TalkFromMenu(&Sequences::ReadSettings, Sequence::kReadSettings);
}
void frmMain::MenuReadMemory() { TalkFromMenu(&Sequences::ReadMemory, Sequence::kReadMemory); }
void frmMain::MenuReadAll() { TalkFromMenu(&Sequences::ReadAll, Sequence::kReadSettings); }
void frmMain::MenuWriteSettings() { WriteFromMenu(Half::kSettings); }
void frmMain::MenuWriteMemory() { WriteFromMenu(Half::kMemory); }
void frmMain::MenuWriteAll() { WriteFromMenu(Half::kBoth); }

void frmMain::Talk(SequenceReport (Sequences::*sequence)()) {
  CollectSettings();
  SetBusy(Busy::kTalking);
  (sequences_.*sequence)();
  SetBusy(Busy::kNo);
  ShowStatus();
  CheckNewData();
}

// A menu entry first brings the page that shows the data to the front.
void frmMain::TalkFromMenu(SequenceReport (Sequences::*sequence)(), Sequence first) {
  ShowPageOf(first);
  follow_pages_ = true;
  Talk(sequence);
  follow_pages_ = false;
}

// ---- writing

void frmMain::Write(Half half) {
  if (report_ != nullptr) report_->hide();  // it tells of another write
  CollectSettings();
  SetBusy(Busy::kTalking);
  std::string backup;
  const WriteNet net = Net(backup);
  const WriteResult result = SafeWrite(link_, document_, *this, half, net);
  SetBusy(Busy::kNo);
  ShowStatus();
  ReportWrite(result, half, backup);
}

void frmMain::WriteFromMenu(Half half) {
  ShowPageOf(half == Half::kMemory ? Sequence::kWriteMemory : Sequence::kWriteSettings);
  follow_pages_ = true;
  Write(half);
  follow_pages_ = false;
}

// What the user has switched on in the Tools menu. `backup` becomes the path of the backup and must
// outlive the net.
WriteNet frmMain::Net(std::string& backup) {
  WriteNet net;
  // The check marks, and not what is remembered of them: that may be out of reach.
  const auto is_on = [this](const char* name) {
    return findChild<QAction*>(QLatin1String(name))->isChecked();
  };
  net.verify = is_on("mnuVerify");
  if (is_on("mnuBackUp")) {
    net.keep_backup = [this, &backup](const CloneDocument& radio) {
      backup = KeepBackup(radio);
      return !backup.empty();
    };
  }
  return net;
}

// The path of the new file, named after model and time. Empty: the user has been told why.
std::string frmMain::KeepBackup(CloneDocument radio) {
  QDir().mkpath(QString::fromStdString(backup_folder_));
  const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
  std::string name(ModelName(radio.model));
  name.insert(0, backup_folder_ + '/').append(" ").append(time.toStdString());
  std::string path = name + ".Q40";
  for (int copy = 2; QFileInfo::exists(QString::fromStdString(path)); ++copy) {
    path = name + " (" + std::to_string(copy) + ").Q40";
  }
  if (const auto problem = SaveCloneFile(path, radio, radio.model, NewFilesOnly())) {
    const std::string text =
        "The backup could not be kept, so nothing was written.\r\n" + problem->Message();
    ShowMessage(this, QMessageBox::Critical, kErrorTitle, text.c_str());
    return {};
  }
  UserOptions::AddRecentFile(QString::fromStdString(path));
  return path;
}

// In the status bar; with a net, which has more to tell, in a window too.
void frmMain::ReportWrite(const WriteResult& result, Half half, const std::string& backup) {
  // That a backup could not be kept has been said, at length.
  if (result.last.outcome == Outcome::kCancelled) return;
  const bool done = result.last.outcome == Outcome::kDone;
  const QString kept = QString::fromStdString(backup);
  QStringList lines;
  for (const CellDifference& difference : result.differences) {
    lines << QString::fromStdString(DifferenceText(difference));
  }
  if (done && lines.isEmpty()) {
    QString text =
        result.stage == WriteResult::Stage::kVerify ? tr("Written and verified.") : tr("Written.");
    if (result.backup_kept) {
      text += tr(" Before, the radio held %1 (Recent Files).").arg(QFileInfo(kept).fileName());
    }
    return Note(text);
  }
  const char* const command = half == Half::kSettings ? "Write Settings"
                              : half == Half::kMemory ? "Write Memory"
                                                      : "Write All";
  const QString restore = tr("open it (Recent Files) and choose %1 in the Radio menu. It is\n%2")
                              .arg(QLatin1String(command), kept);
  QString text = QString::fromStdString(AftermathText(result, half, restore.toStdString()));
  if (done) {
    text =
        tr("The radio did not keep everything. These are the differences between what was "
           "written and what it holds.");
    if (result.backup_kept) text += tr(" To bring the backup back: ") + restore;
  } else if (result.last.outcome != Outcome::kWrongModel) {
    text = Reason(result.last) + QLatin1Char(' ') + text;
  }
  NoteFailure(QString(text).replace(QLatin1Char('\n'), QLatin1Char(' ')));
  if (!result.backup_kept && result.stage != WriteResult::Stage::kVerify) return;
  if (report_ == nullptr) report_ = new ReportWindow(this);
  report_->Tell(text, lines);
  ShowWindow(*report_);
}

void frmMain::ShowPageOf(Sequence sequence) {
  const int current = tabs_->currentIndex();
  if (MovesMemory(sequence)) {
    SwitchTab(kMemoryTab);
  } else {
    SwitchTab(current == kMemoryTab ? kSettings1Tab : current);
  }
}

// ---- what the sequences report

void frmMain::Begin(Sequence sequence) {
  const bool shows_pages = sequence != Sequence::kBackUp && sequence != Sequence::kVerify;
  if (follow_pages_ && shows_pages) ShowPageOf(sequence);
  SetCloneButtonsEnabled(false);
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  statusBar()->showMessage(Doing(sequence));
  if (sequence == Sequence::kWriteMemory) {
    memory_->progress().setValue(0);
    memory_->progress().show();
  }
}

void frmMain::ShowProgress(const SequenceProgress& progress) {
  if (MovesMemory(progress.sequence)) {
    memory_->progress().setValue(progress.done);
    memory_->progress().show();
  }
  ShowStatus();
  if (!note_stays_.hasExpired()) return;
  statusBar()->showMessage(tr("%1 (%2): %3, %4 of %5")
                               .arg(Doing(progress.sequence), model_label_->text(),
                                    QString::fromStdString(progress.where))
                               .arg(progress.done + 1)
                               .arg(progress.total));
}

void frmMain::ShowSettings() {
  settings1_->SetValues(document_.settings);
  settings2_->SetValues(document_.settings);
}

void frmMain::ShowSpecialChannels() {
  settings1_->ShowBand(document_.image.ShownBand);
  UpdateVFOData();
}

void frmMain::ShowDialText(int index) {
  settings2_->SetDialText(index, document_.dial[static_cast<std::size_t>(index)]);
}

void frmMain::ShowMemoryChannel(int n) { memory_->ShowReadChannel(n); }

// ---- the end of a sequence

void frmMain::End(const SequenceReport& report) {
  QGuiApplication::restoreOverrideCursor();
  statusBar()->clearMessage();
  switch (report.outcome) {
    case Outcome::kPortError: NoteFailure(Reason(report)); return ComEnd2();
    case Outcome::kCommunicationError: NoteFailure(Reason(report)); return ComEnd1();
    case Outcome::kWrongModel:
      ShowMessage(this, QMessageBox::Critical, kErrorTitle, kWrongModelText);
      return ComEnd3();
    default: return ComEnd3();
  }
}

void frmMain::ComEnd1() {
  ShowMessage(this, QMessageBox::Critical, kErrorTitle, kCommunicationErrorText);
  ComEnd3();
}

void frmMain::ComEnd2() {
  ShowMessage(this, QMessageBox::Critical, kErrorTitle, kPortErrorText);
  ComEnd3();
}

void frmMain::ComEnd3() {
  SetCloneButtonsEnabled(true);
  memory_->progress().hide();
  memory_->progress().setValue(0);
}

void frmMain::SetCloneButtonsEnabled(bool enabled) {
  settings1_->SetCloneButtonsEnabled(enabled);
  settings1_->SetAutoSelectEnabled(enabled);
  settings2_->SetCloneButtonsEnabled(enabled);
  memory_->SetCloneButtonsEnabled(enabled);
}

// ---- service

void frmMain::BeginService() {
  SetCloneButtonsEnabled(false);
  statusBar()->showMessage(tr("Reading raw blocks"));
}

void frmMain::EndService() {
  SetCloneButtonsEnabled(true);
  statusBar()->clearMessage();
}

void frmMain::ServiceRead(const QString& digits) {
  if (IsBusy()) return;
  SetBusy(Busy::kTalking);
  service_->SetReading(true);
  BeginService();
  service_->ShowReply({});
  // The digits go out as they were typed, and whatever comes back is shown.
  link_.OpenPort();
  link_.ServiceRead("KX~F" + digits.toStdString() + "R\r", [this](const std::string& reply) {
    service_->ShowReply(QString::fromLatin1(reply.data(), static_cast<qsizetype>(reply.size())));
  });
  service_->SetReading(false);
  EndService();
  SetBusy(Busy::kNo);
}

void frmMain::ServiceDump() {
  constexpr int kBlocks = 256;
  constexpr std::size_t kShown = 34;  // 32 digits and the line end
  SetBusy(Busy::kTalking);
  service_->SetDumping(true);
  BeginService();
  link_.OpenPort();
  for (int block = 0; block < kBlocks; ++block) {
    const std::string number = HexByteText(block);
    const auto reply = link_.ServiceRead("KX~F0" + number + "0R\r", {});
    if (!reply) break;
    const std::string tail = reply->substr(reply->size() - std::min(reply->size(), kShown));
    service_->AppendReply(QString::fromStdString(std::string(number).append("\t").append(tail)));
  }
  service_->SetDumping(false);
  EndService();
  SetBusy(Busy::kNo);
}

}  // namespace q40
