// The channel list: what its tables show, how they are edited, and what is done to many rows.
#include <QAccessible>
#include <QClipboard>
#include <QHeaderView>
#include <QInputDialog>
#include <QMimeData>
#include <QTableWidget>

#include "channel_list/channel_list_window.h"
#include "gui/window_test.h"

namespace q40::test {
namespace {

const QString kChannels = QStringLiteral("tblChannels");
const QString kSpecials = QStringLiteral("tblSpecialChannels");

class ChannelList : public Window {
 protected:
  void Open(const std::vector<std::string>& faults = {}) {
    Start(faults, SavedDemo());
    Trigger("mnuChannelList");
    List().activateWindow();
    Activate(List());
    mirror_ = std::make_unique<GridMirror>(Table().channels());
    special_mirror_ = std::make_unique<GridMirror>(Table(kSpecials).channels());
    new QAbstractItemModelTester(Table().model(), &List());
  }
  void TearDown() override {
    for (const auto* mirror : {mirror_.get(), special_mirror_.get()}) {
      EXPECT_EQ(mirror == nullptr ? QStringList() : mirror->Stale(), QStringList());
    }
  }
  ChannelListWindow& List() { return Find<ChannelListWindow>("ChannelListWindow"); }
  ChannelTable& Table(const QString& name = kChannels) { return Find<ChannelTable>(name); }
  QString Said() {
    QApplication::processEvents();
    return Find<QLabel>("lblListStatus").text();
  }
  int Column(Field field, const QString& name = kChannels) {
    int column = 0;
    while (Table(name).channels().FieldAt(column) != field) ++column;
    return column;
  }
  QModelIndex At(int row, Field field, const QString& name = kChannels) {
    return Table(name).model()->index(row, Column(field, name));
  }
  QString Text(int row, Field field, const QString& name = kChannels) {
    return At(row, field, name).data().toString();
  }
  void GoTo(int row, Field field, const QString& name = kChannels) {
    Table(name).setFocus();
    Table(name).setCurrentIndex(At(row, field, name));
  }
  // Types into the cell that is current, as a user does.
  void Type(const QString& text, Qt::Key end = Qt::Key_Return) {
    for (const QChar c : text) QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
    QTest::keyClick(QApplication::focusWidget(), end);
  }
  // Selects memory rows, the first current, in the column of a field.
  void Select(const std::vector<int>& rows, Field field = Field::kFrequency) {
    GoTo(rows.front(), field);
    for (const int row : rows) {
      Table().selectionModel()->select(At(row, field),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
  }
  // Frequencies of rows, without the zeros: "145.5 145.6 - 144.8".
  QString Frequencies(int first, int count) {
    QStringList texts;
    for (int row = first; row < first + count; ++row) {
      const QString text = Text(row, Field::kFrequency);
      texts << (text.isEmpty() ? QStringLiteral("-") : QString::number(text.toDouble()));
    }
    return texts.join(' ');
  }
  // How many changes the document tells of while something is done.
  int Notices(const std::function<void()>& run) {
    int notices = 0;
    const auto counting =
        QObject::connect(window_->findChild<Session*>(), &Session::changed, [&] { ++notices; });
    run();
    QObject::disconnect(counting);
    return notices;
  }
  void Do(const char* action) {
    EXPECT_EQ(Notices([&] { Trigger(action); }), 1) << action;
  }

  std::unique_ptr<GridMirror> mirror_;
  std::unique_ptr<GridMirror> special_mirror_;
};

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

TEST_F(ChannelList, ManyRowsAreOneChange) {
  Open();
  ASSERT_EQ(Frequencies(0, 7), "145.5 145.6 145.625 145.725 - 144.8 -");
  Select({1, 3});
  Do("mnuListMoveUp");
  EXPECT_EQ(Frequencies(0, 7), "145.6 145.725 145.5 145.625 - 144.8 -");
  Do("mnuListMoveDown");
  EXPECT_EQ(Frequencies(0, 7), "145.5 145.6 145.725 145.625 - 144.8 -");
  Select({0, 1, 2, 3, 4, 5});
  Do("mnuListSortUp");
  EXPECT_EQ(Frequencies(0, 7), "144.8 145.5 145.6 145.625 145.725 - -");
  Do("mnuListSortDown");
  EXPECT_EQ(Frequencies(0, 7), "145.725 145.625 145.6 145.5 144.8 - -");
  Select({1, 2});
  Do("mnuListClear");
  EXPECT_EQ(Frequencies(0, 7), "145.725 - - 145.5 144.8 - -");
  EXPECT_EQ(Said(), "Cleared: channel 1 (145.6250 TOWER), channel 2 (145.6000 HILL).");
  Do("mnuListDelete");
  EXPECT_EQ(Frequencies(0, 7), "145.725 145.5 144.8 - - - -");
  Select({1});
  Do("mnuListCloseGaps");
  EXPECT_EQ(Frequencies(0, 7), "145.725 145.5 144.8 433.5 438.7 438.95 145.2");
  Select({2, 4}, Field::kTone);
  Do("mnuListFillDown");
  EXPECT_EQ(Text(4, Field::kTone), "None");
  Select({0, 1, 2}, Field::kName);
  Do("mnuListFillSeries");
  EXPECT_EQ(Text(1, Field::kName) + Text(2, Field::kName), "LAKE2LAKE3");
  answers_.Add([](QWidget& dialog) {
    static_cast<QInputDialog&>(dialog).setDoubleValue(-25);
    static_cast<QInputDialog&>(dialog).accept();
  });
  Select({2, 20, 21});
  Do("mnuListFillSeries");
  EXPECT_EQ(Frequencies(20, 2), "144.775 144.75");
  answers_.Add([&](QWidget& dialog) {
    dialog.findChild<QComboBox*>("cmbSetField")->setCurrentIndex(Column(Field::kAtt));
    auto* value = dialog.findChild<QComboBox*>("cmbSetValue");
    value->setEditText("15");
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.findChild<QLabel*>("lblSetRefused")->text(),
              "Nothing was changed. channel 0: \"15\" is none of Off, 10dB, 20dB.");
    value->setEditText("20");
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  Select({0, 1, 50});
  Do("mnuListSetValue");
  EXPECT_EQ(Text(0, Field::kAtt) + Text(1, Field::kAtt) + Text(50, Field::kAtt), "2020");
  EXPECT_EQ(Said(), "ATT set in 2 channels. Passed over as empty: 1.");
  emit Table().rowsDropped(30);
  EXPECT_EQ(Frequencies(28, 2), "145.725 145.5");
}

TEST_F(ChannelList, NothingFallsOffTheEndUnasked) {
  Open();
  ASSERT_EQ(Text(209, Field::kName), "LAST");
  const auto question = [&](QMessageBox::StandardButton press) {
    answers_.Add([press](QWidget& dialog) {
      auto& box = static_cast<QMessageBox&>(dialog);
      EXPECT_TRUE(box.text().contains("channel D9 (430.1250 LAST)"));
      QTest::mouseClick(box.button(press), Qt::LeftButton);
    });
  };
  for (const char* action : {"mnuListInsert", "mnuListDuplicate"}) {
    Select({0, 1});
    question(kCancel);
    EXPECT_EQ(Notices([&] { Trigger(action); }), 0);
    EXPECT_EQ(Said(), "Nothing was inserted.");
  }
  question(kOk);
  Do("mnuListDuplicate");
  EXPECT_EQ(Frequencies(0, 5), "145.5 145.6 145.5 145.6 145.625");
  EXPECT_EQ(Text(209, Field::kName), "");
  Do("mnuListInsert");  // nothing is lost by it
  EXPECT_EQ(Frequencies(0, 5), "145.5 145.6 - - 145.5");
  Select({208, 209});
  Trigger("mnuListDuplicate");
  EXPECT_EQ(Said(), "Nothing was duplicated: behind channel D9 there is room for 0 channels only.");
  // Special channels stay where they are, and only two can be emptied.
  Activate(List());
  Table(kSpecials).setFocus();
  Table(kSpecials).setCurrentIndex(At(1, Field::kTone, kSpecials));
  EXPECT_FALSE(Find<QAction>("mnuListInsert").isEnabled());
  Trigger("mnuListClear");
  EXPECT_TRUE(Said().startsWith("Nothing was cleared: VHF CALL is always there"));
}

TEST_F(ChannelList, TheClipboardGoesToSpreadsheetsAndBack) {
  Open();
  Select({1, 2, 4});
  Trigger("mnuListCopy");
  const QMimeData* data = QApplication::clipboard()->mimeData();
  const QStringList lines = data->text().split('\n');
  EXPECT_TRUE(lines.at(0).startsWith("Channel\tFrequency, MHz\tName\tStep, kHz\t"));
  EXPECT_TRUE(lines.at(2).startsWith("2\t145.6250\tTOWER\t12.5\tTone\t100.0"));
  EXPECT_TRUE(data->html().contains(">HILL</td>"));
  Select({20});
  Do("mnuListPaste");
  EXPECT_EQ(Frequencies(20, 3), "145.6 145.625 -");
  EXPECT_EQ(document().image.MemoryTable[21], document().image.MemoryTable[2]);
  Do("mnuListCut");
  EXPECT_EQ(Frequencies(20, 3), "- - -");

  QApplication::clipboard()->setText("Name\tFrequency\tColour\nNEAR\t145,775\tred\nFAR\t600\t\n");
  Select({20});
  Do("mnuListPaste");
  EXPECT_EQ(Frequencies(20, 2), "145.775 -");
  EXPECT_EQ(Said(), "Pasted: 1 channel. Not understood: 2.");
  // What was not understood stands beside what has changed, and Undo takes it back from there.
  ASSERT_TRUE(Find("ChangesWindow").isVisible());
  EXPECT_EQ(Find<QComboBox>("cmbAgainst").currentText(), "Before the paste");
  EXPECT_EQ(Find<QLabel>("lblLost").text(), "Pasted: 1 channel. Not understood: 2.");
  auto& notes = Find<QTableWidget>("tblLost");
  EXPECT_EQ(notes.item(0, 2)->text(), "Colour");
  EXPECT_TRUE(notes.item(1, 3)->text().startsWith("600 MHz is outside the bands"));
  Trigger("mnuUndo");
  EXPECT_EQ(Frequencies(20, 2), "- -");

  // Into every selected row; in the columns that are shown, from the current one on.
  QApplication::clipboard()->setText("TSQ\t100");
  Table().setColumnHidden(Column(Field::kTxTone), true);
  Select({1, 2}, Field::kTone);
  Do("mnuListPaste");
  EXPECT_EQ(Text(2, Field::kTone) + Text(2, Field::kRxTone) + Text(1, Field::kTxTone),
            "TSQ100.088.5");
  // Not into rows that are hidden, nor beyond the last.
  Select({209});
  QApplication::clipboard()->setText("145\n146\n");
  EXPECT_EQ(Notices([&] { Trigger("mnuListPaste"); }), 0);
  EXPECT_TRUE(Said().startsWith("Nothing was pasted: of 2 rows only 1"));
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
