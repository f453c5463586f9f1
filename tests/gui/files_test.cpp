// The change flags, the grids' commands, model, files and CSV of the window.
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QUrl>

#include "gui/window_test.h"

namespace q40::test {
namespace {

using FileCommands = Window;

const char* const kDeleteText =
    "Are you sure that you want to do the delete?\nDelete cannot be undone.";
const char* const kClearText =
    "Are you sure that you want to do the clear?\nClear cannot be undone.";
const char* const kClearAllText =
    "Are you sure that you want to clear all memory?\nClear cannot be undone.";

// ---- what sets, clears and asks for the change flags

// Intended: the last two leave the settings unchanged, so that quitting does not ask.
TEST_F(FileCommands, WhatCannotBeUndoneAsksAndCancelIsTheDefault) {
  Start({}, SavedDemo());
  SelectRow(kSpecialGrid, 4);
  const struct {
    int tab;
    const char* button;
    const char* title;
    const char* text;
    const char* flags;
  } cases[] = {{3, "cmbDelete", "DELETE OK", kDeleteText, "SM"},
               {3, "cmbClear", "CLEAR OK", kClearText, "SM"},
               {3, "cmbClAll", "CLEAR OK", kClearAllText, "-M"},
               {1, "cmdClear", "CLEAR OK", kClearText, "-M"}};
  for (const auto& c : cases) {
    ShowTab(c.tab);
    const CloneImage before = document().image;
    answers_.Add([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    Click(c.button);
    EXPECT_TRUE(document().image == before) << c.button;
    EXPECT_EQ(Flags(), "--") << c.button;
    answers_.Box(c.title, c.text, kOk);
    Click(c.button);
    EXPECT_FALSE(document().image == before) << c.button;
    EXPECT_EQ(Flags(), c.flags) << c.button;
    SetFlags(false, false);
  }
}

TEST_F(FileCommands, InsertAndDeleteMoveTheChannels) {
  Start({}, SavedDemo());
  ShowTab(3);
  SelectRow(kMemoryGrid, 2);
  Press(kMemoryGrid, Qt::Key_Insert);  // no question, although D9 is dropped: intended
  EXPECT_EQ(Cell(kMemoryGrid, 1, 1), "145.5000");
  EXPECT_EQ(Cell(kMemoryGrid, 5, 1), "*145.7250");
  EXPECT_EQ(Flags(), "SM");
  answers_.Box("DELETE OK", kDeleteText, kOk);
  Press(kMemoryGrid, Qt::Key_Delete);
  EXPECT_EQ(Cell(kMemoryGrid, 4, 1), "*145.7250");
}

TEST_F(FileCommands, UnsavedChangesOfEitherKindAreAskedAboutAndCancelChangesNothing) {
  Start();
  const CloneImage before = document().image;
  for (const char* command :
       {"mnuFileNew", "mnuFileOpen", "mnuImport", "mnuReAll", "opbModel_1", "cmdAuto"}) {
    for (const bool settings : {true, false}) {
      SetFlags(settings, !settings);
      Save(kCancel);
      Trigger(command);
      EXPECT_EQ(Flags(), settings ? "S-" : "-M") << command;
      EXPECT_TRUE(document().image == before) << command;
      EXPECT_TRUE(Checked("opbModel_0")) << command;
    }
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
  Click("opbModel_2");
  EXPECT_TRUE(Checked("opbModel_0"));
  EXPECT_EQ(Flags(), "S-");
}

// ---- model and New

TEST_F(FileCommands, AModelChangeStartsAnewAndKeepsTheDialer) {
  Start({}, SavedDemo());
  SetFlags(true, true);
  Save(kYes);
  Click("opbModel_2");
  EXPECT_EQ(document().model, 2);
  EXPECT_FALSE(document().image.ChannelInUse[0]);
  EXPECT_EQ(document().dial[0], "0123456789");
  EXPECT_EQ(Title(), kPlainTitle);
  // Yes saves the old model's data under the old model's header, also where it asks for a name.
  SetFlags(true, true);
  Save(kYes);
  answers_.File(File("old.Q40"));
  Click("opbModel_3");
  EXPECT_TRUE(Content(folder_ / "old.Q40").starts_with("Korvex RX-Q40T1 CloneA FileStart"));
}

// ---- files

TEST_F(FileCommands, SaveOpenSaveAs) {
  Start();
  Find<QSlider>("Slider1").setValue(7);
  answers_.File(File("first"));  // the extension is added
  Trigger("mnuFileSave");
  EXPECT_EQ(Title(), kPlainTitle + " - first.Q40");
  Find<QSlider>("Slider1").setValue(8);
  Trigger("mnuFileSave");  // under the same name

  answers_.File(QString::fromStdString(SavedDemo()));
  Trigger("mnuFileOpen");
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
  EXPECT_TRUE(Checked("opbModel_1"));
  EXPECT_EQ(Cell(kMemoryGrid, 4, 1), "*145.7250");
  EXPECT_EQ(Level("Slider1"), 18);
  EXPECT_EQ(Flags(), "--");
  answers_.File(File("second.Q40"));
  Trigger("mnuFileSaveAs");
  EXPECT_TRUE(Content(folder_ / "second.Q40").starts_with("Korvex RX-Q40E Clone A FileStart"));
  answers_.File(File("first.Q40"));
  Trigger("mnuFileOpen");
  EXPECT_EQ(Level("Slider1"), 8);
}

TEST_F(FileCommands, AFileThatIsRefusedLeavesEverything) {
  Start({}, SavedDemo());
  const auto refused = [&](const char* command, const char* name, const std::string& content) {
    Store(folder_ / name, content);
    SetFlags(false, true);
    Save(kNo);
    answers_.File(File(name));
    Error("Data Error");
    Trigger(command);
  };
  const CloneImage before = document().image;
  std::string text = Content(folder_ / "demo.Q40");
  refused("mnuImport", "bad.csv", "\"never closed");
  refused("mnuFileOpen", "bad.Q40", "x" + text);
  EXPECT_TRUE(document().image == before);
  EXPECT_EQ(Flags(), "-M");  // still there, still unsaved
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
  EXPECT_TRUE(Status().contains("line 1")) << Status().toStdString();
  // A bad end line leaves the model of the header behind: intended.
  text.replace(0, 32, "Korvex RX-Q40T Clone 0 FileStart");
  text.replace(455 * 34, 1, "k");
  refused("mnuFileOpen", "bad.Q40", text);
  EXPECT_TRUE(Checked("opbModel_0"));
  EXPECT_EQ(Cell(kMemoryGrid, 1, 1), "");
  EXPECT_EQ(Title(), kPlainTitle);
}

TEST_F(FileCommands, ExportTakesThePathOverAndImportForgetsIt) {
  Start({}, SavedDemo());
  SetFlags(true, true);
  answers_.File(File("list"));
  Trigger("mnuExport");
  EXPECT_EQ(Title(), kPlainTitle + " - list.csv");
  EXPECT_EQ(Flags(), "--");
  std::string csv = Content(folder_ / "list.csv");
  // The next Save writes a clone file under the bare name, into the working folder. Intended.
  const auto old = std::filesystem::current_path();
  std::filesystem::create_directory(folder_ / "working");
  std::filesystem::current_path(folder_ / "working");
  Trigger("mnuFileSave");
  EXPECT_TRUE(Content("list.csv").starts_with("Korvex RX-Q40E Clone A FileStart"));
  std::filesystem::current_path(old);

  csv.replace(csv.find("*145.7250"), 9, "*145.7375");
  Store(folder_ / "list.csv", csv);
  SetFlags(true, false);
  Save(kNo);
  answers_.File(File("list.csv"));
  Trigger("mnuImport");
  EXPECT_EQ(Cell(kMemoryGrid, 4, 1), "*145.7375");
  EXPECT_EQ(RowTitle(kMemoryGrid, 3) + RowTitle(kMemoryGrid, 4), "2*3");
  EXPECT_EQ(Title(), kPlainTitle);
  EXPECT_EQ(Flags(), "--");
  Trigger("mnuReMem");  // a redraw takes the star away: intended
  EXPECT_EQ(RowTitle(kMemoryGrid, 4), "3");
}

TEST_F(FileCommands, RecentFilesAreOffered) {
  Start({}, SavedDemo("A & B.Q40"));
  answers_.File(QString::fromStdString(SavedDemo()));
  Trigger("mnuFileOpen");
  auto& menu = Find<QMenu>("mnuRecentFiles");
  emit menu.aboutToShow();
  ASSERT_GE(menu.actions().size(), 2);
  EXPECT_EQ(menu.actions()[1]->text(), "&2 A && B.Q40");
  SetFlags(true, false);
  Save(kNo);
  menu.actions()[1]->trigger();
  EXPECT_EQ(Title(), kPlainTitle + " - A & B.Q40");
}

TEST_F(FileCommands, ADroppedFileIsOpened) {
  Start();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QString::fromStdString(SavedDemo()))});
  QDragEnterEvent enter(QPoint(300, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
  QApplication::sendEvent(window_.get(), &enter);
  QDropEvent drop(QPointF(300, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
  QApplication::sendEvent(window_.get(), &drop);
  QTest::qWait(10);
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
}

}  // namespace
}  // namespace q40::test
