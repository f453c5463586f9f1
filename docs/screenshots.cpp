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
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include "app/frm_main.h"
#include "files/channel_csv.h"
#include "files/clone_file.h"
#include "files/journal.h"
#include "files/journal_folder.h"
#include "files/whole_file.h"
#include "widgets/readable_style.h"

namespace q40 {
namespace {

constexpr int kTitleHeight = 24;
constexpr int kLongestWaitMs = 20'000;
constexpr int kSettleMs = 150;  // for repaints and for what a click sets off

int failures = 0;

void Complain(const QString& what) {
  std::fprintf(stderr, "screenshots: %s\n", qPrintable(what));
  ++failures;
}

// ---- looks

QPalette DarkPalette() {
  QPalette palette(QColor(53, 53, 53));
  palette.setColor(QPalette::Base, QColor(35, 35, 35));
  palette.setColor(QPalette::AlternateBase, QColor(45, 45, 45));
  palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, QColor(35, 35, 35));
  palette.setColor(QPalette::ToolTipText, Qt::white);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, Qt::white);
    palette.setColor(QPalette::Disabled, role, QColor(127, 127, 127));
  }
  return palette;
}

QPalette ContrastPalette() {
  QPalette palette(Qt::black);
  palette.setColor(QPalette::Base, Qt::black);
  palette.setColor(QPalette::Light, Qt::white);
  palette.setColor(QPalette::Dark, Qt::white);
  palette.setColor(QPalette::Mid, Qt::white);
  palette.setColor(QPalette::Highlight, Qt::yellow);
  palette.setColor(QPalette::HighlightedText, Qt::black);
  palette.setColor(QPalette::ToolTipBase, Qt::black);
  palette.setColor(QPalette::ToolTipText, Qt::yellow);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, Qt::white);
    palette.setColor(QPalette::Disabled, role, QColor(0, 255, 0));
  }
  return palette;
}

// ---- the camera

// The window as a desktop shows it: with its title, and with the menus and tool tips that are open.
QImage Portrait(QWidget& window) {
  const double scale = window.devicePixelRatioF();
  QRect area = window.geometry();
  std::vector<QWidget*> shown = {&window};
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    const bool floats = widget->windowType() == Qt::Popup || widget->windowType() == Qt::ToolTip;
    if (!floats || !widget->isVisible()) continue;
    shown.push_back(widget);
    area |= widget->geometry();
  }
  area.adjust(-1, -kTitleHeight, 1, 1);
  QImage image((QSizeF(area.size()) * scale).toSize(), QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.translate(-area.topLeft());
  const QRect title(window.x(), window.y() - kTitleHeight, window.width(), kTitleHeight);
  painter.fillRect(title.adjusted(-1, 0, 1, window.height() + 1), QColor(72, 82, 94));
  painter.setPen(Qt::white);
  painter.drawText(title, Qt::AlignCenter, window.windowTitle());
  for (QWidget* widget : shown) painter.drawPixmap(widget->pos(), widget->grab());
  return image;
}

// Runs a command that shows a dialog; `use` works in the dialog, which is closed afterwards.
void InDialog(const std::function<void()>& command, const std::function<void(QWidget&)>& use) {
  bool seen = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || !dialog->isVisible()) return;
    watch.stop();
    seen = true;
    dialog->activateWindow();
    QTest::qWait(kSettleMs);
    use(*dialog);
    dialog->close();
  });
  watch.start(kSettleMs);
  command();
  // A command that was started by a timer or a key may still be on its way.
  if (!QTest::qWaitFor([&] { return seen; }, kLongestWaitMs)) Complain("a dialog did not come");
}

class Session {
 public:
  Session(QString folder, QString suffix)
      : folder_(std::move(folder)), suffix_(std::move(suffix)) {}

  void Start(ComPort::Simulation simulation, const std::string& file) {
    MainOptions options;
    options.simulation = std::move(simulation);
    options.startup_path = file;
    options.start_pause = std::chrono::milliseconds(0);
    options.program_folder = settings_.path().toStdString();
    options.user_folder = options.program_folder;
    options.backup_folder = options.program_folder + "/backups";
    options.state_folder = state_folder();
    window_ = std::make_unique<frmMain>(options);
    window_->StartUp();
    window_->activateWindow();
    QTest::qWait(kSettleMs);
  }

