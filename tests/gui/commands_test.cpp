// The commands without a window: what they ask, what they tell, and what is left afterwards.
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "app/file_commands.h"
#include "app/list_commands.h"
#include "app/main_options.h"
#include "app/prompts.h"
#include "app/radio_commands.h"
#include "app/radio_texts.h"
#include "app/service_commands.h"
#include "app/session.h"
#include "app/trace_command.h"
#include "app/unit_commands.h"
#include "files/backup_folder.h"
#include "files/clone_file.h"
#include "files/radio_copy_file.h"
#include "sim/demo_radio.h"
#include "support/temp_folder.h"
#include "widgets/paths.h"

namespace q40::test {
namespace {

// Gives the prepared answers, and keeps a line for all that was asked and told.
class FakePrompts final : public Prompts {
 public:
  Answer AskToSave() override {
    log += "save? ";
    return answer;
  }
  std::string AskPath(FileDialog kind, const std::string& /*path*/, int /*model*/) override {
    log += "path" + std::to_string(static_cast<int>(kind)) + "? ";
    return path;
  }
  Instead AskInstead(const QString& /*why*/) override {
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
    options_.simulation = {true, 0, faults, [this](std::string_view line) {
                             heard_.append(line) += ' ';
                             if (line == stop_at_) session_->Stop();
                           }};
    options_.backup_folder = folder_ / "backups";
    units_.reset();
    radio_.reset();
    lists_.reset();
    files_.reset();
    session_ = std::make_unique<Session>(options_, nullptr);
    files_ = std::make_unique<FileCommands>(*session_, prompts_);
    lists_ = std::make_unique<ListCommands>(*session_, prompts_, *files_);
    const auto net = [this] { return RadioCommands::NetChoice{backs_up_, false}; };
    radio_ = std::make_unique<RadioCommands>(*session_, prompts_, *files_,
                                             RadioCommands::Options{options_.backup_folder, net});
    units_ = std::make_unique<UnitCommands>(*session_, prompts_, *radio_);
  }
  CloneDocument& document() { return session_->document(); }
  // A document with what the radio holds, without having read it.
  void OpenDemo() { document().Open(DemoDocument()); }
  std::string TakeHeard() { return std::exchange(heard_, {}); }
  [[nodiscard]] bool Told(const std::string& part) const {
    return prompts_.note.find(part) != std::string::npos;
  }

