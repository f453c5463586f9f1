#include "pages/memory_page.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "widgets/message_box.h"

namespace q40 {
namespace {

constexpr const char* kDeleteTitle = "DELETE OK";
constexpr const char* kDeleteText =
    "Are you sure that you want to do the delete?\r\nDelete cannot be undone.";
constexpr const char* kClearAllText =
    "Are you sure that you want to clear all memory?\r\nClear cannot be undone.";

}  // namespace

MemoryPage::MemoryPage(const CloneImage& image, QWidget* parent)
    : QWidget(parent),
      grid_(new ChannelGrid(ChannelKind::kMemory, image, this)),
      progress_(new QProgressBar(this)) {
  grid_->setObjectName(QStringLiteral("MSFlexGrid1"));
  grid_->setAccessibleName(tr("Memory channels"));
  connect(grid_, &ChannelGrid::openRequested, [this](int row) { emit openRequested(row - 1); });
  progress_->setObjectName(QStringLiteral("ProgressBar1"));
  progress_->setAccessibleName(tr("Progress"));
  progress_->setRange(0, kMemoryChannelCount - 1);
  progress_->setValue(0);
  QSizePolicy policy = progress_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);  // the buttons stay where they are
  progress_->setSizePolicy(policy);
  progress_->hide();

  auto* edit = new QHBoxLayout;
  QPushButton* insert = AddButton(*edit, "cmbInsert", "&Insert", &MemoryPage::Insert);
  QPushButton* remove = AddButton(*edit, "cmbDelete", "&Delete", &MemoryPage::Delete);
  QPushButton* clear = AddButton(*edit, "cmbClear", "&Clear", &MemoryPage::Clear);
  QPushButton* clear_all = AddButton(*edit, "cmbClAll", "Clear &All", &MemoryPage::ClearAll);
  edit_buttons_ = {insert, remove, clear, clear_all};
  edit->addSpacing(12);
  AddButton(*edit, "Command4", "Down", &MemoryPage::StepDown);
  AddButton(*edit, "Command5", "Up", &MemoryPage::StepUp);
  edit->addStretch();
  auto* clone = new QHBoxLayout;
  read_ = AddButton(*clone, "cmbRxData", " Read Memory", nullptr);
  write_ = AddButton(*clone, "cmbTxData", " Write Memory", nullptr);
  clone->addWidget(progress_, 1);
  connect(read_, &QPushButton::clicked, this, &MemoryPage::readRequested);
  connect(write_, &QPushButton::clicked, this, &MemoryPage::writeRequested);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(grid_, 1);
  layout->addLayout(edit);
  layout->addLayout(clone);

  // In the grid the keys do what the buttons do, questions included.
  const auto key = [this](Qt::Key which, QPushButton* button) {
    auto* shortcut = new QShortcut(which, grid_);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
  };
  key(Qt::Key_Insert, insert);
  key(Qt::Key_Delete, remove);
}

QPushButton* MemoryPage::AddButton(QBoxLayout& row, const char* name, const char* caption,
                                   void (MemoryPage::*run)()) {
  auto* button = new QPushButton(QString::fromUtf8(caption), this);
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  if (run != nullptr) {
    connect(button, &QPushButton::clicked, [this, run] {
      if (!locked_) (this->*run)();
    });
  }
  row.addWidget(button);
  return button;
}

void MemoryPage::SetLocked(bool locked) {
  locked_ = locked;
  for (QPushButton* button : edit_buttons_) button->setEnabled(!locked);
}

void MemoryPage::SetCloneButtonsEnabled(bool enabled) {
  read_->setEnabled(enabled);
  write_->setEnabled(enabled);
}

// Intended: no question, although D9 is dropped.
void MemoryPage::Insert() {
  constexpr int kD9 = kMemoryChannelCount - 1;
  const int n = grid_->CurrentRow() - 1;
  const QString dropped = grid_->cells().Described(kD9);
  emit insertRequested(n);
  emit noted(tr("Inserted: channel %1. Fallen off the end: channel %2.")
                 .arg(QString::fromStdString(ChannelTitle(n)), dropped));
}

void MemoryPage::Delete() {
  const int n = grid_->CurrentRow() - 1;
  const QString channel = grid_->cells().Described(n);
  emit noted(tr("Delete channel %1? Those behind it move up.").arg(channel));
  if (!Confirmed(this, kDeleteTitle, kDeleteText)) return emit noted(tr("Nothing was deleted."));
  emit deleteRequested(n);
  emit noted(tr("Deleted: channel %1.").arg(channel));
}

void MemoryPage::Clear() {
  const int n = grid_->CurrentRow() - 1;
  const QString channel = grid_->cells().Described(n);
  emit noted(tr("Clear channel %1?").arg(channel));
  if (!Confirmed(this, kClearTitle, kClearText)) return emit noted(tr("Nothing was cleared."));
  emit clearRequested(n);
  emit noted(tr("Cleared: channel %1.").arg(channel));
}

void MemoryPage::ClearAll() {
  if (Confirmed(this, kClearTitle, kClearAllText)) emit clearAllRequested();
}

void MemoryPage::StepDown() {
  if (grid_->CurrentRow() < kMemoryChannelCount) grid_->SelectRow(grid_->CurrentRow() + 1);
}

void MemoryPage::StepUp() {
  if (grid_->CurrentRow() > 1) grid_->SelectRow(grid_->CurrentRow() - 1);
}

}  // namespace q40
