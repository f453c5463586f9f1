// The window of changes, the marks on the pages and the question before a write.
#include <QAction>
#include <QClipboard>
#include <QHeaderView>

#include "app/user_options.h"
#include "document/document_cells.h"
#include "files/clone_file.h"
#include "gui/window_test.h"

namespace q40::test {
namespace {

class Changes : public Window {
 protected:
  ~Changes() override {
    for (const char* name : {"mnuBackUp", "mnuShowChanges", "mnuMarkChanges"}) {
      Find<QAction>(name).setChecked(false);
    }
  }
  // "Place: What: before > after", headings as they stand.
  QStringList Rows(QWidget* in = nullptr) {
    const auto* table = (in != nullptr ? in : window_.get())->findChild<QTableView*>("tblChanges");
    const QAbstractItemModel& model = *table->model();
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
      const auto cell = [&](int column) { return model.index(row, column).data().toString(); };
      rows << (cell(1).isEmpty() ? cell(0)
                                 : cell(0) + ": " + cell(1) + ": " + cell(2) + " > " + cell(3));
    }
    return rows;
  }
  QTableView& Table() { return Find<QTableView>("tblChanges"); }
  QString Summary() { return Find<QLabel>("lblChanges").text(); }
  QStringList Against() {
    QStringList names;
    const auto& list = Find<QComboBox>("cmbAgainst");
    for (int i = 0; i < list.count(); ++i) names << list.itemText(i).section(" at ", 0, 0);
    return names;
  }
  QString ChooseAgainst(const QString& start) {
    auto& list = Find<QComboBox>("cmbAgainst");
    const int index = list.findText(start, Qt::MatchStartsWith);
    EXPECT_GE(index, 0) << start.toStdString();
    list.setCurrentIndex(index);
    emit list.activated(index);
    return list.currentText().section(" at ", 0, 0);
  }
  void Type(const QString& name, const QString& text) {
    Find<QLineEdit>(name).clear();
    QTest::keyClicks(&Find(name), text);
  }
  // What follows the document does so at the next turn of the event loop.
  static void Settle() { QTest::qWait(1); }
  // A setting, a dialer memory, a channel's name and an emptied channel.
  void ChangeFour() {
    ShowTab(1);
    Press("chkBeep", Qt::Key_Space);
    Edit(kMemoryGrid, 2, [] {
      auto* name = QApplication::activeModalWidget()->findChild<QLineEdit*>("txtName");
      name->setText("NEW");
    });
    ShowTab(2);
    Type("txtDial_2", "42");
    const_cast<CloneDocument&>(window_->document()).ClearChannel(200);
  }
};

TEST_F(Changes, AreListedAndTakenBack) {
  Start({}, SavedDemo());
  Trigger("mnuChanges");
  EXPECT_EQ(Summary(), "No changes.");
  const CloneData before = window_->document().data();
  ChangeFour();
  Settle();  // the list is open and follows
  const QStringList rows = Rows();
  ASSERT_EQ(rows.size(), 3 + 2 + 1 + 20);
  EXPECT_EQ(rows.mid(0, 6),
            QStringList({"Settings (1)", "Settings: Beep: on > off", "Channels (21)",
                         "Memory 1: Name: HILL > NEW", "Memory D0: In use: yes > no",
                         "Memory D0: Frequency: 145.2000 > "}));
  EXPECT_EQ(rows.mid(24), QStringList({"Auto dialer (1)", "Auto dialer: M3:  > 42"}));
  EXPECT_EQ(Summary(), "23 changes: Settings 1, Channels 21, Auto dialer 1.");

  // As text, in the words of rxq40ctl diff; what is hidden is left out.
  std::string text;
  for (const auto& one : DifferencesOf(before, window_->document().data())) {
    text += DifferenceText(one) + '\n';
  }
  Click("cmdCopyChanges");
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), text);
  Type("txtFilter", "bEEP");
  EXPECT_EQ(Rows(), rows.mid(0, 2));
  EXPECT_TRUE(Summary().endsWith("The filter shows 1."));
  EXPECT_FALSE(Find("cmdTakeBack").isEnabled());
  Activate(Find("ChangesWindow"));
  Table().selectRow(0);  // a heading cannot be selected
  EXPECT_FALSE(Find("cmdTakeBack").isEnabled());
  Table().selectRow(1);
  Table().setFocus();
  QTest::keyClick(&Table(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "Settings: Beep: \"on\" -> \"off\"\n");
  Click("cmdTakeBack");
  Settle();
  EXPECT_TRUE(Checked("chkBeep"));
  EXPECT_EQ(Status(), "Took 1 change back.");
  for (const bool on : {false, true}) {  // undone, and done again
    Activate(Find("ChangesWindow"));
    QTest::keyClick(&Table(), on ? Qt::Key_Y : Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Checked("chkBeep"), on);
  }
  Settle();
  Find<QLineEdit>("txtFilter").clear();

  // Enter leads to the place. One cell of a channel that is gone brings the whole channel back.
  Table().selectRow(4);
  EXPECT_EQ(Rows()[4], "Memory D0: Step: 12.5KHz > ");
  Activate(Find("ChangesWindow"));
  Table().setFocus();
  Press("tblChanges", Qt::Key_Return);
  EXPECT_EQ(Tab(), 3);
  EXPECT_EQ(CurrentRow(kMemoryGrid), 201);
  SetFlags(false, false);
  Click("cmdTakeBack");
  EXPECT_EQ(Flags(), "SM");
  EXPECT_EQ(Cell(kMemoryGrid, 201, 1), "145.2000");
  Settle();
  EXPECT_EQ(Rows(), QStringList({"Channels (1)", "Memory 1: Name: HILL > NEW", "Auto dialer (1)",
                                 "Auto dialer: M3:  > 42"}));
  // What was selected stays selected while the list changes.
  Table().selectRow(3);
  ShowTab(2);
  Type("txtDial_2", "4");
  Press("txtDial_1", Qt::Key_1);
  Settle();
  EXPECT_EQ(Rows().size(), 5);
  Click("cmdTakeBack");
  EXPECT_EQ(Find<QLineEdit>("txtDial_2").text(), "");
  EXPECT_NE(window_->document().data().dial[1], before.dial[1]);
  Trigger("mnuFileSave");
  Settle();
  EXPECT_EQ(Summary(), "No changes.");
}

