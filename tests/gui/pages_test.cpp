// What the pages and dialogs show, and how their controls behave.
#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QWheelEvent>

#include "gui/window_test.h"

namespace q40 {
namespace {

using PagesTest = test::Window;

QString TextOf(QWidget& widget) { return widget.property("text").toString(); }

TEST_F(PagesTest, Captions) {
  Start();
  const struct {
    const char* name;
    const char* text;
  } captions[] = {{"cmbRxData", " Read Memory"},
                  {"cmbTxData", " Write Memory"},
                  {"cmbRxData1", " Read Settings"},
                  {"cmbTxData1", " Write Settings"},
                  {"cmbRxData2", " Read Settings"},
                  {"cmbTxData2", " Write Settings"},
                  {"cmdAuto", "Auto Select"},
                  {"Command4", "Down"},
                  {"Command5", "Up"},
                  {"opbModel_0", "RX-Q40T"},
                  {"opbModel_1", "RX-Q40E"},
                  {"opbModel_2", "RX-Q40T1"},
                  {"opbModel_3", "RX-Q20A"},
                  {"optBand_0", "VHF"},
                  {"optBand_1", "UHF"},
                  {"chkBeep", "Beep"},
                  {"chkAPO", "Auto Power Off"},
                  {"chkLock", "Keylock"},
                  {"chkAutoProg", "Auto Program"},
                  {"chkCharge", "Battery Charge"},
                  {"chkFlg1_0", "Keylock"},
                  {"chkFlg1_1", "Battery Save"},
                  {"chkFlg1_2", "DoReMi"},
                  {"chkChannel", "Channel Mode"},
                  {"chkReverseEn", "Reverse"},
                  {"chkAlertEn", "Alert"},
                  {"chkVoxEn", "VOX"},
                  {"chkNameEn", "Name Opration"},
                  {"chkBurstEn", "Tone Burst Output"},
                  {"chkToneEn", "CTCSS / DCS"},
                  {"chkMoniEn", "Monitor Function"},
                  {"chkLockEn", "Key Lock"},
                  {"chkPowerEn", "TX Power"},
                  {"chkScanEn", "Scan Start"},
                  {"optStep_2", "12.5KHz"},
                  {"optStep_6", "30KHz"},
                  {"optTone_3", "DCS"},
                  {"optSift_1", "-Shift"},
                  {"optSift_3", "Split"},
                  {"optPw_0", "Lo"},
                  {"optPw_2", "Hi"},
                  {"optATT_2", "20dB"},
                  {"optBs_1", "BS-1"},
                  {"optBw_0", " Narrow"},
                  {"optBw_1", "Normal"},
                  {"chkRpt", "Repeat"},
                  {"chkClock", "Clock Shift"},
                  {"chkBCLO", "Busy Channel Lock Out"},
                  {"chkSkip", "Skip"},
                  {"chkHold", "Hold"},
                  {"chkPower", "Hi Power"}};
  for (const auto& c : captions) EXPECT_EQ(TextOf(Find(c.name)), c.text) << c.name;
  EXPECT_EQ(Find<QGroupBox>("frmChannel").title(), "Allow the access to :");
  EXPECT_EQ(window_->windowTitle(), "Korvex RX-Q40 Clone Utility");
  EXPECT_EQ(window_->size(), QSize(825, 554));

  const struct {
    const char* name;
    QStringList items;
  } lists[] = {{"cmbStb", {"Off", "Beep", "DTMF"}},
               {"cmbVod", {"Off", "On"}},
               {"cmbBat", {"Ni", "Li", "Al", "Ni+"}},
               {"cmbLamp", {"5 second", "Permanent on"}},
               {"cmbScan", {"Timer-1", "Timer-2", "Busy"}},
               {"cmbTB", {"1750", "2100", "C-All", "1000", "1450"}},
               {"cmbTOT",
                {"OFF", " 30", " 60", " 90", "120", "150", "180", "210", "240", "270", "300", "330",
                 "360", "390", "420", "450"}},
               {"cmbTOTP",
                {"  0", "  1", "  2", "  3", "  4", "  5", "  6", "  7", "  8", "  9", " 10", " 11",
                 " 12", " 13", " 14", " 15"}},
               {"cmbDBurst",
                {"  20", "  40", "  60", "  80", " 100", " 120", " 140", " 160", " 180", " 200"}},
               {"cmbDWait",
                {" 100", " 200", " 300", " 400", " 500", " 600", " 700", " 800", " 900", "1000"}}};
  for (const auto& list : lists) {
    QStringList items;
    const auto& box = Find<QComboBox>(list.name);
    for (int i = 0; i < box.count(); ++i) items << box.itemText(i);
    EXPECT_EQ(items, list.items) << list.name;
  }
  QStringList labels;
  for (const QLabel* label : window_->findChildren<QLabel*>()) labels << label->text();
  for (const char* text :
       {"Standby",      "VOX On Delay",
        "Tone Burst",   "(Hz)",
        "TOT",          "Penalty Time",
        " First Burst", " Other Burst",
        " Wait Time",   " Interval",
        "(msec)",       "M1",
        "M9",           "St",
        "NOTE:",        "Auto Dialer function and DTMF function cannot be used with RX-P20.",
        "TX Tone",      "RX DCS No",
        "Offset Freq.", "Name"}) {
    EXPECT_TRUE(labels.contains(QLatin1String(text))) << text;
  }
}

TEST_F(PagesTest, TabsFramesAndEditEntry) {
  Start();
  auto& tabs = Find<QTabWidget>("TabStrip1");
  ASSERT_EQ(tabs.count(), 3);
  EXPECT_EQ(tabs.tabText(0) + tabs.tabText(1) + tabs.tabText(2), "Settings 1Settings 2Memory");
  for (const int tab : {2, 3, 1}) {
    ShowTab(tab);
    for (int frame = 0; frame < 3; ++frame) {
      EXPECT_EQ(Find(QStringLiteral("Frame1_%1").arg(frame)).isEnabled(), frame == tab - 1);
    }
    EXPECT_EQ(Find<QAction>("mnuEditUndo").isEnabled(), tab != 2);
    EXPECT_FALSE(Find("Frame1_3").isVisible());
  }
  Trigger("mnuToolsService");
  EXPECT_TRUE(Find("Frame1_3").isVisible());
  EXPECT_TRUE(Find("Command1").isVisible());
  ShowTab(1);  // also a click on the tab that is chosen already
  EXPECT_FALSE(Find("Frame1_3").isVisible());
}

TEST_F(PagesTest, Grids) {
  Start();
  const QString headings =
      "Frequency Step Tone TxTone RxTone TxDCS RxDCS Shift ShiftFreq. RPT PWR MID ATT BSV Clock "
      "BCLO BW Name";
  const int widths[] = {58, 47, 30, 46, 46, 39, 39, 33, 53, 33, 30, 30, 30, 30, 33, 33, 47, 57};
  for (const char* name : {"MSFlexGrid1", "MSFlexGrid2"}) {
    auto& grid = Find<QTableView>(name);
    const int columns = name[10] == '1' ? 18 : 17;
    ASSERT_EQ(grid.model()->columnCount(), columns);
    for (int column = 0; column < columns; ++column) {
      EXPECT_EQ(grid.model()->headerData(column, Qt::Horizontal).toString(),
                headings.split(' ')[column]);
      EXPECT_EQ(grid.columnWidth(column), widths[column]) << name << column;
    }
    EXPECT_EQ(grid.verticalHeader()->width(), 33);
    EXPECT_EQ(grid.currentIndex().row(), 0);
  }
  EXPECT_EQ(Find<QTableView>("MSFlexGrid1").model()->rowCount(), 210);
  EXPECT_EQ(RowTitle("MSFlexGrid1", 200), "199");
  EXPECT_EQ(RowTitle("MSFlexGrid1", 201), "D0");
  EXPECT_EQ(RowTitle("MSFlexGrid1", 210), "D9");
  EXPECT_EQ(RowTitle("MSFlexGrid2", 5), "PL");
  EXPECT_EQ(Cell("MSFlexGrid2", 1, 1), "145.0000");
  EXPECT_EQ(Cell("MSFlexGrid2", 3, 7), "-Shift");  // stored order: under RxDCS
  EXPECT_EQ(Cell("MSFlexGrid2", 4, 1), "");        // PH is absent
}

TEST_F(PagesTest, ASelectionIsOneWholeRow) {
  Start();
  ShowTab(3);
  auto& grid = Find<QTableView>("MSFlexGrid1");
  const auto center = [&](int row, int column) {
    return grid.visualRect(grid.model()->index(row, column)).center();
  };
  QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, center(2, 4));
  QTest::mouseMove(grid.viewport(), center(3, 4));
  QTest::mouseMove(grid.viewport(), center(6, 7));
  QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, center(6, 7));
  EXPECT_EQ(grid.currentIndex(), grid.model()->index(6, 0));
  ASSERT_EQ(grid.selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(grid.selectionModel()->selectedRows().front().row(), 6);
  QTest::keyClick(&grid, Qt::Key_Right);
  EXPECT_EQ(grid.currentIndex(), grid.model()->index(6, 0));
  // Nothing takes the mark from the current row.
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ControlModifier, center(6, 4));
  QTest::keyClick(&grid, Qt::Key_Space, Qt::ControlModifier);
  grid.setColumnWidth(17, 1);
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                    QPoint(grid.viewport()->width() - 2, center(2, 0).y()));
  EXPECT_EQ(grid.selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(grid.horizontalScrollBar()->value(), 0);
}

