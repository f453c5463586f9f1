// The list of the backups, and what can be done with one.
#pragma once

#include "dialogs/place_list.h"
#include "files/backup_folder.h"

namespace q40 {

class BackupsWindow : public PlaceList {
  Q_OBJECT

 public:
  explicit BackupsWindow(QWidget* owner);

  // `entries`: the latest first. `way_back`: path of the one that brings a whole radio back after a
  // write that broke off; empty when none did. It is marked then, and told of.
  void ShowBackups(const std::vector<BackupEntry>& entries, const std::string& way_back);
  // Path of the selected one; empty: there is none.
  [[nodiscard]] std::string Selected() const;

 signals:
  void backUpWanted();
  void folderWanted();
  // With the selected backup.
  void openWanted();
  void compareWanted();
  void restoreWanted();
  void deleteWanted();

 private:
  void EnableButtons();

  std::vector<std::string> paths_;    // of the rows
  std::vector<QPushButton*> of_one_;  // buttons that need a selected backup
};

}  // namespace q40