  [[nodiscard]] std::string settings_folder() const { return settings_.path().toStdString(); }
  [[nodiscard]] std::string state_folder() const {
    return settings_.filePath("state").toStdString();
  }
  [[nodiscard]] frmMain& window() { return *window_; }
  template <class Widget>
  Widget& Find(const char* name) {
    auto* found = window_->findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) qFatal("no %s", name);
    return *found;
  }
  void Trigger(const char* action) { Find<QAction>(action).trigger(); }
  void Click(const char* button) { Find<QAbstractButton>(button).click(); }
  void ShowPage(int page) {
    Find<QTabWidget>("TabStrip1").setCurrentIndex(page);
    QTest::qWait(kSettleMs);
  }
  void SelectRow(const char* grid, int row) {
    auto& view = Find<QTableView>(grid);
    view.setFocus();
    view.setCurrentIndex(view.model()->index(row, 0));
    view.selectRow(row);
  }

  void Take(const char* name, QWidget* widget = nullptr) {
    if (widget == nullptr) widget = window_.get();
    QTest::qWait(kSettleMs);
    Store(name, Portrait(*widget));
  }
  // As much of the window as a menu needs.
  void TakeTopLeft(const char* name, QSize size) {
    QTest::qWait(kSettleMs);
    const QImage image = Portrait(*window_);
    Store(name, image.copy(QRect(QPoint(0, 0), size * image.devicePixelRatio())));
  }
  void Store(const char* name, const QImage& image) {
    const QString path = folder_ + QLatin1Char('/') + QLatin1String(name) + suffix_ + ".png";
    if (!image.save(path)) Complain("cannot write " + path);
  }

  void TakeDialog(const char* name, const std::function<void()>& command) {
    InDialog(command, [&](QWidget& dialog) { Take(name, &dialog); });
  }

  void TakeMenu(const char* name, const QString& title) {
    for (QAction* entry : window_->menuBar()->actions()) {
      if (entry->text().remove(QLatin1Char('&')) != title) continue;
      QMenu* menu = entry->menu();
      const QPoint place = window_->menuBar()->actionGeometry(entry).bottomLeft();
      window_->menuBar()->setActiveAction(entry);
      menu->popup(window_->menuBar()->mapToGlobal(place));
      TakeTopLeft(name, QSize(menu->geometry().right() - window_->x() + kTitleHeight,
                              menu->geometry().bottom() - window_->y() + 2 * kTitleHeight));
      menu->close();
      return;
    }
    Complain("no menu " + title);
  }

  // Forgets the changes, so that closing asks nothing.
  void Stop() {
    const_cast<CloneDocument&>(window_->document()).ForgetChanges();
    window_->close();
    window_.reset();
  }

 private:
  QString folder_;
  QString suffix_;
  QTemporaryDir settings_;
  std::unique_ptr<frmMain> window_;
};

const ComPort::Simulation kFastRadio{true, 0, {}};

// ---- what to take

void TakePages(Session& session) {
  session.ShowPage(0);
  session.Take("settings-1");
  session.ShowPage(1);
  session.Take("settings-2");
  session.ShowPage(2);
  session.SelectRow("MSFlexGrid1", 1);
  session.Take("memory");
}

// With an edit that the radio would not keep, and the cell in which it stands.
void TakeChannelList(Session& session) {
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
void TakeImportOther(Session& session) {
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

void TakeChannelDialogs(Session& session) {
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

void TakeOtherWindows(Session& session) {
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

void TakeQuestions(Session& session) {
  session.ShowPage(2);
  session.SelectRow("MSFlexGrid1", 1);
  session.TakeDialog("delete", [&] { session.Click("cmbDelete"); });
  session.TakeDialog("save-changes", [&] {
    session.Find<QAbstractButton>("chkBeep").click();
    session.Trigger("mnuFileNew");
  });
}

// After a change the cells of a row stand in the order in which they are stored.
void TakeRedrawnRow(Session& session) {
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

void EditRow(Session& session, int row, const std::function<void(QWidget&)>& use) {
  session.ShowPage(2);
  session.SelectRow("MSFlexGrid1", row);
  InDialog([&] { session.Trigger("mnuEditUndo"); },
           [&](QWidget& dialog) {
             use(dialog);
             dialog.findChild<QPushButton*>("OKButton")->click();
           });
}

// What the radio would not keep of two edited channels.
void TakeCheckUp(Session& session) {
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
void TakeChanges(Session& session) {
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
void TakeWriteQuestion(Session& session) {
  session.Find<QAction>("mnuShowChanges").setChecked(true);
  session.TakeDialog("write-question", [&] { session.Trigger("mnuWrAll"); });
  session.Find<QAction>("mnuShowChanges").setChecked(false);
}

// A step to take back, and one to do again.
void TakeSteps(Session& session) {
  EditRow(session, 5,
          [](QWidget& dialog) { dialog.findChild<QAbstractButton*>("optPw_0")->click(); });
  session.Trigger("mnuUndo");
  session.TakeMenu("menu-edit", "Edit");
}

// What a window has left that was interrupted.
void LeaveUnsaved(Session& session, const CloneData& data) {
  std::optional<FileProblem> problem;
  const auto file = NewJournalFile(session.state_folder(), problem);
  if (file == nullptr) return Complain(QString::fromStdString(problem->Message()));
  const std::int64_t time = QDateTime({2026, 11, 22}, {14, 3}).toSecsSinceEpoch();
  problem = file->Write(JournalText({time, {}, {data, "radio.Q40"}}));
  if (problem) Complain(QString::fromStdString(problem->Message()));
}

void TakeUnsaved(Session& session) {
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
void TakeWriteReport(Session& session, const std::string& file) {
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
void TakeRest(Session& session, const std::string& file) {
  session.Start({true, 0, {"silence@#60"}}, file);
  EditRow(session, 0,
          [](QWidget& dialog) { dialog.findChild<QLineEdit*>("txtName")->setText("NEW"); });
  InDialog([&] { session.Trigger("mnuWrMem"); }, [](QWidget&) {});
  session.Take("write-rest", &session.Find<QWidget>("frmReport"));
  session.Click("cmdWriteRest");
  session.Stop();
}

// The same after two backups, of 229 exchanges each, and with one afterwards.
void TakeBackups(Session& session, const std::string& file) {
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
void TakeReading(Session& session) {
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

void TakeErrors(Session& session) {
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
  Session session(docs + "/pictures", suffix);
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
  return q40::failures == 0 ? 0 : 1;
}
