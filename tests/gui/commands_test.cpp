// The commands without a window: what they ask, what they tell, and what is left afterwards.
#include "gui/commands_test.h"

#include <QSignalSpy>

#include "app/radio_texts.h"
#include "app/service_commands.h"
#include "app/trace_command.h"
#include "files/clone_file.h"
#include "widgets/paths.h"

namespace q40::test {
namespace {

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
  EXPECT_TRUE(prompts_.note.starts_with("! ") && Told("line 1")) << prompts_.note;
  EXPECT_TRUE(document().image() == before);
  EXPECT_TRUE(document().MemoryChanged());  // still there, still unsaved
  EXPECT_EQ(session_->path(), folder_ / "demo.Q40");
  EXPECT_EQ(replaced.count(), 0);
  // A bad end line leaves the model of the header behind: intended.
  text.replace(0, 32, "Korvex RX-Q40T Clone 0 FileStart");
  text.replace(std::size_t{455} * 34, 1, "k");
  Store(prompts_.path, text);
  files_->Open();
  EXPECT_EQ(document().model(), 0);
  EXPECT_FALSE(document().image().ChannelInUse[0]);
  EXPECT_EQ(session_->path(), "");
  EXPECT_EQ(replaced.count(), 1);
}

// From one choice to the next; a file that takes no more is told of behind the command.
TEST_F(Commands, ATraceIsKeptUntilItIsChosenAgain) {
  Start();
  TraceCommand trace(*session_, prompts_);
  std::string marks;
  QObject::connect(&trace, &TraceCommand::keptChanged,
                   [&](bool kept) { marks += kept ? '+' : '-'; });
  const auto read = [&] {
    document().ForgetChanges();
    radio_->Read(&Sequences::ReadSettings);
  };
  trace.Toggle();  // cancelled
  prompts_.path = folder_ / "nowhere/t.trace";
  trace.Toggle();
  EXPECT_EQ(prompts_.TakeLog(), "path5? path5? error: Data Error ");
  read();
  EXPECT_EQ(marks, "");
  prompts_.path = folder_ / "t.trace";
  trace.Toggle();
  read();
  const std::string told = Content(prompts_.path);
  EXPECT_TRUE(told.starts_with("# rxq40 trace 1\n      0 = open\n")) << told;
  EXPECT_EQ(std::count(told.begin(), told.end(), '>'), 19);
  trace.Toggle();
  read();
  EXPECT_EQ(Content(prompts_.path), told);
  EXPECT_EQ(marks, "+-");
  EXPECT_EQ(prompts_.TakeLog(), "path5? ");
  prompts_.path = "/dev/full";
  trace.Toggle();
  read();
  EXPECT_TRUE(document().SettingsChanged());
  EXPECT_EQ(prompts_.TakeLog(), "path5? ");
  QCoreApplication::processEvents();
  EXPECT_EQ(prompts_.TakeLog(),
            "error: The trace in /dev/full is not whole: No space left on "
            "device.\nThe radio was not disturbed. ");
  EXPECT_EQ(marks, "+-+-");
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
  // Within a second they would have the same name.
  std::filesystem::remove(folder_ / "backups");
  for (int i = 0; i < 3; ++i) radio_->Write(Half::kSettings);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "backups"), {}), 3);
}

TEST_F(Commands, NoBlockIsReadWhileTheRadioTalks) {
  Start();
  session_->SetBusy(Session::Busy::kTalking);
  ServiceCommands(*session_).ReadBlock(QStringLiteral("0200"));
  EXPECT_EQ(heard_, "");
  EXPECT_TRUE(session_->IsBusy());
}

TEST(RadioTexts, WhatIsNotAllGoodIsTold) {
  SequenceReport broken;
  broken.outcome = Outcome::kCommunicationError;
  PartialRead part;
  for (const int last : {41, 2}) {  // the second read brings less, and the first is still there
    part.Begin(Sequence::kReadMemory);
    part.ChannelArrived(last);
    part.End(broken);
    EXPECT_TRUE(part.Text().contains(QLatin1String("channels 0 to 41 ")));
  }
  WriteResult damaged;
  damaged.last.note = "1 reply was damaged";
  EXPECT_FALSE(AccountOf(damaged, {}).good);
}

// The exchange in flight is finished, nothing more is sent but the End command.
TEST_F(Commands, AStopEndsEverythingAtTheNextUnit) {
  const struct {
    const char* at;
    std::function<void()> run;
    const char* note;
  } cases[] = {
      {"KX~F0400R", [this] { radio_->Read(&Sequences::ReadAll); },
       "! Stopped before memory channel 17. The read broke off: channels 0 to 16"},
      {"KX~F0040R", [this] { radio_->Read(&Sequences::ReadAll); },
       "! Stopped before VHF special channel VFO. The read broke off: a part of"},
      {"KX~F0400R", [this] { radio_->BackUp(); }, "! Stopped before memory channel 17."},
      {"KX~F0400R", [this] { radio_->Write(Half::kBoth); },
       "! Stopped before memory channel 17. The backup was not made, so nothing was written."},
      {"RXQ40", [this] { radio_->Write(Half::kBoth); },
       "! Stopped before identification. Nothing was written."},
      {"KX~E", [this] { radio_->Write(Half::kBoth); },
       "! Stopped before announcement. Nothing was written."},
  };
  for (const auto& c : cases) {
    stop_at_ = c.at;
    Start();
    OpenDemo();
    c.run();
    EXPECT_TRUE(prompts_.note.starts_with(c.note)) << prompts_.note;
    EXPECT_TRUE(TakeHeard().ends_with(stop_at_ == "KX~E" ? "KX~E " : stop_at_ + " KX~E ")) << c.at;
    EXPECT_FALSE(session_->unfinished().pending()) << c.at;
    EXPECT_EQ(prompts_.TakeLog(), "") << c.at;
    EXPECT_FALSE(session_->StopRequested());  // the next command runs
  }
}

}  // namespace
}  // namespace q40::test
