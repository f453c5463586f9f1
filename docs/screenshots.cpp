// Takes the pictures of the documents: opens the real window on a simulated radio, works in it, and
// grabs what there is to see. Run by docs/make-screenshots.sh.
//
//   screenshots DOCS LOOK     LOOK: light, dark, contrast or large
//
// The look "light" takes every picture and writes the example files too; the others take the pages
// only.
#include <cstdio>
#include <functional>

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include "camera.h"
#include "files/channel_csv.h"
#include "files/clone_file.h"
#include "files/journal.h"
#include "files/journal_folder.h"
#include "files/whole_file.h"
#include "widgets/readable_style.h"

namespace q40 {
namespace {

const ComPort::Simulation kFastRadio{true, 0, {}};

// ---- what to take

void TakePages(PhotoSession& session) {
  session.ShowPage(0);
  session.Take("settings-1");
  session.ShowPage(1);
  session.Take("settings-2");
  session.ShowPage(2);
  session.SelectRow("MSFlexGrid1", 1);
  session.Take("memory");
}

// With an edit that the radio would not keep, and the cell in which it stands.
void TakeChannelList(PhotoSession& session) {
  session.Trigger("mnuChannelList");
  auto& table = session.Find<QTableView>("tblChannels");
  QAbstractItemModel& cells = *table.model();
  const QModelIndex step = cells.index(2, 2);
  const QVariant kept = step.data(Qt::EditRole);
  cells.setData(step, QStringLiteral("25"), Qt::EditRole);
  table.setCurrentIndex(step);
  session.Take("channel-list", &session.Find<QWidget>("ChannelListWindow"));
  cells.setData(step, kept, Qt::EditRole);
  session.Find<QWidget>("ChannelListWindow").close();
}

// Of a list as web pages offer them: the file dialog first, and then the window.
void TakeImportOther(PhotoSession& session) {
  const std::string path = session.settings_folder() + "/repeaters.csv";
  const auto problem =
      WriteFile(path,
                "Repeaters of the region;;;;;;\nCall;Place;Output;Input;CTCSS;Mode;Width\n"
                "DB0XAA-L;Hochberg;438,7250;431,1250;67,0;FM;25\n"
                "DB0XBB;Niederau;145,6000;145,0000;100,1;FM;12,5\n"
                "DB0XCC;Waldeck;439,4000;430,0000;;DMR;12,5\n"
                "DB0XDD;Westerau;1298,2000;1270,2000;;FM;25\n"
                ";Summit calling;145,5500;;;FM;25\n");
  if (problem) return Complain(QString::fromStdString(problem->Message()));
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || !dialog->isVisible()) return;
    if (auto* file = dialog->findChild<QLineEdit*>("fileNameEdit")) {
      file->setText(QString::fromStdString(path));
      return QTest::keyClick(file, Qt::Key_Return);
    }
    watch.stop();
    dialog->findChild<QTableView*>("tblPreview")->selectRow(1);
    session.Take("import-other", dialog);
    dialog->close();
  });
  watch.start(kSettleMs);
  session.Trigger("mnuImportOther");
  if (watch.isActive()) Complain("Import Other List did not come");
}

void TakeChannelDialogs(PhotoSession& session) {
  session.ShowPage(2);
  session.SelectRow("MSFlexGrid1", 3);
  session.TakeDialog("modify-memory", [&] { session.Trigger("mnuEditUndo"); });
  session.SelectRow("MSFlexGrid1", 4);
  session.TakeDialog("modify-empty", [&] { session.Trigger("mnuEditUndo"); });
  session.ShowPage(0);
  const char* const names[] = {"modify-vfo", "modify-call", "modify-rpt", "modify-ph", "modify-pl"};
  for (int row = 0; row < 5; ++row) {
    session.SelectRow("MSFlexGrid2", row);
    session.TakeDialog(names[row], [&] { session.Trigger("mnuEditUndo"); });
  }
  session.SelectRow("MSFlexGrid2", 0);
}

void TakeOtherWindows(PhotoSession& session) {
  session.TakeMenu("menu-file", "File");
  session.TakeMenu("menu-radio", "Radio");
  session.TakeMenu("menu-tools", "Tools");
  session.TakeDialog("com-port", [&] { session.Trigger("mnuToolsOptions"); });
  InDialog([&] { session.Trigger("mnuCard"); },
           [&](QWidget& dialog) {
             dialog.findChild<QAbstractButton*>("chkSpecial")->click();
             session.Take("card", &dialog);
           });
  session.TakeDialog("about", [&] { session.Trigger("mnuHelpAbout"); });
  session.Trigger("mnuToolsService");
  session.Find<QLineEdit>("Text1").setText("0200");
  session.Click("Command1");
  session.Take("service");
}

void TakeQuestions(PhotoSession& session) {
  session.ShowPage(2);
  session.SelectRow("MSFlexGrid1", 1);
  session.TakeDialog("delete", [&] { session.Click("cmbDelete"); });
  session.TakeDialog("save-changes", [&] {
    session.Find<QAbstractButton>("chkBeep").click();
    session.Trigger("mnuFileNew");
  });
}

