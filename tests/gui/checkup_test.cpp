// The check-up's window: its list, and the way from a finding to its place.
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>

#include "files/clone_file.h"
#include "gui/commands_test.h"
#include "image/defaults.h"
#include "image/vocabulary.h"

namespace q40 {
namespace {

class CheckUpTest : public test::Commands {
 protected:
  // A file in which a channel has no name, the UHF PH lies below PL, and a byte and a dialer memory
  // hold what nobody can choose. Saved, they are what a check-up of the opened file finds.
  std::string SavedFaults() {
    CloneDocument document = FreshDocument();
    CloneImage& image = document.image;
    image.MemoryTable[150] = image.TemplateChannel();
    image.ChannelInUse[150] = true;
    ChannelRecord& ph = image.UhfSpecialSet[kPhRow];
    ph.Set(ChannelKind::kSpecial, Field::kFrequency, 4'400'000, "440.0000");
    document.dial[2] = "12X";
    document.dial[9] = "1";  // never left empty by whoever comes by
    EXPECT_FALSE(SaveCloneFile(folder_ / "faults.Q40", document, document.model));
    std::string text = test::Content(folder_ / "faults.Q40");
    text.replace(34 + 26, 2, "10");  // the penalty time's byte
    test::Store(folder_ / "faults.Q40", text);
    return folder_ / "faults.Q40";
  }
  QTableWidget& Table() { return Find<QTableWidget>("tblFindings"); }
  QString Text(int row, int column) { return Table().item(row, column)->text(); }
  QString Summary() { return Find<QLabel>("lblFindings").text(); }
  int Tab() { return Find<QTabWidget>("TabStrip1").currentIndex(); }
  void DoubleClick(int row) {
    QApplication::setActiveWindow(&Find("frmCheckUp"));
    const QPoint place = Table().visualItemRect(Table().item(row, 1)).center();
    QTest::mouseClick(Table().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(Table().viewport(), Qt::LeftButton, {}, place);
  }
  void Enter(int row) {
    QApplication::setActiveWindow(&Find("frmCheckUp"));
    Table().selectRow(row);
    Table().setFocus();
    QTest::keyClick(&Table(), Qt::Key_Return);
  }
  // Offscreen, nobody hands the focus from one window to the next.
  QWidget* Focused() {
    QApplication::setActiveWindow(window_.get());
    return window_->focusWidget();
  }
};

TEST_F(CheckUpTest, FindingsLeadToTheirPlaces) {
  Start({}, SavedFaults());
  Trigger("mnuCheckUp");
  ASSERT_TRUE(Find("frmCheckUp").isVisible());
  ASSERT_EQ(Table().rowCount(), 4);
  EXPECT_EQ(Text(0, 0) + '|' + Text(0, 1), "Settings|Penalty Time (sec)");
  EXPECT_EQ(Text(1, 0) + '|' + Text(1, 1), "UHF PH|Frequency");
  EXPECT_EQ(Text(2, 0) + '|' + Text(2, 1), "Auto dialer|M3");
  EXPECT_EQ(Text(3, 0) + '|' + Text(3, 1), "Channel 150|Name");
  EXPECT_EQ(Text(3, 2), "The channel is stored without a name.");
  EXPECT_TRUE(Summary().startsWith("4 findings"));

  DoubleClick(3);
  EXPECT_EQ(Tab(), 2);
  EXPECT_EQ(Find<QTableView>("MSFlexGrid1").currentIndex().row(), 150);
  EXPECT_EQ(Focused(), &Find("MSFlexGrid1"));
  Enter(1);
  EXPECT_EQ(Tab(), 0);
  EXPECT_TRUE(Checked("optBand_1"));
  EXPECT_EQ(document().image.ShownBand, Band::kUhf);
  EXPECT_EQ(Cell("MSFlexGrid2", 4, 1), "440.0000");
  EXPECT_EQ(Find<QTableView>("MSFlexGrid2").currentIndex().row(), 3);
  DoubleClick(2);
  EXPECT_EQ(Tab(), 1);
  EXPECT_EQ(Focused(), &Find("txtDial_2"));
  Trigger("mnuToolsService");  // lies over the page
  Enter(0);
  EXPECT_EQ(Tab(), 0);
  EXPECT_FALSE(Find("Frame1_3").isVisible());
  EXPECT_EQ(Focused(), &Find("cmbTOTP"));
  EXPECT_EQ(Flags(), "--");
}

TEST_F(CheckUpTest, ListFollowsEditsOnRequestAndNewDataAtOnce) {
  Start({}, SavedDemo());
  Trigger("mnuCheckUp");
  EXPECT_EQ(Summary(), "No findings.");
  EXPECT_EQ(Table().rowCount(), 0);
  Find<QComboBox>("cmbTB").setCurrentIndex(4);
  ShowTab(3);
  SelectRow("MSFlexGrid1", 5);
  answers_.Edit([](QWidget& dialog) {
    dialog.findChild<QAbstractButton*>("optStep_5")->click();
    dialog.findChild<QAbstractButton*>("optSift_3")->click();
  });
  QTest::keyClick(&Find("MSFlexGrid1"), Qt::Key_Return);
  EXPECT_EQ(Table().rowCount(), 0);
  Click("cmdCheckAgain");
  QStringList found;
  for (int row = 0; row < Table().rowCount(); ++row) found << Text(row, 0) + ' ' + Text(row, 1);
  EXPECT_EQ(found, QStringList({"Settings Tone Burst (Hz)", "Channel 4 Step", "Channel 4 Shift",
                                "Channel 4 Name"}));
  SetFlags(false, false);
  Trigger("mnuReAll");  // the radio holds what the file held
  EXPECT_EQ(Summary(), "No findings.");
  SetFlags(false, false);
  Trigger("mnuFileNew");  // PH and PL of both bands are absent, with a frequency
  EXPECT_EQ(Table().rowCount(), 4);
  Click("cmdCloseCheckUp");
  EXPECT_FALSE(Find("frmCheckUp").isVisible());
  Trigger("mnuCheckUp");
  EXPECT_TRUE(window_->close());
  EXPECT_FALSE(Find("frmCheckUp").isVisible());
}

// The list stays open while the radio talks, and nothing in it does anything.
TEST_F(CheckUpTest, WaitsForTheRadio) {
  Start({"late=250@0200"}, SavedFaults());
  Trigger("mnuCheckUp");
  bool looked = false;
  QTimer::singleShot(100, [&] {
    looked = true;
    ASSERT_TRUE(window_->IsBusy());
    EXPECT_EQ(Tab(), 2);
    Enter(1);
    DoubleClick(0);
    Click("cmdCheckAgain");
    Trigger("mnuCheckUp");
    EXPECT_EQ(Tab(), 2);
    EXPECT_EQ(document().image.ShownBand, Band::kVhf);
    EXPECT_EQ(Table().rowCount(), 4);
  });
  Trigger("mnuReMem");
  EXPECT_TRUE(looked);
  Enter(0);
  EXPECT_EQ(Tab(), 0);
}

}  // namespace
}  // namespace q40
