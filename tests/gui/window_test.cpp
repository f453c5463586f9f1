#include "gui/window_test.h"

#include <QFileDialog>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>

#include "files/clone_file.h"
#include "sim/demo_radio.h"

namespace q40::test {

// ---- what a view paints

GridMirror::GridMirror(QAbstractItemModel& model)
    : model_(model), tester_(&model, QAbstractItemModelTester::FailureReportingMode::Fatal) {
  connect(&model, &QAbstractItemModel::dataChanged, this,
          [this](const QModelIndex& from, const QModelIndex& to) {
            for (int row = from.row(); row <= to.row(); ++row) {
              for (int column = from.column(); column <= to.column(); ++column) {
                Take(row, column);
              }
            }
          });
  connect(&model, &QAbstractItemModel::headerDataChanged, this,
          [this](Qt::Orientation, int from, int to) {
            for (int row = from; row <= to; ++row) Take(row, -1);
          });
  for (int row = 0; row < model.rowCount(); ++row) {
    for (int column = -1; column < model.columnCount(); ++column) Take(row, column);
  }
}

QString GridMirror::Shown(int row, int column) const {
  return column < 0 ? model_.headerData(row, Qt::Vertical).toString()
                    : model_.index(row, column).data().toString();
}

void GridMirror::Take(int row, int column) { seen_[{row, column}] = Shown(row, column); }

QStringList GridMirror::Stale() const {
  QStringList stale;
  for (const auto& [cell, text] : seen_) {
    const QString now = Shown(cell.first, cell.second);
    if (now == text) continue;
    stale << QStringLiteral("row %1, column %2: shows \"%3\", is \"%4\"")
                 .arg(cell.first + 1)
                 .arg(cell.second + 1)
                 .arg(text, now);
  }
  return stale;
}

Answers::~Answers() { EXPECT_TRUE(answers_.empty()) << answers_.size() << " dialogs did not come"; }

void Answers::Look() {
  // A new timer each time: one that is being served does not fire again in the loop of a nested dialog.
  QTimer::singleShot(std::chrono::milliseconds(2), this, &Answers::Look);
  Forget();
  QWidget* dialog = QApplication::activeModalWidget();
  if (dialog == nullptr || !dialog->isVisible()) return;
  if (std::find(met_.begin(), met_.end(), dialog) != met_.end()) return;
  met_.emplace_back(dialog);
  Activate(*dialog);
  if (answers_.empty()) {
    const auto* box = qobject_cast<QMessageBox*>(dialog);
    ADD_FAILURE() << "unexpected dialog: " << dialog->windowTitle().toStdString() << ": "
                  << (box != nullptr ? box->text().toStdString() : "");
    dialog->close();
    return;
  }
  const Answer answer = std::move(answers_.front());
  answers_.pop_front();
  answer(*dialog);
  // It was not the one expected, and nobody else closes it.
  if (testing::Test::HasFatalFailure()) dialog->close();
  Forget();  // the same dialog may be shown again at once
}

void Answers::Forget() {
  std::erase_if(met_, [](const QPointer<QWidget>& met) { return !met || !met->isVisible(); });
}

void Answers::Box(const QString& title, const QString& text, QMessageBox::StandardButton press) {
  Add([=](QWidget& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    ASSERT_NE(box, nullptr) << dialog.objectName().toStdString();
    EXPECT_EQ(box->windowTitle(), title);
    EXPECT_EQ(box->text(), text);
    QTest::mouseClick(box->button(press), Qt::LeftButton);
  });
}

void Answers::File(const QString& path) {
  Add([=](QWidget& dialog) {
    auto* files = qobject_cast<QFileDialog*>(&dialog);
    ASSERT_NE(files, nullptr);
    if (path.isEmpty()) return files->reject();
    auto* name = files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
  });
}

Window::Window() {
  options_.program_folder = folder_.path();
  options_.user_folder = folder_ / "user";
  options_.backup_folder = folder_ / "data/backups";
  options_.start_pause = std::chrono::milliseconds(0);
}

Window::~Window() {
  CloseGridMirrors();
  if (window_) SetFlags(false, false);
  unsetenv("RXQ40_COM1");
}

void Window::Start(const std::vector<std::string>& faults, const std::string& file) {
  options_.simulation = {true, 0, faults,
                         [this](std::string_view command) { heard_.emplace_back(command); }};
  options_.startup_path = file;
  Open();
}

void Window::StartOnPort(const std::string& path) {
  setenv("RXQ40_COM1", path.c_str(), 1);
  Open();
}

void Window::Open() {
  CloseGridMirrors();
  window_ = std::make_unique<frmMain>(options_);
  for (const QString& grid : {kMemoryGrid, kSpecialGrid}) {
    mirrors_.push_back(std::make_unique<GridMirror>(*Find<QTableView>(grid).model()));
  }
  QSignalSpy ready(window_.get(), &frmMain::ready);
  window_->StartUp();
  ASSERT_TRUE(!ready.isEmpty() || ready.wait());
  Activate(*window_);
}

// What the user saw at the end must have been what the document holds.
void Window::CloseGridMirrors() {
  for (const auto& mirror : mirrors_) EXPECT_EQ(mirror->Stale(), QStringList());
  mirrors_.clear();
}

// "who, 17 writes 0020 to 1D80, end": runs of units with the ends of the run.
std::string Window::TakeHeard() {
  std::vector<std::string> parts;
  std::string verb;
  std::string first;
  std::string last;
  int units = 0;
  const auto finish = [&] {
    if (units > 0) parts.push_back(std::to_string(units) + verb + first + " to " + last);
    units = 0;
  };
  for (const std::string& command : heard_) {
    if (command.starts_with("KX~F")) {
      const std::string address = command.substr(4, 4);
      const std::string now = command[8] == 'R' ? " reads " : " writes ";
      if (units == 0 || now != verb) {
        finish();
        verb = now;
        first = address;
      }
      last = address;
      ++units;
      continue;
    }
    finish();
    parts.push_back(command == "KX~WHO" ? "who" : command == "KX~E" ? "end" : command);
  }
  finish();
  heard_.clear();
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
  return text;
}

void Window::Trigger(const QString& command) {
  auto* action = window_->findChild<QAction*>(command);
  if (action != nullptr) return action->trigger();
  Click(command);
}

void Window::ShowTab(int tab) {
  QTabBar* bar = Find<QTabWidget>(QStringLiteral("TabStrip1")).tabBar();
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab - 1).center());
}

