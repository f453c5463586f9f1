// The real window, offscreen, with real events: what every GUI test stands on.
#pragma once

#include <deque>
#include <functional>
#include <memory>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
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

// Answers modal dialogs as they come up, one prepared answer each. A dialog without an answer fails the
// test and is closed.
class Answers : public QObject {
 public:
  using Answer = std::function<void(QWidget& dialog)>;
  Answers() { Watch(); }
  ~Answers() override;

  void Add(Answer answer) { answers_.push_back(std::move(answer)); }
  // A message box: expects title and text and presses a button.
  void Box(const QString& title, const QString& text, QMessageBox::StandardButton press);
  // A file dialog: types a path, or cancels when it is empty.
  void File(const QString& path);
  // The edit dialog: `use` works in it, then a button named OKButton or CancelButton is pressed.
  void Edit(std::function<void(QWidget& dialog)> use, const char* button = "OKButton");

  [[nodiscard]] bool AllGiven() const { return answers_.empty(); }
  int seen = 0;

 private:
  void Watch();
  void Look();
  void Forget();
  std::deque<Answer> answers_;
  std::vector<QPointer<QWidget>> met_;  // dialogs that have had their answer and may still be open
};

class Window : public testing::Test {
 protected:
  // Starts the window on an unpaced simulated radio and waits until it is ready.
  void Start(const std::vector<std::string>& faults = {}, const std::string& file = {});
  void StartWith(MainOptions options);
  ~Window() override;

  template <class Widget = QWidget>
  Widget& Find(const QString& name) {
    auto* found = window_->findChild<Widget*>(name);
    if (found == nullptr) ADD_FAILURE() << "no " << name.toStdString();
    return *found;
  }
  void Click(const QString& name) { QTest::mouseClick(&Find(name), Qt::LeftButton); }
  void Trigger(const QString& action) { Find<QAction>(action).trigger(); }
  void ShowTab(int tab);
  QString Cell(const QString& grid, int row, int column);  // from 1, as the grids count
  QString RowTitle(const QString& grid, int row);
  void SelectRow(const QString& grid, int row);
  // "SM", "S-", "-M" or "--".
  [[nodiscard]] std::string Flags() const;
  // Sets flags as if something had been edited.
  void SetFlags(bool settings, bool memory);
  [[nodiscard]] const CloneDocument& document() const { return window_->document(); }

  // A clone file with a few channels, saved in the folder.
  std::string SavedDemo(const std::string& name = "demo.Q40");

  TempFolder folder_;
  std::unique_ptr<frmMain> window_;
  Answers answers_;
};

inline constexpr const char* kSaveTitle = "Save Changes";
inline constexpr const char* kSaveText = "Save changes to settings?";

}  // namespace q40::test