// After a change the cells of a row stand in the order in which they are stored.
void TakeRedrawnRow(PhotoSession& session) {
  session.ShowPage(2);
  session.SelectRow("MSFlexGrid1", 1);
  InDialog([&] { session.Trigger("mnuEditUndo"); },
           [](QWidget& dialog) { dialog.findChild<QPushButton*>("OKButton")->click(); });
  // The tool tip of the cell under "RxDCS", as the resting mouse brings it up.
  auto& grid = session.Find<QTableView>("MSFlexGrid1");
  const QPoint place = grid.visualRect(grid.model()->index(1, 6)).center();
  QHelpEvent rest(QEvent::ToolTip, place, grid.viewport()->mapToGlobal(place));
  QApplication::sendEvent(grid.viewport(), &rest);
  session.Take("memory-redrawn");
  QToolTip::hideText();
}

void EditRow(PhotoSession& session, int row, const std::function<void(QWidget&)>& use) {
  session.ShowPage(2);
  session.SelectRow("MSFlexGrid1", row);
  InDialog([&] { session.Trigger("mnuEditUndo"); },
           [&](QWidget& dialog) {
             use(dialog);
             dialog.findChild<QPushButton*>("OKButton")->click();
           });
}

// What the radio would not keep of two edited channels.
void TakeCheckUp(PhotoSession& session) {
  EditRow(session, 2, [](QWidget& dialog) {
    dialog.findChild<QAbstractButton*>("optStep_5")->click();
    dialog.findChild<QAbstractButton*>("optSift_3")->click();
  });
  EditRow(session, 12,
          [](QWidget& dialog) { dialog.findChild<QLineEdit*>("txtName")->setText("A)"); });
  session.Trigger("mnuCheckUp");
  session.Take("check-up", &session.Find<QWidget>("frmCheckUp"));
}

// Changes of each kind: marked where they stand, and listed.
void TakeChanges(PhotoSession& session) {
  session.Find<QAction>("mnuMarkChanges").setChecked(true);
  session.ShowPage(0);
  session.Find<QAbstractButton>("chkBeep").click();
  session.Find<QSlider>("Slider1").setValue(12);
  InDialog([&] { session.SelectRow("MSFlexGrid2", 1), session.Trigger("mnuEditUndo"); },
           [](QWidget& dialog) {
             dialog.findChild<QAbstractButton*>("optPw_2")->click();
             dialog.findChild<QPushButton*>("OKButton")->click();
           });
  EditRow(session, 1,
          [](QWidget& dialog) { dialog.findChild<QLineEdit*>("txtName")->setText("VALLEY"); });
  session.ShowPage(1);
  session.Find<QLineEdit>("txtDial_2").setText("4711");
  session.ShowPage(0);
  session.Take("marks");
  session.Find<QAction>("mnuMarkChanges").setChecked(false);
  session.Trigger("mnuChanges");
  session.Find<QTableView>("tblChanges").selectRow(1);
  session.Take("changes", &session.Find<QWidget>("ChangesWindow"));
  session.Find<QWidget>("ChangesWindow").close();
}

// What the same changes would do to the radio, which was read.
void TakeWriteQuestion(PhotoSession& session) {
  session.Find<QAction>("mnuShowChanges").setChecked(true);
  session.TakeDialog("write-question", [&] { session.Trigger("mnuWrAll"); });
  session.Find<QAction>("mnuShowChanges").setChecked(false);
}

// A step to take back, and one to do again.
void TakeSteps(PhotoSession& session) {
  EditRow(session, 5,
          [](QWidget& dialog) { dialog.findChild<QAbstractButton*>("optPw_0")->click(); });
  session.Trigger("mnuUndo");
  session.TakeMenu("menu-edit", "Edit");
}

// What a window has left that was interrupted.
void LeaveUnsaved(PhotoSession& session, const CloneData& data) {
  std::optional<FileProblem> problem;
  const auto file = NewJournalFile(session.state_folder(), problem);
  if (file == nullptr) return Complain(QString::fromStdString(problem->Message()));
  const std::int64_t time = QDateTime({2026, 11, 22}, {14, 3}).toSecsSinceEpoch();
  problem = file->Write(JournalText({time, {}, {data, "radio.Q40"}}));
  if (problem) Complain(QString::fromStdString(problem->Message()));
}

void TakeUnsaved(PhotoSession& session) {
  InDialog([&] { session.Start(kFastRadio, {}); },
           [&](QWidget& dialog) {
             session.Take("unsaved-changes", &dialog);
             for (QAbstractButton* button : dialog.findChildren<QAbstractButton*>()) {
               if (button->text() == "&Discard") button->click();
             }
           });
  session.Stop();
}

// A radio that does not keep memory channel 0, the 23rd exchange of a Write All.
void TakeWriteReport(PhotoSession& session, const std::string& file) {
  session.Start({true, 0, {"not-stored@#23"}}, file);
  EditRow(session, 0, [](QWidget& dialog) {
    dialog.findChild<QLineEdit*>("txtName")->setText("NEW");
    dialog.findChild<QAbstractButton*>("optPw_0")->click();
  });
  session.Find<QAction>("mnuVerify").setChecked(true);
  session.Trigger("mnuWrAll");
  session.Take("write-report", &session.Find<QWidget>("frmReport"));
  session.Find<QAction>("mnuVerify").setChecked(false);
  session.Stop();
}

