// The channel list: what its tables show, and how they are edited.
#include "gui/channel_list_test.h"

#include <QAccessible>
#include <QHeaderView>

namespace q40::test {
namespace {

TEST_F(ChannelList, ShowsEveryValueUnderItsHeadingAndLive) {
  Open();
  EXPECT_EQ(Table().model()->headerData(0, Qt::Horizontal).toString(), "Frequency\nMHz");
  EXPECT_EQ(Table().model()->headerData(209, Qt::Vertical).toString(), "D9");
  EXPECT_EQ(Table(kSpecials).model()->headerData(9, Qt::Vertical).toString(), "UHF PL");
  EXPECT_EQ(Text(3, Field::kName) + Text(3, Field::kTxTone), "LAKE131.8");
  Click("optBand_1");
  Edit(kSpecialGrid, 2, [&] { Click("optPw_2"); });
  EXPECT_EQ(Text(6, Field::kPower, kSpecials), "Hi");
  Edit(kMemoryGrid, 4, [&] { Find<QLineEdit>("txtName").setText("SEA"); });
  EXPECT_EQ(Text(3, Field::kName), "SEA");
  Save(kNo);
  Trigger("mnuFileNew");
  EXPECT_EQ(Text(3, Field::kName), "");
}

TEST_F(ChannelList, CellsAreTypedOverAndRefuseWithTheReason) {
  Open();
  SetFlags(false, false);
  GoTo(4, Field::kFrequency);
  Type("145.613");
  EXPECT_EQ(Said(), ".6130 is no multiple of 5 or 12.5 kHz; the next below is .6125.");
  EXPECT_EQ(Text(4, Field::kFrequency), "");
  EXPECT_EQ(Flags(), "--");
  EXPECT_EQ(Notices([&] { Type("145,6125", Qt::Key_Tab); }), 1);  // over what was refused
  EXPECT_EQ(Text(4, Field::kFrequency), "145.6125");
  EXPECT_EQ(Cell(kMemoryGrid, 5, 1), "145.6125");
  EXPECT_EQ(Flags(), "SM");
  EXPECT_EQ(Table().currentIndex(), At(4, Field::kName));
  Type("sea");
  EXPECT_EQ(Text(4, Field::kName), "SEA");
  EXPECT_EQ(Table().currentIndex(), At(5, Field::kName));
  GoTo(3, Field::kShiftFrequency);
  Type("0.65");
  EXPECT_EQ(Said(), "With it: Step 5KHz.");
  GoTo(4, Field::kTone);
  Type("ts", Qt::Key_Backtab);  // the list finds it
  EXPECT_EQ(Text(4, Field::kTone), "TSQ");
  EXPECT_EQ(Table().currentIndex(), At(4, Field::kStep));
  // What is not changed, or given up, is no edit: the step does not follow either.
  GoTo(0, Field::kFrequency);
  EXPECT_EQ(Notices([&] {
              QTest::keyClick(&Table(), Qt::Key_F2);
              Type("", Qt::Key_Return);
              GoTo(4, Field::kName);
              Type("gone", Qt::Key_Escape);
            }),
            0);
  // What is left by the mouse is refused as well.
  GoTo(4, Field::kName);
  Type("a.b", Qt::Key_Shift);
  Find<QLineEdit>("txtFind").setFocus();
  EXPECT_EQ(Said(), "Not taken: \".\" is no character of a name.");
  SetFlags(false, false);
  GoTo(0, Field::kFrequency, kSpecials);
  Type("146,5");
  EXPECT_EQ(Cell(kSpecialGrid, 1, 1), "146.5000");
  EXPECT_EQ(Flags(), "S-");
  EXPECT_FALSE(At(2, Field::kPower, kSpecials).flags().testFlag(Qt::ItemIsEditable));
}

TEST_F(ChannelList, WhatIsBeingTypedIsNotLostToACommand) {
  Open();
  constexpr Qt::Key kNone = Qt::Key_Shift;
  Select({1, 2}, Field::kTone);
  Type("dcs", kNone);
  EXPECT_EQ(Notices([&] { Trigger("mnuListFillDown"); }), 2);
  EXPECT_EQ(Text(1, Field::kTone) + Text(2, Field::kTone), "DCSDCS");
  GoTo(1, Field::kName);
  Type("a.b", kNone);
  EXPECT_EQ(Notices([&] { Trigger("mnuListClear"); }), 0);
  EXPECT_EQ(Said(), "\".\" is no character of a name.");
  Type("", Qt::Key_Escape);
  // Keys of a list are not those that move rows.
  GoTo(1, Field::kTone);
  QTest::keyClick(&Table(), Qt::Key_F2);
  EXPECT_EQ(
      Notices([] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down, Qt::AltModifier); }),
      0);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  QApplication::activePopupWidget()->close();
  Select({2, 3});
  Type("145.6", kNone);
  Trigger("mnuListFillDown");
  EXPECT_EQ(Frequencies(3, 1), "145.6");
  EXPECT_EQ(Said(), "Frequency set in 1 channel. With it: Step 5KHz.");
}

