// The window's answers to its commands: message boxes, file dialogs, the status bar.
#pragma once

#include "app/prompts.h"

class QWidget;

namespace q40 {

class StatusLine;

class WindowPrompts final : public Prompts {
 public:
  // Both must outlive it.
  WindowPrompts(QWidget& window, StatusLine& status) : window_(window), status_(status) {}

  Answer AskToSave() override;
  std::string AskPath(FileDialog kind, const std::string& path, int model) override;
  Instead AskInstead(const QString& why) override;
  bool Confirm(const char* title, const QString& text) override;
  void ShowError(const QString& text) override;
  void ShowGone(const QString& text) override;
  void Note(const QString& text) override;
  void NoteFailure(const QString& text) override;

 private:
  bool MayReplace(const std::string& path);
  bool IsNoCloneFile(const std::string& path, FileDialog kind);

  QWidget& window_;
  StatusLine& status_;
};

}  // namespace q40
