// The window's check-up: the list of findings, and the way from a finding to its place.
#include <QFrame>
#include <QScrollArea>
#include <QTabWidget>

#include "app/frm_main.h"
#include "checkup/checkup.h"
#include "dialogs/checkup_window.h"
#include "pages/memory_page.h"
#include "pages/settings_page1.h"
#include "pages/settings_page2.h"
#include "pages/special_channels.h"

namespace q40 {
namespace {

constexpr int kSettings1Tab = 0;
constexpr int kMemoryTab = 2;

// Name of the control that stands for a setting or a dialer memory.
QString ControlOf(const Place& place) {
  if (place.where == Place::Where::kDialer) return QStringLiteral("txtDial_%1").arg(place.index);
  const std::string_view control = Settings()[static_cast<std::size_t>(place.index)].control;
  return QString::fromUtf8(control.data(), static_cast<qsizetype>(control.size()));
}

}  // namespace

void frmMain::ShowCheckUp() {
  if (checkup_ == nullptr) {
    checkup_ = new CheckUpWindow(this);
    connect(checkup_, &CheckUpWindow::checkRequested, this, [this] { Run(&frmMain::CheckAgain); });
    connect(checkup_, &CheckUpWindow::placeChosen, this, [this](const Place& place) {
      if (MayRun()) GoTo(place);
    });
  }
  CheckAgain();
  ShowWindow(*checkup_);
}

void frmMain::CheckAgain() {
  CollectSettings();
  checkup_->ShowFindings(CheckUp(document_));
}

// Other data is shown: a list of what was wrong with the last would mislead. While a sequence runs
// the list waits for its end.
void frmMain::CheckNewData() {
  if (checkup_ != nullptr && checkup_->isVisible() && !IsBusy()) CheckAgain();
}

void frmMain::GoTo(const Place& place) {
  raise();
  activateWindow();
  switch (place.where) {
    case Place::Where::kMemory: return GoToRow(kMemoryTab, memory_->grid(), place.index + 1);
    case Place::Where::kSpecial:
      if (place.band != document_.image.ShownBand) {
        settings1_->ShowBand(place.band);
        ChooseBand(place.band);
      }
      return GoToRow(kSettings1Tab, special_->grid(), place.index + 1);
    default: return GoToControl(ControlOf(place));
  }
}

void frmMain::GoToRow(int tab, ChannelGrid& grid, int row) {
  SwitchTab(tab);
  grid.SelectRow(row);
  grid.setFocus();
  ScrollTo(grid);
}

void frmMain::GoToControl(const QString& name) {
  for (int tab = 0; tab < tabs_->count(); ++tab) {
    auto* control = tabs_->widget(tab)->findChild<QWidget*>(name);
    if (control == nullptr) continue;
    SwitchTab(tab);
    control->setFocus();
    ScrollTo(*control);
  }
}

void frmMain::ScrollTo(QWidget& control) {
  const QFrame* frame = frames_[static_cast<std::size_t>(tabs_->currentIndex())];
  frame->findChild<QScrollArea*>()->ensureWidgetVisible(&control);
}

}  // namespace q40