TEST_F(PagesTest, DownAndUpStopAtTheEndsAndScroll) {
  Start();
  ShowTab(3);
  auto& grid = Find<QTableView>("MSFlexGrid1");
  Click("Command5");
  EXPECT_EQ(grid.currentIndex().row(), 0);
  for (int i = 0; i < 40; ++i) Click("Command4");
  EXPECT_EQ(grid.currentIndex().row(), 40);
  EXPECT_TRUE(grid.viewport()->rect().contains(grid.visualRect(grid.currentIndex())));
  SelectRow("MSFlexGrid1", 210);
  Click("Command4");
  EXPECT_EQ(grid.currentIndex().row(), 209);
}

TEST_F(PagesTest, ClearButtonFollowsTheRow) {
  Start();
  const char* const captions[] = {"", "", "", "Clear PH", "Clear PL"};
  for (const int row : {4, 5, 1, 2, 3, 5, 4}) {
    SelectRow("MSFlexGrid2", row);
    EXPECT_EQ(Find("cmdClear").isVisible(), row >= 4) << row;
    if (row >= 4) {
      EXPECT_EQ(TextOf(Find("cmdClear")), captions[row - 1]);
    }
  }
}

// A cell under a foreign heading says whose it is.
TEST_F(PagesTest, ToolTipsNameCellsUnderForeignHeadings) {
  Start({}, SavedDemo());
  QAbstractItemModel* cells = Find<QTableView>("MSFlexGrid1").model();
  const auto tip = [&](int column) {
    return cells->data(cells->index(0, column - 1), Qt::ToolTipRole).toString();
  };
  EXPECT_EQ(tip(1), "");
  EXPECT_EQ(tip(7), "Shift");
  EXPECT_EQ(tip(16), "Name");
  EXPECT_EQ(tip(18), "RPT");
  Trigger("mnuReMem");
  for (int column = 1; column <= 18; ++column) EXPECT_EQ(tip(column), "") << column;
}