  TempFolder folder_;
  MainOptions options_;
  FakePrompts prompts_;
  std::string heard_;
  std::string stop_at_;
  bool backs_up_ = true;
  std::unique_ptr<Session> session_;
  std::unique_ptr<FileCommands> files_;
  std::unique_ptr<ListCommands> lists_;
  std::unique_ptr<RadioCommands> radio_;
  std::unique_ptr<UnitCommands> units_;
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

TEST_F(Commands, ChangesAreWrittenWhereTheRadioIsAsItIsKnown) {
  Start();
  OpenDemo();
  units_->WriteChanges();  // nothing is known: asked, and cancelled
  EXPECT_EQ(prompts_.TakeLog(), "instead? ");
  EXPECT_EQ(TakeHeard(), "");
  prompts_.instead = Prompts::Instead::kBackUp;
  units_->WriteChanges();
  EXPECT_EQ(prompts_.TakeLog(), "instead? ");
  EXPECT_TRUE(Told("Nothing differs")) << prompts_.note;
  TakeHeard();
  document().ClearChannel(3);
  document().SetVersionA(true);
  units_->WriteChanges();
  EXPECT_EQ(prompts_.note, "Written and verified: channel 3.");
  EXPECT_TRUE(TakeHeard().starts_with("KX~WHO KX~F0260R KX~E RXQ40 KX~WHO KX~F0260W"));
  EXPECT_TRUE(document().image().VersionA && document().HasChanges());  // as a write leaves them
  units_->WriteChanges();
  EXPECT_TRUE(Told("Nothing differs") && TakeHeard().empty());
  // Somebody has used the radio in between: refused, and however often one tries.
  session_->radio().SetHeld({Unit::Memory(5), std::string(64, 'F')});
  document().ClearChannel(1);
  for (int time = 0; time < 2; ++time) {
    QSignalSpy told(radio_.get(), &RadioCommands::writeTold);
    units_->WriteChanges();
    EXPECT_TRUE(Told("! Nothing was written: the radio does not hold")) << prompts_.note;
    EXPECT_EQ(TakeHeard(), "KX~WHO KX~F0220R KX~F02A0R KX~E ");
    ASSERT_EQ(told.count(), 1);
    EXPECT_TRUE(told[0][1].toStringList().join("").contains("Memory 5"));
  }
  // What is loaded is for another model: the radio itself says no.
  document().ChangeModel(0);
  units_->WriteChanges();
  EXPECT_TRUE(prompts_.TakeLog().starts_with("error: Model is not correct"));
  EXPECT_EQ(TakeHeard(), "KX~WHO ");
}

TEST_F(Commands, AHalfThatIsNotKnownIsNeitherComparedNorWritten) {
  Start();
  OpenDemo();
  radio_->Read(&Sequences::ReadMemory);
  document().ChangeDialText(0, "999");
  document().ClearChannel(3);
  TakeHeard();
  units_->WriteChanges();
  EXPECT_EQ(
      prompts_.note,
      "Written and verified: channel 3. What the radio holds of its settings is not known, so "
      "that was neither compared nor written.");
  EXPECT_EQ(TakeHeard().find("KX~F1D"), std::string::npos);
}

// The program is killed between the two runs: the second one has only the file.
TEST_F(Commands, TheRestIsWrittenInThisRunOrTheNext) {
  for (const bool killed : {false, true}) {
    Start({"ng@#300"});
    OpenDemo();
    document().ClearAllChannels();
    radio_->Write(Half::kMemory);
    EXPECT_EQ(prompts_.TakeLog(), "error: Communication Error ");
    ASSERT_TRUE(session_->unfinished().pending());
    const std::string whole = radio_->keeper().WayBack();
    EXPECT_TRUE(whole.ends_with("before a write.Q40")) << whole;
    EXPECT_TRUE(Told("To go on: choose Write the Rest") && Told(FileName(whole))) << prompts_.note;
    radio_->BackUp();
    EXPECT_TRUE(Told("after a broken write"));
    EXPECT_EQ(radio_->keeper().WayBack(), whole);  // never to a half written state
    backs_up_ = false;
    stop_at_ = "RXQ40";
    radio_->Write(Half::kMemory);
    EXPECT_TRUE(session_->unfinished().pending());  // nothing was sent, so nothing is settled
    backs_up_ = true;
    stop_at_.clear();
    if (killed) {
      Start();
      units_->FindRest();
      EXPECT_TRUE(Told("! A write to an RX-Q40E") && Told("channels 0 to D9") && Told(whole));
      ASSERT_TRUE(session_->unfinished().pending());
    }
    TakeHeard();
    units_->WriteRest();
    EXPECT_TRUE(Told("Written and verified: ") && Told("channels ")) << prompts_.note;
    EXPECT_FALSE(session_->unfinished().pending());
    EXPECT_FALSE(std::filesystem::exists(folder_ / "backups/unfinished write.txt"));
    // Of what the radio holds now, everything is known.
    if (!killed) units_->WriteChanges();
    EXPECT_EQ(Told("Nothing differs"), !killed);
  }
}

// The last block arrived, its acknowledgement did not.
TEST_F(Commands, ARestThatTheRadioHoldsAlreadyIsOver) {
  backs_up_ = false;
  Start({"echo-only@1C20"});
  OpenDemo();
  document().ClearAllChannels();
  radio_->Write(Half::kMemory);
  EXPECT_TRUE(session_->unfinished().pending());
  TakeHeard();
  units_->WriteRest();
  EXPECT_EQ(TakeHeard().find("W00"), std::string::npos);  // no block was sent
  EXPECT_FALSE(session_->unfinished().pending()) << prompts_.note;
}

// What cannot be stored keeps nobody from writing, but is told.
TEST_F(Commands, ARestThatCannotBeStoredIsTold) {
  Store(folder_ / "backups", "no folder");
  backs_up_ = false;
  Start();
  OpenDemo();
  radio_->Write(Half::kMemory);
  EXPECT_TRUE(Told("Written. What a write leaves") && Told("not be stored")) << prompts_.note;
  class FullDisk final : public FileSystem {
    bool Sync(std::FILE* /*file*/) override { return false; }
  } full;
  UnfinishedWork work(folder_ / "kept", full);
  EXPECT_TRUE(work.Begin({}).contains("kept/unfinished write.txt: "));
  EXPECT_TRUE(UnfinishedWork(folder_ / "kept").Begin({}).startsWith("another program"));
}

TEST_F(Commands, ADamagedRestIsPutAside) {
  Start();
  std::filesystem::create_directories(folder_ / "backups");
  for (int time = 1; time < 3; ++time) {
    Store(folder_ / "backups/unfinished write.txt", "Korvex RX-Q40 unfinished write 1\nmodel 1\n");
    units_->FindRest();
    EXPECT_TRUE(Told("! What was left of a write cannot be read")) << prompts_.note;
    EXPECT_FALSE(session_->unfinished().pending());
    EXPECT_TRUE(Told("damaged unfinished write " + std::to_string(time) + ".txt"));
  }
  EXPECT_FALSE(std::filesystem::exists(folder_ / "backups/unfinished write.txt"));
}

TEST_F(Commands, ARestoredRadioIsWhatItWas) {
  Start({"ng@#300"});
  OpenDemo();
  ASSERT_TRUE(radio_->BackUp());
  const std::string backup = LastWholeBackup(folder_ / "backups", 1);
  backs_up_ = false;
  document().ClearAllChannels();
  radio_->Write(Half::kMemory);
  EXPECT_EQ(prompts_.TakeLog(), "error: Communication Error ");
  units_->Restore(backup);
  EXPECT_EQ(prompts_.TakeLog(), "RESTORE OK? ");
  EXPECT_NE(prompts_.question.find("RX-Q40E"), std::string::npos);
  EXPECT_NE(prompts_.question.find(FileName(backup)), std::string::npos);
  EXPECT_FALSE(session_->unfinished().pending());  // it covers what had broken off
  ASSERT_TRUE(radio_->BackUp());
  RadioCopy before;
  RadioCopy after;
  ASSERT_FALSE(OpenRadioCopy(backup, before));
  ASSERT_FALSE(OpenRadioCopy(LastWholeBackup(folder_ / "backups", 1), after));
  EXPECT_EQ(RadioCopyText(before), RadioCopyText(after));
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
