#include "app/main_pages.h"

#include "files/channel_csv.h"
#include "pages/memory_page.h"
#include "pages/service_page.h"
#include "pages/settings_page1.h"
#include "pages/settings_page2.h"
#include "pages/special_channels.h"

namespace q40 {

MainPages::MainPages(const CloneDocument& document)
    : document_(document),
      special_(new SpecialChannels(document.image(), nullptr)),
      settings1_(new SettingsPage1(special_, nullptr)),
      settings2_(new SettingsPage2(nullptr)),
      memory_(new MemoryPage(document.image(), nullptr)),
      service_(new ServicePage(nullptr)) {}

void MainPages::Show(const DocumentChange& change) {
  if (change.model) settings1_->ShowModel(document_.model());
  if (change.settings) {
    settings1_->SetValues(document_.settings());
    settings2_->SetValues(document_.settings());
  }
  if (change.special_channels) {
    settings1_->ShowBand(document_.image().ShownBand);
    special_->UpdateVFOData();
  }
  for (int index = 0; change.dial && index < kDialCount; ++index) {
    settings2_->SetDialText(index, document_.dial()[static_cast<std::size_t>(index)]);
  }
  using Order = ChannelGridModel::Order;
  const Order order = change.as_read ? Order::kByHeading : Order::kStored;
  EachRun(change.channels,
          [&](int first, int last) { memory_->grid().cells().Redraw(first, last, order); });
}

void MainPages::ShowImported(const ImportReport& report) {
  memory_->grid().SelectRow(1);
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    const auto row = static_cast<std::size_t>(n);
    const bool skipped =
        document_.image().MemoryTable[row].Number(ChannelKind::kMemory, Field::kSkip) == 1;
    if (report.imported[row] > 0 && skipped) memory_->grid().cells().StarTitle(n);
  }
}

void MainPages::ShowByHeading(bool on) const {
  memory_->grid().cells().ShowByHeading(on);
  special_->grid().cells().ShowByHeading(on);
}

void MainPages::ChangeFont() {
  memory_->grid().ChangeFont();
  special_->grid().ChangeFont();
}

void MainPages::SetLocked(bool locked) {
  memory_->SetLocked(locked);
  special_->SetLocked(locked);
}

void MainPages::SetCloneButtonsEnabled(bool enabled) {
  settings1_->SetCloneButtonsEnabled(enabled);
  settings1_->SetAutoSelectEnabled(enabled);
  settings2_->SetCloneButtonsEnabled(enabled);
  memory_->SetCloneButtonsEnabled(enabled);
}

}  // namespace q40
