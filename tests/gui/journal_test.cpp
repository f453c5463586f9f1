// What a window that does not end leaves, and what the next one makes of it. A window that is taken
// away without being closed has crashed, as far as its journal knows.
#include <filesystem>

#include <QAction>
#include <QPushButton>

#include "files/journal_folder.h"
#include "gui/window_test.h"

namespace q40::test {
namespace {

class JournalTest : public Window {
 protected:
  JournalTest() { options_.state_folder = folder_ / "state/rxq40"; }

  int Journals(const char* suffix = ".journal") {
    int count = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(options_.state_folder, error)) {
      count += entry.path().extension() == suffix ? 1 : 0;
    }
    return count;
  }
  // Within a second of the change.
  void AwaitJournals(int count) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Journals() == count; }, 1000));
  }
  void Crash() {
    mirrors_.clear();
    window_.reset();
  }
  void Choose(const char* button, const QString& name = "demo.Q40") {
    answers_.Add([=](QWidget& dialog) {
      auto& box = static_cast<QMessageBox&>(dialog);
      EXPECT_EQ(box.windowTitle(), "Unsaved Changes");
      const QString text =
          box.text().remove(QRegularExpression("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d"));
      EXPECT_EQ(text, QStringLiteral("Unsaved changes of  to %1 were found").arg(name));
      for (QAbstractButton* b : box.buttons()) {
        if (b->text() == QLatin1String(button)) return QTest::mouseClick(b, Qt::LeftButton);
      }
      ADD_FAILURE() << "no " << button;
    });
  }
  bool MayRestore() { return Find<QAction>("mnuRestoreUnsaved").isEnabled(); }
  void RestartAsking() {
    Start();
    QCoreApplication::processEvents();
  }
};

TEST_F(JournalTest, UnsavedWorkIsKeptUntilItIsSavedOrNotWanted) {
  Start({}, SavedDemo());
  EXPECT_EQ(Journals(), 0);
  Click("optBand_1");
  Press("chkBeep", Qt::Key_Space);
  AwaitJournals(1);
  EXPECT_TRUE(LeftJournals(options_.state_folder).empty());  // its window lives
  Trigger("mnuUndo");
  AwaitJournals(0);
  Trigger("mnuRedo");
  AwaitJournals(1);
  Trigger("mnuFileSave");
  AwaitJournals(0);
  Press("chkVoxEn", Qt::Key_Space);  // not even that is lost, although it counts as nothing
  Press("chkBeep", Qt::Key_Space);
  AwaitJournals(1);
  Save(kNo);
  EXPECT_TRUE(window_->close());
  EXPECT_EQ(Journals() + Journals(".lock"), 0);
}

TEST_F(JournalTest, TheNextStartOffersWhatWasLeft) {
  Start({}, SavedDemo());
  ShowTab(3);
  Click("cmbInsert");
  Trigger("mnuFileSave");
  Click("cmbInsert");
  const CloneData saved = document();
  Click("cmbInsert");
  Trigger("mnuUndo");
  Press("chkBeep", Qt::Key_Space);
  const CloneData left = document();
  AwaitJournals(1);
  Crash();

  Choose("&Later");
  RestartAsking();
  EXPECT_TRUE(MayRestore());
  EXPECT_EQ(Flags(), "--");
  // A window with a file of its own is not kept from it.
  Start({}, SavedDemo("other.Q40"));
  QCoreApplication::processEvents();
  EXPECT_TRUE(Status().endsWith("to demo.Q40 were found: File, Restore Unsaved Changes."));
  Choose("&Restore");
  Trigger("mnuRestoreUnsaved");
  EXPECT_FALSE(MayRestore());
  EXPECT_TRUE(document() == left);
  EXPECT_EQ(Flags(), "SM");
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
  EXPECT_EQ(Journals(), 1);  // its own
  Trigger("mnuUndo");        // what was saved
  EXPECT_EQ(Flags(), "--");
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");
  EXPECT_FALSE(document() == left);
  Trigger("mnuUndo");
  EXPECT_EQ(Title(), kPlainTitle + " - other.Q40");
  Trigger("mnuRedo");
  Trigger("mnuRedo");
  EXPECT_TRUE(document() == left);
  AwaitJournals(1);
  Crash();
  Choose("&Discard");
  RestartAsking();
  EXPECT_EQ(Journals() + Journals(".lock"), 0);
  EXPECT_FALSE(MayRestore());
}

TEST_F(JournalTest, WhatCannotBeReadIsPutAside) {
  std::filesystem::create_directories(options_.state_folder);
  Store(options_.state_folder + "/7.journal", "RX-Q40 journal 1\nhalf");
  answers_.Add([](QWidget& dialog) {
    auto& box = static_cast<QMessageBox&>(dialog);
    EXPECT_TRUE(
        box.text().startsWith("Unsaved changes were found, but cannot be read. They were kept"));
    QTest::mouseClick(box.button(kOk), Qt::LeftButton);
  });
  RestartAsking();
  EXPECT_EQ(Content(options_.state_folder + "/7.journal.unreadable"), "RX-Q40 journal 1\nhalf");
  EXPECT_FALSE(MayRestore());
}

// Nobody is asked for a folder that cannot be had, but it is said, and said once.
TEST_F(JournalTest, AFullDiskIsSaid) {
  Store(folder_ / "state", "a file where the folder should be");
  Start();
  Press("chkBeep", Qt::Key_Space);
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return Status().startsWith("Unsaved changes are not safe from a crash: "); }, 1000));
}

}  // namespace
}  // namespace q40::test