int Window::Tab() { return Find<QTabWidget>(QStringLiteral("TabStrip1")).currentIndex() + 1; }

QString Window::Cell(const QString& grid, int row, int column) {
  QAbstractItemModel* cells = Find<QTableView>(grid).model();
  return cells->data(cells->index(row - 1, column - 1)).toString();
}

QString Window::RowTitle(const QString& grid, int row) {
  return Find<QTableView>(grid).model()->headerData(row - 1, Qt::Vertical).toString();
}

void Window::SelectRow(const QString& grid, int row) {
  auto& view = Find<QTableView>(grid);
  view.scrollTo(view.model()->index(row - 1, 0));
  const QRect place = view.visualRect(view.model()->index(row - 1, 0));
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place.center());
}

void Window::Edit(const QString& grid, int row, std::function<void()> use, const char* button) {
  ShowTab(grid == kMemoryGrid ? 3 : 1);
  SelectRow(grid, row);
  answers_.Add([use = std::move(use), button](QWidget& dialog) {
    ASSERT_EQ(dialog.objectName(), QStringLiteral("dlgModify"));
    use();
    QTest::mouseClick(dialog.findChild<QAbstractButton*>(QLatin1String(button)), Qt::LeftButton);
  });
  Press(grid, Qt::Key_Return);
}

QString Window::Status() { return Find<QLabel>(QStringLiteral("lblStatusText")).text(); }

std::string Window::Flags() {
  const CloneDocument& document = window_->document();
  return std::string(document.SettingsChanged() ? "S" : "-") +
         (document.MemoryChanged() ? "M" : "-");
}

void Window::SetFlags(bool settings, bool memory) {
  auto& document = const_cast<CloneDocument&>(window_->document());
  document.ForgetChanges();
  if (settings) document.ChangeLooseSetting();
  if (memory) document.KeepMemoryChanges();
}

std::string Window::SavedDemo(const std::string& name) {
  CloneData document = DemoDocument();
  EXPECT_FALSE(SaveCloneFile(folder_ / name, document, document.model));
  return folder_ / name;
}

}  // namespace q40::test

int main(int argc, char** argv) {
  // Nothing of the person who runs the tests is read or written.
  const q40::test::TempFolder home;
  setenv("HOME", home.path().c_str(), 1);
  setenv("XDG_CONFIG_HOME", home.path().c_str(), 1);
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  testing::InitGoogleTest(&argc, argv);
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
