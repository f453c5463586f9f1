// The check-up's window: its list, and the way from a finding to its place.
#include <QAction>
#include <QTableWidget>

#include "gui/window_test.h"
#include "image/vocabulary.h"

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
    Find<QComboBox>("cmbTB").setCurrentIndex(4);
    EXPECT_EQ(Places(), QStringList());
    Click("cmdCheckAgain");
    EXPECT_EQ(Places(), QStringList({"Settings: Tone Burst (Hz)", "UHF PH: Frequency",
                                     "Auto dialer: M3", "Channel 150: Name"}));
  }
  QTableWidget& Table(const char* name = "tblFindings") { return Find<QTableWidget>(name); }
  QStringList Places() {
    QStringList places;
    for (int row = 0; row < Table().rowCount(); ++row) {
      places << Table().item(row, 0)->text() + ": " + Table().item(row, 1)->text();
    }
    return places;
  }
  void DoubleClick(int row, const char* name = "tblFindings") {
    QTableWidget& table = Table(name);
    const QPoint place = table.visualItemRect(table.item(row, 1)).center();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, place);
  }
  void Enter(int row) {
    QApplication::setActiveWindow(&Find("frmCheckUp"));
    Table().selectRow(row);
    Table().setFocus();
    Press("tblFindings", Qt::Key_Return);
  }
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
  const auto import = [&](const std::string& text) {
    Store(folder_ / "list.csv", text);
    answers_.File(File("list.csv"));
    Trigger("mnuImport");
  };
  const auto offered = [&] { return Find<QAction>("mnuImportNotes").isEnabled(); };
  const std::string good =
      "RX-Q40,MEMORY,7,145.7125,12.5KHz,None,88.5,88.5,023,023,None,0.6,Off,Hi,05,Off,BS-1,Off,Off,"
      "Normal,HOME,Off\n";
  import(good);
  EXPECT_FALSE(offered());
  EXPECT_EQ(Status(), "1 memory and 0 special channel records imported, 0 passed over.");

  std::string other = good;
  other.replace(other.find("145.7125"), 8, "\"145,7125\"").replace(other.find("0.6"), 3, "12.5");
  import("RX-Q40,MEMORY,210\n" + other);
  EXPECT_EQ(
      Status(),
      "1 memory and 0 special channel records imported, 1 passed over. 3 notes: Tools, Import "
      "Notes.");
  EXPECT_EQ(window_->findChild<QWidget*>("frmImportNotes")->isVisible(), false);
  Trigger("mnuImportNotes");
  const auto row = [&](int n) {
    QStringList cells;
    for (int column = 0; column < 4; ++column) {
      cells << Table("tblImportNotes").item(n, column)->text();
    }
    return cells.join('|');
  };
  EXPECT_EQ(row(0), "1|||passed over, channel \"210\"");
  EXPECT_EQ(row(1), "2|Channel 7|FREQUENCY|stored as 145.0000; written was \"145,7125\"");
  EXPECT_TRUE(row(2).startsWith("2|Channel 7|SHIFT FREQUENCY|")) << row(2).toStdString();
  DoubleClick(0, "tblImportNotes");
  EXPECT_EQ(Tab(), 1);
  DoubleClick(2, "tblImportNotes");
  EXPECT_EQ(Tab(), 3);
  EXPECT_EQ(CurrentRow(kMemoryGrid), 8);
  Trigger("mnuReMem");  // other channels
  EXPECT_FALSE(offered());
  EXPECT_FALSE(Find("frmImportNotes").isVisible());

  SetFlags(false, false);
  std::replace(other.begin(), other.end(), ',', ';');
  import(other);
  EXPECT_TRUE(offered());
  EXPECT_TRUE(Status().startsWith("Nothing was imported: columns are separated by semicolons"));
  EXPECT_TRUE(Find<QLabel>("lblImportNotes").text().startsWith("list.csv: Nothing was imported"));
}

}  // namespace
}  // namespace q40::test
