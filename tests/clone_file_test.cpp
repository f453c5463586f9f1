#include "files/clone_file.h"

#include <cerrno>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "files/whole_file.h"
#include "image/defaults.h"
#include "support/random_document.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

using Lines = std::vector<std::string>;

// A file of the default RX-Q40T, written by hand from the format.
Lines DefaultLines() {
  Lines lines = {"Korvex RX-Q40T Clone 0 FileStart", "A5000000D40F03000002020000000000",
                 "01000000000000000000000002000001", std::string(32, '0'), std::string(32, '0')};
  for (const std::string mhz : {"145", "445"}) {
    const std::string offset = mhz == "145" ? "00006000" : "00050000";
    for (const std::string flags : {"80000000", "80000000", "80010100", "00000000", "00000000"}) {
      lines.push_back(flags + "0" + mhz + "0000" + offset + "08080000");
      lines.push_back("00000000000000000100000000000005");
    }
  }
  for (int i = 0; i < 10; ++i) lines.push_back(std::string(32, 'Z'));
  for (int i = 0; i < 420; ++i) lines.push_back(std::string(32, '0'));
  lines.push_back("Korvex  RX-Q40  Clone  File  End");
  return lines;
}

std::string Joined(const Lines& lines, const std::string& end = "\r\n") {
  std::string text;
  for (const std::string& line : lines) text += line + end;
  return text;
}

TEST(CloneFile, DefaultsAreWrittenAsTheFormatSays) {
  CloneDocument document = FreshDocument();
  EXPECT_EQ(CloneFileText(document, 0), Joined(DefaultLines()));
}

TEST(CloneFile, EveryPlaceHoldsWhatItShould) {
  Lines lines = DefaultLines();
  lines[0] = "Korvex RX-Q40T1 CloneA FileStart";
  lines[7] = "80000002014600000000600008080000";   // VHF CALL
  lines[11] = "00000000000000000000600008080000";  // VHF PH without a frequency
  lines[23] = "00000000043500000005000008080000";  // UHF PL with one
  lines[34] = "1234ZABC#" + std::string(23, 'Z');
  lines[453] = "88000000014550000000600008080000";  // channel D9
  lines[454] = "3A3B0000000000000100000000000005";
  CloneDocument document = FreshDocument();
  document.SettingsChanged = document.MemoryChanged = true;
  ShowBand(document.image, Band::kUhf);
  const OpenResult result = OpenCloneText(Joined(lines), "a.Q40", document);
  ASSERT_FALSE(result.problem);
  EXPECT_TRUE(result.model_changed);
  EXPECT_FALSE(document.SettingsChanged || document.MemoryChanged);
  EXPECT_EQ(document.model, 2);
  EXPECT_TRUE(document.image.VersionA);
  EXPECT_EQ(document.image.VhfSpecialSet[kCallRow].cellText[0], "146.0000");
  EXPECT_EQ(StoredPresent(document.image, Band::kVhf), (PresentPair{false, true}));
  EXPECT_EQ(StoredPresent(document.image, Band::kUhf), (PresentPair{true, true}));
  EXPECT_EQ(document.image.ShownSpecialSet, document.image.UhfSpecialSet);
  EXPECT_EQ(document.dial[9], "1234ZABC#");
  EXPECT_EQ(document.dial[0], "");
  EXPECT_EQ(document.image.MemoryTable[209].cellText[0], "*145.5000");
  EXPECT_EQ(document.image.MemoryTable[209].cellText[15], "AB");
  EXPECT_TRUE(document.image.ChannelInUse[209]);
  EXPECT_EQ(document.image.TemplateChannel().cellText[0], "145.0000");
}

TEST(CloneFile, RoundTripsOfManyDocuments) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    CloneDocument document = test::RandomDocument(seed);
    const auto text = CloneFileText(document, document.model);
    ASSERT_TRUE(text);
    CloneDocument opened = FreshDocument();
    ASSERT_FALSE(OpenCloneText(*text, "a.Q40", opened).problem);
    EXPECT_EQ(opened.image, document.image) << seed;
    EXPECT_EQ(opened.settings, document.settings) << seed;
    EXPECT_EQ(opened.dial, document.dial) << seed;
    EXPECT_EQ(CloneFileText(opened, opened.model), text) << seed;
  }
}

