// Backup, restore, and writes with a net, by rxq40ctl on a simulated radio without time.
#include <random>

#include <gtest/gtest.h>

#include "document/defaults.h"
#include "support/ctl_fixture.h"

namespace q40 {
namespace {

using test::Ctl;

// What a write with a net leaves in radio and file, whatever the radio does.
TEST_F(Ctl, WriteWithANet) {
  CloneData mine = FreshData();
  mine.settings.Slider1 = 31;
  const std::string path = Save("a.Q40", mine);
  const std::string backup = folder_ / "kept here.Q40";
  // The backup takes 229 exchanges; then come two openings, settings area 1, and so on.
  // written: anything
  const std::tuple<const char*, int, bool, bool, const char*, const char*> cases[] = {
      {"", 0, true, true, "", "227 blocks acknowledged and verified"},
      {"silence", 4, false, false, "", "The backup was not made, so nothing was written."},
      {"short@1C20+", 4, false, false, "", "The backup was not made"},
      {"hang-up@0300", 3, false, false, "", "The backup was not made"},
      {"ng@#232", 4, true, true, "", "To bring the backup back: rxq40ctl restore -p 1 '"},
      {"ng@#230", 4, true, false, "", "Nothing was written."},
      {"ng@#260", 4, true, true, "", "Settings and channels 0 to 7 written"},
      {"not-stored@#232", 8, true, true, "Settings: Scan Type: ", "To bring the backup"},
      {"not-stored@#252", 8, true, true, "Memory 0: In use: ", "did not keep everything"},
      // In the verification, behind the 229 exchanges of the backup and the 233 of the write.
      {"hang-up@#498", 3, true, true, "", "Everything was written, but not verified."},
  };
  for (const auto& [fault, code, backup_kept, written, out, err] : cases) {
    Radio(*fault != 0 ? std::vector<std::string>{fault} : std::vector<std::string>{});
    const std::string memory(radio_->memory().raw());
    std::filesystem::remove(backup);
    const Result result = Run({"write", "-p", "1", "--backup", backup, "--verify", path});
    EXPECT_EQ(result.code, code) << fault << result.err;
    EXPECT_EQ(std::filesystem::exists(backup), backup_kept) << fault;
    EXPECT_EQ(radio_->memory().raw() != memory, written) << fault;
    EXPECT_NE(result.out.find(out), std::string::npos) << fault << result.out;
    EXPECT_NE(result.err.find(err), std::string::npos) << fault << result.err;
    // Only who touched the radio is told how to undo it.
    const bool offered = result.err.find("To bring the backup back: ") != std::string::npos;
    EXPECT_EQ(offered, written && code != 0) << fault << result.err;
    if (!backup_kept) continue;
    Radio({});
    ASSERT_EQ(Run({"write", "-p", "1", path}).code, 0);
    ASSERT_EQ(Run({"restore", "-p", "1", backup}).code, 0);
    EXPECT_TRUE(radio_->memory().raw() == memory) << fault;
  }
}

// Whatever a radio holds, and whatever it is made to hold then: every byte comes back.
TEST_F(Ctl, ABackupBringsBackEveryByte) {
  const std::string backup = folder_ / "backup.Q40";
  std::mt19937 random(1);
  std::string wild(kMemorySize, '\0');
  for (char& byte : wild) byte = static_cast<char>(random());
  CloneData full = FreshData();
  full.image.ChannelInUse.fill(true);
  RadioMemory factory;
  RadioMemory filled;
  StoreDocument(FreshData(), factory);
  StoreDocument(full, filled);
  std::string undecodable(filled.raw());
  undecodable[0x0200 + 12] = 0x63;  // a tone that is none
  std::string letters(filled.raw());
  letters.replace(0x1D00, 16, 16, 'A');  // 0x41 spells nothing
  // With the exit code of `check`: the backup is like any clone file, as far as one can hold that.
  const std::pair<std::string, int> cases[] = {{std::string(factory.raw()), 0},
                                               {std::string(filled.raw()), 0},
                                               {letters, 0},
                                               {undecodable, 6},
                                               {wild, 6},
                                               {std::string(kMemorySize, '\xFF'), 6}};
  Radio({}, 1, 'A');
  for (const auto& [held, check] : cases) {
    ASSERT_TRUE(radio_->memory().SetRaw(held));
    std::filesystem::remove(backup);
    EXPECT_NE(Run({"backup", "-p", "1", backup}).err.find("227 blocks, 7264 bytes"),
              std::string::npos);
    for (const Unit unit : UnitsOf(Half::kBoth)) {
      radio_->memory().Write(unit.address(), std::string(kUnitDigits, '5'));
    }
    const Result result = Run({"restore", "-p", "1", "--backup", folder_ / "fives.Q40", backup});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_TRUE(radio_->memory().raw() == held);
    std::filesystem::remove(folder_ / "fives.Q40");
    EXPECT_EQ(Run({"check", backup}).code, check);
    EXPECT_TRUE(test::Content(backup).starts_with("Korvex RX-Q40E Clone A FileStart"));
  }
}

// Writing changes: exit code, exchanges with the radio, and words.
TEST_F(Ctl, WriteChanges) {
  ASSERT_EQ(Run({"backup", "-p", "1", folder_ / "raw.Q40"}).code, 0);
  ASSERT_EQ(Run({"read", "-p", "1", folder_ / "read.Q40"}).code, 0);
  CloneData document = test::RandomDocument(21);
  document.dial[9] = "5";
  document.image.MemoryTable[7] = document.image.MemoryTable[8];
  document.image.ChannelInUse[7] = true;
  const std::string changed = Save("changed.Q40", document);
  document.image.MemoryTable[7] = document.image.MemoryTable[9];
  const std::string again = Save("again.Q40", document);
  document.model = 1;
  Save("e.Q40", document);
  const struct {
    const char* base;
    const char* file;
    const char* more;
    int code;
    int exchanges;
    const char* out;
    const char* err;
  } cases[] = {
      {"raw", "read", "", 0, 0, "", "hold the same; nothing was sent"},
      {"read", "raw", "--rest", 0, 0, "", "hold the same; nothing was sent"},
      {"raw", "e", "", kExitWrongModel, 0, "", "raw.Q40 is for an RX-Q40T, "},
      {"e", "raw", "", kExitWrongModel, 0, "", "e.Q40 is for an RX-Q40E, "},
      {"none", "raw", "", kExitDataError, 0, "", "none.Q40"},
      // identify, 2 reads, End; announce, identify, 2 writes, End; identify, 2 reads, End
      {"read", "changed", "", 0, 13, "", "2 blocks written and verified (auto-dialer memories M9"},
      {"changed", "read", "", 0, 13, "", ""},
      {"raw", "changed", "--verify", 0, 13, "", "channel 7"},
      {"changed", "again", "", 0, 10, "", "1 block written and verified (channel 7)"},
      {"read", "changed", "", kExitNotAsKnown, 4,
       "Auto dialer: St: ", "known to hold, auto-dialer memories M9 and St, channel 7 ("},
      {"read", "changed", "--rest", kExitNotAsKnown, 4, "Memory 7: ", "channel 7 ("},
      {"changed", "again", "--rest", 0, 3, "", "0 blocks written"},
      {"again", "raw", "", 0, 13, "", ""},
  };
  const std::string held(radio_->memory().raw());
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.base) + " " + c.file + " " + c.more);
    const int before = radio_->Exchanges();
    std::vector<std::string> words = {"write", "-p", "1", "--changes",
                                      folder_ / (std::string(c.base) + ".Q40")};
    if (*c.more != 0) words.emplace_back(c.more);
    words.push_back(folder_ / (std::string(c.file) + ".Q40"));
    const Result result = Run(words);
    EXPECT_EQ(result.code, c.code) << result.err;
    EXPECT_EQ(radio_->Exchanges() - before, c.exchanges);
    EXPECT_NE(result.out.find(c.out), std::string::npos) << result.out;
    EXPECT_EQ(result.out.empty(), *c.out == 0) << result.out;
    EXPECT_NE(result.err.find(c.err), std::string::npos) << result.err;
  }
  EXPECT_TRUE(radio_->memory().raw() == held);
  Radio({}, 2);
  const Result other = Run({"write", "-p", "1", "--changes", folder_ / "read.Q40", changed});
  EXPECT_EQ(other.code, kExitWrongModel);
  EXPECT_NE(other.err.find("the radio is an RX-Q40T1, the data is for an RX-Q40T. Nothing was"),
            std::string::npos)
      << other.err;
  EXPECT_EQ(Run({"restore", "-p", "1", folder_ / "raw.Q40"}).code, kExitWrongModel);
}

