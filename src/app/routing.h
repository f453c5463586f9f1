// The routing table: every menu entry, what it calls, and how it is reached.
#pragma once

#include <span>

#include <QKeySequence>

#include "app/frm_main.h"

namespace q40 {

inline constexpr const char* kBackUpOption = "BackUpBeforeWriting";
inline constexpr const char* kRecentFilesEntry = "mnuRecentFiles";  // a menu of its own
inline constexpr const char* kVerifyOption = "VerifyAfterWriting";

enum class CommandMenu : unsigned char { kFile, kEdit, kView, kRadio, kTools, kHelp };

struct CommandRow {
  const char* name;  // object name; null: a separator
  CommandMenu menu = CommandMenu::kFile;
  const char* caption = "";
  QKeySequence::StandardKey standard_key = QKeySequence::UnknownKey;
  const char* shortcut = "";
  void (frmMain::*run)() = nullptr;         // runs only while the window is not busy
  void (frmMain::*toggle)(bool) = nullptr;  // of a check mark; runs at any time
  const char* toolbar_key = "";             // the toolbar button that does the same
  const char* option = "";                  // of a check mark that is remembered, off at first

  static std::span<const CommandRow> All();
};

// What is surprising about a command, for the status bar while its entry is highlighted.
struct CommandHint {
  const char* name;
  const char* text;
};
std::span<const CommandHint> CommandHints();

const char* MenuCaption(CommandMenu menu);

}  // namespace q40
