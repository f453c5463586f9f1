#include "app/radio_display.h"

#include <QGuiApplication>
#include <QProgressBar>
#include <QTabWidget>

#include "app/main_pages.h"
#include "app/navigation.h"
#include "app/radio_commands.h"
#include "app/radio_texts.h"
#include "app/service_commands.h"
#include "app/session.h"
#include "app/status_line.h"
#include "dialogs/report_window.h"
#include "pages/memory_page.h"
#include "pages/service_page.h"
#include "widgets/input_guard.h"

namespace q40 {

RadioDisplay::RadioDisplay(const Parts& parts, QWidget& window)
    : QObject(&window),
      at_(parts),
      window_(window),
      guard_(new InputGuard(parts.navigation.Frames(), this)),
      focus_(window) {
  connect(&parts.session, &Session::busyChanged, this, &RadioDisplay::ShowBusy);
}

void RadioDisplay::Follow(RadioCommands& radio) {
  using R = RadioCommands;
  connect(&radio, &R::pageWanted, this, &RadioDisplay::ShowPageOf);
  connect(&radio, &R::begun, this, &RadioDisplay::Begin);
  connect(&radio, &R::progressed, this, &RadioDisplay::ShowProgress);
  connect(&radio, &R::ended, this, &RadioDisplay::End);
  connect(&radio, &R::over, this, &RadioDisplay::Over);
  connect(&radio, &R::writeTold, this, &RadioDisplay::ShowReport);
  connect(&radio, &R::writeStarting, this, [this] {
    if (report_ != nullptr) report_->hide();  // it is about another write
  });
}

void RadioDisplay::Follow(ServiceCommands& service) const {
  using S = ServiceCommands;
  ServicePage& page = at_.pages.service();
  connect(&service, &S::readingChanged, &page, &ServicePage::SetReading);
  connect(&service, &S::dumpingChanged, &page, &ServicePage::SetDumping);
  connect(&service, &S::readingChanged, this, &RadioDisplay::ShowService);
  connect(&service, &S::dumpingChanged, this, &RadioDisplay::ShowService);
  connect(&service, &S::replied, &page, &ServicePage::ShowReply);
  connect(&service, &S::dumped, &page, &ServicePage::AppendReply);
}

void RadioDisplay::ShowBusy() {
  const Session::Busy busy = at_.session.busy();
  if (busy == Session::Busy::kTalking) focus_.Keep();
  guard_->SetActive(busy != Session::Busy::kNo);
  // The pages' own shortcuts and mnemonics pass no filter.
  at_.pages.SetLocked(busy != Session::Busy::kNo);
  if (busy == Session::Busy::kTalking) focus_.Park();
  if (busy == Session::Busy::kNo) focus_.Restore(*at_.navigation.tabs().currentWidget());
}

void RadioDisplay::ShowPageOf(Sequence sequence) {
  focus_.ChangePage([&] { at_.navigation.ShowPageOf(sequence); });
}

void RadioDisplay::Begin(Sequence sequence) {
  SetCloneButtonsEnabled(false);
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  at_.status.Doing(DoingText(sequence));
  if (sequence == Sequence::kWriteMemory) {
    at_.pages.memory().progress().setValue(0);
    at_.pages.memory().progress().show();
  }
}

void RadioDisplay::ShowProgress(const SequenceProgress& progress) {
  QProgressBar& bar = at_.pages.memory().progress();
  if (MovesMemory(progress.sequence)) {
    bar.setValue(progress.done);
    bar.show();
  }
  const bool seen = bar.isVisible();
  at_.status.ShowWork(progress.done, seen ? 0 : progress.total);
  at_.status.Doing(ProgressText(progress));
}

void RadioDisplay::End() {
  QGuiApplication::restoreOverrideCursor();
  at_.status.Idle();
}

void RadioDisplay::Over() {
  SetCloneButtonsEnabled(true);
  at_.pages.memory().progress().hide();
  at_.pages.memory().progress().setValue(0);
  at_.status.ShowWork(0, 0);
}

void RadioDisplay::SetCloneButtonsEnabled(bool enabled) {
  at_.pages.SetCloneButtonsEnabled(enabled);
  if (!enabled) focus_.Park();
}

void RadioDisplay::ShowService(bool talking) {
  SetCloneButtonsEnabled(!talking);
  if (talking) {
    at_.status.Doing(tr("Reading raw blocks"));
  } else {
    at_.status.Idle();
  }
}

void RadioDisplay::OfferRest() {
  report_->OfferRest(at_.session.unfinished().pending().has_value());
}

void RadioDisplay::ShowReport(const QString& text, const QStringList& differences) {
  if (report_ == nullptr) {
    report_ = new ReportWindow("frmReport", tr("Write Report"), &window_);
    connect(report_, &ReportWindow::restWanted, this, &RadioDisplay::restWanted);
    connect(report_, &ReportWindow::forgetWanted, this, &RadioDisplay::forgetWanted);
    connect(&at_.session.unfinished(), &UnfinishedWork::changed, report_, [this] { OfferRest(); });
  }
  OfferRest();
  report_->Tell(text, differences);
  emit opened(*report_);
}

}  // namespace q40
