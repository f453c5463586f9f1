// The check-up's window: its list, and the way from a finding to its place.
#include <QAction>
#include <QTableWidget>

#include "gui/window_test.h"
#include "radio/channel_fields.h"

namespace q40::test {
namespace {

class CheckUpTest : public Window {
 protected:
  // The list on a channel without a name, a UHF PH below PL, a dialer memory and a setting that do
  // not come back from the radio.
  void StartWithFaults(const std::vector<std::string>& faults = {}) {
    Start(faults, SavedDemo());
    Trigger("mnuCheckUp");
    EXPECT_EQ(Places(), QStringList());
    CloneImage& image = document().image;
    image.MemoryTable[150] = image.TemplateChannel();
    image.ChannelInUse[150] = true;
    ChannelRecord& ph = image.UhfSpecialSet[kPhRow];
    ph.Set(ChannelKind::kSpecial, Field::kFrequency, 4'300'000, "430.0000");
    document().dial[2] = "12X";
    document().settings.cmbTB = 4;
    EXPECT_EQ(Places(), QStringList());
    Click("cmdCheckAgain");
    EXPECT_EQ(Places(), QStringList({"Settings: Tone Burst (Hz)", "UHF PH: Frequency",
                                     "Auto dialer: M3", "Channel 150: Name"}));
  }
  QTableWidget& Table() { return Find<QTableWidget>(table_); }
  QStringList Places() {
    QStringList places;
    for (int row = 0; row < Table().rowCount(); ++row) {
      places << Table().item(row, 0)->text() + ": " + Table().item(row, 1)->text();
    }
    return places;
  }
  void DoubleClick(int row) {
    const QPoint place = Table().visualItemRect(Table().item(row, 1)).center();
    QTest::mouseClick(Table().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(Table().viewport(), Qt::LeftButton, {}, place);
  }
  void Enter(int row) {
    Activate(Find("frmCheckUp"));
    Table().selectRow(row);
    Table().setFocus();
    Press("tblFindings", Qt::Key_Return);
  }

  QString table_ = "tblFindings";
};

TEST_F(CheckUpTest, FindingsLeadToTheirPlacesUntilOtherDataComes) {
  StartWithFaults();
  DoubleClick(3);
  EXPECT_EQ(Tab(), 3);
  EXPECT_EQ(CurrentRow(kMemoryGrid), 151);
  Enter(1);
  EXPECT_EQ(Tab(), 1);
  EXPECT_TRUE(Checked("optBand_1"));
  EXPECT_EQ(Cell(kSpecialGrid, 4, 1), "430.0000");
  EXPECT_EQ(CurrentRow(kSpecialGrid), 4);
  DoubleClick(2);
  EXPECT_EQ(window_->focusWidget(), &Find("txtDial_2"));
  Trigger("mnuToolsService");  // lies over the page
  Enter(0);
  EXPECT_EQ(window_->focusWidget(), &Find("cmbTB"));
  EXPECT_FALSE(Find("Frame1_3").isVisible());
  EXPECT_EQ(Flags(), "--");
  Trigger("mnuReAll");  // the radio holds what the file held
  EXPECT_EQ(Places(), QStringList());
}

// The list stays open while the radio talks, and nothing in it does anything.
TEST_F(CheckUpTest, WaitsForTheRadio) {
  StartWithFaults({"late=250@0200"});
  bool looked = false;
  QTimer::singleShot(100, [&] {
    looked = true;
    ASSERT_TRUE(window_->IsBusy());
    Enter(1);
    DoubleClick(0);
    Click("cmdCheckAgain");
    EXPECT_EQ(Tab(), 3);
    EXPECT_EQ(document().image.ShownBand, Band::kVhf);
    EXPECT_EQ(Places().size(), 4);
  });
  Trigger("mnuReMem");
  EXPECT_TRUE(looked);
}

TEST_F(CheckUpTest, AnImportKeepsItsNotesUntilOtherDataComes) {
  Start({}, SavedDemo());
  table_ = "tblImportNotes";
  const auto import = [&](const std::string& text) {
    Store(folder_ / "list.csv", text);
    answers_.File(File("list.csv"));
    Trigger("mnuImport");
  };
  import("RX-Q40;MEMORY;7\n");
  EXPECT_TRUE(Status().startsWith("Nothing was imported: columns are separated by semicolons"));
  EXPECT_TRUE(Find<QLabel>("lblImportNotes").text().startsWith("list.csv: Nothing was imported"));
  import(
      "RX-Q40,MEMORY,210\nRX-Q40,MEMORY,7,\"145,7125\",12.5KHz,None,88.5,88.5,023,023,None,12.5,"
      "Off,Hi,05,Off,BS-1,Off,Off,Normal,HOME,Off\n");
  EXPECT_TRUE(Status().endsWith("1 passed over. 3 notes: Tools, Import Notes."));
  EXPECT_FALSE(Find("frmImportNotes").isVisible());
  Trigger("mnuImportNotes");
  EXPECT_EQ(Places(), QStringList({"1: ", "2: Channel 7", "2: Channel 7"}));
  EXPECT_EQ(Table().item(1, 3)->text(), "stored as 145.0000; written was \"145,7125\"");
  EXPECT_EQ(Table().item(2, 2)->text(), "SHIFT FREQUENCY");
  DoubleClick(0);
  EXPECT_EQ(Tab(), 1);
  DoubleClick(2);
  EXPECT_EQ(Tab(), 3);
  EXPECT_EQ(CurrentRow(kMemoryGrid), 8);
  Trigger("mnuReMem");  // other channels
  EXPECT_FALSE(Find<QAction>("mnuImportNotes").isEnabled());
  EXPECT_FALSE(Find("frmImportNotes").isVisible());
}

}  // namespace
}  // namespace q40::test
