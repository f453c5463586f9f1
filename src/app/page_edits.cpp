#include "app/page_edits.h"

#include "app/main_pages.h"
#include "document/clone_document.h"
#include "pages/memory_page.h"
#include "pages/settings_page1.h"
#include "pages/settings_page2.h"
#include "pages/special_channels.h"

namespace q40 {
namespace {

void ConnectSettings(SettingsPage& page, CloneDocument& document) {
  QObject::connect(
      &page, &SettingsPage::settingChosen, &page,
      [&document](const Setting& setting, int value) { document.ChangeSetting(setting, value); });
  QObject::connect(&page, &SettingsPage::looseBoxClicked, &page,
                   [&document] { document.ChangeLooseSetting(); });
}

void ConnectChannels(MemoryPage& page, CloneDocument& document) {
  using P = MemoryPage;
  QObject::connect(&page, &P::insertRequested, &page,
                   [&document](int n) { document.InsertChannel(n); });
  QObject::connect(&page, &P::deleteRequested, &page,
                   [&document](int n) { document.DeleteChannel(n); });
  QObject::connect(&page, &P::clearRequested, &page,
                   [&document](int n) { document.ClearChannel(n); });
  QObject::connect(&page, &P::clearAllRequested, &page,
                   [&document] { document.ClearAllChannels(); });
}

}  // namespace

void ConnectEdits(MainPages& pages, CloneDocument& document) {
  ConnectSettings(pages.settings1(), document);
  ConnectSettings(pages.settings2(), document);
  QObject::connect(
      &pages.settings2(), &SettingsPage2::dialEdited, &pages.settings2(),
      [&document](int index, const std::string& text) { document.ChangeDialText(index, text); });
  ConnectChannels(pages.memory(), document);
  QObject::connect(&pages.special(), &SpecialChannels::clearLimitRequested, &pages.special(),
                   [&document](int k) { document.ClearLimit(k); });
}

}  // namespace q40
