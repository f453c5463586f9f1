// The real window, offscreen, with real events: what every GUI test stands on.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>

#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include "app/frm_main.h"
#include "support/temp_folder.h"

// Failures show texts, not bytes.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

namespace q40::test {

inline constexpr auto kYes = QMessageBox::Yes;
inline constexpr auto kNo = QMessageBox::No;
inline constexpr auto kCancel = QMessageBox::Cancel;
inline constexpr auto kOk = QMessageBox::Ok;
inline const QString kPlainTitle = QStringLiteral("Korvex RX-Q40 Clone Utility");
inline const QString kMemoryGrid = QStringLiteral("MSFlexGrid1");
inline const QString kSpecialGrid = QStringLiteral("MSFlexGrid2");

// Offscreen, nobody else gives a window the focus. A dialog counts as active to QTest while the window
// behind it is, and a window that has just closed may still hand the focus to another one.
inline void Activate(QWidget& window) {
  EXPECT_TRUE(QTest::qWaitFor([&] {
    window.activateWindow();
    return QApplication::activeWindow() == &window;
  }));
}

// Answers modal dialogs as they come up, one prepared answer each. A dialog without an answer fails the
// test and is closed.
class Answers : public QObject {
 public:
  using Answer = std::function<void(QWidget& dialog)>;
  Answers() { Look(); }
  ~Answers() override;

  void Add(Answer answer) { answers_.push_back(std::move(answer)); }
  // A message box: expects title and text and presses a button.
  void Box(const QString& title, const QString& text, QMessageBox::StandardButton press);
  // A file dialog: types a path, or cancels when it is empty.
  void File(const QString& path);

 private:
  void Look();
  void Forget();
  std::deque<Answer> answers_;
  std::vector<QPointer<QWidget>> met_;  // dialogs that have had their answer and may still be open
};

// What a view that follows a model shows: a cell is looked at again only when the model says that it
// has changed. At the end of every test, what was shown must be what is there.
class GridMirror : public QObject {
 public:
  explicit GridMirror(QAbstractItemModel& model);
  [[nodiscard]] QStringList Stale() const;

 private:
  [[nodiscard]] QString Shown(int row, int column) const;
  void Take(int row, int column);

  QAbstractItemModel& model_;
  QAbstractItemModelTester tester_;
  std::map<std::pair<int, int>, QString> seen_;  // row and column from 0; column -1: the title
};

class Window : public testing::Test {
 protected:
  Window();
  ~Window() override;
  // Starts the window on an unpaced simulated radio and waits until it is ready.
  void Start(const std::vector<std::string>& faults = {}, const std::string& file = {});
  // Starts it on a real port, COM 1, that leads to the path.
  void StartOnPort(const std::string& path);

  template <class Widget = QWidget>
  Widget& Find(const QString& name) {
    auto* found = window_->findChild<Widget*>(name);
    if (found == nullptr) ADD_FAILURE() << "no " << name.toStdString();
    return *found;
  }
  void Click(const QString& name) { QTest::mouseClick(&Find(name), Qt::LeftButton); }
  // Triggers a menu entry, or clicks a button.
  void Trigger(const QString& command);
  void Press(const QString& name, Qt::Key key) { QTest::keyClick(&Find(name), key); }
  void ShowTab(int tab);
  int Tab();                                               // from 1
  QString Cell(const QString& grid, int row, int column);  // from 1, as the grids count
  int CurrentRow(const QString& grid) { return Find<QTableView>(grid).currentIndex().row() + 1; }
  QString RowTitle(const QString& grid, int row);
  void SelectRow(const QString& grid, int row);
  // Opens the edit dialog on a row, works in it, presses OK.
  void Edit(const QString& grid, int row, std::function<void()> use,
            const char* button = "OKButton");
  // The same, but presses Cancel.
  void Look(const QString& grid, int row, std::function<void()> use) {
    Edit(grid, row, std::move(use), "CancelButton");
  }
  bool Checked(const QString& name) { return Find<QAbstractButton>(name).isChecked(); }
  int Level(const char* slider) { return Find<QSlider>(slider).value(); }
  QString Title() { return window_->windowTitle(); }
  QString Status();
  // "SM", "S-", "-M" or "--".
  std::string Flags();
  // Sets flags as if something had been edited.
  void SetFlags(bool settings, bool memory);
  // The window's own; a test may nudge it into a state that is tedious to reach.
  CloneData& document() { return const_cast<CloneData&>(window_->document().data()); }

  // Answers to the question of unsaved changes, and to an error.
  void Save(QMessageBox::StandardButton press) {
    answers_.Box("Save Changes", "Save changes to settings?", press);
  }
  void Error(const char* text) { answers_.Box("ERROR", text, kOk); }

  // What the simulated radio was told since the last call.
  std::string TakeHeard();

  QString File(const char* name) { return QString::fromStdString(folder_ / name); }
  // A clone file with a few channels, saved in the folder.
  std::string SavedDemo(const std::string& name = "demo.Q40");

  TempFolder folder_;
  MainOptions options_;
  std::unique_ptr<frmMain> window_;
  Answers answers_;
  std::vector<std::unique_ptr<GridMirror>> mirrors_;  // of the memory and the special grid

 private:
  void Open();
  void CloseGridMirrors();

  std::vector<std::string> heard_;
};

}  // namespace q40::test
