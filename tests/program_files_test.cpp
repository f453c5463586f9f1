// The built programs and the files, streams and pipes that a shell gives them.
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/ctl_process.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

using test::Ctl;
using test::ProcessResult;
using test::Says;
using test::SimulatorProcess;

TEST(Programs, AProtectedFileIsNotReplaced) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root to become nobody";
  test::TempFolder folder;
  std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
  ASSERT_EQ(Ctl({"new", "--model", "RX-Q40T", folder / "a.Q40"}).code, 0);
  ASSERT_EQ(chmod((folder / "a.Q40").c_str(), 0555), 0);
  const ProcessResult result =
      Ctl({"new", "--force", "--model", "RX-Q40E", folder / "a.Q40"}, {.as_nobody = true});
  EXPECT_EQ(result.code, 7);
  EXPECT_TRUE(Says(result, "Permission denied")) << result.err;

  // Nor does a file change its owner when root replaces it.
  constexpr uid_t kNobody = 65534;
  ASSERT_EQ(chown((folder / "a.Q40").c_str(), kNobody, kNobody), 0);
  EXPECT_EQ(Ctl({"new", "--force", "--model", "RX-Q40E", folder / "a.Q40"}).code, 0);
  struct stat owner {};
  EXPECT_EQ(stat((folder / "a.Q40").c_str(), &owner), 0);
  EXPECT_TRUE(owner.st_uid == kNobody && owner.st_gid == kNobody);
}

TEST(Programs, StreamsAndPipesOfAShell) {
  test::TempFolder folder;
  const std::string start =
      "cd " + folder.path() + "; ctl() { " + test::Program("rxq40ctl") + " --quiet \"$@\"; }; ";
  const auto shell = [&](const std::string& line) {
    return test::Run({"/bin/bash", "-c", start + line});
  };
  SimulatorProcess radio({"--link", folder / "radio"});
  SimulatorProcess broken({"--link", folder / "bad", "--model", "RX-Q40E", "--fault", "ng@0240"});
  ASSERT_EQ(shell("ctl new --model RX-Q40E a.Q40 && ctl new --model RX-Q40T b.Q40 && "
                  "ctl export a.Q40 list.csv && ctl import a.Q40 list.csv -o c.Q40 && mkfifo p")
                .code,
            0);
  // err: words of it; nothing at all when empty
  const std::tuple<const char*, int, std::string, const char*> cases[] = {
      {"exec 3<>radio; printf 'KX~WHO\\r\\n' >&3; head -c 19 <&3", 0, "KX~WHO\r\nRXQ40-00-\r\n",
       ""},  // nobody has set the device up
      {"ctl show a.Q40 > /dev/full", 7, "", "No space left"},
      {"ctl show a.Q40 >&-", 7, "", "standard output is closed"},
      {"ctl read -p radio - >&-", 7, "", "standard output is closed"},
      {"ctl check - <&-", 6, "standard input: is closed\n", ""},
      {"ctl diff a.Q40 b.Q40 | head -1; exit ${PIPESTATUS[0]}", 1,
       "Radio: Model: \"RX-Q40E\" -> \"RX-Q40T\"\n", ""},
      {"ctl dump -p radio | head -1; exit ${PIPESTATUS[0]}", 0,
       "00\t" + std::string(32, 'F') + '\n', ""},
      {"cat a.Q40 | ctl check -", 0, "standard input: ok\n", ""},
      {"cat a.Q40 | ctl check /dev/stdin", 0, "/dev/stdin: ok\n", ""},
      {"cat a.Q40 > p & ctl check p", 0, "p: ok\n", ""},
      {"yes | ctl check -", 6, "standard input, line 1: 1 characters instead of 32\n", ""},
      {"ctl import a.Q40 - < /dev/zero", 6, "", "longer than 16 MiB"},
      {"ctl lint - < a.Q40", 0, "", ""},
      {"ctl diff <(cat a.Q40) a.Q40", 0, "", ""},
      {"ctl diff - /dev/stdin < a.Q40", 2, "", "only one of the files can be standard input"},
      {"ctl new --model RX-Q40E - | cmp - a.Q40", 0, "", ""},
      {"ctl import - <(cat list.csv) < a.Q40 | cmp - c.Q40", 0, "", ""},
      {"ctl import <(cat a.Q40) list.csv", 2, "", "Name the file to write with -o"},
      {"ctl read -p radio - | ctl check -", 0, "standard input: ok\n", ""},
      {"ctl write -p radio --backup - a.Q40", 2, "", "A backup needs one"},
      // It is read already, so there is nothing to go on with.
      {"ctl write -p bad - <a.Q40 2>&1 | grep -o 'not acknowledged\\|To go on'", 0,
       "not acknowledged\n", ""},
      {"{ echo 1; ctl export a.Q40 /dev/fd/1; } > log; head -c 9 log", 0, "1\n\"MODEL\"", ""},
      {"ctl export a.Q40 >(cmp - list.csv); wait $!", 0, "", ""},
      {"cmp p list.csv & ctl export a.Q40 p; wait $!", 0, "", ""},
      {"ctl export --force a.Q40 b.Q40", 2, "", "b.Q40 is a clone file"},
      {"ls -- -", 2, "", "ls"},
  };
  for (const auto& [line, code, out, err] : cases) {
    const ProcessResult result = shell(line);
    EXPECT_EQ(result.code, code) << line << '\n' << result.err;
    EXPECT_EQ(result.out, out) << line;
    EXPECT_EQ(result.err.empty(), *err == 0) << line << '\n' << result.err;
    EXPECT_TRUE(Says(result, err)) << result.err;
  }
}

