// The channel edit dialog.
#include <QClipboard>
#include <QRadioButton>

#include "gui/window_test.h"

namespace q40::test {
namespace {

class Modify : public Window {
 protected:
  // The dialog's controls are found as the window's own are.
  QString Text(const char* name) { return Find(name).property("text").toString(); }
  QString Mhz() { return Text("txtFreq") + '.' + Text("txtFreq1"); }
  QString Offset() { return Text("txtShift") + '.' + Text("txtShift1"); }
  void Type(const char* name, const char* keys) {
    Find(name).setFocus();
    Find<QLineEdit>(name).selectAll();
    QTest::keyClicks(&Find(name), keys);
  }
  void Leave(const QString& name) {
    Find(name).setFocus();
    Press(name, Qt::Key_Tab);
  }
  void Tick(const char* option) { Press(option, Qt::Key_Space); }
};

TEST_F(Modify, EachSpecialChannelHasItsVariant) {
  Start();
  const char* const titles[] = {"Modify VFO Parameters", "Modify Call Channel Parameters",
                                "Modifi Repeater Access Parameters",  // intended
                                "Modify PH Parameters", "Modify PL Channel Parameters"};
  for (int row = 1; row <= 5; ++row) {
    Look(kSpecialGrid, row, [&] {
      EXPECT_EQ(Find("dlgModify").windowTitle(), titles[row - 1]);
      for (const char* name : {"txtFreq", "txtFreq1", "optStep_0", "optPw_0", "cmbMid", "optATT_0",
                               "optBs_1", "optBw_0", "chkClock", "chkRpt"}) {
        EXPECT_EQ(Find(name).isEnabled(), row != 3) << name << row;
      }
      EXPECT_EQ(Find("optSift_3").isEnabled(), row < 3) << row;
      for (const char* name : {"optTone_0", "cmbTxTone", "cmbRxDCS", "txtShift", "chkBCLO"}) {
        EXPECT_TRUE(Find(name).isEnabled()) << name << row;
      }
      EXPECT_FALSE(Find("txtName").isVisible());
      EXPECT_EQ(Mhz() == "Repeater.r", row == 3) << row;
      EXPECT_EQ(Checked("optBs_1"), row != 3) << row;  // the next row has its groups back
      EXPECT_EQ(Find("dlgModify").focusWidget() == &Find("txtFreq"), row != 3) << row;
    });
  }
  EXPECT_EQ(Flags(), "--");
}

TEST_F(Modify, SpecialChannelsBelongToTheirBand) {
  Start();
  Click("optBand_1");
  Edit(kSpecialGrid, 4, [&] {
    EXPECT_EQ(Text("lblMHz"), "(400.000-511.995MHz)");
    Type("txtFreq", "430");
  });
  EXPECT_EQ(StoredPresent(document().image, Band::kUhf), (PresentPair{true, false}));
  EXPECT_EQ(StoredPresent(document().image, Band::kVhf), (PresentPair{false, false}));
  EXPECT_EQ(Cell(kSpecialGrid, 4, 1), "430.0000");
  EXPECT_EQ(Flags(), "S-");  // intended: the channels count as settings
  Click("optBand_0");
  EXPECT_EQ(Cell(kSpecialGrid, 4, 1), "");
  Click("optBand_1");
  EXPECT_EQ(Cell(kSpecialGrid, 4, 1), "430.0000");
}

TEST_F(Modify, EveryControlReachesTheMemoryChannel) {
  Start();
  Edit(kMemoryGrid, 8, [&] {
    EXPECT_EQ(Text("lblMode") + Text("lblCH"), "MemoryCH7");
    EXPECT_EQ(Text("optBw_0") + Text("chkSkip"), " NarrowSkip");
    EXPECT_EQ(Mhz(), "145.0000");  // the template's
    Type("txtFreq", "146");
    Type("txtFreq1", "1125");
    Type("txtShift", "1");
    Type("txtShift1", "65");
    Type("txtName", "abcd12");
    Find<QComboBox>("cmbTxTone").setCurrentIndex(7);
    Find<QComboBox>("cmbRxTone").setCurrentIndex(8);
    Find<QComboBox>("cmbTxDCS").setCurrentIndex(9);
    Find<QComboBox>("cmbRxDCS").setCurrentIndex(10);
    Find<QComboBox>("cmbMid").setCurrentIndex(10);
    for (const char* name : {"optTone_3", "optSift_2", "optPw_1", "optATT_1", "optBs_2", "optBw_0",
                             "chkRpt", "chkBCLO", "chkSkip", "optStep_5"}) {
      Tick(name);
    }
  });
  const char* const texts[19] = {"*146.1125", "25KHz",  "DCS", "85.4Hz", "88.5Hz", "053", "+Shift",
                                 "1.6500",    "Mid",    "10",  "10dB",   "BS-2",   "Off", "On",
                                 "Narrow",    "ABCD12", "",    "On",     "054"};
  const int numbers[19] = {1'461'125, 5, 12, 7, 8, 9, 2, 16'500, 1, 10, 1, 2, 0, 1, 1, 1, 1, 1, 10};
  const ChannelRecord& record = document().image.MemoryTable[7];
  for (std::size_t i = 0; i < 19; ++i) {
    EXPECT_EQ(record.cellText[i], texts[i]) << i;
    EXPECT_EQ(record.value[i], numbers[i]) << i;
  }
  EXPECT_TRUE(document().image.ChannelInUse[7]);
  EXPECT_EQ(Flags(), "SM");
  // And it opens again as it was left.
  const ChannelRecord before = record;
  Edit(kMemoryGrid, 8, [] {});
  EXPECT_TRUE(record == before);
  Edit(kMemoryGrid, 8, [&] { Tick("chkClock"); });
  EXPECT_EQ(record.cellText[12], "On");
}

TEST_F(Modify, CancelAndEscapeLeaveAnEmptyChannelEmpty) {
  Start();
  Look(kMemoryGrid, 1, [&] { Type("txtFreq", "146"); });
  answers_.Add([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  QTest::mouseDClick(Find<QTableView>(kMemoryGrid).viewport(), Qt::LeftButton, {}, QPoint(20, 8));
  EXPECT_TRUE(document().image.MemoryTable[0] == ChannelRecord());
  EXPECT_FALSE(document().image.ChannelInUse[0]);
  EXPECT_EQ(Flags(), "--");
}

TEST_F(Modify, HoldStartsTheNextEmptyChannelWithTheLastValues) {
  Start();
  Edit(kMemoryGrid, 1, [&] {
    Type("txtFreq", "147");
    Type("txtName", "abc");
    Tick("chkHold");
  });
  Look(kSpecialGrid, 2, [] {});  // a special channel does not disturb it
  Look(kMemoryGrid, 2, [&] { EXPECT_EQ(Mhz() + Text("txtName"), "147.0000ABC"); });
  Edit(kMemoryGrid, 1, [&] { Tick("chkHold"); });  // a used channel shows its own values
  Look(kMemoryGrid, 2, [&] { EXPECT_EQ(Mhz() + Text("txtName"), "145.0000"); });
}

TEST_F(Modify, FieldsTakeTheirKeysJumpAndAreRepairedOnLeaving) {
  Start();
  Look(kMemoryGrid, 1, [&] {
    const struct {
      const char* field;
      const char* keys;
      const char* focus;
      const char* left;
    } cases[] = {
        {"txtFreq", "146", "txtFreq1", "146"},      {"txtFreq", "1x", "txtFreq", "145"},
        {"txtFreq1", "0130", "txtFreq1", "0125"},   {"txtShift", "12", "txtShift1", "12"},
        {"txtShift1", "0130", "txtShift1", "0125"}, {"txtName", "aBeEfG?", "txtName", "ABEF"}};
    for (const auto& c : cases) {
      Tick("optStep_4");
      Type(c.field, c.keys);
      EXPECT_EQ(QApplication::focusWidget()->objectName(), c.focus) << c.keys;
      Leave(c.field);
      EXPECT_EQ(Text(c.field), c.left) << c.keys;
      // The step follows, also the fraction of the offset: intended.
      EXPECT_EQ(Checked("optStep_2"), c.left == QString("0125"));
    }
  });
}

TEST_F(Modify, AWholeFrequencyFillsBothBoxesTypedOrPasted) {
  Start();
  const struct {
    const char* box;
    QString typed;
    const char* pasted;
    QString mhz;
  } cases[] = {{"txtFreq", "145.7375", "", "145.7375"},  {"txtShift", "7,65", "", "7.6500"},
               {"txtFreq", "", "*145.6130", "145.6125"}, {"txtShift1", "", "-31,65", "31.6500"},
               {"txtFreq1", "", "27.125", "145.1250"},  // no MHz of the radio's
               {"txtFreq1", "", ".55", "145.5500"},      {"txtFreq", "", "146 MHz", "146.0000"},
               {"txtFreq1", "", "1456.1", "145.0000"}};
  for (const auto& c : cases) {
    Look(kMemoryGrid, 1, [&] {
      Type(c.box, "");
      for (const QChar key : c.typed) QTest::keyClick(QApplication::focusWidget(), key.toLatin1());
      QApplication::clipboard()->setText(c.pasted);
      if (c.typed.isEmpty()) Find<QLineEdit>(c.box).paste();
      Leave(QApplication::focusWidget()->objectName());
      EXPECT_EQ(QString(c.box).startsWith("txtFreq") ? Mhz() : Offset(), c.mhz);
    });
  }
}

TEST_F(Modify, TabReachesOnlyTheChosenOption) {
  Start();
  Look(kSpecialGrid, 3, [&] { Tick("optTone_2"); });
  Look(kMemoryGrid, 1, [&] {
    int options = 0;
    for (int i = 0; i < 30; ++i) {
      Press(QApplication::focusWidget()->objectName(), Qt::Key_Tab);
      const auto* option = qobject_cast<QRadioButton*>(QApplication::focusWidget());
      EXPECT_TRUE(option == nullptr || option->isChecked()) << option->objectName().toStdString();
      options += option != nullptr ? 1 : 0;
    }
    EXPECT_GE(options, 7);  // each group
    QApplication::activeWindow()->move(5, 70);
  });
  // And the dialog comes back where it was left, beside the window.
  window_->move(window_->pos() + QPoint(10, 0));
  Look(kMemoryGrid, 1, [&] { EXPECT_EQ(QApplication::activeWindow()->pos(), QPoint(15, 70)); });
}

TEST_F(Modify, OkByEnterRunsTheCheckThatIsStillToCome) {
  Start();
  ShowTab(3);
  answers_.Add([&](QWidget&) {
    Find<QLineEdit>("txtFreq1").setText("0130");
    Type("txtFreq", "99");
    Press("txtFreq", Qt::Key_Return);
  });
  Press(kMemoryGrid, Qt::Key_Return);
  // Only the field that has the focus: the fraction was never in it.
  EXPECT_EQ(document().image.MemoryTable[0].cellText[0], "145.0130");
}

}  // namespace
}  // namespace q40::test
