// The window with its radio; start-up, exit, port and other windows.
#include <QPlainTextEdit>
#include <QSettings>

#include "gui/window_test.h"

namespace q40::test {
namespace {

using RadioCommands = Window;

// ---- the radio

TEST_F(RadioCommands, ReadAndWriteEverything) {
  Start();
  ShowTab(2);
  Trigger("mnuReAll");  // an RX-Q40E of version A: the model changes by itself
  EXPECT_TRUE(Checked("opbModel_1"));
  EXPECT_EQ(Tab(), 3);
  EXPECT_EQ(Cell(kMemoryGrid, 4, 1), "*145.7250");
  EXPECT_EQ(Level("Slider1"), 18);
  EXPECT_EQ(Find<QLineEdit>("txtDial_0").text(), "0123456789");
  EXPECT_EQ(Flags(), "SM");
  Edit(kMemoryGrid, 2, [&] { Find<QLineEdit>("txtName").setText("NEW"); });
  Trigger("mnuWrAll");
  SetFlags(false, false);
  Click("cmbRxData");
  EXPECT_EQ(Cell(kMemoryGrid, 2, 18), "NEW");
  EXPECT_EQ(Flags(), "-M");
}

TEST_F(RadioCommands, ErrorsEndASequenceWithTheirBoxAndEverythingEnabled) {
  const struct {
    const char* fault;
    const char* command;
    const char* text;
  } cases[] = {{"short@0400", "mnuReMem", "Communication Error"},
               {"wrong-identity=RXQ40.3A.", "cmdAuto", "Communication Error"},
               {"hang-up@0180", "mnuWrSet", "COM Port Error"}};
  for (const auto& c : cases) {
    Start({c.fault}, SavedDemo());
    Error(c.text);
    Trigger(c.command);
    EXPECT_FALSE(Find("ProgressBar1").isVisible()) << c.fault;
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << c.fault;
    SetFlags(false, false);
    ShowTab(3);
    Click("cmbRxData");  // the next command works
    EXPECT_EQ(Flags(), "-M") << c.fault;
  }
}

TEST_F(RadioCommands, AnotherModelIsNotWrittenAndReadAfterAQuestion) {
  Start();  // RX-Q40T against an RX-Q40E
  answers_.Box("ERROR", "Model is not correct\nPlease select model or click Auto Select", kOk);
  Trigger("mnuWrAll");
  EXPECT_TRUE(
      Status().startsWith("The radio is an RX-Q40E, the data is for an RX-Q40T. Nothing was "
                          "written. Choosing a model starts anew"));
  SetFlags(false, true);  // Read Settings does not ask for it, but the change of the model does
  Save(kCancel);
  Trigger("mnuReSet");
  EXPECT_TRUE(Checked("opbModel_0"));
  EXPECT_EQ(Flags(), "-M");
  SetFlags(false, false);
  Trigger("mnuReSet");
  EXPECT_EQ(Level("Slider1"), 18);  // the radio is as it was
}

// While the radio talks: everything waits, the tabs can be switched.
TEST_F(RadioCommands, OneBusyGuard) {
  Start({"late=250@0200", "late=250@1C20"}, SavedDemo());
  Press("chkBeep", Qt::Key_Space);
  SetFlags(false, false);
  ShowTab(3);
  int looked = 0;
  const auto look = [&] {
    ++looked;
    EXPECT_TRUE(window_->IsBusy());
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    EXPECT_TRUE(Find("ProgressBar1").isVisible());
    for (const char* name :
         {"cmbRxData1", "cmbTxData1", "cmbRxData2", "cmbTxData2", "cmbRxData", "cmbTxData",
          "cmdAuto", "cmbInsert", "cmbDelete", "cmbClear", "cmbClAll", "cmdClear"}) {
      EXPECT_TRUE(Find(name).testAttribute(Qt::WA_ForceDisabled)) << name;
    }
    const CloneImage before = document().image;
    for (const char* name :
         {"mnuFileNew", "mnuFileOpen", "mnuFileSaveAs", "mnuImport", "mnuImportOther", "mnuExport",
          "mnuReSet", "mnuWrAll", "mnuToolsOptions", "mnuHelpAbout", "mnuEditUndo", "mnuUndo",
          "cmbInsert", "cmbDelete", "cmbClear", "cmbClAll"}) {
      Trigger(name);
    }
    Press(kMemoryGrid, Qt::Key_Return);
    Press(kMemoryGrid, Qt::Key_Down);  // looking is allowed
    EXPECT_EQ(CurrentRow(kMemoryGrid), looked + 1);
    ShowTab(1);
    EXPECT_EQ(Tab(), 1);
    Click("opbModel_0");
    Press("Slider1", Qt::Key_Right);
    EXPECT_TRUE(Checked("opbModel_1"));
    EXPECT_EQ(Level("Slider1"), 18);
    EXPECT_TRUE(document().image == before);
    ShowTab(3);
  };
  QTimer::singleShot(100, look);
  QTimer::singleShot(400, look);
  Trigger("mnuReMem");
  EXPECT_EQ(looked, 2);
  EXPECT_EQ(Flags(), "-M");
}

// A button that is disabled while the radio talks would pass its focus on, and the next key with it.
TEST_F(RadioCommands, TheFocusComesBack) {
  Start({"late=250@0020", "silence@0040"}, SavedDemo());
  for (const char* button : {"cmbRxData1", "cmdAuto"}) {
    auto& pressed = Find(button);
    pressed.setFocus();
    if (button == std::string_view("cmbRxData1")) {
      QTimer::singleShot(100, [&] { EXPECT_EQ(window_->focusWidget(), window_.get()); });
      Error("Communication Error");
    }
    Press(button, Qt::Key_Space);
    EXPECT_EQ(window_->focusWidget(), &pressed) << button;
    EXPECT_TRUE(Status().endsWith("Before, demo.Q40 was open.") == (&pressed == &Find("cmdAuto")));
    SetFlags(false, false);
  }
  // Read All goes through the pages, from the settings to the memory.
  for (const auto& [tab, name] : {std::pair(3, "MSFlexGrid1"), std::pair(1, "cmbTOT")}) {
    ShowTab(tab);
    Find(name).setFocus();
    SetFlags(false, false);
    Trigger("mnuReAll");
    ASSERT_NE(window_->focusWidget(), nullptr) << name;
    EXPECT_EQ(window_->focusWidget()->objectName(), "MSFlexGrid1") << name;
  }
}

// Letters that a bad cable made of digits arrive like any data, and are not sent back.
TEST_F(RadioCommands, DamagedRepliesAreToldAndNotWritten) {
  Start({"non-hex=8@0040"});
  Trigger("mnuReAll");
  EXPECT_TRUE(Status().startsWith("1 reply was damaged: ")) << Status().toStdString();
  Error("Data Error");
  Trigger("mnuWrSet");
  EXPECT_TRUE(Status().startsWith("Settings area 2: byte 0x0048")) << Status().toStdString();
  EXPECT_TRUE(Status().endsWith("Nothing was written.")) << Status().toStdString();
}

// The mark is that of the trace, and not of the click.
TEST_F(RadioCommands, TheMarkOfATrace) {
  Start();
  answers_.File("");
  for (const bool marked : {false, true, false}) {
    if (marked) answers_.File(File("t"));
    Trigger("mnuTrace");
    EXPECT_EQ(Find<QAction>("mnuTrace").isChecked(), marked);
  }
}

TEST_F(RadioCommands, ServicePage) {
  Start();
  Trigger("mnuToolsService");
  const auto reply = [&] { return Find<QPlainTextEdit>("Text2").toPlainText(); };
  Find<QLineEdit>("Text1").setText("0200");
  Click("Command1");
  EXPECT_TRUE(reply().startsWith("KX~F0200R")) << reply().toStdString();
  Click("Command6");
  EXPECT_TRUE(reply().contains("\n20\t80000002014550000000600008080000\n"));
  EXPECT_TRUE(reply().contains("\nFF\t"));
}

// ---- port, start-up, exit

TEST_F(RadioCommands, ThePortDialogShowsWhatIsPluggedInAndItsChoiceIsKept) {
  Store(folder_ / "RX-Q40.ini", "3\r\n");
  StartOnPort(folder_ / "cable");
  answers_.Add([&](QWidget& dialog) {
    EXPECT_TRUE(Checked("opbCom_2"));
    Click("opbCom_6");
    const auto& presence = Find<QLabel>("lblCom_0");
    EXPECT_EQ(presence.text(), "not present");
    std::filesystem::create_symlink("/dev/null", folder_ / "cable");  // plugged in now
    EXPECT_TRUE(QTest::qWaitFor([&] { return presence.text() == "present"; }, 3000));
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  Trigger("mnuToolsOptions");
  answers_.Add([&](QWidget& dialog) {
    Click("opbCom_9");
    QTest::keyClick(&dialog, Qt::Key_Escape);  // applies nothing
  });
  Trigger("mnuToolsOptions");
  EXPECT_TRUE(window_->close());
  EXPECT_EQ(Content(folder_ / "RX-Q40.ini"), "7\r\n");
}

TEST_F(RadioCommands, StartUpFileAndItsFailure) {
  Start({}, SavedDemo());
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
  EXPECT_EQ(Flags(), "--");
  Trigger("mnuFileNew");
  EXPECT_EQ(Status(), "Started anew with the defaults of the RX-Q40E. Before, demo.Q40 was open.");
  Error("Data Error");
  Start({}, folder_ / "missing.Q40");
  SetFlags(true, false);
  Save(kCancel);  // the pending path is forgotten, so this asks
  Click("opbModel_1");
  EXPECT_EQ(document().model, 0);
}

TEST_F(RadioCommands, NothingRunsBeforeTheStartUpPauseIsOver) {
  options_.start_pause = std::chrono::milliseconds(150);
  window_ = std::make_unique<frmMain>(options_);
  window_->StartUp();
  Click("chkBeep");
  ShowTab(3);
  Press(kMemoryGrid, Qt::Key_Insert);
  Trigger("mnuReAll");
  EXPECT_TRUE(Checked("chkBeep"));
  EXPECT_EQ(Flags(), "--");
  // Closing in the pause ends the program properly.
  Trigger("mnuFileExit");
  EXPECT_FALSE(window_->isVisible());
  QTest::qWait(200);
  EXPECT_TRUE(window_->IsBusy());  // it never became ready
}

TEST_F(RadioCommands, TheWindowHasItsSizeWithItsFrame) {
  Start();
  EXPECT_NE(window_->frameSize(), window_->size());
  EXPECT_EQ(window_->frameSize(), QSize(825, 554));
  EXPECT_TRUE(window_->close());
  QSettings stored(QSettings::IniFormat, QSettings::UserScope, kPlainTitle);
  EXPECT_EQ(stored.value("Settings/MainWidth").toString(), "12370");
  EXPECT_EQ(stored.value("Settings/MainHeight").toString(), "8305");
}

// Intended: read or cleared channels alone are not asked about, but a box without a byte is.
TEST_F(RadioCommands, ExitAsksForSettingsOnlyAndTakesTheOtherWindowsAlong) {
  Start();
  Press("chkFlg1_0", Qt::Key_Space);
  Save(kCancel);
  EXPECT_FALSE(window_->close());
  Save(kYes);
  answers_.File(File("last.Q40"));
  Trigger("mnuHelpContents");
  EXPECT_TRUE(window_->close());
  EXPECT_TRUE(std::filesystem::exists(folder_ / "last.Q40"));
  EXPECT_FALSE(Find("frmHelp").isVisible());
  Start();
  SetFlags(false, true);
  EXPECT_TRUE(window_->close());
}

}  // namespace
}  // namespace q40::test