TEST_F(Changes, CompareWithRadioBackupAndAnyFile) {
  Start({}, SavedDemo());
  Store(folder_ / "bad.Q40", "no clone file\n");
  SavedDemo("other.Q40");
  Trigger("mnuChanges");
  EXPECT_EQ(Against(), QStringList({"demo.Q40, as opened", "The radio (not known yet)",
                                    "Another clone file..."}));
  EXPECT_EQ(ChooseAgainst("The radio"), "The radio (not known yet)");
  EXPECT_TRUE(Summary().startsWith("What the radio holds is not known"));
  Trigger("mnuReSet");
  Settle();
  EXPECT_EQ(Against()[1], "The radio, as read");
  document().dial[0] = "5";
  const_cast<CloneDocument&>(window_->document()).ClearChannel(0);  // of these nothing is known
  Find<QAction>("mnuBackUp").setChecked(true);
  Trigger("mnuChanges");
  EXPECT_EQ(Rows(), QStringList({"Auto dialer (1)", "Auto dialer: M1: 0123456789 > 5"}));
  EXPECT_TRUE(Summary().endsWith("Of the radio only the settings are known."));
  Trigger("mnuWrSet");
  Settle();
  // It is now as written: RPT has a frequency of its own in the radio.
  EXPECT_EQ(Rows(),
            QStringList({"Special channels (1)", "UHF RPT: Frequency: 445.0000 > 435.0000"}));
  EXPECT_EQ(Against()[1], "The radio, as written");
  EXPECT_TRUE(ChooseAgainst("Backup RX-Q40E ").endsWith(".Q40"));
  EXPECT_EQ(Rows().last(), "Auto dialer: M1: 0123456789 > 5");

  answers_.File({});
  EXPECT_TRUE(ChooseAgainst("Another").startsWith("Backup"));
  answers_.File(File("bad.Q40"));
  Error("Data Error");
  EXPECT_TRUE(ChooseAgainst("Another").startsWith("Backup"));
  answers_.File(File("other.Q40"));
  EXPECT_EQ(ChooseAgainst("Another"), "other.Q40");
  EXPECT_EQ(Rows().last(), "Auto dialer: M1: 0123456789 > 5");
}

