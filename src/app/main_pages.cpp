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
      special_(new SpecialChannels(document.image, nullptr)),
      settings1_(new SettingsPage1(special_, nullptr)),
      settings2_(new SettingsPage2(nullptr)),
      memory_(new MemoryPage(document.image, nullptr)),
      service_(new ServicePage(nullptr)) {}

void MainPages::ShowDocument() {
  settings1_->ShowModel(document_.model);
  ShowSettings();
  special_->UpdateVFOData();
  for (int index = 0; index < kDialCount; ++index) ShowDialText(index);
  memory_->RedrawAll();
}

void MainPages::ShowSettings() {
  settings1_->SetValues(document_.settings);
  settings2_->SetValues(document_.settings);
}

void MainPages::ShowSpecialChannels() {
  settings1_->ShowBand(document_.image.ShownBand);
  special_->UpdateVFOData();
}

void MainPages::ShowDialText(int index) {
  settings2_->SetDialText(index, document_.dial[static_cast<std::size_t>(index)]);
}

void MainPages::ShowImported(const ImportReport& report) {
  special_->UpdateVFOData();
  memory_->grid().SelectRow(1);
  memory_->RedrawAll();
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    const auto row = static_cast<std::size_t>(n);
    const bool skipped =
        document_.image.MemoryTable[row].Number(ChannelKind::kMemory, Field::kSkip) == 1;
    if (report.imported[row] > 0 && skipped) memory_->grid().cells().StarTitle(n);
  }
}

// The settings and the dialer show what the user has just put there.
void MainPages::Redraw(const DocumentChange& change) {
  if (change.what == DocumentChange::What::kMemory) {
    memory_->grid().cells().Redraw(change.first, change.last);
  } else if (change.what == DocumentChange::What::kSpecial) {
    special_->grid().cells().Redraw(change.first, change.last);
  }
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