// A file that was read holds values, not the radio's own digits; and what cannot be decoded is no value.
TEST_F(Ctl, ChangesOfARadioWithDigitsOfItsOwn) {
  CloneData document = FreshData();
  for (const std::size_t n : {5U, 9U}) {
    document.image.MemoryTable[n] = document.image.TemplateChannel();
    document.image.ChannelInUse[n] = true;
  }
  StoreDocument(document, radio_->memory());
  radio_->memory().Write(static_cast<Address>(Unit::Memory(5).address() + 3),
                         "04");  // a step that is read as 5 kHz
  ASSERT_EQ(Run({"read", "-p", "1", folder_ / "read.Q40"}).code, 0);
  document.image.MemoryTable[5].Set(ChannelKind::kMemory, Field::kName, 1, "NEW");
  const std::string changed = Save("changed.Q40", document);
  const auto write = [&](const char* base) {
    return Run({"write", "-p", "1", "--changes", folder_ / base, changed});
  };
  const Result values = write("read.Q40");
  EXPECT_EQ(values.code, 0) << values.err;
  EXPECT_NE(values.err.find("1 block written and verified (channel 5)"), std::string::npos);

  radio_->memory().Write(0x0020, "11");  // of no meaning: a write makes it A5
  const std::string held(radio_->memory().raw());
  radio_->memory().Write(static_cast<Address>(Unit::Memory(9).address() + 12),
                         "63");  // a tone that is none
  ASSERT_EQ(Run({"backup", "-p", "1", folder_ / "raw.Q40"}).code, 0);
  EXPECT_NE(write("raw.Q40").err.find("written and verified (channel 9)"), std::string::npos);
  EXPECT_TRUE(radio_->memory().raw() == held);
}

