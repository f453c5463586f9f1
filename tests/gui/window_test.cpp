#include "gui/window_test.h"

#include <QFileDialog>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>

#include "files/clone_file.h"
#include "sim/demo_radio.h"

namespace q40::test {

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
  if (window_) SetFlags(false, false);
  unsetenv("RXQ40_COM1");
}

void Window::Start(const std::vector<std::string>& faults, const std::string& file) {
  options_.simulation = {true, 0, faults};
  options_.startup_path = file;
  Open();
}

void Window::StartOnPort(const std::string& path) {
  setenv("RXQ40_COM1", path.c_str(), 1);
  Open();
}

void Window::Open() {
  window_ = std::make_unique<frmMain>(options_);
  QSignalSpy ready(window_.get(), &frmMain::ready);
  window_->StartUp();
  ASSERT_TRUE(!ready.isEmpty() || ready.wait());
  Activate(*window_);
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

QString Window::Status() {
  return Find<QStatusBar>(QStringLiteral("sbStatusBar")).currentMessage();
}

std::string Window::Flags() {
  return std::string(document().SettingsChanged ? "S" : "-") +
         (document().MemoryChanged ? "M" : "-");
}

void Window::SetFlags(bool settings, bool memory) {
  document().SettingsChanged = settings;
  document().MemoryChanged = memory;
}

std::string Window::SavedDemo(const std::string& name) {
  CloneDocument document = DemoDocument();
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
