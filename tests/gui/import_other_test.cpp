// Import Other List: what its window shows of a list, what can be corrected, and what becomes of it.
#include <QCheckBox>
#include <QInputDialog>
#include <QTableWidget>

#include "files/channel_csv.h"
#include "gui/window_test.h"

namespace q40::test {
namespace {

// Semicolons, decimal commas, Latin-1, and a line above the headings.
const std::string kGerman =
    "Relais, Stand 2026\r\n"
    "Rufzeichen;Ausgabe;Ablage;CTCSS;Ort;Betriebsart\r\n"
    "DB0ABC;438,7250;-7,6;67,0;K\xF6ln;FM\r\n"
    "DB0XYZ-L;145,6000;-0,6;100,1;;FM\r\n"
    "DB0FAR;1298,2500;-28;88,5;;FM\r\n"
    "DB0DMR;439,5625;-9,4;;<b>M&M</b>;DMR\r\n";

class ImportOther : public Window {
 protected:
  // Works in the window that a list opens.
  void Open(const std::string& text, const std::function<void()>& use) {
    Store(folder_ / "list.csv", text);
    answers_.File(File("list.csv"));
    bool opened = false;
    answers_.Add([&](QWidget& dialog) {
      opened = true;
      EXPECT_EQ(dialog.objectName(), "ImportOtherWindow");
      for (const char* table : {"tblColumns", "tblPreview"}) {
        auto* view = dialog.findChild<QTableView*>(QLatin1String(table));
        new QAbstractItemModelTester(view->model(), &dialog);
      }
      use();
    });
    Trigger("mnuImportOther");
    EXPECT_TRUE(opened);
  }
  void Ok() { Click("cmdImportOther"); }
  void Cancel() { QTest::keyClick(&Find("ImportOtherWindow"), Qt::Key_Escape); }
  // Chooses the entry of a box that begins so, as the user's keys and mouse do.
  void Choose(const char* box, const char* begin) {
    auto& combo = Find<QComboBox>(box);
    combo.setCurrentIndex(combo.findText(begin, Qt::MatchStartsWith));
    emit combo.activated(combo.currentIndex());
    QApplication::processEvents();
  }
  QString Shown(const char* box) { return Find<QComboBox>(box).currentText(); }
  QString Meanings() {
    QStringList texts;
    for (int i = 0;
         auto* box = window_->findChild<QComboBox*>(QStringLiteral("cmbMeaning_%1").arg(i)); ++i) {
      texts << box->currentText();
    }
    return texts.join(", ");
  }
  // Where the rows go, and what they become: "4 438.7250 -7.6000 ...".
  QStringList Rows() {
    QApplication::processEvents();
    const QAbstractItemModel& model = *Find<QTableView>("tblPreview").model();
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
      rows << model.index(row, 1).data().toString() + ' ' + model.index(row, 2).data().toString();
    }
    return rows;
  }
  // Where they go.
  QString Places() {
    QStringList places;
    for (const QString& row : Rows()) places << row.section(' ', 0, row[0].isLower() ? 1 : 0);
    return places.join(' ');
  }
  QVariant Note(int row, int role = Qt::DisplayRole) {
    return Find<QTableView>("tblPreview").model()->index(row, 3).data(role);
  }
  QString Text(const char* label) { return Find<QLabel>(label).text(); }
};

TEST_F(ImportOther, AGuessIsCorrectedAndTheListIsOneStep) {
  Start({}, SavedDemo());
  Open(kGerman, [&] {
    EXPECT_EQ(Shown("cmbSeparator") + ", " + Shown("cmbEncoding") + ", " + Shown("cmbHeadingRow"),
              "Guess: semicolon, Guess: Latin-1, Guess: row 2");
    EXPECT_EQ(Meanings(),
              "Name or call, Output (radio receives), Offset, Tone sent, Second name, Mode");
    EXPECT_EQ(Text("lblListFacts"), "list.csv: 4 rows, 6 columns.");
    EXPECT_EQ(Places(), "4 6 passed over 7");
    Choose("cmbMeaning_0", "(");
    Choose("cmbMeaning_4", "Name");
    EXPECT_EQ(Find<QComboBox>("cmbMapping").currentIndex(), -1);
    EXPECT_TRUE(Rows().first().endsWith(" KLN") || Rows().first().endsWith(" KOLN") ||
                Rows().first().endsWith(" KOELN"))
        << Rows().first().toStdString();
    Choose("cmbMapping", "Guess");
    EXPECT_TRUE(Rows().first().startsWith("4 438.7250 -7.6000 ")) << Rows().first().toStdString();
    EXPECT_TRUE(Rows().first().endsWith(" DB0ABC"));
    EXPECT_EQ(Note(0).toString(), "");
    EXPECT_TRUE(Note(0, Qt::DecorationRole).isNull());
    // Not by its icon alone.
    EXPECT_TRUE(Note(1).toString().contains("100,1")) << Note(1).toString().toStdString();
    EXPECT_FALSE(Note(1, Qt::DecorationRole).isNull());
    EXPECT_TRUE(Note(1, Qt::AccessibleTextRole).toString().startsWith("Does not fit: "));
    Find<QTableView>("tblPreview").selectRow(2);
    EXPECT_EQ(Text("lblRow"), "Line 5: " + Note(2).toString());
    Ok();
  });
  EXPECT_EQ(Cell(kMemoryGrid, 5, 1), "438.7250");
  EXPECT_EQ(Cell(kMemoryGrid, 6, 1), "*144.8000");  // was in use
  EXPECT_EQ(Cell(kMemoryGrid, 7, 1), "145.6000");
  EXPECT_TRUE(mirrors_[0]->Stale().isEmpty());
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
  EXPECT_EQ(Flags(), "SM");
  EXPECT_TRUE(Status().startsWith("Imported: 3 channels, 1 row passed over. "))
      << Status().toStdString();
  EXPECT_TRUE(Status().endsWith("notes: Tools, Import Notes."));
  Trigger("mnuImportNotes");
  auto& notes = Find<QTableWidget>("tblImportNotes");
  EXPECT_EQ(notes.item(0, 0)->text() + notes.item(0, 1)->text(), "4Channel 6");
  EXPECT_EQ(Find<QAction>("mnuUndo").text(), "&Undo Import of list.csv");
  Trigger("mnuUndo");
  EXPECT_EQ(Cell(kMemoryGrid, 5, 1) + Cell(kMemoryGrid, 7, 1), "");
  EXPECT_EQ(Flags(), "--");
}

TEST_F(ImportOther, NothingHappensWithoutOkOrWithoutADifference) {
  Start({}, SavedDemo());
  const CloneImage before = document().image;
  Open(kGerman, [&] { Cancel(); });
  EXPECT_TRUE(document().image == before);
  EXPECT_FALSE(Find<QAction>("mnuUndo").isEnabled());
  const auto replace = [&] {
    Choose("cmbFirstChannel", "4");
    Find<QCheckBox>("chkReplaceInUse").setChecked(true);
    Ok();
  };
  Open("Output\n145.5\n", replace);
  SetFlags(false, false);
  Open("Output\n145.5\n", replace);
  EXPECT_EQ(Status(), "Nothing has changed: the channels are as the list has them.");
  EXPECT_EQ(Flags(), "--");
}

TEST_F(ImportOther, EachChoiceShowsAtOnceWhatFollows) {
  Start({}, SavedDemo());
  Open(kGerman, [&] {
    const auto check = [&](const char* box) {
      Find<QCheckBox>(box).click();
      return Places();
    };
    EXPECT_EQ(check("chkOnlyFm"), "4 6 passed over left out");
    EXPECT_EQ(check("chkOnlyOwnBands"), "4 6 left out left out");
    EXPECT_EQ(check("chkOnlyFm"), "4 6 left out 7");
    EXPECT_EQ(check("chkReplaceInUse"), "4 5 left out 6");
    Choose("cmbFirstChannel", "D8");
    EXPECT_EQ(Places(), "D8 D9 left out no place");
    // How the list is read. A column that was chosen by hand stays so while it is one of as many.
    Choose("cmbMeaning_5", "(");
    Choose("cmbHeadingRow", "row 3");
    EXPECT_EQ(Rows().size(), 3);
    EXPECT_EQ(Shown("cmbMeaning_5"), "(ignored)");
    Choose("cmbEncoding", "UTF-8");
    EXPECT_EQ(Find<QTableView>("tblColumns").model()->headerData(4, Qt::Horizontal),
              "K\\xEF\\xBF\\xBDln");  // not what it is written in
    Choose("cmbSeparator", "comma");
    EXPECT_FALSE(Find("cmdImportOther").isEnabled());
    EXPECT_TRUE(Text("lblSummary").startsWith("Nothing can be imported: "))
        << Text("lblSummary").toStdString();
    Choose("cmbMapping", "Guess");
    EXPECT_TRUE(Find("cmdImportOther").isEnabled());
    EXPECT_EQ(Shown("cmbMeaning_5"), "Mode");
    Find("cmbMeaning_1").setFocus();
    QTest::keyClick(&Find("cmbMeaning_1"), Qt::Key_Home);
    QTest::keyClick(&Find("cmbMeaning_1"), Qt::Key_Return);  // before the plan was made anew
    EXPECT_TRUE(Find("ImportOtherWindow").isVisible());
    EXPECT_FALSE(Find("cmdImportOther").isEnabled());
    Cancel();
  });
}

TEST_F(ImportOther, MappingsAreKeptChosenReplacedAndDeleted) {
  Start({}, SavedDemo());
  const auto keep = [&](const QStringList& names) {
    for (const QString& name : names) {
      answers_.Add([=](QWidget& dialog) {
        auto& input = static_cast<QInputDialog&>(dialog);
        input.setTextValue(name);
        QTest::keyClick(&dialog, Qt::Key_Return);
      });
    }
  };
  Open(kGerman, [&] {
    EXPECT_FALSE(Find("cmdDeleteMapping").isEnabled());
    Choose("cmbMeaning_4", "(");
    keep({"a/b", "auto", "relais"});
    Click("cmdKeepMapping");
    EXPECT_EQ(Shown("cmbMapping"), "relais");
    Cancel();
  });
  Open("Ausgabe;Ort\n145,5;Ulm\n", [&] {
    Choose("cmbMapping", "relais");
    EXPECT_EQ(Meanings(), "Output (radio receives), (ignored)");
    EXPECT_TRUE(Find("lblMissing").isVisible());
    EXPECT_TRUE(Text("lblMissing").contains("\"Rufzeichen\"") &&
                Text("lblMissing").endsWith("; and 1 more."))
        << Text("lblMissing").toStdString();
    keep({"relais"});
    answers_.Box("REPLACE OK", "There is a mapping relais.\nDo you want to replace it?", kCancel);
    keep({"relais"});
    answers_.Box("REPLACE OK", "There is a mapping relais.\nDo you want to replace it?", kOk);
    Click("cmdKeepMapping");
    Choose("cmbMapping", "Guess");
    EXPECT_FALSE(Find("lblMissing").isVisible());
    EXPECT_EQ(Meanings(), "Output (radio receives), Second name");
    Choose("cmbMeaning_1", "Power");
    Choose("cmbMapping", "relais");
    EXPECT_FALSE(Find("lblMissing").isVisible());
    answers_.Box("DELETE OK", "Do you want to delete the mapping relais?", kOk);
    Click("cmdDeleteMapping");
    EXPECT_EQ(Find<QComboBox>("cmbMapping").count(), 1);
    EXPECT_EQ(Meanings(), "Output (radio receives), (ignored)");  // stays
    Cancel();
  });
  // One that is no mapping leaves everything as it is.
  Store(folder_ / "user/maps/bad.map", "what?\n");
  Open(kGerman, [&] {
    answers_.Add([](QWidget& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "ERROR");
      EXPECT_TRUE(static_cast<QMessageBox&>(dialog).text().contains("bad.map, line 1: "));
      dialog.close();
    });
    Choose("cmbMapping", "bad");
    EXPECT_EQ(Shown("cmbMapping"), "Guess");
    EXPECT_EQ(Places(), "4 6 passed over 7");
    Cancel();
  });
}

