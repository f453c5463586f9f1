// What is written to a radio unit by unit: changes, the rest of a write that broke off, a backup.
#include "app/unit_commands.h"

#include <filesystem>

#include <QSignalSpy>

#include "app/unfinished_work.h"
#include "files/backup_folder.h"
#include "files/radio_copy_file.h"
#include "gui/commands_test.h"
#include "widgets/paths.h"

namespace q40::test {
namespace {

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
  EXPECT_TRUE(TakeHeard().starts_with("RXQ40 "));  // announced, as every write
  units_->WriteRest();
  const std::string rest = TakeHeard();
  EXPECT_TRUE(rest.starts_with("KX~WHO KX~F0200R ") && rest.ends_with(" KX~F1C20R KX~E ")) << rest;
  EXPECT_EQ(rest.find("RXQ40"), std::string::npos);
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

}  // namespace
}  // namespace q40::test