TEST_F(Changes, TheRadioIsUnknownAfterAWriteThatBrokeOff) {
  Start({"ng@#260"}, SavedDemo());  // 20 exchanges of a read, 213 of the next, then the write
  Trigger("mnuReAll");
  Trigger("mnuChanges");
  EXPECT_EQ(ChooseAgainst("The radio"), "The radio, as read");
  Error("Communication Error");
  Trigger("mnuWrAll");
  Settle();
  EXPECT_TRUE(Summary().endsWith("Of the radio only the settings are known."));
}

TEST_F(Changes, ShowWhatAnImportDid) {
  Start({}, SavedDemo());
  Store(folder_ / "list.csv",
        "RX-Q40,MEMORY,210\nRX-Q40,MEMORY,7,145.7125,12.5KHz,None,88.5,88.5,023,023,None,12.5,"
        "Off,Hi,05,Off,BS-1,Off,Off,Normal,HOME,Off\n");
  answers_.File(File("list.csv"));
  Trigger("mnuImport");
  Trigger("mnuChanges");
  EXPECT_EQ(Find<QComboBox>("cmbAgainst").currentText().section(" at ", 0, 0),
            "Before the import of list.csv");
  EXPECT_EQ(Rows()[1], "Memory 7: In use: no > yes");
  const auto& lost = Find<QTableView>("tblLost");
  EXPECT_TRUE(lost.isVisible());
  EXPECT_EQ(lost.model()->rowCount(), 2);
  EXPECT_TRUE(Find<QLabel>("lblLost").text().startsWith("list.csv: 1 memory"));
  ShowTab(3);
  SelectRow(kMemoryGrid, 1);
  Activate(Find("ChangesWindow"));
  Find<QTableView>("tblLost").selectRow(1);
  Find("tblLost").setFocus();
  Press("tblLost", Qt::Key_Return);
  EXPECT_EQ(CurrentRow(kMemoryGrid), 8);
  ChooseAgainst("demo.Q40");
  EXPECT_FALSE(Find("lblLost").isVisible() || lost.isVisible());
  ChooseAgainst("Before the import");
  Trigger("mnuFileNew");  // no import any more
  EXPECT_EQ(Against()[0], "The new data, as it began");
  EXPECT_FALSE(Against().join('|').contains("import"));
  Settle();
  EXPECT_EQ(Summary(), "No changes.");
  EXPECT_FALSE(Find("lblLost").isVisible());
}

TEST_F(Changes, AreShownBeforeAWriteIfWanted) {
  Start({}, SavedDemo());
  EXPECT_FALSE(Find<QAction>("mnuShowChanges").isChecked());
  document().dial[0] = "5";
  Find<QAction>("mnuShowChanges").setChecked(true);
  Start({}, SavedDemo());
  EXPECT_TRUE(Find<QAction>("mnuShowChanges").isChecked());  // remembered
  document().dial[0] = "5";
  TakeHeard();
  const auto answer = [&](const QString& summary, const QStringList& rows, const char* button) {
    answers_.Add([=, this](QWidget& dialog) {
      ASSERT_EQ(dialog.objectName(), "WriteQuestion");
      EXPECT_TRUE(dialog.findChild<QLabel*>("lblChanges")->text().startsWith(summary))
          << dialog.findChild<QLabel*>("lblChanges")->text().toStdString();
      EXPECT_EQ(Rows(&dialog), rows);
      if (*button == '\0') return QTest::keyClick(&dialog, Qt::Key_Escape);
      QTest::mouseClick(dialog.findChild<QAbstractButton*>(QLatin1String(button)), Qt::LeftButton);
    });
  };
  const QString unknown = "What the radio holds is not known.";
  const QStringList row = {"Special channels (1)", "UHF RPT: Frequency: 435.0000 > 445.0000",
                           "Auto dialer (1)", "Auto dialer: M1: 0123456789 > 5"};
  answer(unknown, {}, "cmdCancelWrite");
  Trigger("mnuWrSet");
  EXPECT_EQ(TakeHeard(), "");
  EXPECT_EQ(Status(), "Nothing was written.");
  answer(unknown, {}, "cmdReadFirst");
  answer("2 changes: Special channels 1, Auto dialer 1. Before: The radio, as read", row, "");
  Trigger("mnuWrSet");
  EXPECT_EQ(TakeHeard(), "who, 17 reads 0020 to 1D80, end");
  EXPECT_EQ(window_->document().data().dial[0], "5");
  answer("2 changes: ", row, "cmdWrite");
  Trigger("mnuWrSet");
  EXPECT_EQ(TakeHeard(), "RXQ40, who, 17 writes 0020 to 1D80, end");
  answer(unknown, {}, "cmdWrite");  // of the other half nothing is known
  Trigger("mnuWrMem");
  EXPECT_EQ(TakeHeard(), "RXQ40, who, 210 writes 0200 to 1C20, end");
  answer("Nothing that is written differs", {}, "cmdCancelWrite");
  Trigger("mnuWrSet");
  ChannelRecord record = document().image.MemoryTable[0];
  record.Set(ChannelKind::kMemory, Field::kPower, 0, "Lo");
  record.Set(ChannelKind::kMemory, Field::kStep, 5, "25KHz");  // the radio keeps 12.5
  const_cast<CloneDocument&>(window_->document()).StoreMemoryChannel(0, record);
  answer("1 change: ", {"Channels (1)", "Memory 0: Power: Hi > Lo"}, "cmdCancelWrite");
  Trigger("mnuWrAll");
  document().image.SettingsLine[3] = QString(32, 'G').toStdString();
  TakeHeard();
  Error("Data Error");  // and no question
  Trigger("mnuWrSet");
  EXPECT_EQ(TakeHeard(), "");
}

