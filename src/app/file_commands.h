// The file commands, and the choice of a model, which starts anew too.
#pragma once

#include <string>

#include <QObject>

namespace q40 {

class Prompts;
class Session;

class FileCommands final : public QObject {
  Q_OBJECT

 public:
  // Both must outlive it.
  FileCommands(Session& session, Prompts& prompts, QObject* parent = nullptr);

  void NewCommand();

  void Open();
  void OpenCloneFile(const std::string& path);
  void OpenAfterQuestion(const std::string& path);
  void OpenRecentFile(const std::string& path);
  // After the question. The data then has no file, so that no Save replaces the backup.
  void OpenBackup(const std::string& path);

  // False: not saved.
  bool Save();
  // Under the header of `model`.
  bool SaveAs(int model);
  // Asks about unsaved changes. True to go on: saved, or not wanted. A save that did not happen
  // counts as Cancel.
  bool AskToSave();
  // The same when there are any.
  bool MayLetGo();

  // Makes `model` the document's model, after a question when there are unsaved changes. False: the
  // user cancelled.
  bool SelectModel(int model);

  // Which file's data a command has given up, as a sentence with a leading blank; or empty.
  [[nodiscard]] const QString& let_go() const { return let_go_; }
  void ForgetLetGo() { let_go_.clear(); }

 signals:
  // The document is what its file holds: it was opened, or saved.
  void fileHeld(bool saved);

 private:
  void StartAnew();
  bool SaveTo(const std::string& path, int model);

  Session& session_;
  Prompts& prompts_;
  QString let_go_;
};

}  // namespace q40