TEST(CloneFile, LineEndsAndWhatFollows) {
  const std::string crlf = Joined(DefaultLines());
  CloneDocument document = FreshDocument();
  for (const std::string& text :
       {Joined(DefaultLines(), "\n"), Joined(DefaultLines(), "\r"), crlf + "more\r\nlines",
        crlf.substr(0, crlf.size() - 2), crlf.substr(0, crlf.size() - 1)}) {
    EXPECT_FALSE(OpenCloneText(text, "a.Q40", document).problem);
  }
}

// Everything that is refused, with the line that is named.
TEST(CloneFile, RefusesWhatIsNotACloneFile) {
  const auto with = [](std::size_t line, std::string text) {
    Lines lines = DefaultLines();
    lines[line] = std::move(text);
    return Joined(lines);
  };
  const std::string good = Joined(DefaultLines());
  const struct {
    const char* name;
    std::string text;
    int line;
  } cases[] = {
      {"empty", "", 1},
      {"one line", good.substr(0, 34), 2},
      {"455 lines", good.substr(0, 455 * 34), 456},
      {"31 characters", with(100, std::string(31, '0')), 101},
      {"33 characters", with(100, std::string(33, '0')), 101},
      {"33 characters at the end", good.substr(0, 455 * 34) + std::string(33, 'x'), 456},
      {"trailing blank", with(2, std::string(32, '0') + " "), 3},
      {"byte-order mark", "\xEF\xBB\xBF" + good, 1},
      {"header in other case", with(0, "korvex RX-Q40T Clone 0 FileStart"), 1},
      {"header with other blanks", with(0, "Korvex RX-Q40T1Clone 0 FileStart"), 1},
      {"NUL in the header", with(0, std::string("Korvex RX-Q40T Clone\0 0 FileStart", 32)), 1},
      {"end line", with(455, "Korvex RX-Q40   Clone  File  End"), 456},
      {"tone 39 in CALL", with(7, "80000000014500000000600027080000"), 8},
      {"MID 11 in channel 3",
       with(41, "80000000014500000000600008080000").replace(42 * 34 + 30, 2, "0B"), 43},
      {"DCS 104 in D9", with(453, "80000000014500000000600008080068"), 454}};
  for (const auto& c : cases) {
    CloneDocument document = test::RandomDocument(3);
    document.model = 0;
    document.image.VersionA = false;
    document.MemoryChanged = true;
    const CloneDocument before = document;
    const OpenResult result = OpenCloneText(c.text, "a.Q40", document);
    ASSERT_TRUE(result.problem) << c.name;
    EXPECT_EQ(result.problem->line, c.line) << c.name;
    EXPECT_EQ(result.problem->kind, FileProblem::Kind::kBadData) << c.name;
    EXPECT_EQ(document.image, before.image) << c.name;
    EXPECT_EQ(document.settings, before.settings) << c.name;
    EXPECT_EQ(document.dial, before.dial) << c.name;
    EXPECT_EQ(document.model, 0) << c.name;
    EXPECT_TRUE(document.MemoryChanged) << c.name;
  }
}

TEST(CloneFile, BadEndLineLeavesTheModelOfTheHeaderBehind) {
  Lines lines = DefaultLines();
  lines[0] = "Korvex RX-Q40E Clone A FileStart";
  lines[455] = std::string(32, ' ');
  CloneDocument document = FreshDocument();
  const OpenResult result = OpenCloneText(Joined(lines), "a.Q40", document);
  EXPECT_TRUE(result.problem);
  EXPECT_TRUE(result.model_changed);
  EXPECT_EQ(document.model, 1);
  EXPECT_TRUE(document.image.VersionA);
  EXPECT_EQ(document.image.UhfSpecialSet[0].cellText[0], "435.0000");
}

TEST(CloneFile, AbsentLimitsOfANewDocumentArePresentAfterSaveAndOpen) {
  CloneDocument document = FreshDocument();
  const auto text = CloneFileText(document, 0);
  ASSERT_FALSE(OpenCloneText(*text, "a.Q40", document).problem);
  EXPECT_EQ(StoredPresent(document.image, Band::kVhf), (PresentPair{true, true}));
  EXPECT_EQ(document.image.VhfSpecialSet[kRptRow].cellText[0], "145.0000");
}

TEST(CloneFile, LongDialTextIsNotCutAndNoModelAbove3IsWritten) {
  CloneDocument document = FreshDocument();
  document.dial[0] = std::string(33, '1');
  EXPECT_EQ(CloneFileText(document, 0)->size(), 456U * 34 + 1);
  for (const int model : {-1, 4, 5}) EXPECT_FALSE(CloneFileText(document, model));
  for (const char* text : {"12\r\n34", "1\n", "1\r"}) {  // would make a file that nobody can open
    document.dial[0] = text;
    EXPECT_FALSE(CloneFileText(document, 0));
  }
}

