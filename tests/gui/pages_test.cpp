// What the pages show, and how their controls behave.
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMenuBar>
#include <QToolTip>
#include <QWheelEvent>
#include <QWindow>

#include "app/user_options.h"
#include "document/defaults.h"
#include "files/clone_file.h"
#include "gui/window_test.h"
#include "pages/channel_grid.h"
#include "radio/settings_codec.h"

namespace q40::test {
namespace {

using PagesTest = Window;

TEST_F(PagesTest, ATabShowsItsPageAlsoFromUnderTheServicePage) {
  Start();
  for (const int tab : {2, 3, 1}) {
    ShowTab(tab);
    for (int frame = 0; frame < 3; ++frame) {
      EXPECT_EQ(Find(QStringLiteral("Frame1_%1").arg(frame)).isEnabled(), frame == tab - 1);
    }
    EXPECT_EQ(Find<QAction>("mnuEditUndo").isEnabled(), tab != 2);
    Trigger("mnuToolsService");
    EXPECT_TRUE(Find("Command1").isVisible());
    ShowTab(tab);  // a click on the tab that is chosen already
    EXPECT_FALSE(Find("Command1").isVisible());
  }
}

// Intended: an edited row is drawn in stored order, one that was read by the headings. A cell under
// a foreign heading says whose it is.
TEST_F(PagesTest, CellsUnderForeignHeadingsHaveAToolTip) {
  Start({}, SavedDemo());
  EXPECT_EQ(RowTitle(kMemoryGrid, 200) + RowTitle(kMemoryGrid, 201), "199D0");
  const QAbstractItemModel* cells = Find<QTableView>(kMemoryGrid).model();
  const auto tip = [&](int column) {
    return cells->data(cells->index(3, column - 1), Qt::ToolTipRole).toString();
  };
  EXPECT_EQ(Cell(kMemoryGrid, 4, 16), "LAKE");
  EXPECT_EQ(tip(1) + tip(16), "Name");
  // Who prefers it sees every value under its own heading, whatever has drawn the row.
  EXPECT_FALSE(Find<QAction>("mnuCellsByHeading").isChecked());
  Trigger("mnuCellsByHeading");
  EXPECT_EQ(Cell(kMemoryGrid, 4, 18) + tip(18), "LAKE");
  EXPECT_EQ(Cell(kSpecialGrid, 1, 17), "Normal");
  EXPECT_TRUE(UserOptions::IsOn(kCellsByHeadingOption));
  Trigger("mnuCellsByHeading");
  EXPECT_EQ(Cell(kMemoryGrid, 4, 16), "LAKE");
  // So does one that is cut off, and a star in a row title.
  ShowTab(3);
  document().image.MemoryTable[3].cellText[7] = "76.0000";
  auto& grid = Find<ChannelGrid>(kMemoryGrid);
  QHelpEvent help(QEvent::ToolTip, grid.visualRect(cells->index(3, 7)).center(), QPoint(9, 9));
  QApplication::sendEvent(grid.viewport(), &help);
  EXPECT_EQ(QToolTip::text(), "Shift frequency: 76.0000");
  grid.cells().StarTitle(3);
  EXPECT_TRUE(cells->headerData(3, Qt::Vertical, Qt::ToolTipRole).toString().contains("Skip"));
  Trigger("mnuReMem");
  EXPECT_EQ(Cell(kMemoryGrid, 4, 18), "LAKE");
  for (int column = 1; column <= 18; ++column) EXPECT_EQ(tip(column), "") << column;
}

TEST_F(PagesTest, ASelectionIsOneWholeRowAndStopsAtTheEnds) {
  Start();
  ShowTab(3);
  auto& grid = Find<QTableView>(kMemoryGrid);
  for (int i = 0; i < 40; ++i) Click("Command4");
  EXPECT_TRUE(grid.viewport()->rect().contains(grid.visualRect(grid.currentIndex())));
  // Nothing takes the mark from the current row.
  const QPoint cell = grid.visualRect(grid.model()->index(40, 4)).center();
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ControlModifier, cell);
  Press(kMemoryGrid, Qt::Key_Right);
  EXPECT_EQ(grid.selectionModel()->selectedRows(), QModelIndexList({grid.model()->index(40, 0)}));
  EXPECT_EQ(grid.currentIndex(), grid.model()->index(40, 0));
  SelectRow(kMemoryGrid, 210);
  Click("Command4");
  EXPECT_EQ(CurrentRow(kMemoryGrid), 210);
}

TEST_F(PagesTest, WhateverOpensARowMakesItCurrentFirst) {
  Start();
  ShowTab(3);
  auto& grid = Find<QTableView>(kMemoryGrid);
  QHeaderView& titles = *grid.verticalHeader();
  for (const int inside : {0, titles.sectionSize(6) - 1}) {  // no line between titles to drag
    const QPoint title(9, titles.sectionViewportPosition(6) + inside);
    QTest::mouseClick(titles.viewport(), Qt::LeftButton, {}, title);
    EXPECT_EQ(CurrentRow(kMemoryGrid), 7) << inside;
    SelectRow(kMemoryGrid, 2);
    answers_.Add([&](QWidget& dialog) {
      EXPECT_EQ(Find<QLabel>("lblCH").text(), "CH6");
      dialog.close();
    });
    QTest::mouseDClick(titles.viewport(), Qt::LeftButton, {}, title);
    EXPECT_EQ(CurrentRow(kMemoryGrid), 7) << inside;
    for (QWidget* nothing : {titles.viewport(), grid.viewport()}) {
      QTest::mouseDClick(nothing, Qt::RightButton, {}, title);
    }
  }
}

// A display repeats a key by releasing and pressing it in the same moment, without a mark.
TEST_F(PagesTest, AHeldKeyRunsACommandOnce) {
  Start();
  ShowTab(3);
  const auto send = [](QEvent::Type type, int key, quint64 at) {
    QKeyEvent event(type, key, Qt::NoModifier);
    event.setTimestamp(at);
    event.ignore();
    QApplication::sendEvent(QApplication::activeWindow()->windowHandle(), &event);
    return event.isAccepted();
  };
  send(QEvent::KeyRelease, Qt::Key_Insert, 50);
  EXPECT_TRUE(send(QEvent::ShortcutOverride, Qt::Key_Insert, 51));  // then it is no shortcut
  EXPECT_FALSE(send(QEvent::ShortcutOverride, Qt::Key_Insert, 90));
  answers_.Add([&](QWidget& dialog) {
    for (const quint64 after : {0U, 1U, 100U}) {
      ASSERT_TRUE(dialog.isVisible());
      send(QEvent::KeyRelease, Qt::Key_Return, 600);
      send(QEvent::KeyPress, Qt::Key_Return, 600 + after);
    }
    EXPECT_FALSE(dialog.isVisible());
  });
  Find(kMemoryGrid).setFocus();
  send(QEvent::KeyPress, Qt::Key_Return, 100);
  EXPECT_TRUE(document().image.ChannelInUse[0]);
}

TEST_F(PagesTest, TheStatusBarNamesTheChannel) {
  Start({}, SavedDemo());
  ShowTab(3);
  Click("cmbInsert");
  EXPECT_EQ(Status(), "Inserted: channel 0. Fallen off the end: channel D9 (430.1250 LAST).");
  const struct {
    const char* button;
    QString channel;
  } cases[] = {{"cmbDelete", "channel 4 (145.7250 LAKE)"},
               {"cmbClear", "channel 4 (empty)"},
               {"cmdClear", "PH (145.0000) of VHF"}};
  for (const auto& c : cases) {
    const bool special = c.channel.startsWith("PH");
    ShowTab(special ? 1 : 3);
    SelectRow(special ? kSpecialGrid : kMemoryGrid, special ? 4 : 5);
    answers_.Add([&](QWidget& box) {
      EXPECT_TRUE(Status().contains(c.channel + '?')) << c.button;
      QTest::mouseClick(static_cast<QMessageBox&>(box).button(kOk), Qt::LeftButton);
    });
    Click(c.button);
    EXPECT_TRUE(Status().endsWith("ed: " + c.channel + '.')) << c.button;
  }
}

TEST_F(PagesTest, EverySettingIsTakenOverAndCountsAsAChange) {
  Start({}, SavedDemo());
  Trigger("mnuFileNew");
  answers_.File(File("a.Q40"));
  for (const Setting& field : Settings()) {
    const std::string name(field.control);
    QWidget& control = Find(QString::fromStdString(name));
    ShowTab(Find("Frame1_0").isAncestorOf(&control) ? 1 : 2);
    if (!Checked("chkChannel")) Press("chkChannel", Qt::Key_Space);
    Trigger("mnuFileSave");
    SettingsValues expected = document().settings;
    QTest::keyClick(&control, name.starts_with("chk") ? Qt::Key_Space : Qt::Key_End);
    // Intended: these alone are not asked about.
    const bool quiet =
        name == "cmbDOther" || name == "chkReverseEn" || name == "chkAlertEn" || name == "chkVoxEn";
    EXPECT_EQ(Flags(), quiet ? "--" : "S-") << name;
    Trigger("mnuFileSave");
    EXPECT_NE(document().settings.*field.value, expected.*field.value) << name;
    expected.*field.value = document().settings.*field.value;
    EXPECT_TRUE(document().settings == expected) << name;
  }
  // Opened, they are shown as they were saved.
  Trigger("mnuFileNew");
  answers_.File(File("a.Q40"));
  Trigger("mnuFileOpen");
  EXPECT_EQ(Flags(), "--");
  const SettingsValues opened = document().settings;
  Trigger("mnuFileSave");
  EXPECT_TRUE(document().settings == opened);
}

TEST_F(PagesTest, TheWheelTurnsOnlyWhatHasTheFocus) {
  Start();
  auto& list = Find<QComboBox>("cmbLamp");
  for (const int index : {0, 1}) {
    QWheelEvent event(QPointF(5, 5), list.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &event);
    EXPECT_EQ(list.currentIndex(), index);
    list.setFocus();
  }
}

TEST_F(PagesTest, ChannelModeGreysTheLocksAndKeepsTheirTicks) {
  Start();
  ShowTab(2);
  EXPECT_FALSE(Find("chkScanEn").isEnabled());
  Press("chkChannel", Qt::Key_Space);
  Press("chkScanEn", Qt::Key_Space);
  EXPECT_TRUE(Checked("chkScanEn"));
  Press("chkChannel", Qt::Key_Space);
  EXPECT_FALSE(Find("chkScanEn").isEnabled());
  EXPECT_TRUE(Checked("chkScanEn"));
}

TEST_F(PagesTest, DialBoxes) {
  Start();
  ShowTab(2);
  const auto box = [&](int i) -> QLineEdit& {
    return Find<QLineEdit>(QStringLiteral("txtDial_%1").arg(i));
  };
  QTest::keyClicks(&box(0), "12ab Dx*#-e");
  EXPECT_EQ(Flags(), "S-");
  EXPECT_EQ(document().dial[0], "12ABD*#");
  QTest::keyClicks(&box(0), "99999999999999999999");
  EXPECT_EQ(document().dial[0].size(), 16U);

  // Enter goes from M1 to M9 and round, never into "St"; leaving a box fills an empty "St": intended.
  for (int i = 0; i < 10; ++i) {
    box(i).setFocus();
    QTest::keyClick(&box(i), Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), &box(i < 8 ? i + 1 : 0)) << i;
  }
  EXPECT_EQ(document().dial[9], "1");

