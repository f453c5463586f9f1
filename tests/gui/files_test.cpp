// The change flags, the grids' commands, model, files and CSV of the window.
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSlider>
#include <QStatusBar>
#include <QUrl>

#include "gui/commands_test.h"

namespace q40 {
namespace {

using test::kCancel;
using test::kNo;
using test::kOk;
using test::kPlainTitle;
using test::kYes;
using FileCommands = test::Commands;

// ---- what sets, clears and asks for the change flags

TEST_F(FileCommands, GridCommandsSetTheirFlags) {
  Start({}, SavedDemo());
  ShowTab(3);
  const char* const delete_text =
      "Are you sure that you want to do the delete?\nDelete cannot be undone.";
  const char* const clear_text =
      "Are you sure that you want to do the clear?\nClear cannot be undone.";
  const char* const all_text =
      "Are you sure that you want to clear all memory?\nClear cannot be undone.";
  const struct {
    const char* button;
    const char* title;  // null: no question
    const char* text;
    const char* flags;
  } cases[] = {{"cmbDelete", "DELETE OK", delete_text, "SM"},
               {"cmbClear", "CLEAR OK", clear_text, "SM"},
               {"cmbClAll", "CLEAR OK", all_text, "-M"},
               {"cmbInsert", nullptr, nullptr, "SM"}};
  for (const auto& c : cases) {
    if (c.title != nullptr) {
      const CloneImage before = document().image;
      answers_.Add([&](QWidget& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        EXPECT_EQ(box->icon(), QMessageBox::Warning);
        EXPECT_EQ(box->standardButton(box->defaultButton()), kCancel);
        QTest::keyClick(&dialog, Qt::Key_Return);  // the default
      });
      Click(c.button);
      EXPECT_TRUE(document().image == before);
      EXPECT_EQ(Flags(), "--") << c.button;
      answers_.Box(c.title, c.text, kOk);
    }
    Click(c.button);
    EXPECT_EQ(Flags(), c.flags) << c.button;
    SetFlags(false, false);
  }
  ShowTab(1);
  SelectRow("MSFlexGrid2", 4);
  answers_.Box("CLEAR OK", clear_text, kOk);
  Click("cmdClear");
  EXPECT_EQ(Flags(), "-M");
  EXPECT_TRUE(document().image.VhfSpecialSet[3] == ChannelRecord());
  EXPECT_TRUE(document().image.UhfSpecialSet[3] != ChannelRecord());
}

TEST_F(FileCommands, InsertAndDeleteMoveTheChannels) {
  Start({}, SavedDemo());  // channels 0, 1, 2, 3, 5, 10, 11, 12, D0, D9
  ShowTab(3);
  const auto frequency = [&](int row) { return Cell("MSFlexGrid1", row, 1); };
  Find("MSFlexGrid1").setFocus();
  QTest::keyClick(&Find("MSFlexGrid1"), Qt::Key_Insert);
  EXPECT_EQ(frequency(1), "");
  EXPECT_EQ(frequency(2), "145.5000");
  EXPECT_EQ(frequency(210), "");
  EXPECT_FALSE(document().image.ChannelInUse[209]);  // D8 was empty; D9 is gone
  answers_.Box("DELETE OK",
               "Are you sure that you want to do the delete?\nDelete cannot be undone.", kOk);
  QTest::keyClick(&Find("MSFlexGrid1"), Qt::Key_Delete);
  EXPECT_EQ(frequency(1), "145.5000");
  EXPECT_EQ(frequency(4), "*145.7250");

  Start({}, SavedDemo());
  ShowTab(3);
  SelectRow("MSFlexGrid1", 210);
  answers_.Box("DELETE OK",
               "Are you sure that you want to do the delete?\nDelete cannot be undone.", kOk);
  Click("cmbDelete");
  const ChannelRecord& last = document().image.MemoryTable[209];
  EXPECT_FALSE(document().image.ChannelInUse[209]);
  EXPECT_EQ(last.cellText[0] + last.cellText[8], "");
  EXPECT_EQ(last.cellText[9], "05");  // from here on the cells stay
  EXPECT_EQ(last.cellText[15], "LAST");
  EXPECT_EQ(frequency(210), "");
}

TEST_F(FileCommands, WhoAsksForWhichFlag) {
  Start();
  const struct {
    const char* command;
    bool settings, memory, asks;
  } cases[] = {{"mnuFileNew", true, false, true},   {"mnuFileNew", false, true, true},
               {"mnuFileNew", false, false, false}, {"mnuFileOpen", true, false, true},
               {"mnuFileOpen", false, true, true},  {"mnuImport", true, false, true},
               {"mnuImport", false, true, true},    {"opbModel_1", true, false, true},
               {"opbModel_1", false, true, true},   {"cmdAuto", true, false, true},
               {"cmdAuto", false, true, true},      {"mnuReSet", true, false, true},
               {"mnuReMem", false, true, true},     {"mnuReAll", true, false, true},
               {"mnuReAll", false, true, true}};
  for (const auto& c : cases) {
    SetFlags(c.settings, c.memory);
    const CloneImage before = document().image;
    const int seen = answers_.seen;
    if (c.asks) Save(kCancel);
    if (window_->findChild<QAction*>(c.command) != nullptr) {
      Trigger(c.command);
    } else {
      ShowTab(1);
      Click(c.command);
    }
    EXPECT_EQ(answers_.seen - seen, c.asks ? 1 : 0) << c.command;
    if (!c.asks) continue;
    EXPECT_EQ(Flags(), std::string(c.settings ? "S" : "-") + (c.memory ? "M" : "-")) << c.command;
    EXPECT_TRUE(document().image == before) << c.command;
    EXPECT_TRUE(Checked("opbModel_0")) << c.command;
  }
}

TEST_F(FileCommands, AFailedOrCancelledSaveCountsAsCancel) {
  Start();
  SetFlags(true, false);
  Save(kYes);
  answers_.File("");  // the save dialog is cancelled
  Trigger("mnuFileNew");
  EXPECT_EQ(Flags(), "S-");
  Save(kYes);
  answers_.File(File("nowhere/a.Q40"));
  Error("Data Error");
  ShowTab(1);
  Click("opbModel_2");
  EXPECT_TRUE(Checked("opbModel_0"));
  EXPECT_EQ(Flags(), "S-");
}

// ---- model and New

TEST_F(FileCommands, AModelChangeStartsAnew) {
  Start({}, SavedDemo());
  EXPECT_TRUE(Checked("opbModel_1"));
  Click("opbModel_1");  // the one that is set: nothing at all
  EXPECT_TRUE(document().image.ChannelInUse[0]);
  const std::string dial = document().dial[0];
  Click("opbModel_2");
  EXPECT_EQ(document().model, 2);
  EXPECT_FALSE(document().image.ChannelInUse[0]);
  EXPECT_EQ(document().dial[0], dial);
  EXPECT_EQ(Title(), kPlainTitle);
  EXPECT_TRUE(document().image.VersionA);
  Click("optBand_1");
  EXPECT_EQ(Cell("MSFlexGrid2", 1, 1), "415.0000");

  // Yes saves the old model's data under the old model's header, then goes on.
  SetFlags(true, true);
  Save(kYes);
  answers_.File(File("old.Q40"));
  Click("opbModel_3");
  EXPECT_EQ(test::Content(folder_ / "old.Q40").substr(0, 32), "Korvex RX-Q40T1 CloneA FileStart");
  EXPECT_EQ(document().model, 3);
  EXPECT_EQ(Flags(), "--");
}

// ---- files

TEST_F(FileCommands, SaveOpenSaveAs) {
  Start();
  ShowTab(1);
  Find<QSlider>("Slider1").setValue(7);
  answers_.File(File("first"));  // the extension is added
  Trigger("mnuFileSave");
  EXPECT_EQ(Title(), kPlainTitle + " - first.Q40");
  EXPECT_EQ(Flags(), "--");
  const std::string first = test::Content(folder_ / "first.Q40");
  EXPECT_EQ(first.size(), 15504U);
  Trigger("mnuFileSave");
  EXPECT_TRUE(test::Content(folder_ / "first.Q40") == first);

  answers_.File(QString::fromStdString(SavedDemo()));
  Trigger("mnuFileOpen");
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
  EXPECT_TRUE(Checked("opbModel_1"));
  EXPECT_EQ(Cell("MSFlexGrid1", 4, 1), "*145.7250");
  EXPECT_EQ(Find<QSlider>("Slider1").value(), 18);
  EXPECT_EQ(Find<QLineEdit>("txtDial_1").text(), "*123#");
  EXPECT_EQ(Flags(), "--");

  answers_.File(File("second.Q40"));
  Trigger("mnuFileSaveAs");
  const std::string second = test::Content(folder_ / "second.Q40");
  EXPECT_TRUE(second.substr(35 * 34) == test::Content(folder_ / "demo.Q40").substr(35 * 34));
  answers_.File(QString::fromStdString(folder_ / "first.Q40"));
  Trigger("mnuFileOpen");
  EXPECT_EQ(Find<QSlider>("Slider1").value(), 7);
  EXPECT_TRUE(Checked("opbModel_0"));

  // Overwriting through the dialog asks first.
  answers_.File(File("second.Q40"));
  answers_.Add([](QWidget& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    ASSERT_NE(box, nullptr);
    QTimer::singleShot(0, box->parentWidget(), &QWidget::close);  // No, and no other name either
    QTest::mouseClick(box->button(kNo), Qt::LeftButton);
  });
  Trigger("mnuFileSaveAs");
  EXPECT_TRUE(test::Content(folder_ / "second.Q40") == second);
}

TEST_F(FileCommands, AFileThatIsRefusedLeavesEverything) {
  Start({}, SavedDemo());
  SetFlags(false, true);
  const CloneImage before = document().image;
  std::string text = test::Content(folder_ / "demo.Q40");
  test::Store(folder_ / "bad.Q40", "x" + text);
  Save(kNo);
  answers_.File(File("bad.Q40"));
  Error("Data Error");
  Trigger("mnuFileOpen");
  EXPECT_TRUE(document().image == before);
  EXPECT_EQ(Flags(), "-M");  // still there, still unsaved
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
  EXPECT_TRUE(Find<QStatusBar>("sbStatusBar").currentMessage().contains("line 1"));

  // A bad end line leaves the model of the header behind.
  text.replace(0, 32, "Korvex RX-Q40T Clone 0 FileStart");
  text.replace(455 * 34, 1, "k");
  test::Store(folder_ / "bad.Q40", text);
  Save(kNo);
  answers_.File(File("bad.Q40"));
  Error("Data Error");
  Trigger("mnuFileOpen");
  EXPECT_TRUE(Checked("opbModel_0"));
  EXPECT_FALSE(document().image.ChannelInUse[0]);
  EXPECT_EQ(Title(), kPlainTitle);
}

TEST_F(FileCommands, ExportTakesThePathOverAndImportForgetsIt) {
  Start({}, SavedDemo());
  SetFlags(true, true);
  answers_.File(File("list"));
  Trigger("mnuExport");
  EXPECT_EQ(Title(), kPlainTitle + " - list.csv");
  EXPECT_EQ(Flags(), "--");
  std::string csv = test::Content(folder_ / "list.csv");
  EXPECT_NE(csv.find("\"RX-Q40\",\"MEMORY\",\"3\",\"*145.7250\""), std::string::npos);
  // The next Save writes a clone file under the bare name, into the working folder. Intended.
  const auto old = std::filesystem::current_path();
  std::filesystem::create_directory(folder_ / "working");
  std::filesystem::current_path(folder_ / "working");
  Trigger("mnuFileSave");
  EXPECT_EQ(test::Content("list.csv").substr(0, 32), "Korvex RX-Q40E Clone A FileStart");
  std::filesystem::current_path(old);

  csv.replace(csv.find("*145.7250"), 9, "*145.7375");
  test::Store(folder_ / "list.csv", csv);
  SetFlags(true, false);
  Save(kNo);
  answers_.File(File("list.csv"));
  Trigger("mnuImport");
  EXPECT_EQ(Cell("MSFlexGrid1", 4, 1), "*145.7375");
  EXPECT_EQ(RowTitle("MSFlexGrid1", 4), "*3");
  EXPECT_EQ(RowTitle("MSFlexGrid1", 3), "2");
  EXPECT_EQ(Title(), kPlainTitle);
  EXPECT_EQ(Flags(), "--");
  EXPECT_EQ(Find<QTableView>("MSFlexGrid1").currentIndex().row(), 0);
  Trigger("mnuReMem");  // a redraw takes the star away
  EXPECT_EQ(RowTitle("MSFlexGrid1", 4), "3");

  const CloneImage before = document().image;
  test::Store(folder_ / "open.csv", csv + "\"never closed");
  SetFlags(false, false);
  answers_.File(File("open.csv"));
  Error("Data Error");
  Trigger("mnuImport");
  EXPECT_TRUE(document().image == before);
}

TEST_F(FileCommands, RecentFilesAreOffered) {
  const std::string first = SavedDemo("first.Q40");
  const std::string second = SavedDemo("A & B.Q40");
  Start({}, first);
  answers_.File(File("A & B.Q40"));
  Trigger("mnuFileOpen");
  const auto entries = [&] {
    auto& menu = Find<QMenu>("mnuRecentFiles");
    emit menu.aboutToShow();
    return menu.actions();
  };
  ASSERT_GE(entries().size(), 2);
  EXPECT_EQ(entries()[0]->text(), "&1 A && B.Q40");
  EXPECT_EQ(entries()[1]->toolTip(), File("first.Q40"));
  std::filesystem::remove(second);
  SetFlags(true, false);
  Save(kNo);
  entries()[1]->trigger();
  EXPECT_EQ(Title(), QString(kPlainTitle) + " - first.Q40");
  Error("Data Error");
  entries()[1]->trigger();  // the one that is gone
  EXPECT_EQ(Title(), QString(kPlainTitle) + " - first.Q40");
}

TEST_F(FileCommands, ADroppedFileIsOpened) {
  Start();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QString::fromStdString(SavedDemo()))});
  QDragEnterEvent enter(QPoint(300, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
  QApplication::sendEvent(window_.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(300, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
  QApplication::sendEvent(window_.get(), &drop);
  QTest::qWait(10);
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
}

}  // namespace
}  // namespace q40