// A Write Memory that breaks off at channel 57, the 60th exchange, and the rest of it.
void TakeRest(PhotoSession& session, const std::string& file) {
  session.Start({true, 0, {"silence@#60"}}, file);
  EditRow(session, 0,
          [](QWidget& dialog) { dialog.findChild<QLineEdit*>("txtName")->setText("NEW"); });
  InDialog([&] { session.Trigger("mnuWrMem"); }, [](QWidget&) {});
  session.Take("write-rest", &session.Find<QWidget>("frmReport"));
  session.Click("cmdWriteRest");
  session.Stop();
}

// The same after two backups, of 229 exchanges each, and with one afterwards.
void TakeBackups(PhotoSession& session, const std::string& file) {
  session.Start({true, 0, {"silence@#520"}}, file);
  session.Trigger("mnuBackups");
  session.Click("cmdBackUpNow");
  session.Find<QAction>("mnuBackUp").setChecked(true);
  InDialog([&] { session.Trigger("mnuWrMem"); }, [](QWidget&) {});
  session.Find<QAction>("mnuBackUp").setChecked(false);
  session.Click("cmdBackUpNow");
  session.Take("backups", &session.Find<QWidget>("BackupsWindow"));
  session.Click("cmdWriteRest");
  session.Stop();
}

// A read at the speed of a real radio, caught in the middle.
void TakeReading(PhotoSession& session) {
  session.Start({true, 9600, {}}, {});
  bool taken = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    if (taken || session.window().document().image().MemoryTable[12].cellText[0].empty()) return;
    taken = true;
    session.Take("reading");
  });
  watch.start(20);
  session.Trigger("mnuReMem");
  if (!taken) Complain("the read was over too soon");
  session.Stop();
}

void TakeErrors(PhotoSession& session) {
  session.Start({true, 0, {"silence+"}}, {});
  session.TakeDialog("communication-error", [&] { session.Trigger("mnuReSet"); });
  session.Stop();
  session.Start(kFastRadio, {});
  session.TakeDialog("wrong-model", [&] { session.Trigger("mnuWrSet"); });
  session.Stop();
}

bool WriteExamples(const std::string& folder, const CloneData& read) {
  CloneData document = read;
  const auto problem = SaveCloneFile(folder + "/radio.Q40", document, document.model);
  if (problem) Complain(QString::fromStdString(problem->Message()));
  const auto csv_problem = WriteFile(folder + "/channels.csv", ExportChannels(document.image));
  if (csv_problem) Complain(QString::fromStdString(csv_problem->Message()));
  return !problem && !csv_problem;
}

void TakeAll(const QString& docs, const QString& look) {
  const std::string examples = (docs + "/examples").toStdString();
  const QString suffix = look == "light" ? QString() : "-" + look;
  PhotoSession session(docs + "/pictures", suffix);
  if (look == "light") {
    session.Start(kFastRadio, {});
    session.Trigger("mnuReAll");
    if (!WriteExamples(examples, session.window().document().data())) return;
    session.Stop();
  }
  session.Start(kFastRadio, examples + "/radio.Q40");
  session.Trigger("mnuReAll");
  session.Find<QAction>("mnuFileSave").trigger();  // so that nothing counts as changed
  TakePages(session);
  TakeChannelList(session);
  TakeImportOther(session);
  if (look == "light") {
    TakeChannelDialogs(session);
    TakeOtherWindows(session);
    TakeRedrawnRow(session);
    TakeQuestions(session);
    TakeCheckUp(session);
    TakeSteps(session);
    LeaveUnsaved(session, session.window().document().data());
  }
  session.Stop();
  session.Start(kFastRadio, examples + "/radio.Q40");
  session.Trigger("mnuReAll");
  TakeChanges(session);
  if (look == "light") TakeWriteQuestion(session);
  session.Stop();
  if (look == "light") {
    TakeUnsaved(session);
    TakeReading(session);
    TakeWriteReport(session, examples + "/radio.Q40");
    TakeRest(session, examples + "/radio.Q40");
    TakeBackups(session, examples + "/radio.Q40");
    TakeErrors(session);
  }
}

}  // namespace
}  // namespace q40

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: screenshots DOCS LOOK\n");
    return 2;
  }
  QApplication application(argc, argv);
  QApplication::setStyle(new q40::ReadableStyle);
  QApplication::setFont(QFont("DejaVu Sans", 9));
  QApplication::setCursorFlashTime(0);
  const QString look = QString::fromLocal8Bit(argv[2]);
  if (look == "dark") QApplication::setPalette(q40::DarkPalette());
  if (look == "contrast") QApplication::setPalette(q40::ContrastPalette());
  q40::TakeAll(QString::fromLocal8Bit(argv[1]), look);
  return q40::Failures() == 0 ? 0 : 1;
}
