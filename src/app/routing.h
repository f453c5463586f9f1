// The routing table: every command, and the menu entry, the keys and the toolbar button that lead to it.
#pragma once

#include <span>

#include <QKeySequence>

namespace q40 {

inline constexpr const char* kBackUpOption = "BackUpBeforeWriting";
inline constexpr const char* kBackUpEntry = "mnuBackUp";
inline constexpr const char* kRecentFilesEntry = "mnuRecentFiles";  // a menu of its own
inline constexpr const char* kVerifyOption = "VerifyAfterWriting";
inline constexpr const char* kVerifyEntry = "mnuVerify";
inline constexpr const char* kShowChangesEntry = "mnuShowChanges";
inline constexpr const char* kMarkChangesEntry = "mnuMarkChanges";
inline constexpr const char* kRestoreEntry = "mnuRestoreUnsaved";
inline constexpr const char* kUndoEntry = "mnuUndo";
inline constexpr const char* kRedoEntry = "mnuRedo";
inline constexpr const char* kEditChannelEntry = "mnuEditUndo";
inline constexpr const char* kWriteRestEntry = "mnuWriteRest";
inline constexpr const char* kCellsByHeadingOption = "CellsByHeading";
inline constexpr const char* kCellsByHeadingEntry = "mnuCellsByHeading";
inline constexpr const char* kImportNotesEntry = "mnuImportNotes";
inline constexpr const char* kTraceEntry = "mnuTrace";

// What the window can be told to do. The compiler sees to it that each is carried out.
enum class Command : unsigned char {
  kNone,
  kNew,
  kOpen,
  kSave,
  kSaveAs,
  kRestoreUnsaved,
  kImport,
  kImportOther,
  kExport,
  kExit,
  kUndo,
  kRedo,
  kEditChannel,
  kReadSettings,  // from a page
  kReadMemory,
  kWriteSettings,
  kWriteMemory,
  kAutoSelect,
  kMenuReadSettings,  // from the menu, which brings the page to the front
  kMenuReadMemory,
  kMenuReadAll,
  kMenuWriteSettings,
  kMenuWriteMemory,
  kMenuWriteAll,
  kWriteChanges,
  kWriteRest,
  kBackups,
  kChoosePort,
  kCheckUp,
  kCheckAgain,
  kImportNotes,
  kChanges,
  kChannelList,
  kCard,
  kService,
  kServiceDump,
  kTrace,
  kHelp,
  kAbout,
};

enum class CommandMenu : unsigned char { kFile, kEdit, kView, kRadio, kTools, kHelp };

struct CommandRow {
  const char* name;  // object name; null: a separator
  CommandMenu menu = CommandMenu::kFile;
  const char* caption = "";
  QKeySequence::StandardKey standard_key = QKeySequence::UnknownKey;
  const char* shortcut = "";
  Command command = Command::kNone;  // runs only while the window is not busy
  const char* toolbar_key = "";      // the toolbar button that does the same
  const char* shows = "";            // of a check mark: the bar that it shows or hides, at any time
  const char* option = "";           // of a check mark that is remembered, off at first
  bool marks = false;                // whether the command sets a check mark
};
std::span<const CommandRow> CommandRows();

// What is surprising about a command, for the status bar while its entry is highlighted.
struct CommandHint {
  const char* name;
  const char* text;
};
std::span<const CommandHint> CommandHints();

const char* MenuCaption(CommandMenu menu);

}  // namespace q40
