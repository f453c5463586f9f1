#include "pages/special_channels.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "widgets/message_box.h"

namespace q40 {

SpecialChannels::SpecialChannels(const CloneImage& image, QWidget* parent)
    : QWidget(parent),
      image_(image),
      grid_(new ChannelGrid(ChannelKind::kSpecial, image, this)),
      clear_(new QPushButton(this)) {
  grid_->setObjectName(QStringLiteral("MSFlexGrid2"));
  grid_->setAccessibleName(tr("Special channels"));
  grid_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  grid_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(grid_, &ChannelGrid::openRequested, [this](int row) { emit openRequested(row - 1); });
  connect(grid_, &ChannelGrid::rowChanged, this, &SpecialChannels::ShowClearButton);

  clear_->setObjectName(QStringLiteral("cmdClear"));
  clear_->setAutoDefault(false);
  QSizePolicy policy = clear_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  clear_->setSizePolicy(policy);
  connect(clear_, &QPushButton::clicked, [this] {
    if (!locked_) ClearLimit();
  });
  ShowClearButton(grid_->CurrentRow());
  connect(grid_->horizontalScrollBar(), &QScrollBar::rangeChanged, this,
          &SpecialChannels::FitHeight);
  connect(grid_->verticalHeader(), &QHeaderView::sectionResized, this, &SpecialChannels::FitHeight);
  FitHeight();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(grid_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(clear_);
  layout->addLayout(buttons);
}

// Exactly five rows high, plus what the heading and, where the columns are wider than the window, a
// scroll bar leave for them.
void SpecialChannels::FitHeight() {
  const QScrollBar& bar = *grid_->horizontalScrollBar();
  const int scroll_bar = bar.maximum() > bar.minimum() ? bar.sizeHint().height() : 0;
  grid_->setFixedHeight(grid_->horizontalHeader()->sizeHint().height() +
                        grid_->verticalHeader()->length() + 2 * grid_->frameWidth() + scroll_bar);
}

void SpecialChannels::ShowClearButton(int row) {
  clear_->setText(row == kPlRow + 1 ? tr("Clear PL") : tr("Clear PH"));
  clear_->setVisible(row > kPhRow);
}

void SpecialChannels::SetLocked(bool locked) {
  locked_ = locked;
  clear_->setEnabled(!locked);
}

void SpecialChannels::UpdateVFOData() { grid_->cells().Redraw(0, kSpecialChannelCount - 1); }

void SpecialChannels::ClearLimit() {
  const int k = grid_->CurrentRow() - 1;
  const QString channel = grid_->cells().Described(k) +
                          (image_.ShownBand == Band::kUhf ? tr(" of UHF") : tr(" of VHF"));
  emit noted(tr("Clear %1?").arg(channel));
  if (!Confirmed(this, kClearTitle, kClearText)) return emit noted(tr("Nothing was cleared."));
  emit clearLimitRequested(k);
  emit noted(tr("Cleared: %1.").arg(channel));
}

}  // namespace q40
