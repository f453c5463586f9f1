// The window with its radio; start-up, exit, port and other windows.
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSlider>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>

#include "gui/commands_test.h"

namespace q40 {
namespace {

using test::kCancel;
using test::kNo;
using test::kOk;
using test::kPlainTitle;
using test::kYes;
using RadioCommands = test::Commands;

// ---- the radio

TEST_F(RadioCommands, ReadAndWriteEverything) {
  Start();
  ShowTab(2);
  Trigger("mnuReAll");  // an RX-Q40E of version A: the model changes by itself
  EXPECT_TRUE(Checked("opbModel_1"));
  EXPECT_EQ(Find<QTabWidget>("TabStrip1").currentIndex(), 2);
  EXPECT_EQ(Cell("MSFlexGrid1", 4, 1), "*145.7250");
  EXPECT_EQ(Cell("MSFlexGrid1", 4, 18), "LAKE");  // a read fills by headings
  EXPECT_EQ(Cell("MSFlexGrid1", 5, 1), "");
  EXPECT_EQ(Find<QSlider>("Slider1").value(), 18);
  EXPECT_EQ(Find<QLineEdit>("txtDial_0").text(), "0123456789");
  EXPECT_EQ(Flags(), "SM");
  EXPECT_FALSE(Find("ProgressBar1").isVisible());
  EXPECT_EQ(Find<QProgressBar>("ProgressBar1").value(), 0);
  EXPECT_EQ(Find<QLabel>("lblStatusModel").text(), "RX-Q40E version A");

  SelectRow("MSFlexGrid1", 2);
  answers_.Edit([](QWidget& dialog) { dialog.findChild<QLineEdit*>("txtName")->setText("NEW"); });
  QTest::keyClick(&Find("MSFlexGrid1"), Qt::Key_Return);
  EXPECT_EQ(Cell("MSFlexGrid1", 2, 16), "NEW");  // one row redrawn in stored order
  EXPECT_EQ(Cell("MSFlexGrid1", 3, 18), "TOWER");
  Trigger("mnuWrAll");
  EXPECT_EQ(Flags(), "SM");
  EXPECT_FALSE(document().image.VersionA);
  SetFlags(false, false);
  Click("cmbRxData");
  EXPECT_EQ(Cell("MSFlexGrid1", 2, 18), "NEW");
  EXPECT_EQ(Flags(), "-M");
  EXPECT_TRUE(document().image.VersionA);
}

TEST_F(RadioCommands, AutoSelectResetsAndTakesTheModel) {
  Start({}, SavedDemo());
  SetFlags(false, true);
  Save(kNo);
  ShowTab(1);
  Click("cmdAuto");
  EXPECT_TRUE(Checked("opbModel_1"));
  EXPECT_FALSE(document().image.ChannelInUse[0]);
  EXPECT_EQ(Flags(), "--");
  EXPECT_EQ(Title(), kPlainTitle);
}

TEST_F(RadioCommands, ErrorsEndASequenceWithTheirBoxAndEverythingEnabled) {
  const struct {
    const char* fault;
    const char* command;
    const char* text;
  } cases[] = {{"short", "mnuReSet", "Communication Error"},
               {"wrong-identity=RXQ40.3A.", "cmdAuto", "Communication Error"},
               {"short@0400", "mnuReMem", "Communication Error"},
               {"stray@1D00", "mnuReSet", "Communication Error"},
               {"hang-up@0300", "mnuReAll", "COM Port Error"},
               {"ng@RXQ40", "mnuWrMem", "Communication Error"},
               {"wrong-identity=RXQ40-0A-@WHO", "mnuReSet", nullptr},  // another radio: no error
               {"hang-up@0180", "mnuWrSet", "COM Port Error"}};
  for (const auto& c : cases) {
    Start({c.fault}, SavedDemo());
    if (c.text != nullptr) Error(c.text);
    if (window_->findChild<QAction*>(c.command) != nullptr) {
      Trigger(c.command);
    } else {
      Click(c.command);
    }
    for (const char* name : {"cmbRxData1", "cmbTxData1", "cmbTxData2", "cmbRxData2", "cmbRxData",
                             "cmbTxData", "cmdAuto"}) {
      EXPECT_FALSE(Find(name).testAttribute(Qt::WA_ForceDisabled)) << c.fault << name;
    }
    EXPECT_FALSE(Find("ProgressBar1").isVisible()) << c.fault;
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << c.fault;
    EXPECT_FALSE(window_->IsBusy());
    SetFlags(false, false);
    Trigger("mnuReMem");  // once: the next command works
    EXPECT_TRUE(document().image.ChannelInUse[0]) << c.fault;
  }
}

TEST_F(RadioCommands, AFailedReadKeepsWhatCameBefore) {
  Start({"short@0240"});
  Error("Communication Error");
  Trigger("mnuReMem");
  EXPECT_EQ(Cell("MSFlexGrid1", 2, 1), "145.6000");
  EXPECT_EQ(Cell("MSFlexGrid1", 3, 1), "");
  EXPECT_EQ(Flags(), "--");
  EXPECT_TRUE(Find<QStatusBar>("sbStatusBar").currentMessage().contains("Memory channel 2"));
}

TEST_F(RadioCommands, AnotherModelIsNotWritten) {
  Start();  // RX-Q40T against an RX-Q40E
  answers_.Box("ERROR", "Model is not correct\nPlease select model or click Auto Select", kOk);
  Trigger("mnuWrAll");
  EXPECT_TRUE(Checked("opbModel_0"));
  Trigger("mnuReSet");
  EXPECT_EQ(Find<QSlider>("Slider1").value(), 18);  // the radio is as it was
}

TEST_F(RadioCommands, CancelAtTheModelChangeEndsTheReadQuietly) {
  Start();
  SetFlags(false, true);  // Read Settings does not ask for it, but the change of the model does
  Save(kCancel);
  Trigger("mnuReSet");
  EXPECT_TRUE(Checked("opbModel_0"));
  EXPECT_EQ(Flags(), "-M");
  EXPECT_FALSE(window_->IsBusy());
}

// While the radio talks: everything waits, the tabs can be switched, the window cannot go.
TEST_F(RadioCommands, OneBusyGuard) {
  Start({"late=250@0200", "late=250@1C20"}, SavedDemo());
  ShowTab(3);
  int looked = 0;
  const auto look = [&] {
    ++looked;
    EXPECT_TRUE(window_->IsBusy());
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    EXPECT_TRUE(Find("ProgressBar1").isVisibleTo(&Find("Frame1_2")));
    for (const char* name : {"cmbRxData1", "cmbTxData1", "cmbTxData2", "cmbRxData2", "cmbRxData",
                             "cmbTxData", "cmdAuto"}) {
      EXPECT_TRUE(Find(name).testAttribute(Qt::WA_ForceDisabled)) << name;
    }
    const CloneImage before = document().image;
    for (const char* name :
         {"mnuFileNew", "mnuFileOpen", "mnuFileSaveAs", "mnuImport", "mnuExport", "mnuReSet",
          "mnuWrAll", "mnuToolsOptions", "mnuHelpAbout", "mnuEditUndo"}) {
      Trigger(name);
    }
    for (const char* name : {"cmbInsert", "cmbDelete", "cmbClear", "cmbClAll"})
      Find<QPushButton>(name).click();
    QTest::keyClick(&Find("MSFlexGrid1"), Qt::Key_Return);
    ShowTab(1);
    Click("opbModel_0");
    Click("chkBeep");
    QTest::keyClick(&Find("Slider1"), Qt::Key_Right);
    EXPECT_TRUE(Checked("opbModel_1"));
    EXPECT_EQ(Find<QSlider>("Slider1").value(), 18);
    EXPECT_TRUE(document().image == before);
    EXPECT_FALSE(window_->close());
    EXPECT_TRUE(window_->isVisible());
    ShowTab(3);
  };
  QTimer::singleShot(100, look);
  QTimer::singleShot(400, look);
  Trigger("mnuReMem");
  EXPECT_EQ(looked, 2);
  EXPECT_EQ(answers_.seen, 0);
  EXPECT_EQ(Flags(), "-M");
}

TEST_F(RadioCommands, AReadAllThatFailsKeepsTheEditedChannelsUnsaved) {
  Start({"silence@0040"}, SavedDemo());
  SetFlags(true, true);
  Save(kNo);
  Error("Communication Error");
  Trigger("mnuReAll");
  EXPECT_EQ(Flags(), "-M");
}

TEST_F(RadioCommands, AMenuEntryShowsItsPageBeforeItAsks) {
  Start({}, SavedDemo());
  ShowTab(3);
  SetFlags(true, true);
  Save(kCancel);
  Trigger("mnuReAll");
  EXPECT_EQ(Find<QTabWidget>("TabStrip1").currentIndex(), 0);
  Trigger("mnuToolsService");
  EXPECT_FALSE(Find("Frame1_0").isEnabled());  // it lies under the service page
  EXPECT_FALSE(Find<QAction>("mnuEditUndo").isEnabled());
  window_->resize(1000, 700);
  QTest::qWait(20);
  EXPECT_EQ(Find("Frame1_3").size(), Find("Frame1_0").size());
  Save(kCancel);
  Trigger("mnuReSet");
  EXPECT_FALSE(Find("Frame1_3").isVisible());
  EXPECT_TRUE(Find("Frame1_0").isEnabled());
}

TEST_F(RadioCommands, ServicePage) {
  Start();
  Trigger("mnuToolsService");
  Find<QLineEdit>("Text1").setText("0200");
  Click("Command1");
  const QString reply = Find<QPlainTextEdit>("Text2").toPlainText();
  EXPECT_TRUE(reply.startsWith("KX~F0200R")) << reply.toStdString();
  EXPECT_TRUE(reply.contains("80000002014550000000600008080000"));
  Click("Command6");
  const QStringList lines =
      Find<QPlainTextEdit>("Text2").toPlainText().split('\n', Qt::SkipEmptyParts);
  EXPECT_TRUE(lines.contains("20\t80000002014550000000600008080000")) << lines.size();
  EXPECT_TRUE(lines.last().startsWith("FF\t"));
  Click("Command2");
  EXPECT_EQ(Find<QPlainTextEdit>("Text2").toPlainText(), "");
  EXPECT_TRUE(Find("Command1").isEnabled() && Find("Command6").isEnabled());
}

// ---- port, start-up, exit

TEST_F(RadioCommands, PortDialogAndItsFile) {
  test::Store(folder_ / "RX-Q40.ini", "3\r\n");
  Start();
  answers_.Add([&](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "COM Port Setup");
    EXPECT_EQ(dialog.findChild<QRadioButton*>("opbCom_8")->text(), "COM  9");
    EXPECT_EQ(dialog.findChild<QRadioButton*>("opbCom_13")->text(), "COM 14");
    EXPECT_TRUE(dialog.findChild<QRadioButton*>("opbCom_2")->isChecked());
    EXPECT_EQ(dialog.findChildren<QPushButton*>().size(), 1);
    dialog.findChild<QRadioButton*>("opbCom_6")->click();
    QTest::mouseClick(dialog.findChild<QPushButton*>("OKButton"), Qt::LeftButton);
  });
  Trigger("mnuToolsOptions");
  answers_.Add([](QWidget& dialog) {
    dialog.findChild<QRadioButton*>("opbCom_9")->click();
    QTest::keyClick(&dialog, Qt::Key_Escape);  // applies nothing
  });
  Trigger("mnuToolsOptions");
  EXPECT_TRUE(window_->close());
  EXPECT_EQ(test::Content(folder_ / "RX-Q40.ini"), "7\r\n");
  QSettings placement(QSettings::IniFormat, QSettings::UserScope, kPlainTitle);
  // In twips, with the frame that the desktop puts around the window.
  EXPECT_EQ(placement.value("Settings/MainWidth").toInt(), 15 * window_->frameGeometry().width());
  EXPECT_EQ(placement.value("Settings/MainHeight").toInt(), 15 * window_->frameGeometry().height());
  EXPECT_EQ(placement.value("Settings/MainLeft").toInt(), 15 * window_->frameGeometry().left());
}

TEST_F(RadioCommands, ThePortDialogFollowsWhatIsPluggedIn) {
  const std::string cable = folder_ / "cable";
  setenv("RXQ40_COM3", cable.c_str(), 1);
  MainOptions options;
  options.start_pause = std::chrono::milliseconds(0);
  StartWith(options);
  answers_.Add([&](QWidget& dialog) {
    auto* label = dialog.findChild<QLabel*>("lblCom_2");
    EXPECT_EQ(label->text(), "not present");
    std::filesystem::create_symlink("/dev/null", cable);
    EXPECT_TRUE(QTest::qWaitFor([&] { return label->text() == "present"; }, 3000));
    EXPECT_TRUE(dialog.findChild<QRadioButton*>("opbCom_2")
                    ->accessibleDescription()
                    .startsWith(QString::fromStdString(cable)));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Trigger("mnuToolsOptions");
  unsetenv("RXQ40_COM3");
}

TEST_F(RadioCommands, StartUpFileAndItsFailure) {
  Start({}, SavedDemo());
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
  EXPECT_EQ(Flags(), "--");
  Error("Data Error");
  Start({}, folder_ / "missing.Q40");
  EXPECT_EQ(Title(), kPlainTitle);
  Click("opbModel_1");  // the pending path is forgotten, nothing is in the way
  EXPECT_EQ(document().model, 1);
}

TEST_F(RadioCommands, NothingRunsBeforeTheStartUpPauseIsOver) {
  MainOptions options;
  options.program_folder = folder_.path();
  options.start_pause = std::chrono::milliseconds(150);
  options.simulation.on = true;
  window_ = std::make_unique<frmMain>(options);
  window_->StartUp();
  EXPECT_TRUE(window_->IsBusy());
  Trigger("mnuReAll");
  Click("chkBeep");
  ShowTab(3);
  QTest::keyClick(&Find("MSFlexGrid1"), Qt::Key_Insert);
  QTest::keyClick(&Find("cmbInsert"), Qt::Key_C, Qt::AltModifier);
  EXPECT_TRUE(Checked("chkBeep"));
  EXPECT_EQ(Flags(), "--");
  QTest::qWait(250);
  EXPECT_FALSE(window_->IsBusy());
  EXPECT_EQ(Find<QTimer>("Timer1").interval(), 500);
  // Closing in the pause ends the program properly.
  auto other = std::make_unique<frmMain>(options);
  other->StartUp();
  EXPECT_TRUE(other->close());
  QTest::qWait(200);
  EXPECT_TRUE(other->IsBusy());  // it never became ready
}

TEST_F(RadioCommands, ExitAsksForSettingsOnly) {
  Start();
  SetFlags(true, false);
  Save(kCancel);
  EXPECT_FALSE(window_->close());
  Save(kYes);
  answers_.File(File("last.Q40"));
  Trigger("mnuHelpContents");
  EXPECT_TRUE(Find("frmHelp").isVisible());
  EXPECT_TRUE(window_->close());
  EXPECT_TRUE(std::filesystem::exists(folder_ / "last.Q40"));
  EXPECT_FALSE(Find("frmHelp").isVisible());
  Start();
  SetFlags(false, true);
  EXPECT_TRUE(window_->close());
  EXPECT_TRUE(std::filesystem::exists(folder_ / "RX-Q40.ini"));
}

TEST_F(RadioCommands, ToolbarAndAbout) {
  Start();
  QStringList keys;
  for (QAction* action : Find<QToolBar>("tbToolBar").actions()) keys << action->text();
  EXPECT_EQ(keys, QStringList({"New", "Open", "Save", "Help"}));
  answers_.Add([&](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), "frmAbout");
    answers_.Add([](QWidget& info) {
      EXPECT_TRUE(info.findChild<QPlainTextEdit*>("txtSystemInfo")->toPlainText().contains("Qt 6"));
      info.close();
    });
    QTest::mouseClick(dialog.findChild<QPushButton*>("cmdSysInfo"), Qt::LeftButton);
    dialog.close();
  });
  for (QAction* action : Find<QToolBar>("tbToolBar").actions()) {
    if (action->text() == "Help") action->trigger();
  }
  EXPECT_EQ(answers_.seen, 2);
}

}  // namespace
}  // namespace q40
