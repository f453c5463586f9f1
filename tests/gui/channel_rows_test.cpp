// The channel list: what is done to many rows, and the clipboard.
#include <QClipboard>
#include <QInputDialog>
#include <QMimeData>
#include <QTableWidget>

#include "gui/channel_list_test.h"

namespace q40::test {
namespace {

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

}  // namespace
}  // namespace q40::test
