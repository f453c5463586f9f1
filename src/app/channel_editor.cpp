#include "app/channel_editor.h"

#include "app/main_pages.h"
#include "app/navigation.h"
#include "dialogs/dlg_modify.h"
#include "pages/memory_page.h"
#include "pages/settings_page1.h"
#include "pages/special_channels.h"

namespace q40 {

ChannelEditor::ChannelEditor(const MainPages& pages, CloneDocument& document, QWidget& window)
    : pages_(pages), document_(document), dialog_(new dlgModify(&window)) {}

void ChannelEditor::OpenMemory(int n) {
  const CloneImage& image = pages_.document().image();
  const auto row = static_cast<std::size_t>(n);
  dialog_->Prepare({.kind = ChannelKind::kMemory,
                    .index = n,
                    .band = image.ShownBand,
                    .model = pages_.settings1().ChosenModel(),
                    .range = VersionOf(image),
                    .in_use = image.ChannelInUse[row],
                    .record = image.MemoryTable[row],
                    .fresh = image.TemplateChannel()});
  if (dialog_->exec() == QDialog::Accepted) document_.StoreMemoryChannel(n, dialog_->Result());
}

void ChannelEditor::OpenSpecial(int k) {
  const CloneImage& image = pages_.document().image();
  dialog_->Prepare({.kind = ChannelKind::kSpecial,
                    .index = k,
                    .band = image.ShownBand,
                    .model = pages_.settings1().ChosenModel(),
                    .range = VersionOf(image),
                    .in_use = true,
                    .record = image.ShownSpecialSet[static_cast<std::size_t>(k)],
                    .fresh = {}});
  if (dialog_->exec() == QDialog::Accepted) document_.StoreSpecialChannel(k, dialog_->Result());
}

void ChannelEditor::OpenCurrent(int tab) {
  if (tab == Navigation::kSettings1Tab) OpenSpecial(pages_.special().grid().CurrentRow() - 1);
  if (tab == Navigation::kMemoryTab) OpenMemory(pages_.memory().grid().CurrentRow() - 1);
}

}  // namespace q40
