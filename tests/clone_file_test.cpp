#include "files/clone_file.h"

#include <cerrno>

#include <gtest/gtest.h>

#include "document/defaults.h"
#include "document/document_cells.h"
#include "files/journal.h"
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
  CloneData document = FreshData();
  EXPECT_EQ(CloneFileText(document, 0), Joined(DefaultLines()));
  // The limits that a new document does not have are there when it is opened again.
  ASSERT_FALSE(OpenCloneText(Joined(DefaultLines()), "a.Q40", document).problem);
  EXPECT_EQ(StoredPresent(document.image, Band::kVhf), (PresentPair{true, true}));
  EXPECT_EQ(document.image.VhfSpecialSet[kRptRow].cellText[0], "145.0000");
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
  CloneData document = FreshData();
  ShowBand(document.image, Band::kUhf);
  const OpenResult result = OpenCloneText(Joined(lines), "a.Q40", document);
  ASSERT_FALSE(result.problem);
  EXPECT_TRUE(result.model_changed);
  EXPECT_EQ(ModelText(document), "RX-Q40T1, version A");
  EXPECT_EQ(document.image.VhfSpecialSet[kCallRow].cellText[0], "146.0000");
  EXPECT_EQ(StoredPresent(document.image, Band::kVhf), (PresentPair{false, true}));
  EXPECT_EQ(StoredPresent(document.image, Band::kUhf), (PresentPair{true, true}));
  EXPECT_EQ(document.image.ShownSpecialSet, document.image.UhfSpecialSet);
  EXPECT_EQ(document.dial[9], "1234ZABC#");
  EXPECT_EQ(document.image.MemoryTable[209].cellText[0], "*145.5000");
  EXPECT_EQ(document.image.MemoryTable[209].cellText[15], "AB");
}

TEST(CloneFile, RoundTripsOfManyDocuments) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    CloneData document = test::RandomDocument(seed);
    const std::string text = CloneFileText(document, document.model).value();
    CloneData opened = FreshData();
    ASSERT_FALSE(OpenCloneText(text, "a.Q40", opened).problem);
    EXPECT_EQ(opened.image, document.image) << seed;
    EXPECT_EQ(opened.settings, document.settings) << seed;
    EXPECT_EQ(opened.dial, document.dial) << seed;
    EXPECT_EQ(CloneFileText(opened, opened.model), text) << seed;
  }
}

TEST(CloneFile, LineEndsAndWhatFollows) {
  const std::string crlf = Joined(DefaultLines());
  CloneData document = FreshData();
  for (const std::string& text :
       {Joined(DefaultLines(), "\n"), Joined(DefaultLines(), "\r"), crlf + "more\r\nlines",
        crlf.substr(0, crlf.size() - 2), crlf.substr(0, crlf.size() - 1)}) {
    EXPECT_FALSE(OpenCloneText(text, "a.Q40", document).problem);
  }
}

