// Writing with a net, and what the window says when a port or a radio fails it.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QToolTip>

#include "app/user_options.h"
#include "files/clone_file.h"
#include "gui/commands_test.h"
#include "support/process.h"

namespace q40 {
namespace {

class Net : public test::Commands {
 protected:
  // The window with a radio that has the faults, and the demo file changed in one channel.
  void StartNet(const std::vector<std::string>& faults, bool back_up, bool verify) {
    MainOptions options;
    options.simulation = {true, 0, faults};
    options.startup_path = SavedDemo();
    options.backup_folder = Folder();
    options.start_pause = std::chrono::milliseconds(0);
    StartWith(options);
    Find<QAction>("mnuBackUp").setChecked(back_up);
    Find<QAction>("mnuVerify").setChecked(verify);
    std::filesystem::remove_all(Folder());
  }
  [[nodiscard]] std::string Folder() const { return folder_ / "data/backups"; }
  [[nodiscard]] std::vector<std::string> Backups() const {
    std::vector<std::string> paths;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(Folder(), error)) {
      paths.push_back(entry.path());
    }
    return paths;
  }
  QString Status() { return Find<QStatusBar>("sbStatusBar").currentMessage(); }
};

TEST_F(Net, BothAreOffAtFirstAndRemembered) {
  Start();
  for (const char* name : {"mnuBackUp", "mnuVerify"}) {
    EXPECT_FALSE(Find<QAction>(name).isChecked()) << name;
    Trigger(name);
  }
  Start();
  for (const char* name : {"mnuBackUp", "mnuVerify"}) {
    EXPECT_TRUE(Find<QAction>(name).isChecked()) << name;
    Trigger(name);
  }
}

TEST_F(Net, AWriteIsBackedUpAndVerified) {
  StartNet({}, true, true);
  auto& mine = const_cast<CloneDocument&>(document());
  mine.dial[0] = "5";
  Trigger("mnuWrSet");
  ASSERT_EQ(Backups().size(), 1U);
  EXPECT_NE(Backups()[0].find("RX-Q40E "), std::string::npos);
  CloneDocument kept;
  EXPECT_FALSE(OpenCloneFile(Backups()[0], kept).problem);
  EXPECT_EQ(kept.dial[0], "0123456789");
  EXPECT_TRUE(kept.image.ChannelInUse[0]);  // both halves, whatever is written
  EXPECT_TRUE(Status().startsWith("Written and verified."));
  EXPECT_TRUE(Status().contains(
      QString::fromStdString(std::filesystem::path(Backups()[0]).filename().string())));
  EXPECT_EQ(window_->findChild<QWidget*>("frmReport"), nullptr);
}

// The backup takes 231 exchanges, opening a write 2 more.
TEST_F(Net, WhatWentWrongIsToldAtLength) {
  const struct {
    const char* fault;
    bool back_up;
    bool verify;
    const char* box;
    const char* report;  // null: no window, only the status bar
    const char* status;
  } cases[] = {
      {"silence@1C20", true, false, "Communication Error", nullptr, "nothing was written"},
      {"ng@#234", true, true, "Communication Error", "To bring the backup back: open it",
       "perhaps"},
      {"ng@#252", true, true, "Communication Error", "choose Write All in the Radio menu.", ""},
      {"not-stored@0200", false, true, nullptr, "The radio did not keep everything.", ""},
      {"ng@0240", false, false, "Communication Error", nullptr,
       "Settings and channels 0 to 1 written"},
      {"hang-up@0040", false, false, "COM Port Error", nullptr, "settings area 2 perhaps"},
  };
  for (const auto& c : cases) {
    StartNet({c.fault}, c.back_up, c.verify);
    auto& mine = const_cast<CloneDocument&>(document());
    mine.image.ChannelInUse[0] = false;
    if (c.box != nullptr) Error(c.box);
    Trigger("mnuWrAll");
    auto* report = window_->findChild<QWidget*>("frmReport");
    ASSERT_EQ(report != nullptr, c.report != nullptr) << c.fault;
    EXPECT_TRUE(Status().contains(QLatin1String(c.status))) << Status().toStdString();
    if (report == nullptr) continue;
    EXPECT_TRUE(report->isVisible());
    EXPECT_EQ(UserOptions::RecentFiles().value(0).endsWith("demo.Q40"), !c.back_up);
    EXPECT_TRUE(Find<QLabel>("lblReport").text().contains(QLatin1String(c.report)))
        << Find<QLabel>("lblReport").text().toStdString();
    EXPECT_EQ(
        Find<QPlainTextEdit>("txtReport").toPlainText().startsWith("Memory 0: In use: \"no\""),
        c.box == nullptr);
  }
  Find<QAction>("mnuVerify").setChecked(false);
}

TEST_F(Net, WithoutABackupNothingIsWritten) {
  StartNet({}, true, false);
  test::Store(folder_ / "data", "a file where the folder should be");
  auto& mine = const_cast<CloneDocument&>(document());
  mine.dial[0] = "5";
  answers_.Add([](QWidget& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->text().startsWith("The backup could not be kept, so nothing was written."));
    box->accept();
  });
  Trigger("mnuWrSet");
  Trigger("mnuBackUp");
  SetFlags(false, false);
  Trigger("mnuReSet");
  EXPECT_EQ(document().dial[0], "0123456789");
}

TEST_F(Net, ACableThatComesBackServesTheNextCommand) {
  const std::string link = folder_ / "radio";
  test::SimulatorProcess radio({"--link", link, "--fault", "hang-up=300@0400"});
  setenv("RXQ40_COM1", link.c_str(), 1);
  MainOptions options;
  options.start_pause = std::chrono::milliseconds(0);
  StartWith(options);
  Error("COM Port Error");
  Trigger("mnuReMem");
  EXPECT_TRUE(Status().contains("was disconnected. Plug the cable in again"))
      << Status().toStdString();
  QTest::qWait(600);
  Trigger("mnuReMem");
  EXPECT_EQ(Flags(), "-M");
  unsetenv("RXQ40_COM1");
}

// The reason and what to do about it stand in the status bar, and take the room they need.
TEST_F(Net, EachPortProblemHasItsReasonAndItsRemedy) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_EQ(grantpt(terminal) | unlockpt(terminal), 0);
  const std::string line = ptsname(terminal);
  const int holder = open(line.c_str(), O_RDWR | O_NOCTTY);
  ASSERT_EQ(flock(holder, LOCK_EX | LOCK_NB), 0);
  const struct {
    std::string device;
    const char* reason;
    const char* remedy;
  } cases[] = {{folder_ / "none", "does not exist", "Plug in the cable"},
               {folder_.path(), "a folder, not a serial port", "Choose the device"},
               {line, "in use by another program", "Close the other program"}};
  for (const auto& c : cases) {
    setenv("RXQ40_COM1", c.device.c_str(), 1);
    MainOptions options;
    options.start_pause = std::chrono::milliseconds(0);
    StartWith(options);
    Error("COM Port Error");
    Trigger("mnuReSet");
    EXPECT_TRUE(Status().contains(QLatin1String(c.reason))) << Status().toStdString();
    EXPECT_TRUE(Status().contains(QLatin1String(c.remedy))) << Status().toStdString();
    EXPECT_EQ(Find("sbStatusBar").toolTip(), Status());
    EXPECT_FALSE(Find("lblStatusPort").isVisible() &&
                 Find("sbStatusBar").fontMetrics().horizontalAdvance(Status()) > 800);
  }
  unsetenv("RXQ40_COM1");
  close(holder);
  close(terminal);
}

}  // namespace
}  // namespace q40