TEST(CloneFile, DataThatCannotBeEncodedReplacesNoFile) {
  test::TempFolder folder;
  const std::string path = folder / "radio.Q40";
  test::Store(path, "the only copy");
  CloneDocument special = FreshDocument();
  special.image.UhfSpecialSet[kPlRow].value[3] = 39;
  CloneDocument memory = FreshDocument();
  memory.image.MemoryTable[209].value[9] = 11;
  for (CloneDocument document : {special, memory}) {
    document.MemoryChanged = true;
    EXPECT_DEBUG_DEATH(
        {
          const auto problem = SaveCloneFile(path, document, 0);
          ASSERT_TRUE(problem);
          EXPECT_EQ(problem->Message(), path + ": the data cannot be encoded");
          EXPECT_EQ(problem->kind, FileProblem::Kind::kCannotWrite);
          EXPECT_TRUE(document.MemoryChanged);
        },
        "encodable");
    EXPECT_EQ(test::Content(path), "the only copy");
  }
}

TEST(CloneFile, OddDigitsAreWorthAWord) {
  const struct {
    std::size_t line, character;
    const char* what;
  } cases[] = {{0, 0, ""},  // a good file
               {1, 0,
                "character 1 is no hexadecimal digit; where no control owns the byte it is "
                "carried as it is"},
               {4, 31, "character 32 is no hexadecimal digit; where no control"},
               {5, 2, "character 3 is no hexadecimal digit and reads as 0"},
               {24, 2, "character 3 is no hexadecimal digit and reads as 0"},
               {25, 2, ""},
               {34, 2, ""},
               {35, 2, "character 3 is no hexadecimal digit and reads as 0"},
               {454, 31, "character 32 is no hexadecimal digit and reads as 0"}};
  for (const auto& c : cases) {
    Lines lines = DefaultLines();
    if (c.line > 0) lines[c.line][c.character] = 'x';
    CloneDocument document = FreshDocument();
    const OpenResult result = OpenCloneText(Joined(lines), "a.Q40", document);
    EXPECT_FALSE(result.problem);
    ASSERT_EQ(result.odd_digit.has_value(), *c.what != '\0') << c.line;
    if (!result.odd_digit) continue;
    EXPECT_EQ(result.odd_digit->line, static_cast<int>(c.line) + 1);
    EXPECT_EQ(result.odd_digit->what.find(c.what), 0U) << result.odd_digit->what;
  }
}

// ---- files on disk

TEST(FileReading, RefusesWhatIsNoRegularFileAndReadsNoMoreThanItNeeds) {
  test::TempFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  CloneDocument document = FreshDocument();
  for (const std::string& path : {folder.path(), folder / "pipe", std::string("/dev/zero"),
                                  std::string("/dev/null"), folder / "missing", std::string()}) {
    const auto problem = OpenCloneFile(path, document).problem;
    ASSERT_TRUE(problem) << path;
    EXPECT_EQ(problem->line, 0) << path;
    EXPECT_FALSE(problem->what.empty()) << path;
  }
  // 100 MB behind a good file are not even read; 100 MB of one line are refused by its length.
  test::Store(folder / "long.Q40", Joined(DefaultLines()));
  std::filesystem::resize_file(folder / "long.Q40", 100'000'000);
  EXPECT_FALSE(OpenCloneFile(folder / "long.Q40", document).problem);
  test::Store(folder / "zeros.Q40", "");
  std::filesystem::resize_file(folder / "zeros.Q40", 100'000'000);
  EXPECT_EQ(OpenCloneFile(folder / "zeros.Q40", document).problem->line, 1);
}

// A file system on which the n-th call fails.
class FailingFiles final : public FileSystem {
 public:
  int fail_at = 0;
  int calls = 0;
  bool loses_bytes = false;  // reports success, stores half: as a full disk has been seen to do