  // What comes in at once loses what the radio cannot dial, and then what does not fit.
  QApplication::clipboard()->setText("1世界-2-3-4-5-6-7-8-9 z#0123456789");
  box(1).setFocus();
  box(1).paste();
  EXPECT_EQ(box(1).text(), "123456789#012345");
  EXPECT_EQ(document().dial[1], "123456789#012345");
  QTest::keyClicks(&box(2), "12");
  box(2).setCursorPosition(1);
  QApplication::clipboard()->setText("x7y");
  box(2).paste();
  EXPECT_EQ(box(2).text(), "172");
  EXPECT_EQ(box(2).cursorPosition(), 2);

  // The menu is no other control; what follows it may be one, and a save counts as one.
  for (const bool save : {false, true}) {
    box(9).setFocus();
    QTest::keyClick(&box(9), Qt::Key_Backspace);
    window_->findChild<QMenuBar*>()->setFocus(Qt::MenuBarFocusReason);
    EXPECT_EQ(box(9).text(), "");
    if (save) answers_.File(File("a.Q40"));
    save ? Trigger("mnuFileSave") : box(0).setFocus();
    EXPECT_EQ(box(9).text().toStdString() + document().dial[9], "11");
  }
}

TEST_F(PagesTest, DialTextsOfAFileStayAsTheyAreWhenABoxIsLeft) {
  CloneData odd = FreshData();
  odd.dial[4] = "HELLO1";
  odd.dial[9] = "XY";
  ASSERT_FALSE(SaveCloneFile(folder_ / "odd.Q40", odd, 0));
  Start({}, folder_ / "odd.Q40");
  ShowTab(2);
  Find("txtDial_4").setFocus();
  Find("txtDial_5").setFocus();
  EXPECT_EQ(Find<QLineEdit>("txtDial_4").text(), "HELLO1");
  EXPECT_EQ(document().dial[9], "XY");
  EXPECT_EQ(Flags(), "--");
}

TEST_F(PagesTest, TheKeyboardGoesThroughThePageAsTheEyeDoes) {
  Start();
  SelectRow(kSpecialGrid, 4);  // PH, which can be cleared
  Find("optBand_0").setFocus();
  for (const char* next : {"MSFlexGrid2", "cmdClear", "cmbRxData1", "cmbTxData1"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), next);
  }
  // A model that is refused does not keep it.
  SetFlags(true, false);
  Find("opbModel_0").setFocus();
  Save(kCancel);
  Press("opbModel_0", Qt::Key_Down);
  QApplication::processEvents();
  EXPECT_EQ(window_->focusWidget(), &Find("opbModel_0"));
}

TEST_F(PagesTest, ControlsTellAssistiveToolsWhatTheyAre) {
  Start();
  for (QWidget* widget : window_->findChildren<QWidget*>()) {
    const bool control = qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget) ||
                         qobject_cast<QSlider*>(widget) || qobject_cast<QTableView*>(widget);
    const QString name = widget->objectName();
    if (!control || name.startsWith("qt_") || name == "Text3") continue;
    EXPECT_FALSE(widget->accessibleName().isEmpty()) << name.toStdString();
  }
}

}  // namespace
}  // namespace q40::test
