// Writing with a net, and what the window says when a port or a radio fails it.
#include <QClipboard>
#include <QPlainTextEdit>
#include <QStatusTipEvent>

#include "app/user_options.h"
#include "files/backup_folder.h"
#include "files/clone_file.h"
#include "gui/window_test.h"
#include "support/process.h"

namespace q40::test {
namespace {

class Net : public Window {
 protected:
  Net() { options_.backup_folder = folder_ / "data/\xFF"; }
  // The window with a radio that has the faults, and a demo file with another dialer memory.
  void StartNet(const std::vector<std::string>& faults, bool back_up, bool verify) {
    Start(faults, SavedDemo());
    Find<QAction>("mnuBackUp").setChecked(back_up);
    Find<QAction>("mnuVerify").setChecked(verify);
    document().dial[0] = "5";
  }
  ~Net() override {
    for (const char* name : {"mnuBackUp", "mnuVerify"}) Find<QAction>(name).setChecked(false);
  }
};

TEST_F(Net, BothAreOffAtFirstAndRemembered) {
  for (const bool on : {false, true}) {
    Start();
    for (const char* name : {"mnuBackUp", "mnuVerify"}) {
      EXPECT_EQ(Find<QAction>(name).isChecked(), on) << name;
      Trigger(name);
    }
  }
}

TEST_F(Net, AWriteIsBackedUpAndVerified) {
  StartNet({"late=250@0200"}, true, true);
  document().image.VersionA = false;  // unlike the radio
  QTimer::singleShot(300, [&] {
    EXPECT_TRUE(Status().startsWith("Backing up the radio (RX-Q40E version A)"));
    EXPECT_TRUE(Find("prgStatus").isVisible());  // on a page without a bar of its own
    ShowTab(3);
  });
  Trigger("mnuWrSet");
  EXPECT_FALSE(Find("prgStatus").isVisible());
  EXPECT_TRUE(UserOptions::RecentFiles().front().ends_with("demo.Q40"));
  const std::string backup = LastWholeBackup(options_.backup_folder, 1);
  const QString name = QString::fromStdString(backup).split('/').back();
  CloneData kept;
  EXPECT_FALSE(OpenCloneFile(backup, kept).problem);
  EXPECT_EQ(kept.dial[0], "0123456789");
  EXPECT_TRUE(kept.image.ChannelInUse[0]);  // both halves, whatever is written
  EXPECT_EQ(Status(),
            "Written and verified. Before, the radio held " + name + " (Tools, Backups).");
  EXPECT_EQ(window_->findChild<QWidget*>("frmReport"), nullptr);
  ShowTab(1);
  Press("chkBeep", Qt::Key_Space);
  EXPECT_EQ(Status(), "");  // a result stays until the next action
}

// The backup takes 231 exchanges, opening a write 2 more.
TEST_F(Net, WhatWentWrongIsToldAtLength) {
  const struct {
    const char* fault;
    bool back_up;
    bool verify;
    const char* box;     // null: no error, but differences
    const char* report;  // null: no window, only the status bar
    const char* status;
  } cases[] = {
      {"silence@1C20", true, false, "Communication Error", nullptr, "nothing was written"},
      {"ng@#234", true, true, "Communication Error", "To bring the backup back: choose Backups",
       "perhaps"},
      {"ng@#3", false, false, "Communication Error", "perhaps", "the rest as before"},
      {"ng@#1", false, false, "Communication Error", nullptr, "Nothing was written"},
      {"not-stored@0200", false, true, nullptr, "The radio did not keep everything.", ""},
  };
  for (const auto& c : cases) {
    StartNet({c.fault}, c.back_up, c.verify);
    ShowTab(3);
    answers_.Box("CLEAR OK", "Are you sure that you want to do the clear?\nClear cannot be undone.",
                 kOk);
    Click("cmbClear");
    if (c.box != nullptr) Error(c.box);
    Trigger("mnuWrAll");
    EXPECT_TRUE(Status().contains(c.status)) << Status().toStdString();
    const auto* report = window_->findChild<QWidget*>("frmReport");
    ASSERT_EQ(report != nullptr, c.report != nullptr) << c.fault;
    if (report == nullptr) continue;
    EXPECT_TRUE(report->isVisible());
    // What has ended can be followed by a Write Changes.
    EXPECT_EQ(Find("cmdWriteRest").isVisible(), c.box != nullptr);
    EXPECT_EQ(Find<QAction>("mnuWriteRest").isEnabled(), c.box != nullptr);
    EXPECT_TRUE(Find<QLabel>("lblReport").text().contains(c.report)) << c.report;
    EXPECT_EQ(
        Find<QPlainTextEdit>("txtReport").toPlainText().startsWith("Memory 0: In use: \"no\""),
        c.box == nullptr);
    EXPECT_EQ(Find("txtReport").isVisible(), c.box == nullptr);
    Click("cmdCopyReport");
    EXPECT_TRUE(QApplication::clipboard()->text().endsWith(
        '\n' + Find<QPlainTextEdit>("txtReport").toPlainText()));
    if (c.box == nullptr) {
      Trigger("mnuWriteChanges");
      EXPECT_TRUE(Status().endsWith("channel 0.")) << Status().toStdString();
      continue;
    }
    answers_.Add([&](QWidget& box) {
      QTest::mouseClick(static_cast<QMessageBox&>(box).button(kOk), Qt::LeftButton);
    });
    Click("cmdForgetRest");
    EXPECT_FALSE(Find("cmdWriteRest").isVisible() || Find<QAction>("mnuWriteRest").isEnabled());
  }
}

// Reason and remedy stand in the status bar, and take the room they need.
TEST_F(Net, APortProblemIsToldAndTheNextCommandTriesAgain) {
  const std::string link = folder_ / "radio";
  StartOnPort(link);
  Error("COM Port Error");
  Trigger("mnuReMem");
  const QString account = Status();
  EXPECT_TRUE(account.contains("does not exist. Plug in the cable")) << account.toStdString();
  EXPECT_EQ(Find("lblStatusText").toolTip(), "<qt>" + account + "</qt>");
  EXPECT_FALSE(Find("lblStatusPort").isVisible());
  EXPECT_TRUE(Find("lblStatusFile").isVisible());
  // The hint of a menu entry covers it, and goes; what fails to happen does not count.
  for (const QString tip : {"A hint.", ""}) {
    QStatusTipEvent event(tip);
    QApplication::sendEvent(window_.get(), &event);
    EXPECT_EQ(Find("lblStatusText").isVisible(), tip.isEmpty());
  }
  answers_.File({});
  Trigger("mnuFileOpen");
  Trigger("mnuCopyStatus");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), account);
  EXPECT_EQ(Status(), account);
  const SimulatorProcess radio({"--link", link, "--fault", "hang-up=300@0400"});
  Error("COM Port Error");
  Trigger("mnuReMem");
  EXPECT_TRUE(Status().contains("was disconnected. Plug the cable in again"));
  QTest::qWait(600);
  EXPECT_EQ(Find<QLabel>("lblStatusFile").text(), "Not changed, part of a radio");
  EXPECT_TRUE(Status().contains("channels 0 to 15 are the radio's")) << Status().toStdString();
  Trigger("mnuReMem");
  EXPECT_EQ(Flags(), "-M");
  EXPECT_EQ(Find<QLabel>("lblStatusFile").text(), "Changed");
  EXPECT_TRUE(Status().startsWith("Read from an RX-Q40"));  // and no word of the failure
}

}  // namespace
}  // namespace q40::test
