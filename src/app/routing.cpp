#include "app/routing.h"

namespace q40 {

std::span<const CommandRow> CommandRow::All() {
  using Menu = CommandMenu;
  using M = frmMain;
  constexpr auto kNoKey = QKeySequence::UnknownKey;
  static const CommandRow rows[] = {
      {"mnuFileNew", Menu::kFile, "&New", QKeySequence::New, "", &M::NewCommand, nullptr, "New"},
      {"mnuFileOpen", Menu::kFile, "&Open...", QKeySequence::Open, "", &M::Open, nullptr, "Open"},
      {"mnuFileSave", Menu::kFile, "&Save", QKeySequence::Save, "", &M::SaveCommand, nullptr,
       "Save"},
      {"mnuFileSaveAs", Menu::kFile, "Save &As...", kNoKey, "Ctrl+Shift+S", &M::SaveAs},
      {nullptr, Menu::kFile},
      {"mnuImport", Menu::kFile, "&Import CSV...", kNoKey, "Ctrl+I", &M::Import},
      {"mnuExport", Menu::kFile, "&Export CSV...", kNoKey, "Ctrl+Shift+E", &M::Export},
      {nullptr, Menu::kFile},
      {kRecentFilesEntry, Menu::kFile, "&Recent Files"},
      {nullptr, Menu::kFile},
      {"mnuFileExit", Menu::kFile, "E&xit", QKeySequence::Quit, "Ctrl+Q", &M::Exit},

      {"mnuEditUndo", Menu::kEdit, "&Edit Channel...", kNoKey, "Ctrl+E", &M::EditCurrent},

      {"mnuViewToolbar", Menu::kView, "&Toolbar", kNoKey, "", nullptr, &M::ToggleToolBar},
      {"mnuStatusBar", Menu::kView, "&Status Bar", kNoKey, "", nullptr, &M::ToggleStatusBar},

      {"mnuReSet", Menu::kRadio, "&Read Settings", kNoKey, "F5", &M::MenuReadSettings},
      {"mnuReMem", Menu::kRadio, "Read &Memory", kNoKey, "F6", &M::MenuReadMemory},
      {"mnuReAll", Menu::kRadio, "Read &All", kNoKey, "F7", &M::MenuReadAll},
      {nullptr, Menu::kRadio},
      {"mnuWrSet", Menu::kRadio, "&Write Settings", kNoKey, "Shift+F5", &M::MenuWriteSettings},
      {"mnuWrMem", Menu::kRadio, "Write M&emory", kNoKey, "Shift+F6", &M::MenuWriteMemory},
      {"mnuWrAll", Menu::kRadio, "Write A&ll", kNoKey, "Shift+F7", &M::MenuWriteAll},

      {"mnuToolsOptions", Menu::kTools, "&COM Port...", kNoKey, "", &M::ChoosePort},
      {"mnuCheckUp", Menu::kTools, "Check-&Up...", kNoKey, "F8", &M::ShowCheckUp},
      {"mnuImportNotes", Menu::kTools, "&Import Notes...", kNoKey, "", &M::ShowImportNotes},
      {nullptr, Menu::kTools},
      {"mnuBackUp", Menu::kTools, "&Back Up Before Writing", kNoKey, "", nullptr, nullptr, "",
       kBackUpOption},
      {"mnuVerify", Menu::kTools, "&Verify After Writing", kNoKey, "", nullptr, nullptr, "",
       kVerifyOption},
      {nullptr, Menu::kTools},
      {"mnuToolsService", Menu::kTools, "&Service", kNoKey, "", &M::ShowService},

      {"mnuHelpContents", Menu::kHelp, "&Help", QKeySequence::HelpContents, "", &M::Help},
      {"mnuHelpAbout", Menu::kHelp, "&About...", kNoKey, "", &M::About, nullptr, "Help"},
  };
  return rows;
}

std::span<const CommandHint> CommandHints() {
  static const CommandHint hints[] = {
      {"mnuFileNew", "Starts anew with the defaults of the chosen model; the auto dialer stays."},
      {"mnuExport", "The next Save then writes a clone file under the name of the list."},
      {"mnuImport", "Replaces the channels that the list names; what does not fit is passed over."},
      {"mnuFileExit",
       "Asks about changes, but not after Read Memory, Clear All, Clear PH or Clear PL alone."},
      {"mnuWrSet", "Writes settings and special channels to the radio, if the model is its own."},
      {"mnuWrMem", "Writes all 210 memory channels to the radio, if the model is its own."},
      {"mnuBackUp", "Reads the whole radio into a file before each write."},
      {"mnuVerify", "Reads back what was written and lists what the radio did not keep."},
      {"mnuCheckUp", "Lists what the radio or a file would not keep, and likely mistakes."},
      {"mnuImportNotes", "Lists what the last import did not take as it is written."},
      {"mnuToolsService", "Raw blocks of the radio's memory."}};
  return hints;
}

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