// The tool alone, and with the program that paints beside it.
TEST(Programs, AChannelCardIsAPdfWithItsFonts) {
  test::TempFolder folder;
  const auto shell = [&](const std::string& line) {
    return test::Run({"/bin/sh", "-c", "cd " + folder.path() + "; " + line});
  };
  ASSERT_EQ(
      shell("cp " + test::Program("rxq40ctl") + " ctl && ./ctl new --model RX-Q40E a.Q40").code, 0);
  std::string line =
      "RX-Q40,MEMORY,7,145.6,5KHz,None,88.5,88.5,023,023,None,0,Off,Hi,5,Off,Off,Off,"
      "Off,Normal,NAME,Off\r\n";
  test::Store(folder / "list.csv", line);
  ASSERT_EQ(shell("cp a.Q40 empty.Q40; ./ctl import a.Q40 list.csv").code, 0);
  EXPECT_TRUE(Says(shell("./ctl card a.Q40 a.pdf"), "rxq40card, which makes the card, is not"));
  if (!std::filesystem::exists(test::Program("rxq40card"))) return;  // built without the window
  ASSERT_EQ(shell("ln -s " + test::Program("rxq40card") + " rxq40card").code, 0);
  // err: words of it; nothing at all when empty
  const std::tuple<const char*, int, const char*> cases[] = {
      {"./ctl card a.Q40 a.pdf", 0, ""},
      {"./ctl card a.Q40 a.pdf", 2, "a.pdf exists. Use --force to replace it."},
      {"./ctl card --force a.Q40 a.pdf", 0, ""},
      {"./ctl card --force a.Q40 empty.Q40", 2, "empty.Q40 is a clone file"},
      {"./ctl card a.Q40 nowhere/a.pdf", 7, "nowhere"},
      {"./ctl card --paper a5 a.Q40 b.pdf", 2, "a5 not in {a4,letter}"},
      {"./ctl card list.csv b.pdf", 6, "list.csv, line 1"},
      {"./ctl card empty.Q40 b.pdf", 6, "empty.Q40: no channel is in use"},
      {"./ctl card --special empty.Q40 - | cmp -n 5 - a.pdf", 0, ""},
      {"./ctl card --paper Letter --pocket - b.pdf <a.Q40 && grep -aq 'Box .0 0 792.0* 612' b.pdf",
       0, ""},
      {"export SOURCE_DATE_EPOCH=1; for zone in UTC Asia/Tokyo UTC UTC; do TZ=$zone ./ctl card "
       "--force a.Q40 1.pdf && cksum <1.pdf; done | uniq | wc -l | grep -qx 1 && "
       "grep -aq D:19700101000001 1.pdf",
       0, ""},
      {"echo '<fontconfig><dir>/nowhere</dir></fontconfig>' >none; FONTCONFIG_FILE=$PWD/none ./ctl "
       "card a.Q40 c.pdf",
       7, "Install one, fonts-dejavu-core"},
      {"ls c.pdf", 2, "ls"}};
  for (const auto& [words, code, err] : cases) {
    const ProcessResult result = shell(words);
    EXPECT_EQ(result.code, code) << words << '\n' << result.err;
    EXPECT_EQ(result.err.empty(), *err == 0) << words << '\n' << result.err;
    EXPECT_TRUE(Says(result, err)) << words << '\n' << result.err;
  }
  const std::string pdf = test::Content(folder / "a.pdf");
  EXPECT_TRUE(pdf.starts_with("%PDF-"));
  for (const char* part :
       {"/FontFile2", "/ToUnicode", "/Count 1\n", "/MediaBox [0 0 595.000000 842.000000]"}) {
    EXPECT_NE(pdf.find(part), std::string::npos) << part;
  }
}

}  // namespace
}  // namespace q40