  bool MayWrite(const std::string& path) override { return !Fails() && FileSystem::MayWrite(path); }
  std::FILE* Create(const std::string& path) override {
    return Fails() ? nullptr : FileSystem::Create(path);
  }
  std::size_t Write(std::FILE* file, std::string_view data) override {
    if (loses_bytes) {
      FileSystem::Write(file, data.substr(0, data.size() / 2));
      return data.size();
    }
    return Fails() ? FileSystem::Write(file, data.substr(0, 5)) : FileSystem::Write(file, data);
  }
  bool Sync(std::FILE* file) override { return !Fails() && FileSystem::Sync(file); }
  bool Close(std::FILE* file) override { return FileSystem::Close(file) && !Fails(); }
  std::int64_t Size(const std::string& path) override {
    return Fails() ? -1 : FileSystem::Size(path);
  }
  bool CopyRights(const std::string& from, const std::string& to) override {
    return !Fails() && FileSystem::CopyRights(from, to);
  }
  bool Rename(const std::string& from, const std::string& to) override {
    return !Fails() && FileSystem::Rename(from, to);
  }

 private:
  bool Fails() {
    if (++calls != fail_at) return false;
    errno = ENOSPC;
    return true;
  }
};

TEST(FileWriting, OldFileSurvivesTheFailureOfEveryCall) {
  test::TempFolder folder;
  const std::string path = folder / "radio.Q40";
  for (int call = 1;; ++call) {
    test::Store(path, "the only copy");
    CloneDocument document = FreshDocument();
    document.SettingsChanged = document.MemoryChanged = true;
    FailingFiles files;
    files.fail_at = call;
    const auto problem = SaveCloneFile(path, document, 0, files);
    EXPECT_EQ(folder.FileCount(), 1U) << call;
    if (!problem) {
      EXPECT_EQ(call, 9);  // eight calls were made to fail before one save went through
      EXPECT_EQ(test::Content(path).size(), 15504U);
      EXPECT_FALSE(document.SettingsChanged || document.MemoryChanged);
      break;
    }
    EXPECT_EQ(problem->kind, FileProblem::Kind::kCannotWrite);
    EXPECT_NE(problem->Message().find("No space left"), std::string::npos) << problem->Message();
    EXPECT_EQ(test::Content(path), "the only copy") << call;
    EXPECT_TRUE(document.SettingsChanged && document.MemoryChanged);
    ASSERT_LT(call, 20);
  }
  test::Store(path, "the only copy");
  FailingFiles files;
  files.loses_bytes = true;
  EXPECT_TRUE(WriteFile(path, "0123456789", files));
  EXPECT_EQ(test::Content(path), "the only copy");
  EXPECT_EQ(folder.FileCount(), 1U);
}

TEST(FileWriting, KeepsLinksAndRightsAndRefusesOtherTargets) {
  namespace fs = std::filesystem;
  test::TempFolder folder;
  fs::create_directory(folder / "real");
  test::Store(folder / "real/radio.Q40", "old");
  fs::permissions(folder / "real/radio.Q40", fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("real/radio.Q40", folder / "link");
  fs::create_symlink("real/new.Q40", folder / "dangling");
  EXPECT_FALSE(WriteFile(folder / "link", "new"));
  EXPECT_FALSE(WriteFile(folder / "dangling", "fresh"));
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(test::Content(folder / "real/radio.Q40"), "new");
  EXPECT_EQ(test::Content(folder / "real/new.Q40"), "fresh");
  EXPECT_EQ(fs::status(folder / "real/radio.Q40").permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
  for (const std::string& path : {folder.path(), folder / "nowhere/radio.Q40",
                                  std::string("/dev/null"), std::string(), folder.path() + "/"}) {
    const auto problem = WriteFile(path, "x");
    ASSERT_TRUE(problem) << path;
    EXPECT_EQ(problem->kind, FileProblem::Kind::kCannotWrite);
  }
}

TEST(FileWriting, LongNamesAreNoProblemAndCheckingLeavesNothing) {
  test::TempFolder folder;
  const std::string path = folder / std::string(250, 'n');
  EXPECT_FALSE(WriteFile(path, "text"));
  EXPECT_FALSE(CheckReplaceable(path));
  EXPECT_EQ(test::Content(path), "text");
  EXPECT_EQ(folder.FileCount(), 1U);
}

TEST(FileWriting, AFolderThatVanishesIsReported) {
  test::TempFolder folder;
  std::filesystem::create_directory(folder / "sub");
  FileReplacement replacement;
  ASSERT_FALSE(replacement.Open(folder / "sub/radio.Q40"));
  std::filesystem::remove_all(folder / "sub");
  EXPECT_TRUE(replacement.Commit("text"));
}

}  // namespace
}  // namespace q40
