// The program's window. Owns the document, the port and the change flags, and routes every command.
//
// What a page shows and how it behaves lives in the page's class; the window moves data between the
// document and the pages and runs the file and radio commands.
#pragma once

#include <chrono>
#include <string>

#include <QMainWindow>

#include "app/com_port.h"
#include "app/radio_texts.h"
#include "document/clone_document.h"
#include "files/port_number_file.h"
#include "serial/serial_port.h"
#include "widgets/kept_focus.h"

class QAction;
class QFrame;
class QMenu;
class QTabWidget;

namespace q40 {

class ChannelGrid;
class CheckUpWindow;
class dlgCOM;
class dlgModify;
class HelpDesk;
class ImportNotes;
class InputGuard;
class MemoryPage;
class OuterSize;
class ReportWindow;
class ServicePage;
class SettingsPage1;
class SettingsPage2;
class SpecialChannels;
class StatusLine;
struct CommandRow;
struct ImportReport;
struct Place;

struct MainOptions {
  ComPort::Simulation simulation;
  std::string startup_path;    // clone file to open; may be empty
  std::string program_folder;  // of the file with the port number
  std::string user_folder;     // in its place when the program's folder cannot be written
  std::string backup_folder;   // of the backups before writing; made when it is needed
  std::chrono::milliseconds start_pause{2000};
};

class frmMain final : public QMainWindow, private SequenceHost {  // NOLINT: the window's given name
  Q_OBJECT

 public:
  explicit frmMain(const MainOptions& options);
  ~frmMain() override;

  // Shows the window. After the prescribed pause, during which no command runs, the start-up file
  // is opened and the window is ready.
  void StartUp();

  [[nodiscard]] const CloneDocument& document() const { return document_; }
  // A sequence, a service read or the start-up pause is running.
  [[nodiscard]] bool IsBusy() const { return busy_ != Busy::kNo; }

 signals:
  void ready();  // start-up is over

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  friend struct CommandRow;  // its table names the private commands below
  enum class Busy : unsigned char { kNo, kStarting, kTalking };
  using Command = void (frmMain::*)();

  // ---- the window (frm_main.cpp, frm_main_layout.cpp)
  void MakePages();
  void ConnectPages();
  void MakeMenus();
  void MakeToolBar();
  QAction* AddCommand(QMenu& menu, const CommandRow& row);
  void Run(Command command);
  [[nodiscard]] bool MayRun();
  void RunToolBarKey(const QString& key);
  void FinishStartUp();
  void SetBusy(Busy busy);
  void SwitchTab(int tab);
  void ShowService();
  void PlaceService();
  void ToggleToolBar(bool visible);
  void ToggleStatusBar(bool visible);
  void ShowStatus();
  void Edited();
  void Note(const QString& text);         // what came of a command that has succeeded
  void NoteFailure(const QString& text);  // of one that has not
  void NoteStart();

  // ---- the document and the pages
  void ShowDocument();
  void ShowDialTexts();
  void CollectSettings();
  void ChangeFont();
  void UpdateVFOData();
  [[nodiscard]] bool HasChanges() const;
  void SetPath(const std::string& path);
  void ChooseModel(int model);
  void ChooseBand(Band band);
  void EditCurrent();
  void OpenMemoryChannel(int n);
  void OpenSpecialChannel(int k);

  // ---- file commands (frm_main_files.cpp)
  void New() override;
  void NewCommand();
  void Open();
  void OpenCloneFile(const std::string& path);
  void OpenAfterQuestion(const std::string& path);
  void OpenRecentFile(const std::string& path);
  void FillRecentFiles(QMenu& menu);
  void SaveCommand();
  void SaveAs();
  bool Save();
  bool SaveWithDialog(int model);
  bool SaveTo(const std::string& path, int model);
  void DataError(const FileProblem& problem);
  bool AskToSave() override;
  enum class FileDialog : unsigned char { kOpen, kSaveAs, kImport, kExport };
  std::string AskPath(FileDialog kind);
  bool MayReplace(const std::string& path);
  bool IsNoCloneFile(const std::string& path);