// Everything that is refused, with the line that is named.
TEST(CloneFile, RefusesWhatIsNotACloneFile) {
  const std::string good = Joined(DefaultLines());
  const auto with = [](std::size_t line, std::string text) {
    Lines lines = DefaultLines();
    lines[line] = std::move(text);
    return Joined(lines);
  };
  const std::tuple<std::string, int, const char*> cases[] = {
      {"", 1, "the file ends here; a clone file has 456 lines"},
      {good.substr(0, 455 * 34), 456, "the file ends here"},
      {with(100, std::string(31, '0')), 101, "31 characters instead of 32"},
      {with(100, std::string(33, '0')), 101, "33 characters instead of 32"},
      {good.substr(0, 455 * 34) + std::string(33, 'x'), 456, "more than 32 characters"},
      {"\xEF\xBB\xBF" + good, 1, "35 characters"},
      {with(0, "korvex RX-Q40T Clone 0 FileStart"), 1, "not the header of a clone file"},
      {with(0, std::string("Korvex RX-Q40T Clone\0 0 FileStart", 32)), 1, "not the header"},
      {with(455, "Korvex RX-Q40   Clone  File  End"), 456, "not the end line of a clone file"},
      {with(7, "80000000014500000000600027080000"), 8, "VHF CALL: byte 12"},
      {with(41, "80000000014500000000600008080000").replace(42 * 34 + 30, 2, "0B"), 43,
       "Memory 3: byte 31"},
      {with(453, "80000000014500000000600008080068"), 454,
       "Memory D9: byte 15 (RxDCS) holds 0x68"}};
  for (const auto& [text, line, what] : cases) {
    CloneData document = test::RandomDocument(3);
    document.model = 0;
    document.image.VersionA = false;
    const CloneData before = document;
    const auto problem = OpenCloneText(text, "a.Q40", document).problem;
    ASSERT_TRUE(problem) << what;
    EXPECT_EQ(problem->line, line) << what;
    EXPECT_EQ(problem->what.find(what), 0U) << problem->what;
    EXPECT_EQ(problem->kind, FileProblem::Kind::kBadData) << what;
    EXPECT_EQ(document.image, before.image) << what;
    EXPECT_EQ(document.settings, before.settings) << what;
    EXPECT_EQ(document.dial, before.dial) << what;
  }
}

TEST(CloneFile, BadEndLineLeavesTheModelOfTheHeaderBehind) {
  Lines lines = DefaultLines();
  lines[0] = "Korvex RX-Q40E Clone A FileStart";
  lines[455] = std::string(32, ' ');
  CloneData document = FreshData();
  const OpenResult result = OpenCloneText(Joined(lines), "a.Q40", document);
  EXPECT_TRUE(result.problem);
  EXPECT_TRUE(result.model_changed);
  EXPECT_EQ(ModelText(document), "RX-Q40E, version A");
  EXPECT_EQ(document.image.UhfSpecialSet[0].cellText[0], "435.0000");
}

TEST(CloneFile, LongDialTextIsNotCutAndNoModelAbove3IsWritten) {
  CloneData document = FreshData();
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
  CloneData special = FreshData();
  special.image.UhfSpecialSet[kPlRow].value[3] = 39;
  CloneData memory = FreshData();
  memory.image.MemoryTable[209].value[9] = 11;
  for (CloneData document : {special, memory}) {
    EXPECT_DEBUG_DEATH(EXPECT_EQ(SaveCloneFile(path, document, 0).value().Message(),
                                 path + ": the data cannot be encoded"),
                       "encodable");
    EXPECT_EQ(test::Content(path), "the only copy");
  }
}

TEST(CloneFile, OddDigitsAreWorthAWord) {
  constexpr const char* kCarried =
      " is no hexadecimal digit; where no control owns the byte it is carried as it is";
  constexpr const char* kZero = " is no hexadecimal digit and reads as 0";
  const std::tuple<std::size_t, std::size_t, const char*> cases[] = {
      {1, 1, kCarried}, {4, 32, kCarried}, {5, 3, kZero},  {24, 3, kZero},
      {25, 3, nullptr}, {34, 3, nullptr},  {35, 3, kZero}, {454, 32, kZero}};
  for (const auto& [line, character, what] : cases) {
    Lines lines = DefaultLines();
    lines[line][character - 1] = 'x';
    CloneData document = FreshData();
    const OpenResult result = OpenCloneText(Joined(lines), "a.Q40", document);
    EXPECT_FALSE(result.problem);
    ASSERT_EQ(result.odd_digit.has_value(), what != nullptr) << line;
    if (!result.odd_digit) continue;
    EXPECT_EQ(result.odd_digit->line, static_cast<int>(line) + 1);
    EXPECT_EQ(result.odd_digit->what, "character " + std::to_string(character) + what);
  }
}

// A file system on which the n-th call fails.
class FailingFiles final : public FileSystem {
 public:
  int fail_at = 0;
  bool loses_bytes = false;  // reports success, stores half: as a full disk has been seen to do