// An edit of the text outdates the bytes that the backup keeps beside it.
TEST_F(Ctl, AnEditedTextOfABackupCounts) {
  const std::string path = folder_ / "b.Q40";
  radio_->memory().Write(0x1D20, std::string(kUnitDigits, 'F'));
  ASSERT_EQ(Run({"backup", "-p", "1", path}).code, 0);
  std::string text = test::Content(path);
  EXPECT_TRUE(text.ends_with("\r\n1D20 " + std::string(kUnitDigits, 'F') + "\r\n"));
  constexpr std::size_t kLine = 34;
  test::Store(path, text.replace((25 + 2) * kLine, 1, "5"));
  EXPECT_EQ(Run({"restore", "-p", "1", path}).code, 0);
  EXPECT_EQ(radio_->memory().Read(0x1D20, kUnitSize), "35" + std::string(62, '0'));
}

TEST_F(Ctl, WhatBrokeOffNamesTheWholeCommand) {
  const std::string file = Save("a.Q40", FreshData());
  const std::string base = Save("base.Q40", test::RandomDocument(21));
  const std::string kept = folder_ / "kept.Q40";
  const std::string back = "To bring the backup back: rxq40ctl restore -p 1 ";
  using Words = std::vector<std::string>;
  const std::tuple<const char*, Words, std::string, std::string> cases[] = {
      {"ng@#240",
       {"restore", "-p", "1", "--backup", kept, file},
       "restore -p 1 --rest --before " + kept + ' ' + file,
       back + kept},
      {"silence",
       {"write", "-p", "1", "--only", "memory", "--rest", "--before", base, file},
       "write -p 1 --only memory --rest --before " + base + ' ' + file,
       back + base},
      {"ng@#240",
       {"write", "-p", "1", "--changes", base, file},
       "write -p 1 --changes " + base + " --rest " + file,
       ""}};
  for (const auto& [fault, words, go_on, restore] : cases) {
    Radio({fault});
    const Result result = Run(words);
    EXPECT_EQ(result.code, kExitCommunicationError);
    EXPECT_NE(result.err.find("To go on: rxq40ctl " + go_on + '\n'), std::string::npos)
        << result.err;
    EXPECT_NE(result.err.find(restore), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find(back) == std::string::npos, restore.empty()) << result.err;
  }
}

TEST_F(Ctl, AFileThatAppearsMeanwhileIsNotReplaced) {
  const std::string path = Save("a.Q40", FreshData());
  const std::string taken = folder_ / "taken.Q40";
  on_open_ = [&] { test::Store(taken, "precious"); };
  EXPECT_EQ(Run({"read", "-p", "1", taken}).code, kExitCannotWrite);
  EXPECT_EQ(test::Content(taken), "precious");
  std::filesystem::remove(taken);
  const Result write = Run({"write", "-p", "1", "--backup", taken, path});
  EXPECT_EQ(write.code, kExitCannotWrite);
  EXPECT_NE(write.err.find("so nothing was written"), std::string::npos) << write.err;
  EXPECT_EQ(test::Content(taken), "precious");
}

TEST_F(Ctl, ABackupReplacesNothingAndComesFirst) {
  const std::string path = Save("a.Q40", FreshData());
  const std::string memory(radio_->memory().raw());
  EXPECT_EQ(Run({"write", "-p", "1", "--backup", "", path}).code, kExitCannotWrite);
  EXPECT_EQ(radio_->memory().raw(), memory);
  const std::string kept = folder_ / "kept.Q40";
  test::Store(kept, "precious");
  using Words = std::vector<std::string>;
  for (const Words& words :
       {Words{"backup", "-p", "1", kept}, Words{"write", "-p", "1", "--backup", kept, path}}) {
    const Result result = Run(words);
    EXPECT_EQ(result.code, kExitUsage) << result.err;
    EXPECT_NE(result.err.find("A backup replaces no file"), std::string::npos) << result.err;
    EXPECT_EQ(test::Content(kept), "precious");
    EXPECT_EQ(radio_->Exchanges(), 0);
  }
  Radio({"ng@#232"});
  EXPECT_NE(Run({"write", "-p", "1", "--backup=-'.Q40", path}).err.find("-p 1 './-'\\''.Q40'"),
            std::string::npos);
  std::filesystem::remove("-'.Q40");
  Radio({}, 2);
  const Result other = Run({"write", "-p", "1", "--backup", folder_ / "b.Q40", path});
  EXPECT_EQ(other.code, kExitWrongModel);
  constexpr const char* kWhy =
      "Model is not correct: the radio is an RX-Q40T1, the data is for an RX-Q40T";
  EXPECT_NE(other.err.find(kWhy), std::string::npos) << other.err;
  EXPECT_EQ(radio_->memory().raw(), memory);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "b.Q40"));
}

}  // namespace
}  // namespace q40
