// The channel edit dialog.
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

#include "gui/window_test.h"

namespace q40 {
namespace {

class Modify : public test::Window {
 protected:
  // Opens the dialog on a row, works in it, presses a button.
  void Open(const QString& grid, int row, std::function<void()> use,
            const char* button = "OKButton") {
    ShowTab(grid == "MSFlexGrid1" ? 3 : 1);
    SelectRow(grid, row);
    answers_.Edit(
        [this, use = std::move(use)](QWidget& dialog) {
          dialog_ = &dialog;
          use();
        },
        button);
    QTest::keyClick(&Find(grid), Qt::Key_Return);
    dialog_ = nullptr;
  }
  template <class Widget = QWidget>
  Widget& In(const QString& name) {
    auto* found = dialog_->findChild<Widget*>(name);
    if (found == nullptr) ADD_FAILURE() << "no " << name.toStdString();
    return *found;
  }
  QString Text(const char* name) { return In(name).property("text").toString(); }
  void Type(const char* name, const char* keys) {
    In(name).setFocus();
    In<QLineEdit>(name).selectAll();
    QTest::keyClicks(&In(name), keys);
  }
  void Leave(const char* name) {
    In(name).setFocus();
    QTest::keyClick(&In(name), Qt::Key_Tab);
  }
  int Step() {
    for (int i = 0; i < 7; ++i) {
      if (In<QRadioButton>(QStringLiteral("optStep_%1").arg(i)).isChecked()) return i;
    }
    return -1;
  }
  void Press(const QString& option) {
    QTest::mouseClick(&In(option), Qt::LeftButton, {}, QPoint(8, 8));
  }

