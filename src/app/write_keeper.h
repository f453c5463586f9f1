// Keeps what a write may cost: what the radio held before, and what is left when it breaks off.
#pragma once

#include <string>
#include <vector>

#include <QObject>
#include <QString>

#include "files/backup_folder.h"
#include "link/safe_write.h"

namespace q40 {

class Prompts;
class Session;

class WriteKeeper final : public QObject {
  Q_OBJECT

 public:
  // Session and prompts must outlive it.
  WriteKeeper(Session& session, Prompts& prompts, std::string folder, QObject* parent);

  [[nodiscard]] const std::string& folder() const { return folder_; }

  // A write is going to send this to a radio of the model.
  void Plan(int model, std::vector<UnitData> planned);
  // The net of that write.
  [[nodiscard]] WriteNet Net(bool back_up, bool verify);
  // Before its first byte.
  void BeforeFirstByte();
  void Finish(const WriteResult& result);
  // Why what the write leaves when it breaks off could not be stored; empty when it was.
  [[nodiscard]] const QString& not_kept() const { return not_kept_; }
  // The backup that brings a whole radio back after it; empty: there is none. That of a radio that was
  // half written already is none.
  [[nodiscard]] std::string WayBack() const;

  // A copy of the radio as a new backup; its path. Empty: the user has been told why not.
  std::string KeepBackup(const RadioCopy& radio);

 signals:
  void backupKept();

 private:
  [[nodiscard]] BackupReason ReasonOf(const RadioCopy& radio) const;

  Session& session_;
  Prompts& prompts_;
  std::string folder_;
  int model_ = 0;
  std::vector<UnitData> planned_;  // until the first byte
  bool writes_ = false;
  std::string backup_;  // of the last write; empty: none was made
  QString not_kept_;
};

}  // namespace q40
