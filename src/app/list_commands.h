// Import and export of channel lists.
#pragma once

#include <string>

#include <QObject>

namespace q40 {

class FileCommands;
class Prompts;
class Session;
struct ImportReport;

class ListCommands final : public QObject {
  Q_OBJECT

 public:
  // All three must outlive it.
  ListCommands(Session& session, Prompts& prompts, FileCommands& files, QObject* parent = nullptr)
      : QObject(parent), session_(session), prompts_(prompts), files_(files) {}

  void Import();
  void Export();

  // Before and after a list of another kind goes into the document: to those who keep an account of
  // imports. `account` is a text of sentences.
  void TellImporting(const std::string& path) { emit importing(path); }
  void TellImported(const std::string& path, const QString& account, const ImportReport& report);

 signals:
  // The document is still what it was before the list comes.
  void importing(const std::string& path);
  // The channels of a list are in the document.
  void imported(const q40::ImportReport& report);
  void named(const QString& name);  // of the list that was imported
  // What became of the list, in sentences, with all that was found out about it.
  void accounted(const QString& account, const q40::ImportReport& report);

 private:
  void Account(const std::string& path, QString text, const ImportReport& report);

  Session& session_;
  Prompts& prompts_;
  FileCommands& files_;
};

}  // namespace q40