TEST_F(Changes, AreMarkedWhereTheyStand) {
  Start({}, SavedDemo());
  ChangeFour();
  Settle();
  const auto marked = [&](const QString& grid, int row) {
    return Find<QTableView>(grid).model()->headerData(row - 1, Qt::Vertical, Qt::UserRole).toBool();
  };
  const auto tip = [&](const QString& grid, int row) {
    return Find<QTableView>(grid)
        .model()
        ->headerData(row - 1, Qt::Vertical, Qt::ToolTipRole)
        .toString();
  };
  EXPECT_FALSE(marked(kMemoryGrid, 2));  // off at first
  EXPECT_EQ(Find("chkBeep").toolTip(), "");
  const auto titles = [&] {
    ShowTab(3);
    return Find<QTableView>(kMemoryGrid).verticalHeader()->grab().toImage();
  };
  const QImage unmarked = titles();
  Trigger("mnuMarkChanges");
  document().image.VhfSpecialSet[kCallRow].Set(ChannelKind::kSpecial, Field::kPower, 1, "Mid");
  document().settings.cmbTB = 1;
  SetFlags(true, true);
  Settle();
  EXPECT_EQ(RowTitle(kMemoryGrid, 2), "1");
  EXPECT_NE(titles(), unmarked);
  EXPECT_EQ(tip(kMemoryGrid, 2), "Name was \"HILL\"");
  EXPECT_EQ(tip(kMemoryGrid, 201), "was 145.2000 EMCOM");
  EXPECT_EQ(tip(kSpecialGrid, 2), "Power was \"Lo\"");
  EXPECT_FALSE(marked(kMemoryGrid, 1) || marked(kSpecialGrid, 1));
  EXPECT_EQ(Find("chkBeep").toolTip(), "was \"on\"");
  EXPECT_TRUE(Find("cmbTB").toolTip().endsWith("four bursts.\nwas \"1750\""));
  EXPECT_EQ(Find("txtDial_2").toolTip(), "was \"\"");
  EXPECT_TRUE(Find("chkBeep").findChild<QWidget*>("ChangeMark")->isVisibleTo(&Find("chkBeep")));
  EXPECT_EQ(Find("chkBeep").childAt(2, 2), nullptr);  // for the mouse it is not there
  ShowTab(1);
  Press("chkBeep", Qt::Key_Space);
  Settle();
  EXPECT_EQ(Find("chkBeep").toolTip(), "");
  EXPECT_FALSE(Find("chkBeep").findChild<QWidget*>("ChangeMark")->isVisibleTo(&Find("chkBeep")));
  Trigger("mnuMarkChanges");
  Settle();
  EXPECT_EQ(titles(), unmarked);
  EXPECT_TRUE(Find("cmbTB").toolTip().endsWith("four bursts."));
}

}  // namespace
}  // namespace q40::test
