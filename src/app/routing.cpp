#include "app/routing.h"

namespace q40 {

namespace {

using Menu = CommandMenu;
using C = Command;

constexpr auto kNoKey = QKeySequence::UnknownKey;

constexpr CommandRow kRows[] = {
    {"mnuFileNew", Menu::kFile, "&New", QKeySequence::New, "", C::kNew, "New"},
    {"mnuFileOpen", Menu::kFile, "&Open...", QKeySequence::Open, "", C::kOpen, "Open"},
    {"mnuFileSave", Menu::kFile, "&Save", QKeySequence::Save, "", C::kSave, "Save"},
    {"mnuFileSaveAs", Menu::kFile, "Save &As...", kNoKey, "Ctrl+Shift+S", C::kSaveAs},
    {nullptr, Menu::kFile},
    {"mnuImport", Menu::kFile, "&Import CSV...", kNoKey, "Ctrl+I", C::kImport},
    {"mnuImportOther", Menu::kFile, "Impor&t Other List...", kNoKey, "", C::kImportOther},
    {"mnuExport", Menu::kFile, "&Export CSV...", kNoKey, "Ctrl+Shift+E", C::kExport},
    {nullptr, Menu::kFile},
    {kRecentFilesEntry, Menu::kFile, "&Recent Files"},
    {kRestoreEntry, Menu::kFile, "Restore &Unsaved Changes...", kNoKey, "", C::kRestoreUnsaved},
    {nullptr, Menu::kFile},
    {"mnuFileExit", Menu::kFile, "E&xit", QKeySequence::Quit, "Ctrl+Q", C::kExit},

    {kUndoEntry, Menu::kEdit, "&Undo", kNoKey, "Ctrl+Z", C::kUndo},
    {kRedoEntry, Menu::kEdit, "&Redo", QKeySequence::Redo, "Ctrl+Y", C::kRedo},
    {nullptr, Menu::kEdit},
    {kEditChannelEntry, Menu::kEdit, "&Edit Channel...", kNoKey, "Ctrl+E", C::kEditChannel},

    {"mnuViewToolbar", Menu::kView, "&Toolbar", kNoKey, "", C::kNone, "", "tbToolBar"},
    {"mnuStatusBar", Menu::kView, "&Status Bar", kNoKey, "", C::kNone, "", "sbStatusBar"},
    {nullptr, Menu::kView},
    {kMarkChangesEntry, Menu::kView, "&Mark Changes", kNoKey, "", C::kNone, "", "", "MarkChanges"},
    {kCellsByHeadingEntry, Menu::kView, "&Cells by Heading", kNoKey, "", C::kNone, "", "",
     kCellsByHeadingOption},

    {"mnuReSet", Menu::kRadio, "&Read Settings", kNoKey, "F5", C::kMenuReadSettings},
    {"mnuReMem", Menu::kRadio, "Read &Memory", kNoKey, "F6", C::kMenuReadMemory},
    {"mnuReAll", Menu::kRadio, "Read &All", kNoKey, "F7", C::kMenuReadAll},
    {nullptr, Menu::kRadio},
    {"mnuWrSet", Menu::kRadio, "&Write Settings", kNoKey, "Shift+F5", C::kMenuWriteSettings},
    {"mnuWrMem", Menu::kRadio, "Write M&emory", kNoKey, "Shift+F6", C::kMenuWriteMemory},
    {"mnuWrAll", Menu::kRadio, "Write A&ll", kNoKey, "Shift+F7", C::kMenuWriteAll},
    {nullptr, Menu::kRadio},
    {"mnuWriteChanges", Menu::kRadio, "Write &Changes", kNoKey, "Ctrl+F7", C::kWriteChanges},
    {kWriteRestEntry, Menu::kRadio, "Write the Res&t", kNoKey, "", C::kWriteRest},

    {"mnuToolsOptions", Menu::kTools, "&COM Port...", kNoKey, "", C::kChoosePort},
    {"mnuChannelList", Menu::kTools, "Channel &List...", kNoKey, "Ctrl+L", C::kChannelList},
    {"mnuCard", Menu::kTools, "Channel Car&d...", kNoKey, "", C::kCard},
    {"mnuCheckUp", Menu::kTools, "Check-&Up...", kNoKey, "F8", C::kCheckUp},
    {kImportNotesEntry, Menu::kTools, "&Import Notes...", kNoKey, "", C::kImportNotes},
    {"mnuChanges", Menu::kTools, "C&hanges...", kNoKey, "F9", C::kChanges},
    {nullptr, Menu::kTools},
    {kBackUpEntry, Menu::kTools, "&Back Up Before Writing", kNoKey, "", C::kNone, "", "",
     kBackUpOption},
    {kVerifyEntry, Menu::kTools, "&Verify After Writing", kNoKey, "", C::kNone, "", "",
     kVerifyOption},
    {kShowChangesEntry, Menu::kTools, "Show Changes Before &Writing", kNoKey, "", C::kNone, "", "",
     "ShowChangesBeforeWriting"},
    {"mnuBackups", Menu::kTools, "Bac&kups...", kNoKey, "", C::kBackups},
    {nullptr, Menu::kTools},
    {"mnuToolsService", Menu::kTools, "&Service", kNoKey, "", C::kService},
    {kTraceEntry, Menu::kTools, "Trace to &File...", kNoKey, "", C::kTrace, "", "", "", true},

    {"mnuHelpContents", Menu::kHelp, "&Help", QKeySequence::HelpContents, "", C::kHelp},
    {"mnuHelpAbout", Menu::kHelp, "&About...", kNoKey, "", C::kAbout, "Help"},
};

constexpr CommandHint kHints[] = {
    {"mnuFileNew", "Starts anew with the defaults of the chosen model; the auto dialer stays."},
    {kRestoreEntry, "Brings back what a window had not saved when it was interrupted."},
    {kUndoEntry, "Takes the last step back, also New, Open, Import and reading."},
    {"mnuExport", "The next Save then writes a clone file under the name of the list."},
    {"mnuImport", "Replaces the channels that the list names; what does not fit is passed over."},
    {"mnuImportOther", "Fills channels from a list that others have made: of repeaters, say."},
    {"mnuFileExit",
     "Asks about changes, but not after Read Memory, Clear All, Clear PH or Clear PL alone."},
    {"mnuWrSet", "Writes settings and special channels to the radio, if the model is its own."},
    {"mnuWrMem", "Writes all 210 memory channels to the radio, if the model is its own."},
    {"mnuWriteChanges",
     "Writes what differs from what the radio is known to hold, after a look whether it still "
     "does."},
    {kWriteRestEntry, "Goes on with a write that broke off."},
    {"mnuBackups", "What radios held before they were written to: restore, compare, open, delete."},
    {"mnuBackUp", "Reads the whole radio into a file before each write."},
    {"mnuVerify", "Reads back what was written and lists what the radio did not keep."},
    {"mnuCheckUp", "Lists what the radio or a file would not keep, and likely mistakes."},
    {"mnuImportNotes", "Lists what the last import did not take as it is written."},
    {"mnuChanges", "Lists what differs from the file, the radio, a backup; takes changes back."},
    {kShowChangesEntry, "Lists what a write would change in the radio, and asks."},
    {kMarkChangesEntry,
     "Marks rows and settings that differ from the file as last opened or saved."},
    {"mnuChannelList", "All channels in a table that is edited in place."},
    {"mnuCard", "The channels in use on paper or as a PDF, also folded for the pocket."},
    {kCellsByHeadingEntry, "Shows every value of the channel grids under its own heading."},
    {"mnuToolsService", "Raw blocks of the radio's memory."},
    {"mnuTrace", "Keeps what goes over the line in a file, until it is chosen again."}};

}  // namespace

std::span<const CommandRow> CommandRows() { return kRows; }

std::span<const CommandHint> CommandHints() { return kHints; }

const char* MenuCaption(CommandMenu menu) {
  switch (menu) {
    case CommandMenu::kFile: return "&File";
    case CommandMenu::kEdit: return "&Edit";
    case CommandMenu::kView: return "&View";
    case CommandMenu::kRadio: return "&Radio";
    case CommandMenu::kTools: return "&Tools";
    default: return "&Help";
  }
}

}  // namespace q40