  QWidget* dialog_ = nullptr;
};

TEST_F(Modify, VariantsByRow) {
  Start();
  const struct {
    int row;
    const char* title;
    const char* mode;
    bool frequency, step, split, power, repeat, focus;
  } rows[] = {{1, "Modify VFO Parameters", "VFO", true, true, true, true, true, true},
              {2, "Modify Call Channel Parameters", "Call", true, true, true, true, true, true},
              {3, "Modifi Repeater Access Parameters", "Repeater", false, false, false, false,
               false, false},
              {4, "Modify PH Parameters", "PH", true, true, false, true, true, true},
              {5, "Modify PL Channel Parameters", "PL", true, true, false, true, true, true}};
  for (const auto& r : rows) {
    Open(
        "MSFlexGrid2", r.row,
        [&] {
          EXPECT_EQ(dialog_->windowTitle(), r.title);
          EXPECT_EQ(Text("lblMode"), r.mode);
          EXPECT_EQ(In("lblCH").isVisible(), r.row == 1);
          for (const char* name : {"txtFreq", "txtFreq1"})
            EXPECT_EQ(In(name).isEnabled(), r.frequency) << r.row;
          for (const char* name : {"optStep_0", "optStep_6"})
            EXPECT_EQ(In(name).isEnabled(), r.step) << r.row;
          for (const char* name :
               {"optPw_0", "cmbMid", "optATT_0", "optBs_1", "optBw_0", "chkClock"}) {
            EXPECT_EQ(In(name).isEnabled(), r.power) << name << r.row;
          }
          EXPECT_EQ(In("optSift_3").isEnabled(), r.split) << r.row;
          EXPECT_EQ(In("chkRpt").isEnabled(), r.repeat) << r.row;
          for (const char* name :
               {"optTone_0", "cmbTxTone", "cmbRxDCS", "optSift_2", "txtShift", "chkBCLO"}) {
            EXPECT_TRUE(In(name).isEnabled()) << name << r.row;
          }
          for (const char* name :
               {"chkSkip", "txtName", "chkHold", "lblUMHz", "lblVMHz", "chkPower"}) {
            EXPECT_FALSE(In(name).isVisible()) << name << r.row;
          }
          EXPECT_TRUE(In("lblMHz").isVisible());
          EXPECT_EQ(dialog_->focusWidget() == &In("txtFreq"), r.focus) << r.row;
          EXPECT_EQ(Step() >= 0, r.step) << r.row;
          if (r.focus && r.row < 4) {
            EXPECT_EQ(In<QLineEdit>("txtFreq").selectedText(), "145");
          }
        },
        "CancelButton");
  }
  EXPECT_EQ(Flags(), "--");
}

TEST_F(Modify, RepeaterRowKeepsWhatItDoesNotShow) {
  Start();
  Open("MSFlexGrid2", 3, [&] {
    EXPECT_EQ(Text("txtFreq"), "Repeater");
    EXPECT_EQ(Text("txtFreq1"), "r");
    EXPECT_FALSE(In<QCheckBox>("chkBCLO").isChecked());
    Press("chkBCLO");
    Press("optTone_2");
    Type("txtShift", "7");
    Type("txtShift1", "6");
    Leave("txtShift1");
    EXPECT_EQ(Text("txtShift1"), "6000");
    EXPECT_EQ(Step(), -1);
  });
  const ChannelRecord& rpt = document().image.VhfSpecialSet[2];
  EXPECT_EQ(rpt.cellText[2], "TSQ");
  EXPECT_EQ(rpt.cellText[7], "7.6000");
  EXPECT_EQ(rpt.cellText[13], "On");
  EXPECT_EQ(rpt.value[0], 1'450'000);
  EXPECT_EQ(rpt.cellText[0], "");
  EXPECT_EQ(rpt.value[11], 1);
  EXPECT_EQ(rpt.cellText[11], "");
  EXPECT_EQ(rpt.cellText[15], "Off");
  EXPECT_EQ(Flags(), "S-");
  // The next row has its groups back.
  Open(
      "MSFlexGrid2", 2,
      [&] {
        EXPECT_EQ(Step(), 0);
        EXPECT_TRUE(In<QRadioButton>("optBs_1").isChecked());
        EXPECT_EQ(In<QLineEdit>("txtFreq").maxLength(), 3);
      },
      "CancelButton");
}

TEST_F(Modify, SpecialOkMarksPhPresentInItsBand) {
  Start();
  Click("optBand_1");
  Open("MSFlexGrid2", 4, [&] { Type("txtFreq", "430"); });
  EXPECT_EQ(StoredPresent(document().image, Band::kUhf), (PresentPair{true, false}));
  EXPECT_EQ(StoredPresent(document().image, Band::kVhf), (PresentPair{false, false}));
  EXPECT_EQ(Cell("MSFlexGrid2", 4, 1), "430.0000");
  EXPECT_EQ(Flags(), "S-");
}

TEST_F(Modify, MemoryChannelEveryControlReachesTheRecord) {
  Start();
  Open("MSFlexGrid1", 8, [&] {
    EXPECT_EQ(dialog_->windowTitle(), "Modify Memory Channel Parameter");
    EXPECT_EQ(Text("lblMode") + Text("lblCH"), "MemoryCH7");
    EXPECT_EQ(Text("lblVMHz"), "(VHF: 136.000-173.995MHz)");
    EXPECT_EQ(Text("lblUMHz"), "(UHF: 400.000-511.995MHz)");
    EXPECT_FALSE(In("lblMHz").isVisible());
    EXPECT_EQ(Text("txtFreq") + Text("txtFreq1"), "1450000");  // the template's
    Type("txtFreq", "146");
    Type("txtFreq1", "1125");
    Press("optTone_3");
    for (const char* name : {"cmbTxTone", "cmbRxTone", "cmbTxDCS", "cmbRxDCS"})
      In<QComboBox>(name).setCurrentIndex(10);
    Press("optSift_2");
    Type("txtShift", "1");
    Type("txtShift1", "65");
    Press("optPw_1");
    In<QComboBox>("cmbMid").setCurrentIndex(10);
    Press("optATT_1");
    Press("optBs_2");
    Press("optBw_0");
    for (const char* name : {"chkRpt", "chkClock", "chkBCLO", "chkSkip"}) Press(name);
    Type("txtName", "abcd12");
    Press("optStep_5");
  });
  const char* const texts[19] = {"*146.1125", "25KHz",  "DCS", "94.8Hz", "94.8Hz", "054", "+Shift",
                                 "1.6500",    "Mid",    "10",  "10dB",   "BS-2",   "On",  "On",
                                 "Narrow",    "ABCD12", "",    "On",     "054"};
  const int numbers[19] = {1'461'125, 5, 12, 10, 10, 10, 2, 16'500, 1, 10,
                           1,         2, 1,  1,  1,  1,  1, 1,      10};
  for (std::size_t i = 0; i < 19; ++i) {
    EXPECT_EQ(document().image.MemoryTable[7].cellText[i], texts[i]) << i;
    EXPECT_EQ(document().image.MemoryTable[7].value[i], numbers[i]) << i;
  }
  EXPECT_TRUE(document().image.ChannelInUse[7]);
  EXPECT_EQ(Flags(), "SM");
  EXPECT_EQ(Cell("MSFlexGrid1", 8, 16), "ABCD12");  // stored order: the name under BCLO
  // And it opens again as it was left.
  Open(
      "MSFlexGrid1", 8,
      [&] {
        EXPECT_EQ(Text("txtFreq") + Text("txtFreq1") + Text("txtName"), "1461125ABCD12");
        EXPECT_TRUE(In<QRadioButton>("optBw_0").isChecked() &&
                    In<QCheckBox>("chkSkip").isChecked());
      },
      "CancelButton");
}

TEST_F(Modify, CancelAndEscapeLeaveAnEmptyChannelEmpty) {
  Start();
  Open(
      "MSFlexGrid1", 1, [&] { Type("txtFreq", "146"); }, "CancelButton");
  ShowTab(3);
  answers_.Add([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  QTest::mouseDClick(Find<QTableView>("MSFlexGrid1").viewport(), Qt::LeftButton, {}, QPoint(20, 8));
  EXPECT_TRUE(document().image.MemoryTable[0] == ChannelRecord());
  EXPECT_FALSE(document().image.ChannelInUse[0]);
  EXPECT_EQ(Flags(), "--");
}

TEST_F(Modify, HoldStartsTheNextEmptyChannelWithTheLastValues) {
  Start();
  Open("MSFlexGrid1", 1, [&] {
    Type("txtFreq", "147");
    Type("txtName", "abc");
    Press("chkHold");
  });
  Open(
      "MSFlexGrid2", 2, [] {}, "CancelButton");  // a special channel does not disturb it
  Open(
      "MSFlexGrid1", 2, [&] { EXPECT_EQ(Text("txtFreq") + Text("txtName"), "147ABC"); },
      "CancelButton");
  Open("MSFlexGrid1", 1, [&] { Press("chkHold"); });  // a used channel shows its own values
  Open(
      "MSFlexGrid1", 2, [&] { EXPECT_EQ(Text("txtFreq") + Text("txtName"), "145"); },
      "CancelButton");
}

TEST_F(Modify, KeysAndTheJumpToTheFraction) {
  Start();
  Open(
      "MSFlexGrid1", 1,
      [&] {
        const struct {
          const char* field;
          const char* keys;
          const char* text;
          const char* focus;
        } cases[] = {
            {"txtFreq", "145", "145", "txtFreq1"},     {"txtFreq", "abc", "145", "txtFreq1"},
            {"txtFreq", "1x4", "145", "txtFreq1"},     {"txtFreq", "43", "43", "txtFreq"},
            {"txtShift", "12", "12", "txtShift1"},     {"txtShift", "x7", "7", "txtShift"},
            {"txtName", "aBeEfG", "ABEF", "txtName"},  {"txtName", "a?:[\\_", "A\\_", "txtName"},
            {"txtName", "1 (=)9", "1 (=)9", "txtName"}};
        for (const auto& c : cases) {
          In("txtShift").setFocus();
          In("txtFreq").setFocus();  // starts the counting anew
          if (std::string(c.keys) != "abc") In<QLineEdit>(c.field).clear();
          In(c.field).setFocus();
          QTest::keyClicks(&In(c.field), c.keys);
          EXPECT_EQ(Text(c.field), c.text) << c.keys;
          EXPECT_EQ(dialog_->focusWidget()->objectName(), c.focus) << c.keys;
          if (std::string(c.focus) == "txtFreq1") {
            EXPECT_EQ(In<QLineEdit>("txtFreq1").selectedText(), Text("txtFreq1"));
          }
        }
      },
      "CancelButton");
}

TEST_F(Modify, FractionsAndFrequenciesAreRepairedOnLeaving) {
  Start({}, SavedDemo());  // channel 0 is 145.5 on a version A radio: no lower limit
  const struct {
    const char* typed;
    const char* fraction;
    int step;
  } fractions[] = {{"0075", "0050", 0}, {"0125", "0125", 2}, {"0130", "0125", 2},
                   {"0250", "0250", 0}, {"5", "5000", 0},    {"", "0000", 0},
                   {"9999", "9950", 0}, {"2875", "2875", 2}};
  Open(
      "MSFlexGrid1", 1,
      [&] {
        for (const char* field : {"txtFreq1", "txtShift1"}) {
          for (const auto& f : fractions) {
            Press("optStep_4");
            In<QLineEdit>(field).setText(f.typed);
            Leave(field);
            EXPECT_EQ(Text(field), f.fraction) << f.typed;
            EXPECT_EQ(Step(), f.step) << f.typed;
          }
        }
        In<QLineEdit>("txtFreq").setText("512");
        Leave("txtFreq");
        EXPECT_EQ(Text("txtFreq"), "145");  // its own
        In<QLineEdit>("txtFreq").setText("50");
        Leave("txtFreq");
        EXPECT_EQ(Text("txtFreq"), "50");
      },
      "CancelButton");
  Click("opbModel_0");
  Open(
      "MSFlexGrid2", 1,
      [&] {
        In<QLineEdit>("txtFreq").setText("430");  // the other band
        Leave("txtFreq");
        EXPECT_EQ(Text("txtFreq"), "145");
      },
      "CancelButton");
}

TEST_F(Modify, OkByEnterRunsTheCheckThatIsStillToCome) {
  Start();
  ShowTab(3);
  answers_.Add([&](QWidget& dialog) {
    dialog_ = &dialog;
    In<QLineEdit>("txtFreq1").setText("0130");
    Press("optStep_5");
    In("txtFreq").setFocus();
    In<QLineEdit>("txtFreq").setText("999");
    QTest::keyClick(&In("txtFreq"), Qt::Key_Return);
  });
  QTest::keyClick(&Find("MSFlexGrid1"), Qt::Key_Return);
  // Only the field that has the focus: the fraction was never in it, and the step stays.
  EXPECT_EQ(document().image.MemoryTable[0].cellText[0], "445.0130");
  EXPECT_EQ(document().image.MemoryTable[0].cellText[1], "25KHz");
}

}  // namespace
}  // namespace q40
