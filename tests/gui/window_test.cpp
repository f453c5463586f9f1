#include "gui/window_test.h"

#include <QFileDialog>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>

#include "files/clone_file.h"
#include "sim/demo_radio.h"

namespace q40::test {
namespace {

constexpr int kLookMs = 2;

}  // namespace

// A new timer each time: one that is being served does not fire again in the loop of a nested dialog.
void Answers::Watch() {
  QTimer::singleShot(kLookMs, this, [this] {
    Watch();
    Look();
  });
}

Answers::~Answers() { EXPECT_TRUE(answers_.empty()) << answers_.size() << " dialogs did not come"; }

void Answers::Look() {
  Forget();
  QWidget* dialog = QApplication::activeModalWidget();
  if (dialog == nullptr || !dialog->isVisible()) return;
  if (std::find(met_.begin(), met_.end(), dialog) != met_.end()) return;
  met_.emplace_back(dialog);
  ++seen;
  QApplication::setActiveWindow(dialog);  // offscreen, nobody else gives it the focus
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
    QAbstractButton* button = box->button(press);
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
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

void Answers::Edit(std::function<void(QWidget&)> use, const char* button) {
  Add([use = std::move(use), button](QWidget& dialog) {
    ASSERT_EQ(dialog.objectName(), QStringLiteral("dlgModify"));
    use(dialog);
    QTest::mouseClick(dialog.findChild<QAbstractButton*>(QLatin1String(button)), Qt::LeftButton);
  });
}

Window::~Window() {
  if (window_) SetFlags(false, false);
}

void Window::Start(const std::vector<std::string>& faults, const std::string& file) {
  MainOptions options;
  options.simulation = {true, 0, faults};
  options.startup_path = file;
  options.start_pause = std::chrono::milliseconds(0);
  StartWith(options);
}

void Window::StartWith(MainOptions options) {
  if (options.program_folder.empty()) options.program_folder = folder_.path();
  if (options.user_folder.empty()) options.user_folder = folder_ / "user";
  window_ = std::make_unique<frmMain>(options);
  QSignalSpy ready(window_.get(), &frmMain::ready);
  window_->StartUp();
  QApplication::setActiveWindow(window_.get());
  ASSERT_TRUE(!ready.isEmpty() || ready.wait());
}

void Window::ShowTab(int tab) {
  QTabBar* bar = Find<QTabWidget>(QStringLiteral("TabStrip1")).tabBar();
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab - 1).center());
}

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

std::string Window::Flags() const {
  return std::string(document().SettingsChanged ? "S" : "-") +
         (document().MemoryChanged ? "M" : "-");
}

// The document is the window's own; a test may nudge it into a state that is tedious to reach.
void Window::SetFlags(bool settings, bool memory) {
  auto& document = const_cast<CloneDocument&>(window_->document());
  document.SettingsChanged = settings;
  document.MemoryChanged = memory;
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
