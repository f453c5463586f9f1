// The commands without a window: what they ask, what they tell, and what is left afterwards.
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "app/file_commands.h"
#include "app/list_commands.h"
#include "app/main_options.h"
#include "app/prompts.h"
#include "app/radio_commands.h"
#include "app/session.h"
#include "files/clone_file.h"
#include "sim/demo_radio.h"
#include "support/temp_folder.h"

namespace q40::test {
namespace {

// Gives the prepared answers, and keeps a line for all that was asked and told.
class FakePrompts final : public Prompts {
 public:
  Answer AskToSave() override {
    log += "save? ";
    return answer;
  }
  std::string AskPath(FileDialog kind, const std::string&, int) override {
    log += "path" + std::to_string(static_cast<int>(kind)) + "? ";
    return path;
  }
  Instead AskInstead(const QString&) override {
    log += "instead? ";
    return instead;
  }
  bool Confirm(const char* title, const QString& text) override {
    log += std::string(title) + "? ";
    question = text.toStdString();
    return true;
  }
  void ShowError(const QString& text) override { log += "error: " + text.toStdString() + ' '; }
  void ShowGone(const QString& text) override { log += "gone: " + text.toStdString() + ' '; }
  void Note(const QString& text) override { note = text.toStdString(); }
  void NoteFailure(const QString& text) override { note = "! " + text.toStdString(); }
  std::string TakeLog() { return std::exchange(log, {}); }

  Answer answer = Answer::kYes;
  Instead instead = Instead::kNothing;
  std::string question;
  std::string path;
  std::string log;
  std::string note;
};

class Commands : public testing::Test {
 protected:
  void Start(const std::vector<std::string>& faults = {}) {
    options_.simulation = {true, 0, faults,
                           [this](std::string_view line) { heard_.append(line) += ' '; }};
    session_ = std::make_unique<Session>(options_, nullptr);
    files_ = std::make_unique<FileCommands>(*session_, prompts_);
    lists_ = std::make_unique<ListCommands>(*session_, prompts_, *files_);
    const auto net = [] { return RadioCommands::NetChoice{true, false}; };
    radio_ = std::make_unique<RadioCommands>(*session_, prompts_, *files_,
                                             RadioCommands::Options{folder_ / "backups", net});
  }
  CloneDocument& document() { return session_->document(); }

  TempFolder folder_;
  MainOptions options_;
  FakePrompts prompts_;
  std::string heard_;
  std::unique_ptr<Session> session_;
  std::unique_ptr<FileCommands> files_;
  std::unique_ptr<ListCommands> lists_;
  std::unique_ptr<RadioCommands> radio_;
};

TEST_F(Commands, AFailedOrCancelledSaveCountsAsCancel) {
  Start();
  document().ChangeLooseSetting();
  files_->NewCommand();  // the save dialog is cancelled
  EXPECT_EQ(prompts_.TakeLog(), "save? path1? ");
  prompts_.path = folder_ / "nowhere/a.Q40";
  EXPECT_FALSE(files_->SelectModel(2));
  EXPECT_EQ(prompts_.TakeLog(), "save? path1? error: Data Error ");
  EXPECT_EQ(document().model(), 0);
  EXPECT_TRUE(document().SettingsChanged());
  // Yes saves the old model's data under the old model's header.
  prompts_.path = folder_ / "old.Q40";
  EXPECT_TRUE(files_->SelectModel(2));
  EXPECT_TRUE(Content(folder_ / "old.Q40").starts_with("Korvex RX-Q40T Clone 0 FileStart"));
  EXPECT_EQ(prompts_.note,
            "Started anew with the defaults of the RX-Q40T1. Before, old.Q40 was open.");
  EXPECT_EQ(document().model(), 2);
  EXPECT_EQ(session_->path(), "");
}

TEST_F(Commands, AFileThatIsRefusedLeavesEverything) {
  Start();
  const CloneData demo = DemoDocument();
  ASSERT_FALSE(SaveCloneFile(folder_ / "demo.Q40", demo, demo.model));
  files_->OpenCloneFile(folder_ / "demo.Q40");
  document().KeepMemoryChanges();
  const CloneImage before = document().image();
  std::string text = Content(folder_ / "demo.Q40");
  const QSignalSpy replaced(session_.get(), &Session::replaced);
  prompts_.answer = Prompts::Answer::kNo;
  prompts_.path = folder_ / "bad.txt";
  Store(prompts_.path, "\"never closed");
  lists_->Import();
  EXPECT_EQ(prompts_.TakeLog(), "save? path2? error: Data Error ");
  Store(prompts_.path, "x" + text);
  files_->Open();
  EXPECT_EQ(prompts_.TakeLog(), "save? path0? error: Data Error ");
  EXPECT_TRUE(prompts_.note.starts_with("! ") && prompts_.note.find("line 1") != std::string::npos)
      << prompts_.note;
  EXPECT_TRUE(document().image() == before);
  EXPECT_TRUE(document().MemoryChanged());  // still there, still unsaved
  EXPECT_EQ(session_->path(), folder_ / "demo.Q40");
  EXPECT_EQ(replaced.count(), 0);
  // A bad end line leaves the model of the header behind: intended.
  text.replace(0, 32, "Korvex RX-Q40T Clone 0 FileStart");
  text.replace(455 * 34, 1, "k");
  Store(prompts_.path, text);
  files_->Open();
  EXPECT_EQ(document().model(), 0);
  EXPECT_FALSE(document().image().ChannelInUse[0]);
  EXPECT_EQ(session_->path(), "");
  EXPECT_EQ(replaced.count(), 1);
}

TEST_F(Commands, WithoutABackupNothingIsWritten) {
  Start();
  Store(folder_ / "backups", "a file where the folder should be");
  ASSERT_TRUE(files_->SelectModel(1));
  radio_->Write(Half::kBoth);
  EXPECT_TRUE(
      prompts_.log.starts_with("error: The backup could not be kept, so nothing was written."))
      << prompts_.log;
  EXPECT_EQ(heard_.find("RXQ40"), std::string::npos) << heard_;
  EXPECT_FALSE(session_->IsBusy());
}

}  // namespace
}  // namespace q40::test
