// The window with the backups, the report that goes on with a write, and stopping.
#include <QPlainTextEdit>
#include <QTableWidget>

#include "app/journal_keeper.h"
#include "files/backup_folder.h"
#include "gui/window_test.h"

namespace q40::test {
namespace {

class Backups : public Window {
 protected:
  QString Row(int row) {
    const auto& table = Find<QTableWidget>("tblBackups");
    QStringList cells;
    for (int column = 1; column < table.columnCount(); ++column) {
      cells << table.item(row, column)->text();
    }
    return cells.join('|');
  }
  // Runs when the second channel is on its way, whose answer is late.
  void InTheMiddle(const std::function<void()>& run) {
    auto* watch = new QTimer(window_.get());
    QObject::connect(watch, &QTimer::timeout, watch, [this, watch, run] {
      if (!Status().contains("memory channel 1, 2 of 210")) return;
      watch->stop();
      run();
    });
    watch->start(5);
  }
  int Rows() { return Find<QTableWidget>("tblBackups").rowCount(); }
  // A question that names something, and the button to press.
  void Question(const QString& title, const QString& part, const QString& button = "OK") {
    answers_.Add([=](QWidget& dialog) {
      const auto& box = static_cast<QMessageBox&>(dialog);
      EXPECT_EQ(box.windowTitle(), title);
      EXPECT_TRUE(box.text().contains(part)) << box.text().toStdString();
      for (QAbstractButton* choice : box.buttons()) {
        if (choice->text().remove('&') == button) return QTest::mouseClick(choice, Qt::LeftButton);
      }
      ADD_FAILURE() << button.toStdString();
      dialog.close();
    });
  }
};

TEST_F(Backups, AreMadeComparedRestoredOpenedAndDeleted) {
  Start({}, SavedDemo());
  Trigger("mnuBackups");
  EXPECT_EQ(Rows(), 0);
  for (const char* name :
       {"cmdOpenBackup", "cmdCompareBackup", "cmdRestoreBackup", "cmdDeleteBackup"}) {
    EXPECT_FALSE(Find(name).isEnabled()) << name;
  }
  Click("cmdBackUpNow");
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(Row(0), "RX-Q40E|by hand|10");
  TakeHeard();

  Click("cmdCompareBackup");
  EXPECT_TRUE(Find<QLabel>("lblReport").text().startsWith("What is loaded is what RX-Q40E"));
  Find<QLineEdit>("txtDial_0").setText("5");
  Edit(kMemoryGrid, 2, [&] { Find<QLineEdit>("txtName").setText("NEW"); });
  SetFlags(false, false);
  Click("cmdCompareBackup");
  EXPECT_TRUE(Find<QLabel>("lblReport").text().endsWith("and what is loaded: 2."))
      << Find<QLabel>("lblReport").text().toStdString();
  EXPECT_TRUE(Find<QPlainTextEdit>("txtReport").toPlainText().contains("M1: \"0123456789\""));
  EXPECT_FALSE(Find("cmdWriteRest").isVisible());

  const std::string path = LastWholeBackup(options_.backup_folder, 1);
  Question("RESTORE OK", QString::fromStdString(path).split('/').back());
  Click("cmdRestoreBackup");
  EXPECT_EQ(TakeHeard(),
            "RXQ40, who, 227 writes 0020 to 1C20, end, who, 227 reads 0020 to 1C20, end");
  EXPECT_EQ(Status(), "Written and verified.");

  Activate(Find("BackupsWindow"));
  Find("tblBackups").setFocus();
  Press("tblBackups", Qt::Key_Return);
  EXPECT_EQ(document().dial[0], "0123456789");
  EXPECT_EQ(Title(), kPlainTitle);  // so that Save does not replace the backup
  Store(options_.backup_folder + "/RX-Q40T 2000-01-01 00.00.00.Q40", "x");
  Trigger("mnuBackups");
  EXPECT_TRUE(Row(1).startsWith("RX-Q40T|before a write|no clone: "));
  EXPECT_EQ(Find<QTableWidget>("tblBackups").currentRow(), 0);
  Question("DELETE OK", "by hand.Q40");
  Click("cmdDeleteBackup");
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_EQ(Rows(), 1);
  Activate(Find("BackupsWindow"));
  Find("tblBackups").setFocus();
  Press("tblBackups", Qt::Key_Escape);
  EXPECT_FALSE(Find("BackupsWindow").isVisible());
}

// The list points at the last whole radio; the report goes on with the write.
TEST_F(Backups, AfterAWriteThatBrokeOff) {
  Start({"ng@#300"}, SavedDemo());
  Trigger("mnuBackups");
  Click("cmdBackUpNow");
  Question("CLEAR OK", "clear");
  ShowTab(3);
  Click("cmbClAll");
  Error("Communication Error");
  Trigger("mnuWrAll");
  Click("cmdBackUpNow");
  EXPECT_EQ(Row(0), "RX-Q40E|after a broken write|2");
  EXPECT_EQ(Row(1), "RX-Q40E|by hand (the last of a whole radio)|10");
  // The next start, after a crash.
  Start({}, SavedDemo());
  EXPECT_TRUE(Status().startsWith("A write to an RX-Q40E that began on "))
      << Status().toStdString();
  EXPECT_TRUE(Find("frmReport").isVisible() && Find<QAction>("mnuWriteRest").isEnabled());
  EXPECT_TRUE(Find<QLabel>("lblReport").text().contains("by hand.Q40"));
  Click("cmdWriteRest");
  EXPECT_TRUE(Status().startsWith("Written and verified: ")) << Status().toStdString();
  EXPECT_FALSE(Find("frmReport").isVisible() || Find<QAction>("mnuWriteRest").isEnabled());
}

TEST_F(Backups, EscAndTheButtonStopAReadAtOnce) {
  for (const bool key : {true, false}) {
    Start({"late=250@0220"});
    EXPECT_FALSE(Find("cmdStop").isVisible());
    ShowTab(3);
    InTheMiddle([&] {
      ASSERT_TRUE(Find("cmdStop").isVisible());
      if (key) return Press(kMemoryGrid, Qt::Key_Escape);
      Click("cmdStop");
    });
    Trigger("mnuReMem");
    EXPECT_EQ(TakeHeard(), "who, 2 reads 0200 to 0220, end");
    EXPECT_TRUE(Status().startsWith("Stopped before memory channel 2. The read broke off"));
    EXPECT_FALSE(Find("cmdStop").isVisible() || window_->IsBusy());
    EXPECT_TRUE(window_->isVisible());
  }
}

// The question stands while the write goes on, and goes when it is over.
TEST_F(Backups, AWriteIsAskedAboutBeforeItStops) {
  const struct {
    std::string_view answer;  // empty: none
    bool closes;              // the window was to be closed
    const char* heard;
    const char* status;
  } cases[] = {
      {"Stop", false, "RXQ40, who, 2 writes 0200 to 0220, end", "Stopped before memory channel 2."},
      {"Go On", true, "RXQ40, who, 210 writes 0200 to 1C20, end", "Written."},
      {"", true, "RXQ40, who, 210 writes 0200 to 1C20, end", "Written."},
      {"Stop", true, "RXQ40, who, 2 writes 0200 to 0220, end", "Stopped before memory channel 2."},
  };
  for (const auto& c : cases) {
    Start({"late=400@0220"}, SavedDemo());
    if (window_->findChild<QWidget*>("frmReport") != nullptr) Find("frmReport").hide();
    if (!c.answer.empty()) {
      Question("Stop Writing", "The radio would hold a part", QString::fromUtf8(c.answer));
    } else {
      answers_.Add([](QWidget&) {});
    }
    InTheMiddle([&] {
      if (!c.closes) return Press(kMemoryGrid, Qt::Key_Escape);
      EXPECT_FALSE(window_->close());
    });
    Trigger("mnuWrMem");
    EXPECT_EQ(TakeHeard(), c.heard);
    EXPECT_TRUE(Status().startsWith(c.status)) << Status().toStdString();
    QTest::qWait(50);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    const bool gone = c.closes && c.answer == "Stop";
    EXPECT_EQ(window_->isVisible(), !gone);
  }
}

TEST_F(Backups, AProgramThatIsToldToEndAsksNothing) {
  Start({"late=250@0220"}, SavedDemo());
  InTheMiddle([&] { emit window_->findChild<JournalKeeper*>()->endRequested(); });
  Trigger("mnuWrMem");
  EXPECT_EQ(TakeHeard(), "RXQ40, who, 2 writes 0200 to 0220, end");
}

}  // namespace
}  // namespace q40::test
