// The change flags, the grids' commands, model, files and CSV of the window.
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QTextDocument>
#include <QUrl>

#include "gui/window_test.h"

namespace q40::test {
namespace {

class FileCommands : public Window {
 protected:
  // Saves a clone file under a name and drops it on the window.
  void Drop(const std::string& name) {
    QMimeData data;
    const QByteArray path = QByteArray::fromStdString(SavedDemo(name));
    data.setUrls({QUrl::fromEncoded("file://" + path.toPercentEncoding("/"))});
    QDragEnterEvent enter(QPoint(300, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window_.get(), &enter);
    QDropEvent drop(QPointF(300, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window_.get(), &drop);
    QTest::qWait(10);
  }
};

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
  EXPECT_TRUE(mirrors_[0]->Stale().isEmpty());  // the star too
  EXPECT_EQ(Title(), kPlainTitle);
  EXPECT_EQ(Flags(), "--");
  EXPECT_FALSE(Find<QAction>("mnuImportNotes").isEnabled());
  Trigger("mnuReMem");  // a redraw takes the star away: intended
  EXPECT_EQ(RowTitle(kMemoryGrid, 4), "3");
}

TEST_F(FileCommands, WhatTheFileDialogsAreCalledAndOffer) {
  Start();
  const auto look = [&](const char* command, const char* title, const char* name) {
    answers_.Add([=](QWidget& dialog) {
      EXPECT_EQ(dialog.windowTitle(), title);
      EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), name);
      dialog.close();
    });
    Trigger(command);
  };
  look("mnuFileSave", "Save As", "RX-Q40T.Q40");
  look("mnuExport", "Export CSV", "RX-Q40T.csv");
  Drop("my \xFF.Q40");
  look("mnuFileOpen", "Open", "");
  look("mnuFileSaveAs", "Save As", "my \uFFFD.Q40");
  look("mnuImport", "Import CSV", "");
  look("mnuImportOther", "Import Other List", "");
  look("mnuTrace", "Trace to File", "my \uFFFD.trace");
  answers_.File(File("list"));
  Trigger("mnuExport");
  look("mnuFileSaveAs", "Save As", "list.Q40");
}

// As typed, no such file exists: a dialog that asks about that name asks nothing.
TEST_F(FileCommands, WhatExistsIsNotReplacedUnasked) {
  Start({}, SavedDemo());
  const auto box = [&](const char* name, QMessageBox::StandardButton press) {
    answers_.Box("REPLACE OK", File(name) + " exists.\nDo you want to replace it?", press);
  };
  for (const auto& [command, typed, name] :
       {std::array{"mnuFileSaveAs", "radio", "radio.Q40"}, {"mnuExport", "list", "list.csv"}}) {
    Store(folder_ / name, "old");
    answers_.File(File(typed));
    box(name, kCancel);
    answers_.File("");  // the dialog is back
    Trigger(command);
    EXPECT_EQ(Content(folder_ / name), "old");
    answers_.File(File(typed));
    box(name, kOk);
    Trigger(command);
    EXPECT_NE(Content(folder_ / name), "old");
  }
  // Nothing else takes the place of a clone file, even when the dialog was told to replace it.
  const std::string clone = Content(folder_ / "demo.Q40");
  for (const auto& [command, title, what] : {std::array{"mnuExport", "Export CSV", "channel list"},
                                             {"mnuTrace", "Trace to File", "trace"}}) {
    answers_.File(File("demo.Q40"));
    answers_.Box(title, "demo.Q40 already exists.\nDo you want to replace it?", kYes);
    Error((folder_ / "demo.Q40 is a clone file.\nName another file for the " + what + ".").c_str());
    answers_.File("");
    Trigger(command);
    EXPECT_EQ(Content(folder_ / "demo.Q40"), clone);
  }
}

// Whatever bytes their names have.
TEST_F(FileCommands, RecentFilesAreOfferedUntilTheyAreGone) {
  const std::string odd = "<b>A & B\n\xFF\u202E\u00E4.Q40";
  Start({}, SavedDemo(odd));
  const QString shown = "<b>A & B\\x0A\\xFF\\xE2\\x80\\xAE\u00E4.Q40";
  EXPECT_EQ(Title(), kPlainTitle + " - " + shown);
  Drop("demo.Q40");
  auto& menu = Find<QMenu>("mnuRecentFiles");
  const auto second = [&] {
    emit menu.aboutToShow();
    return menu.actions().value(1);
  };
  EXPECT_EQ(second()->text(), "&2 " + QString(shown).replace("&", "&&"));
  EXPECT_EQ(second()->toolTip(), Qt::convertFromPlainText(File("") + shown));
  SetFlags(true, false);
  Save(kNo);
  second()->trigger();
  EXPECT_EQ(Title(), kPlainTitle + " - " + shown);
  emit menu.aboutToShow();  // it has moved up, and stands there once
  EXPECT_FALSE(menu.actions().value(2) != nullptr && menu.actions()[2]->text().contains("A && B"));

  std::filesystem::remove(folder_ / "demo.Q40");
  SetFlags(true, false);
  answers_.Box("Recent Files", File("demo.Q40") + " is gone.\nRecent Files no longer names it.",
               kOk);
  second()->trigger();
  EXPECT_EQ(Title(), kPlainTitle + " - " + shown);
  EXPECT_TRUE(second() == nullptr || !second()->text().contains("demo.Q40"));
}

}  // namespace
}  // namespace q40::test