TEST_F(PagesTest, SlidersListsAndBoxesSetTheirFlag) {
  Start();
  const struct {
    int tab;
    const char* name;
    const char* flags;
  } cases[] = {{1, "chkBeep", "S-"},      {1, "chkAPO", "S-"},     {1, "chkLock", "S-"},
               {1, "chkAutoProg", "S-"},  {1, "chkCharge", "S-"},  {1, "chkFlg1_0", "S-"},
               {1, "chkFlg1_2", "S-"},    {1, "optBand_1", "--"},  {2, "chkChannel", "S-"},
               {2, "chkReverseEn", "--"}, {2, "chkAlertEn", "--"}, {2, "chkVoxEn", "--"},
               {2, "chkNameEn", "S-"},    {2, "chkBurstEn", "S-"}, {2, "chkToneEn", "S-"},
               {2, "chkMoniEn", "S-"},    {2, "chkLockEn", "S-"},  {2, "chkPowerEn", "S-"},
               {2, "chkScanEn", "S-"}};
  for (const auto& c : cases) {
    ShowTab(c.tab);
    SetFlags(false, false);
    auto& box = Find<QAbstractButton>(c.name);
    const bool before = box.isChecked();
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
    EXPECT_NE(box.isChecked(), before) << c.name;
    EXPECT_EQ(Flags(), c.flags) << c.name;
  }
  // Choosing the item that is chosen already counts too.
  for (const char* name : {"cmbStb", "cmbVod", "cmbBat", "cmbLamp", "cmbScan", "cmbTB", "cmbTOT",
                           "cmbTOTP", "cmbDFirst", "cmbDOther", "cmbDWait", "cmbDBurst"}) {
    auto& list = Find<QComboBox>(name);
    ShowTab(name[3] == 'D' ? 2 : 1);
    SetFlags(false, false);
    list.showPopup();
    QTest::keyClick(list.view(), Qt::Key_Return);
    EXPECT_EQ(Flags(), std::string(name) == "cmbDOther" ? "--" : "S-") << name;
  }
  ShowTab(1);
  for (const char* name : {"Slider1", "Slider2"}) {
    SetFlags(false, false);
    auto& slider = Find<QSlider>(name);
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_EQ(Flags(), "S-") << name;
    EXPECT_EQ(TextOf(Find(name[6] == '1' ? "lblVol" : "lblSql")), QString::number(slider.value()));
  }
  EXPECT_EQ(Find<QSlider>("Slider1").maximum(), 30);
  EXPECT_EQ(Find<QSlider>("Slider2").maximum(), 10);
}

