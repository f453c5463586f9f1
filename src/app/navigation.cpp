#include "app/navigation.h"

#include <QFrame>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/main_pages.h"
#include "app/radio_texts.h"
#include "checkup/finding.h"
#include "pages/memory_page.h"
#include "pages/service_page.h"
#include "pages/settings_page1.h"
#include "pages/settings_page2.h"
#include "pages/special_channels.h"
#include "widgets/paths.h"

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

// Name of the control that stands for a setting or a dialer memory.
QString ControlOf(const Place& place) {
  if (place.where == Place::Where::kDialer) return QStringLiteral("txtDial_%1").arg(place.index);
  return Shown(Settings()[static_cast<std::size_t>(place.index)].control);
}

}  // namespace

Navigation::Navigation(const MainPages& pages, QWidget& window)
    : QObject(&window), pages_(pages), window_(window), tabs_(new QTabWidget(&window)) {
  tabs_->setObjectName(QStringLiteral("TabStrip1"));
  tabs_->setAccessibleName(tr("Pages"));
  const struct {
    const char* caption;
    QWidget* page;
  } rows[] = {{"Settings 1", &pages.settings1()},
              {"Settings 2", &pages.settings2()},
              {"Memory", &pages.memory()}};
  for (int i = 0; i < 3; ++i) {
    frames_[static_cast<std::size_t>(i)] = MakeFrame(i, rows[i].page);
    tabs_->addTab(frames_[static_cast<std::size_t>(i)], QString::fromUtf8(rows[i].caption));
  }
  // The fourth frame lies where the others do, but no tab leads to it.
  frames_[3] = MakeFrame(3, &pages.service());
  frames_[3]->setParent(tabs_);
  frames_[3]->setAutoFillBackground(true);
  frames_[3]->hide();
  connect(tabs_, &QTabWidget::currentChanged, this, &Navigation::SwitchTab);
  connect(tabs_, &QTabWidget::tabBarClicked, this, [this](int tab) {
    if (tab >= 0) SwitchTab(tab);
  });
}

std::vector<QWidget*> Navigation::Frames() const { return {frames_.begin(), frames_.end()}; }

QWidget* Navigation::Front() const {
  return frames_[3]->isVisible() ? frames_[3] : tabs_->currentWidget();
}

void Navigation::SwitchTab(int tab) {
  tabs_->setCurrentIndex(tab);
  frames_[3]->hide();
  for (int i = 0; i < tabs_->count(); ++i)
    frames_[static_cast<std::size_t>(i)]->setEnabled(i == tab);
  emit pageShown(tab != kSettings2Tab);
}

void Navigation::ShowService() {
  for (const std::size_t page : {0U, 1U, 2U}) frames_[page]->setEnabled(false);
  emit pageShown(false);
  PlaceService();
  frames_[3]->show();
  frames_[3]->raise();
  pages_.service().setFocus();
}

void Navigation::PlaceService() {
  const QWidget* page = tabs_->currentWidget();
  frames_[3]->setGeometry(QRect(page->mapTo(tabs_, QPoint(0, 0)), page->size()));
}

void Navigation::ShowPageOf(Sequence sequence) {
  const int current = tabs_->currentIndex();
  if (MovesMemory(sequence)) {
    SwitchTab(kMemoryTab);
  } else {
    SwitchTab(current == kMemoryTab ? kSettings1Tab : current);
  }
}

// ---- to a place

void Navigation::GoTo(const Place& place) {
  window_.raise();
  window_.activateWindow();
  switch (place.where) {
    case Place::Where::kMemory: return GoToRow(kMemoryTab, pages_.memory().grid(), place.index + 1);
    case Place::Where::kSpecial:
      if (place.band != pages_.document().image().ShownBand) emit bandWanted(place.band);
      return GoToRow(kSettings1Tab, pages_.special().grid(), place.index + 1);
    default: return GoToControl(ControlOf(place));
  }
}

void Navigation::GoToRow(Tab tab, ChannelGrid& grid, int row) {
  SwitchTab(tab);
  grid.SelectRow(row);
  grid.setFocus();
  ScrollTo(grid);
}

void Navigation::GoToControl(const QString& name) {
  for (int tab = 0; tab < tabs_->count(); ++tab) {
    auto* control = tabs_->widget(tab)->findChild<QWidget*>(name);
    if (control == nullptr) continue;
    SwitchTab(tab);
    control->setFocus();
    ScrollTo(*control);
  }
}

void Navigation::ScrollTo(QWidget& control) {
  const QFrame* frame = frames_[static_cast<std::size_t>(tabs_->currentIndex())];
  frame->findChild<QScrollArea*>()->ensureWidgetVisible(&control);
}

}  // namespace q40