TEST_F(ChannelList, WhatTheRadioWillNotKeepIsMarkedAtOnce) {
  Open();
  const QString words =
      "The radio and the file store \"Split\", but a memory channel is read back with \"None\".";
  const auto mark = [&] { return At(2, Field::kShift).data(ChannelListModel::kMarkRole); };
  EXPECT_EQ(mark(), "");
  GoTo(2, Field::kShift);
  Type("spl");
  EXPECT_EQ(mark(), words);
  GoTo(2, Field::kShift);
  EXPECT_EQ(Said(), words);
  QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&Table());
  QAccessibleInterface* cell = table->tableInterface()->cellAt(2, Column(Field::kShift));
  EXPECT_EQ(table->role(), QAccessible::Table);
  EXPECT_EQ(cell->text(QAccessible::Name), "Split");
  EXPECT_EQ(cell->text(QAccessible::Description), words);
  EXPECT_EQ(table->tableInterface()->columnDescription(Column(Field::kShift)), "Shift");
  for (const QWidget* part : List().findChildren<QWidget*>()) {
    const bool control =
        qobject_cast<const QTableView*>(part) || qobject_cast<const QLineEdit*>(part);
    EXPECT_FALSE(control && part->accessibleName().isEmpty());
  }
}

TEST_F(ChannelList, FindNarrowsAndEscShowsAll) {
  Open();
  const auto rows = [&] { return Table().model()->rowCount(); };
  auto& box = Find<QLineEdit>("txtFind");
  Click("chkHideEmpty");
  const int in_use = rows();
  EXPECT_LT(in_use, 20);
  for (const auto& [text, count] :
       {std::pair{"438,7", 1}, {"hill", 1}, {"D9", 1}, {"no such", 0}}) {
    box.setText(text);
    EXPECT_EQ(rows(), count) << text;
  }
  box.setText("-shift");
  Table().setFocus();
  Table().setCurrentIndex(Table().model()->index(0, 0));
  for (const char* const name : {"HILL", "TOWER"}) {
    Trigger("mnuListFindNext");
    EXPECT_EQ(Text(Table().currentIndex().row(), Field::kName), name);
    EXPECT_EQ(Table().currentIndex().column(), Column(Field::kShift));
  }
  EXPECT_EQ(Notices([&] { Trigger("mnuListMoveUp"); }), 1);  // by what is shown
  EXPECT_EQ(Frequencies(0, 2), "145.625 145.6");
  Trigger("mnuListFindPrevious");  // around the end
  EXPECT_EQ(Text(Table().currentIndex().row(), Field::kName), "CLUB");
  // A row stays while one goes through its cells, and does not take the keyboard with it.
  GoTo(1, Field::kShift);
  const int narrowed = rows();
  Type("none");
  EXPECT_EQ(rows(), narrowed);
  EXPECT_TRUE(Table().hasFocus());
  EXPECT_EQ(Table().currentIndex(), At(2, Field::kShift));
  Select({2});
  Do("mnuListMoveUp");
  EXPECT_EQ(rows(), narrowed - 1);
  QTest::keyClick(&Table(), Qt::Key_Escape);
  EXPECT_EQ(rows(), in_use);
  Click("chkHideEmpty");
  EXPECT_EQ(rows(), 210);
  Table().setFocus();
  for (const char* const part : {"tblSpecialChannels", "txtFind", "tblChannels"}) {
    Trigger("mnuListNextPart");
    EXPECT_EQ(List().focusWidget()->objectName(), part);
  }
}

TEST_F(ChannelList, ColumnsAreRemembered) {
  Open();
  Table().horizontalHeader()->moveSection(1, 5);
  Table().setColumnHidden(Column(Field::kMid), true);
  Table().setColumnWidth(0, 123);
  Click("chkHideEmpty");
  List().close();
  mirror_.reset();
  special_mirror_.reset();

  Open();
  EXPECT_EQ(Table().ShownFields().at(5), Field::kName);
  EXPECT_TRUE(Table().isColumnHidden(Column(Field::kMid)));
  EXPECT_EQ(Table().columnWidth(0), 123);
  EXPECT_TRUE(Checked("chkHideEmpty"));
  for (const char* const broken : {"", "nonsense"}) {
    List().Restore(QByteArray(broken));
    EXPECT_EQ(Table().columnWidth(0), 123);
  }
}

TEST_F(ChannelList, WaitsForTheRadio) {
  Open({"late=250@0200"});
  bool looked = false;
  GoTo(0, Field::kFrequency);
  QTimer::singleShot(100, [&] {
    looked = true;
    ASSERT_TRUE(window_->IsBusy());
    Trigger("mnuListClear");
    EXPECT_EQ(Said(), "Please wait until the radio is done.");
    EXPECT_FALSE(At(0, Field::kName).flags().testFlag(Qt::ItemIsEditable));
  });
  Trigger("mnuReMem");
  EXPECT_TRUE(looked);
  EXPECT_TRUE(At(0, Field::kName).flags().testFlag(Qt::ItemIsEditable));
}

}  // namespace
}  // namespace q40::test