TEST_F(PagesTest, TheWheelTurnsOnlyWhatHasTheFocus) {
  Start();
  auto& list = Find<QComboBox>("cmbLamp");
  const auto wheel = [&] {
    QWheelEvent event(QPointF(5, 5), list.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &event);
  };
  wheel();
  EXPECT_EQ(list.currentIndex(), 0);
  EXPECT_EQ(Flags(), "--");
  list.setFocus();
  wheel();
  EXPECT_EQ(list.currentIndex(), 1);
}

TEST_F(PagesTest, ChannelModeGreysTheLocksAndKeepsTheirTicks) {
  Start();
  ShowTab(2);
  EXPECT_FALSE(Find("frmChannel").isEnabled());
  EXPECT_FALSE(Find("chkScanEn").isEnabled());
  const auto toggle = [&](const char* name) {
    QTest::mouseClick(&Find(name), Qt::LeftButton, {}, QPoint(8, 8));
  };
  toggle("chkChannel");
  toggle("chkScanEn");
  EXPECT_TRUE(Find<QCheckBox>("chkScanEn").isChecked());
  toggle("chkChannel");
  EXPECT_FALSE(Find("chkScanEn").isEnabled());
  EXPECT_TRUE(Find<QCheckBox>("chkScanEn").isChecked());
}

