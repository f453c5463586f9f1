// The window's pages, and what shows the document on them.
#pragma once

#include "document/clone_document.h"

namespace q40 {

class MemoryPage;
class ServicePage;
class SettingsPage1;
class SettingsPage2;
class SpecialChannels;
struct ImportReport;

// The pages have no parent at first: whoever lays them out gives them one.
class MainPages {
 public:
  // The document must outlive the pages.
  explicit MainPages(const CloneDocument& document);

  [[nodiscard]] const CloneDocument& document() const { return document_; }
  [[nodiscard]] SettingsPage1& settings1() const { return *settings1_; }
  [[nodiscard]] SettingsPage2& settings2() const { return *settings2_; }
  [[nodiscard]] SpecialChannels& special() const { return *special_; }
  [[nodiscard]] MemoryPage& memory() const { return *memory_; }
  [[nodiscard]] ServicePage& service() const { return *service_; }

  // What has changed.
  void Show(const DocumentChange& change);
  // Puts a star in the title of each row that came from the list and is skipped by the scan.
  void ShowImported(const ImportReport& report);
  void ChangeFont();
  // Every value of the channel grids under its own heading, whatever has drawn it.
  void ShowByHeading(bool on) const;

  // While locked, no command of a page changes anything.
  void SetLocked(bool locked);
  void SetCloneButtonsEnabled(bool enabled);

 private:
  const CloneDocument& document_;
  SpecialChannels* special_;
  SettingsPage1* settings1_;
  SettingsPage2* settings2_;
  MemoryPage* memory_;
  ServicePage* service_;
};

}  // namespace q40
