// The window's radio commands. The sequences run here, on the window's thread, and hand it to the
// event loop while they wait.
#include <filesystem>

#include <QAction>
#include <QDateTime>
#include <QFrame>
#include <QGuiApplication>
#include <QProgressBar>
#include <QTabWidget>

#include "app/frm_main.h"
#include "app/routing.h"
#include "app/status_line.h"
#include "app/user_options.h"
#include "base/hex.h"
#include "dialogs/report_window.h"
#include "files/clone_file.h"
#include "pages/memory_page.h"
#include "pages/service_page.h"
#include "pages/settings_page1.h"
#include "pages/settings_page2.h"
#include "pages/special_channels.h"
#include "widgets/message_box.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

constexpr int kSettings1Tab = 0;
constexpr int kMemoryTab = 2;

bool MovesMemory(Sequence sequence) {
  return sequence == Sequence::kReadMemory || sequence == Sequence::kWriteMemory;
}

bool Reads(Sequence sequence) {
  return sequence == Sequence::kReadMemory || sequence == Sequence::kReadSettings;
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
  let_go_.clear();
  SetBusy(Busy::kTalking);
  const SequenceReport report = (sequences_.*sequence)();
  SetBusy(Busy::kNo);
  ReportRead(report);
  ShowStatus();
  CheckNewData();
}

// Of what failed, End has told before its message box.
void frmMain::ReportRead(const SequenceReport& report) {
  if (report.outcome != Outcome::kDone) return;
  const QString text = ReadText(part_.sequence(), report) + let_go_;
  if (report.note.empty()) return Note(text);
  NoteFailure(QString::fromStdString(report.note) + QLatin1String(". ") + text);
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
  let_go_.clear();
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
  std::error_code error;  // of a folder that cannot be had the save tells
  std::filesystem::create_directories(backup_folder_, error);
  const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
  std::string name(ModelName(radio.model));
  name.insert(0, backup_folder_ + '/').append(" ").append(time.toStdString());
  std::string path = name + ".Q40";
  for (int copy = 2; std::filesystem::exists(path, error); ++copy) {
    path = name + " (" + std::to_string(copy) + ").Q40";
  }
  if (const auto problem = SaveCloneFile(path, radio, radio.model, NewFilesOnly())) {
    const QString text =
        tr("The backup could not be kept, so nothing was written.\n") + Shown(problem->Message());
    ShowMessage(this, QMessageBox::Critical, kErrorTitle, text.toUtf8().constData());
    return {};
  }
  UserOptions::AddRecentFile(path);
  return path;
}

// In the status bar; what touched the radio and did not end well, in a window too.
void frmMain::ReportWrite(const WriteResult& result, Half half, const std::string& backup) {
  // That a backup could not be kept has been said, at length.
  if (result.last.outcome == Outcome::kCancelled) return;
  const WriteAccount account = AccountOf(result, half, {Shown(FileName(backup)), Shown(backup)});
  if (account.good) return Note(account.text);
  NoteFailure(account.text);
  if (!account.at_length) return;
  if (report_ == nullptr) report_ = new ReportWindow(this);
  report_->Tell(account.text, account.differences);
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
  part_.Begin(sequence);
  SetCloneButtonsEnabled(false);
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  status_->Doing(DoingText(sequence));
  if (sequence == Sequence::kWriteMemory) {
    memory_->progress().setValue(0);
    memory_->progress().show();
  }
}

void frmMain::ShowProgress(const SequenceProgress& progress) {
  QProgressBar& bar = memory_->progress();
  if (MovesMemory(progress.sequence)) {
    bar.setValue(progress.done);
    bar.show();
  }
  const bool seen = bar.isVisible();
  status_->ShowWork(progress.done, seen ? 0 : progress.total);
  status_->Doing(ProgressText(progress));
  ShowStatus();
}

void frmMain::ShowSettings() {
  part_.SettingsArrived();
  settings1_->SetValues(document_.settings);
  settings2_->SetValues(document_.settings);
}

void frmMain::ShowSpecialChannels() {
  settings1_->ShowBand(document_.image.ShownBand);
  UpdateVFOData();
  ForgetImportNotes();
}

void frmMain::ShowDialText(int index) {
  settings2_->SetDialText(index, document_.dial[static_cast<std::size_t>(index)]);
}

void frmMain::ShowMemoryChannel(int n) {
  part_.ChannelArrived(n);
  memory_->ShowReadChannel(n);
  ForgetImportNotes();
}

// ---- the end of a sequence

void frmMain::End(const SequenceReport& report) {
  QGuiApplication::restoreOverrideCursor();
  status_->Idle();
  part_.End(report);
  // Before the message box, whose few words it explains.
  switch (report.outcome) {
    case Outcome::kPortError: NoteEnd(ReasonText(report)); return ComEnd2();
    case Outcome::kCommunicationError: NoteEnd(ReasonText(report)); return ComEnd1();
    case Outcome::kWrongModel:
      NoteEnd(WrongModelText(
          report, part_.sequence() == Sequence::kVerify ? QString() : tr("Nothing was written.")));
      ShowMessage(this, QMessageBox::Critical, kErrorTitle, kWrongModelText);
      return ComEnd3();
    case Outcome::kDataError:
      NoteEnd(ReasonText(report));
      ShowMessage(this, QMessageBox::Critical, kErrorTitle, kDataErrorText);
      return ComEnd3();
    default: return ComEnd3();
  }
}

// Why, what of the radio is here now, and what of the user's is not.
void frmMain::NoteEnd(const QString& why) {
  QStringList sentences = {why};
  if (Reads(part_.sequence()) && !part_.Text().isEmpty()) sentences << part_.Text();
  NoteFailure(sentences.join(QLatin1Char(' ')) + let_go_);
  ShowStatus();
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
  status_->ShowWork(0, 0);
}

void frmMain::SetCloneButtonsEnabled(bool enabled) {
  settings1_->SetCloneButtonsEnabled(enabled);
  settings1_->SetAutoSelectEnabled(enabled);
  settings2_->SetCloneButtonsEnabled(enabled);
  memory_->SetCloneButtonsEnabled(enabled);
  if (!enabled) focus_.Park();
}

// ---- service

void frmMain::BeginService() {
  SetCloneButtonsEnabled(false);
  status_->Doing(tr("Reading raw blocks"));
}

void frmMain::EndService() {
  SetCloneButtonsEnabled(true);
  status_->Idle();
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