TEST_F(PagesTest, DialBoxes) {
  Start();
  ShowTab(2);
  const auto box = [&](int i) -> QLineEdit& {
    return Find<QLineEdit>(QStringLiteral("txtDial_%1").arg(i));
  };
  box(0).setFocus();
  QTest::keyClicks(&box(0), "12ab Dx*#-e");
  EXPECT_EQ(box(0).text(), "12ABD*#");
  EXPECT_EQ(Flags(), "S-");
  EXPECT_EQ(document().dial[0], "12ABD*#");
  QTest::keyClick(&box(0), Qt::Key_Backspace);
  EXPECT_EQ(box(0).text(), "12ABD*");
  QTest::keyClicks(&box(0), "99999999999999999999");
  EXPECT_EQ(box(0).text().size(), 16);

  // Enter goes from M1 to M9 and round; leaving a box fills an empty "St".
  EXPECT_EQ(box(9).text(), "");
  const int next[10] = {1, 2, 3, 4, 5, 6, 7, 8, 0, 0};
  for (int i = 0; i < 10; ++i) {
    box(i).setFocus();
    QTest::keyClick(&box(i), Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), &box(next[i])) << i;
  }
  EXPECT_EQ(box(9).text(), "1");
  EXPECT_EQ(document().dial[9], "1");

  // What is pasted is shown, and repaired when the box is left; a save never gets to see it.
  QApplication::clipboard()->setText("1世界 z#");
  box(1).setFocus();
  box(1).paste();
  EXPECT_EQ(document().dial[1], "1#");
  box(2).setFocus();
  EXPECT_EQ(box(1).text(), "1#");
  EXPECT_FALSE(box(2).acceptDrops());
}

TEST_F(PagesTest, BandShowsItsSetAndItsLimits) {
  Start();
  Click("optBand_1");
  EXPECT_EQ(Cell("MSFlexGrid2", 1, 1), "445.0000");
  SelectRow("MSFlexGrid2", 2);
  answers_.Edit([&](QWidget& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("lblMHz")->text(), "(400.000-511.995MHz)");
    auto* mhz = dialog.findChild<QLineEdit*>("txtFreq");
    QTest::keyClicks(mhz, "446");  // the cursor jumps to the fraction by itself
    QTest::keyClicks(QApplication::focusWidget(), "1000");
  });
  QTest::keyClick(&Find("MSFlexGrid2"), Qt::Key_Return);
  EXPECT_EQ(Cell("MSFlexGrid2", 2, 1), "446.1000");
  // The edit is in the store of its band, so the other band and back again keeps it.
  Click("optBand_0");
  EXPECT_EQ(Cell("MSFlexGrid2", 2, 1), "145.0000");
  Click("optBand_1");
  EXPECT_EQ(Cell("MSFlexGrid2", 2, 1), "446.1000");
  EXPECT_EQ(document().image.UhfSpecialSet[1].value[0], 4'461'000);
}

TEST_F(PagesTest, ViewEntriesAndEveryControlHasAName) {
  Start();
  EXPECT_TRUE(Find("tbToolBar").isVisible() && Find("sbStatusBar").isVisible());
  Trigger("mnuViewToolbar");
  Trigger("mnuStatusBar");
  EXPECT_FALSE(Find("tbToolBar").isVisible() || Find("sbStatusBar").isVisible());
  EXPECT_FALSE(Find<QAction>("mnuViewToolbar").isChecked());
  Trigger("mnuViewToolbar");
  EXPECT_TRUE(Find("tbToolBar").isVisible());
  EXPECT_FALSE(Find("ProgressBar1").isVisible());
  for (const char* name : {"mnuFilePageSetup", "mnuFilePrint"})
    EXPECT_FALSE(Find<QAction>(name).isEnabled());
  for (const char* name : {"Timer1", "Timer2", "Timer3", "MSComm1"})
    EXPECT_TRUE(window_->findChild<QObject*>(name)) << name;
  // Every control that takes the focus tells assistive tools what it is.
  for (QWidget* widget : window_->findChildren<QWidget*>()) {
    const bool control = qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget) ||
                         qobject_cast<QSlider*>(widget) || qobject_cast<QTableView*>(widget);
    if (!control || widget->objectName().startsWith("qt_") || widget->objectName() == "Text3")
      continue;
    EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
  }
}

}  // namespace
}  // namespace q40
