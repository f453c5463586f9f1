// What the pages show, and how their controls behave.
#include <QClipboard>
#include <QWheelEvent>

#include "files/clone_file.h"
#include "gui/window_test.h"
#include "image/defaults.h"
#include "image/settings_codec.h"

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

  // What is pasted is shown, and repaired when the box is left; a save never gets to see it.
  QApplication::clipboard()->setText("1世界 z#");
  box(1).setFocus();
  box(1).paste();
  EXPECT_EQ(document().dial[1], "1#");
  box(2).setFocus();
  EXPECT_EQ(box(1).text(), "1#");
}

TEST_F(PagesTest, DialTextsOfAFileStayAsTheyAreWhenABoxIsLeft) {
  CloneDocument odd = FreshDocument();
  odd.dial[4] = "HELLO";
  odd.dial[9] = "XY";
  ASSERT_FALSE(SaveCloneFile(folder_ / "odd.Q40", odd, 0));
  Start({}, folder_ / "odd.Q40");
  ShowTab(2);
  Find("txtDial_4").setFocus();
  Find("txtDial_5").setFocus();
  EXPECT_EQ(Find<QLineEdit>("txtDial_4").text(), "HELLO");
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
