// The window's radio commands. The sequences run here, on the window's thread, and hand it to the
// event loop while they wait.
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>
#include <QTabWidget>

#include "app/frm_main.h"
#include "app/service_page.h"
#include "app/tables/settings_items.h"
#include "editor/memory_page.h"
#include "editor/message_box.h"
#include "editor/special_channels.h"
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
    default: return frmMain::tr("Identifying the radio");
  }
}

}  // namespace

// ---- commands

void frmMain::AutoSelect() { Talk(&Sequences::AutoSelect); }
void frmMain::ReadSettings() { Talk(&Sequences::ReadSettings); }
void frmMain::ReadMemory() { Talk(&Sequences::ReadMemory); }
void frmMain::WriteSettings() { Talk(&Sequences::WriteSettings); }
void frmMain::WriteMemory() { Talk(&Sequences::WriteMemory); }
void frmMain::MenuReadSettings() { TalkFromMenu(&Sequences::ReadSettings); }
void frmMain::MenuReadMemory() { TalkFromMenu(&Sequences::ReadMemory); }
void frmMain::MenuReadAll() { TalkFromMenu(&Sequences::ReadAll); }
void frmMain::MenuWriteSettings() { TalkFromMenu(&Sequences::WriteSettings); }
void frmMain::MenuWriteMemory() { TalkFromMenu(&Sequences::WriteMemory); }
void frmMain::MenuWriteAll() { TalkFromMenu(&Sequences::WriteAll); }

void frmMain::Talk(SequenceReport (Sequences::*sequence)()) {
  CollectSettings();
  SetBusy(Busy::kTalking);
  (sequences_.*sequence)();
  SetBusy(Busy::kNo);
  ShowStatus();
  CheckNewData();
}

// A menu entry also brings the page that shows the data to the front.
void frmMain::TalkFromMenu(SequenceReport (Sequences::*sequence)()) {
  follow_pages_ = true;
  Talk(sequence);
  follow_pages_ = false;
}

void frmMain::ShowSettingsTab() {
  if (tabs_->currentIndex() == kMemoryTab) tabs_->setCurrentIndex(kSettings1Tab);
}

// ---- what the sequences report

void frmMain::Begin(Sequence sequence) {
  if (follow_pages_) {
    if (MovesMemory(sequence)) {
      tabs_->setCurrentIndex(kMemoryTab);
    } else {
      ShowSettingsTab();
    }
  }
  SetCloneButtonsEnabled(false);
  memory_->SetLocked(true);
  special_->SetLocked(true);
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
    case Outcome::kPortError: Note(QString::fromStdString(report.why)); return ComEnd2();
    case Outcome::kCommunicationError:
      Note(tr("%1: %2").arg(QString::fromStdString(report.where),
                            QString::fromStdString(report.why)));
      return ComEnd1();
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
  memory_->SetLocked(false);
  special_->SetLocked(false);
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

void frmMain::ServiceRead(const QString& digits) {
  if (IsBusy()) return;
  SetBusy(Busy::kTalking);
  service_->SetReading(true);
  service_->ShowReply({});
  // The digits go out as they were typed, and whatever comes back is shown.
  link_.OpenPort();
  link_.ServiceRead("KX~F" + digits.toStdString() + "R\r", [this](const std::string& reply) {
    service_->ShowReply(QString::fromLatin1(reply.data(), static_cast<qsizetype>(reply.size())));
  });
  service_->SetReading(false);
  SetBusy(Busy::kNo);
}

void frmMain::ServiceDump() {
  constexpr int kBlocks = 256;
  constexpr std::size_t kShown = 34;  // 32 digits and the line end
  SetBusy(Busy::kTalking);
  service_->SetDumping(true);
  link_.OpenPort();
  for (int block = 0; block < kBlocks; ++block) {
    const std::string number = HexByteText(block);
    const auto reply = link_.ServiceRead("KX~F0" + number + "0R\r", {});
    if (!reply) break;
    const std::string tail = reply->substr(reply->size() - std::min(reply->size(), kShown));
    service_->AppendReply(QString::fromStdString(std::string(number).append("\t").append(tail)));
  }
  service_->SetDumping(false);
  SetBusy(Busy::kNo);
}

}  // namespace q40