TEST_F(ImportOther, WhatIsNoListIsNamed) {
  Start();
  for (const auto& [text, what] :
       {std::pair{std::string("\x01\x02\x03"), "list.csv, line 1: control"},
        {std::string(), "list.csv: there is nothing"},
        {std::string("Name\n\"A\n"), "list.csv, line 2: "}}) {
    Store(folder_ / "list.csv", text);
    answers_.File(File("list.csv"));
    Error("Data Error");
    Trigger("mnuImportOther");
    EXPECT_TRUE(Status().contains(what)) << Status().toStdString();
  }
  Open(ExportChannels(document().image), [&] {
    EXPECT_TRUE(Text("lblSummary").contains("File, Import CSV"));
    EXPECT_FALSE(Find("cmdImportOther").isEnabled());
    Cancel();
  });
  Open("Name,Age\nAnna,3\n", [&] {
    EXPECT_TRUE(Text("lblSummary").startsWith("Nothing can be imported: no column is the output"));
    EXPECT_FALSE(Find("cmdImportOther").isEnabled());
    Choose("cmbMeaning_1", "Output");  // of which no row has a good one
    EXPECT_EQ(Places(), "passed over");
    EXPECT_FALSE(Find("cmdImportOther").isEnabled());
    Cancel();
  });
}