  // ---- channel lists (frm_main_import.cpp)
  void Import();
  void Export();
  void ShowImported(const ImportReport& report);
  void KeepImportNotes(const std::string& path, const ImportReport& report);
  void ForgetImportNotes();
  void ShowImportNotes();

  // ---- radio commands (frm_main_radio.cpp)
  void AutoSelect();
  void ReadSettings();
  void ReadMemory();
  void WriteSettings();
  void WriteMemory();
  void MenuReadSettings();
  void MenuReadMemory();
  void MenuReadAll();
  void MenuWriteSettings();
  void MenuWriteMemory();
  void MenuWriteAll();
  void Talk(SequenceReport (Sequences::*sequence)());
  void Write(Half half);
  void WriteFromMenu(Half half);
  WriteNet Net(std::string& backup);
  std::string KeepBackup(CloneDocument radio);
  void NoteEnd(const QString& why);
  void ReportRead(const SequenceReport& report);
  void ReportWrite(const WriteResult& result, Half half, const std::string& backup);
  void TalkFromMenu(SequenceReport (Sequences::*sequence)(), Sequence first);
  void ShowPageOf(Sequence sequence);
  void ComEnd1();
  void ComEnd2();
  void ComEnd3();
  void SetCloneButtonsEnabled(bool enabled);
  void ServiceRead(const QString& digits);
  void ServiceDump();
  void BeginService();
  void EndService();
  bool SelectModel(int model) override;
  void Begin(Sequence sequence) override;
  void ShowProgress(const SequenceProgress& progress) override;
  void ShowSettings() override;
  void ShowSpecialChannels() override;
  void ShowDialText(int index) override;
  void ShowMemoryChannel(int n) override;
  void End(const SequenceReport& report) override;

  // ---- check-up (frm_main_checkup.cpp)
  void ShowCheckUp();
  void CheckAgain();
  void CheckNewData();
  void GoTo(const Place& place);
  void GoToRow(int tab, ChannelGrid& grid, int row);
  void GoToControl(const QString& name);
  void ScrollTo(QWidget& control);

  // ---- other windows
  void ChoosePort();
  void About();
  void Help();
  void ShowWindow(QWidget& window);
  void Exit() { close(); }

  CloneDocument document_;
  std::string path_;          // of the clone file last opened or saved
  std::string startup_path_;  // emptied once it was opened
  std::string backup_folder_;
  std::chrono::milliseconds start_pause_;
  PortNumberFile port_file_;
  ComPort* port_;
  EventLoop events_;
  Link link_;
  Sequences sequences_;
  Busy busy_ = Busy::kNo;
  InputGuard* guard_ = nullptr;
  KeptFocus focus_;
  PartialRead part_;
  QString let_go_;             // which file's data a command has let go
  bool follow_pages_ = false;  // a menu entry brings the pages to the front

  QTabWidget* tabs_ = nullptr;
  std::array<QFrame*, 4> frames_{};
  MemoryPage* memory_ = nullptr;
  SpecialChannels* special_ = nullptr;
  SettingsPage1* settings1_ = nullptr;
  SettingsPage2* settings2_ = nullptr;
  ServicePage* service_ = nullptr;
  dlgModify* modify_ = nullptr;
  HelpDesk* help_ = nullptr;
  ReportWindow* report_ = nullptr;
  CheckUpWindow* checkup_ = nullptr;
  ImportNotes* import_notes_ = nullptr;
  std::vector<QWidget*> windows_;  // opened from this one, in that order; they belong to it
  QAction* edit_channel_ = nullptr;
  StatusLine* status_ = nullptr;
  OuterSize* size_ = nullptr;
};

}  // namespace q40