  bool MayWrite(const std::string& path) override { return !Fails() && FileSystem::MayWrite(path); }
  std::FILE* Create(const std::string& path, std::uint32_t mode) override {
    return Fails() ? nullptr : FileSystem::Create(path, mode);
  }
  std::size_t Write(std::FILE* file, std::string_view data) override {
    const bool part = Fails() || loses_bytes;
    const std::size_t stored = FileSystem::Write(file, part ? data.substr(0, 5) : data);
    return loses_bytes ? data.size() : stored;
  }
  bool Sync(std::FILE* file) override { return !Fails() && FileSystem::Sync(file); }
  bool Close(std::FILE* file) override { return FileSystem::Close(file) && !Fails(); }
  std::int64_t Size(const std::string& path) override {
    return Fails() ? -1 : FileSystem::Size(path);
  }
  bool Rights(const std::string& path, FileRights& rights) override {
    return !Fails() && FileSystem::Rights(path, rights);
  }
  bool SetMode(std::FILE* file, std::uint32_t mode) override {
    return !Fails() && FileSystem::SetMode(file, mode);
  }
  bool Rename(const std::string& from, const std::string& to) override {
    return !Fails() && FileSystem::Rename(from, to);
  }

 private:
  int calls_ = 0;
  bool Fails() {
    if (++calls_ != fail_at) return false;
    errno = ENOSPC;
    return true;
  }
};

TEST(CloneFile, TheOldFileSurvivesTheFailureOfEveryCall) {
  constexpr int kCalls = 10;
  test::TempFolder folder;
  const std::string path = folder / "radio.Q40";
  for (int call = 0; call <= kCalls + 1; ++call) {
    test::Store(path, "the only copy");
    std::filesystem::permissions(path, std::filesystem::perms::set_uid,
                                 std::filesystem::perm_options::add);
    CloneData document = FreshData();
    FailingFiles files;
    files.fail_at = call;
    files.loses_bytes = call == 0;
    const auto problem = SaveCloneFile(path, document, 0, files);
    EXPECT_EQ(folder.FileCount(), 1U) << call;
    ASSERT_EQ(problem.has_value(), call <= kCalls) << call;
    EXPECT_EQ(test::Content(path), problem ? "the only copy" : Joined(DefaultLines())) << call;
    if (!problem) continue;
    const char* const why = call == 0 ? "only 5 of 15504 bytes" : "No space left";
    EXPECT_NE(problem->what.find(why), std::string::npos) << problem->what;
  }
}

// ---- journals

TEST(Journal, HoldsWhatAFileCannotAndNoticesWhatIsSpoiled) {
  Journal journal = {.time = 1'800'000'000'123, .saved = {FreshData(), ""}, .now = {}};
  journal.now = {test::RandomDocument(7), "a\nb\377.Q40"};
  CloneImage& image = journal.now.data.image;
  image.ChannelInUse[3] = false;  // a cleared channel that keeps its fields
  image.MemoryTable[4].cellText[0] = std::string("\0 any text", 10);
  image.MemoryTable[5].value[2] = -7;
  journal.now.data.settings.cmbTB = 4;
  ShowBand(image, Band::kUhf);
  const std::string text = JournalText(journal);
  const auto read = JournalFrom(text);
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->now.data == journal.now.data && read->saved.data == journal.saved.data);
  EXPECT_EQ(read->now.path + '|' + read->saved.path, "a\nb\377.Q40|");
  EXPECT_EQ(read->time, journal.time);
  for (std::size_t at = 0; at < text.size(); at += 97) {
    std::string spoiled = text;
    spoiled[at] = static_cast<char>(spoiled[at] ^ 4);
    EXPECT_FALSE(JournalFrom(spoiled)) << at;
    EXPECT_FALSE(JournalFrom(text.substr(0, at))) << at;
  }
  journal.now.data.settings.Slider1 = 31;
  EXPECT_FALSE(JournalFrom(JournalText(journal)));
}

}  // namespace
}  // namespace q40