// As large as a list may be, and with what would be obeyed elsewhere.
TEST_F(ImportOther, ALargeOrHostileListIsShownAsPlainText) {
  Start({}, SavedDemo());
  std::string text = "<i>&Name</i>,Output";
  for (int column = 2; column < 100; ++column) text += ",";
  text += "\n<b>" + std::string(900, 'x') + "</b>\xE2\x80\xAEz,145.5\n";
  for (int row = 0; row < 4000; ++row) text += "R,145.5\n";
  Open(text, [&] {
    const QAbstractItemModel& raw = *Find<QTableView>("tblColumns").model();
    EXPECT_EQ(raw.headerData(0, Qt::Horizontal), "<i>&Name</i>");
    EXPECT_EQ(raw.headerData(99, Qt::Horizontal), "Column 100");
    EXPECT_EQ(raw.rowCount(), 21);
    EXPECT_EQ(raw.index(1, 0).data().toString().size(), 81);
    const QString tip = raw.index(1, 0).data(Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains("&lt;b&gt;x") && tip.contains("\\xE2\\x80\\xAEz"));
    EXPECT_EQ(Find("cmbMeaning_99").accessibleName(), "Meaning of column 100, Column 100");
    // The wheel scrolls, and changes no meaning.
    auto& box = Find<QComboBox>("cmbMeaning_1");
    const QPointF place = box.rect().center();
    QWheelEvent wheel(place, box.mapToGlobal(place), {}, {0, -120}, Qt::NoButton, {}, {}, false);
    QApplication::sendEvent(&box, &wheel);
    EXPECT_EQ(box.currentText(), "Output (radio receives)");
    // The keyboard comes to all columns, and sees where it is.
    box.setFocus();
    for (int i = 1; i < 99; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmbMeaning_99");
    const auto& columns = Find<QTableView>("tblColumns");
    EXPECT_TRUE(columns.viewport()->rect().contains(columns.visualRect(raw.index(0, 99)).center()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmbFirstChannel");
    EXPECT_EQ(Rows().last().left(8), "no place");
    Ok();
  });
  EXPECT_TRUE(Status().contains("Tools, Import Notes.")) << Status().toStdString();
  Trigger("mnuImportNotes");
  EXPECT_EQ(Find<QTableWidget>("tblImportNotes").rowCount(), 1000);
}

}  // namespace
}  // namespace q40::test
