// The commands of rxq40ctl, run in this process on a simulated radio without time.
#include <cstring>
#include <sys/stat.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "document/defaults.h"
#include "support/ctl_fixture.h"

namespace q40 {
namespace {

using test::Ctl;

TEST_F(Ctl, IdentifyReadDiffWrite) {
  EXPECT_EQ(Run({"identify", "-p", "3"}).out, "RX-Q40T version 0\n");
  EXPECT_EQ(device_, "/dev/ttyUSB2");
  EXPECT_EQ(Run({"identify", "-p", "/x", "--json"}).out,
            "{\n  \"model\": \"RX-Q40T\",\n  \"version\": \"0\"\n}\n");
  const Result read = Run({"read", "-p", "1", folder_ / "a.Q40"});
  EXPECT_EQ(read.code, 0) << read.err;
  EXPECT_EQ(read.out, "");
  EXPECT_EQ(Run({"--quiet", "read", "-p", "1", folder_ / "b.Q40"}).err, "");
  EXPECT_EQ(Run({"diff", folder_ / "a.Q40", folder_ / "b.Q40"}).code, 0);
  EXPECT_EQ(test::Content(folder_ / "a.Q40"), test::Content(folder_ / "b.Q40"));

  const std::string other = Save("other.Q40", FreshData());
  EXPECT_EQ(Run({"write", "-p", "1", other}).code, 0);
  EXPECT_EQ(Run({"read", "-p", "1", folder_ / "b.Q40"}).code, kExitUsage);
  EXPECT_EQ(Run({"read", "-p", "1", "--force", folder_ / "b.Q40"}).code, 0);
  EXPECT_EQ(Run({"diff", other, folder_ / "b.Q40"}).code, 0);
  EXPECT_EQ(Run({"read", "-p", "1", "--only", "memory", other}).code, 0);
}

TEST_F(Ctl, ReadKeepsWhatItIsNotToldToReplace) {
  CloneData mine = FreshData();
  mine.dial[0] = "777";
  const std::string path = Save("a.Q40", mine);
  EXPECT_EQ(Run({"read", "-p", "1", "--only", "memory", path}).code, 0);
  CloneData document = FreshData();
  ASSERT_FALSE(OpenCloneFile(path, document).problem);
  EXPECT_EQ(document.dial[0], "777");
  EXPECT_EQ(document.image.MemoryTable[0], test::RandomDocument(21).image.MemoryTable[0]);

  EXPECT_EQ(Run({"read", "-p", "1", "--only", "settings", path}).code, 0);
  ASSERT_FALSE(OpenCloneFile(path, document).problem);
  EXPECT_NE(document.dial[0], "777");

  Radio({}, 1);  // a radio of another model does not complete this file
  const std::string kept = test::Content(path);
  EXPECT_EQ(Run({"read", "-p", "1", "--only", "memory", path}).code, kExitWrongModel);
  EXPECT_EQ(test::Content(path), kept);
  EXPECT_EQ(Run({"read", "-p", "1", "--only", "memory", "--force", path}).code, 0);
  EXPECT_EQ(test::Content(path).substr(0, 32), "Korvex RX-Q40E Clone 0 FileStart");
}

// What faults make of a command: its exit code, its time, its message, and what became of file and
// radio.
TEST_F(Ctl, FaultTable) {
  const std::string path = Save("a.Q40", FreshData());
  const std::string before = test::Content(path);
  using Words = std::vector<std::string>;
  const Words identify = {"identify", "-p", "1"};
  const Words read = {"read", "-p", "1", "--force", path};
  const Words only = {"read", "-p", "1", "--only", "memory", path};
  const Words write = {"write", "-p", "1", path};
  const Words dump = {"dump", "-p", "1", "--first", "20", "--count", "3"};
  // Exit code, milliseconds at the most, and words of the message.
  const struct {
    const char* fault;
    const Words& words;
    int code;
    long ms;
    const char* says = "";
  } cases[] = {
      {"silence", identify, 4, 2000},
      {"hang-up+", identify, 3, 0},
      {"wrong-identity", identify, 4, 0},
      {"silence@1C20", read, 4, 2500},
      {"silence@END", read, 0, 2500},
      {"hang-up@#200+", read, 3, 500},
      {"short@0400", only, 4, 500},
      {"hang-up@1000", only, 3, 500},
      {"silence@RXQ40", write, 4, 2000, "nothing came back within 2 s (announcement)"},
      {"ng@RXQ40", write, 4, 10, "Nothing was written."},
      {"ng@0240", write, 4, 500,
       "Communication Error: the radio does not acknowledge the write (memory channel 2)"},
      {"wrong-identity@WHO", write, 4, 10},
      {"ng@1C20", write, 4, 2500,
       "Settings and channels 0 to D8 written, memory channel D9 perhaps (sent, but not "
       "acknowledged)"},
      {"late=1500@0200", write, 0, 4000},
      {"hang-up@0300", write, 3, 500, "COM Port Error: the simulated radio was disconnected"},
      {"not-stored@0200", write, 0, 2500},
      {"silence@END+", write, 4, 4500},
      {"silence", dump, 4, 502},
      {"echo-only@0210", dump, 4, 600},
      {"hang-up", dump, 3, 5},
      {"stray", dump, 0, 100},
      {"late=300", dump, 0, 400},
      {"late=600", dump, 4, 502},
      {"non-hex", dump, 4, 502}};
  for (const auto& [fault, words, code, ms, says] : cases) {
    Radio({fault});
    const std::string memory(radio_->memory().raw());
    const Result result = Run(words);
    EXPECT_EQ(result.code, code) << fault << " " << words[0] << ": " << result.err;
    EXPECT_LE(result.ms, ms + kQuietLine.count()) << fault << " " << words[0];
    EXPECT_EQ(code != 0, result.err.find("rxq40ctl: ") != std::string::npos) << result.err;
    EXPECT_NE(result.err.find(says), std::string::npos) << result.err;
    EXPECT_EQ(folder_.FileCount(), 1U) << fault;
    const bool writes = words[0] == "write";
    EXPECT_TRUE((code == 0 && !writes) || test::Content(path) == before) << fault;
    EXPECT_TRUE(writes || radio_->memory().raw() == memory) << fault;
    test::Store(path, before);
    // What happened once is over, and a moment later the next command works.
    time_.clock.now += std::chrono::seconds(3);
    EXPECT_EQ(Run(identify).code == 0, !std::string_view(fault).ends_with('+')) << fault;
  }
}

TEST_F(Ctl, DamageAndWrongDataAreSaid) {
  const std::string path = Save("a.Q40", FreshData());
  Radio({"bad-echo@0240"});
  Result result = Run({"--quiet", "read", "-p", "1", folder_ / "b.Q40"});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.err, "rxq40ctl: 1 reply was damaged: memory channel 2; read again\n");

  std::string letters = test::Content(path);
  test::Store(folder_ / "b.Q40", letters.replace(34 + 2 * 3, 2, "ZZ"));
  Radio({}, 2);
  result = Run({"write", "-p", "1", "--backup", folder_ / "c.Q40", folder_ / "b.Q40"});
  EXPECT_EQ(result.code, kExitDataError);
  EXPECT_NE(result.err.find("Nothing was written."), std::string::npos) << result.err;
  EXPECT_EQ(radio_->Exchanges(), 0);
}

// What a file stores and opening drops is found in the file.
TEST_F(Ctl, LintReadsWhatTheFileStores) {
  CloneData document = FreshData();
  document.image.MemoryTable[3] = document.image.TemplateChannel();
  document.image.ChannelInUse[3] = true;
  const std::string path = Save("a.Q40", document);
  const std::string text = test::Content(path);
  constexpr std::size_t kLine = 34;
  constexpr std::size_t kChannel = (35 + 2 * 3) * kLine;
  constexpr std::size_t kRpt = 9 * kLine;
  const std::tuple<std::size_t, const char*, const char*> cases[] = {
      {kLine + 2 * 11, "04",
       "Tone Burst (Hz): The file stores \"1450\", but it is opened as \"1750"},
      {2 * kLine + 2 * 9, "03", "Standby: The file stores 0x03, but it is opened as \"Off\""},
      {kLine + 2 * 5, "1F", "Volume: The file stores \"31\", but it is opened as \"0\""},
      {kChannel + 2 * 1, "03", "Shift: The file stores \"Split\", but it is opened as \"None\""},
      {kChannel + 2 * 4, "1145",
       "Frequency: The file stores 1145.0000 MHz, but it is opened as 145"},
      {kChannel + 2 * 8, "0012", "Shift frequency: The file stores 12.6000 MHz"},
      {kChannel + kLine + 2 * 9, "07", "Power: The file stores 0x07, but it is opened as \"Lo\""},
      {kChannel + kLine + 2, "80", "Name: The file stores 0x0080"},
      {kRpt + 2 * 8, "0012", "VHF RPT, Shift frequency: The file stores 12.6000 MHz"},
      {kChannel + 2 * kLine + 2 * 8, "0012", ""}};  // of a channel that is not in use
  for (const auto& [at, digits, words] : cases) {
    std::string changed = text;
    test::Store(path, changed.replace(at, std::strlen(digits), digits));
    const Result lint = Run({"lint", path});
    EXPECT_EQ(lint.code, 1);
    EXPECT_EQ(lint.out.find("The file stores") == std::string::npos, *words == 0) << lint.out;
    EXPECT_NE(lint.out.find(words), std::string::npos) << words << lint.out;
  }
}

TEST_F(Ctl, NewShowCheckDiff) {
  const std::string path = folder_ / "e.Q40";
  EXPECT_EQ(Run({"new", "--model", "rx-q40e", "--version-a", path}).code, 0);
  EXPECT_EQ(Run({"new", "--model", "RX-Q40T", path}).code, kExitUsage);
  EXPECT_EQ(test::Content(path).substr(0, 32), "Korvex RX-Q40E Clone A FileStart");
  EXPECT_EQ(Run({"check", path}).out, path + ": ok\n");

  const auto json = nlohmann::json::parse(Run({"show", "--json", path}).out);
  EXPECT_EQ(json["Radio"], nlohmann::json({{"Model", "RX-Q40E"}, {"Version", "A"}}));
  EXPECT_EQ(json["Settings"]["Volume"], 15);
  EXPECT_EQ(json["Settings"]["Battery Type"], "Li");
  EXPECT_EQ(json["Settings"]["TOT (sec)"], "OFF");
  EXPECT_EQ(json["Access"]["Channel Mode"], false);
  EXPECT_EQ(json["UHF VFO"]["Frequency"], 435);
  EXPECT_EQ(json["Memory D9"], nlohmann::json({{"In use", false}}));

  std::string text = test::Content(path);
  text.replace(34 + 10, 2, "14");        // volume 20
  text.replace(34 * 35, 8, "88000002");  // channel 0 in use and skipped
  text.replace(34 * 11 + 8, 8, 8, '0');  // VHF PH absent
  test::Store(folder_ / "f.Q40", text);
  const Result diff = Run({"diff", path, folder_ / "f.Q40"});
  EXPECT_EQ(diff.code, kExitDifferent);
  EXPECT_EQ(diff.out.substr(0, diff.out.find('\n')), "Settings: Volume: \"15\" -> \"20\"");
  EXPECT_NE(diff.out.find("Memory 0: In use: \"no\" -> \"yes\"\n"
                          "Memory 0: Frequency: \"\" -> \"000.0000\"\n"),
            std::string::npos);
  EXPECT_NE(Run({"show", folder_ / "f.Q40"}).out.find("\n  PH    -\n"), std::string::npos);
  EXPECT_EQ(nlohmann::json::parse(Run({"diff", "--json", path, folder_ / "f.Q40"}).out)[0]["b"],
            20);

  text.replace(34 * 3, 1, "G");
  test::Store(folder_ / "f.Q40", text);
  EXPECT_NE(Run({"check", folder_ / "f.Q40"}).err.find("line 4: character 1 is no hexadecimal"),
            std::string::npos);
  test::Store(folder_ / "g.Q40", text.substr(0, 1000));
  const Result check = Run({"check", path, folder_ / "g.Q40"});
  EXPECT_EQ(check.code, kExitDataError);
  EXPECT_EQ(check.out,
            path + ": ok\n" + (folder_ / "g.Q40") + ", line 30: 14 characters instead of 32\n");
  EXPECT_EQ(Run({"show", folder_ / "g.Q40"}).code, kExitDataError);
}

TEST_F(Ctl, DiffNamesWhatNoControlShows) {
  CloneData a = test::RandomDocument(2);
  CloneData b = a;
  b.image.SettingsLine[0].replace(6, 2, "5C");        // byte 3, carried through
  b.settings.chkChannel = 1 - a.settings.chkChannel;  // byte 4 follows
  b.settings.cmbVod = 1 - a.settings.cmbVod;
  b.image.ChannelInUse[9] = a.image.ChannelInUse[9] = false;
  b.image.MemoryTable[9].value[8] = (a.image.MemoryTable[9].value[8] + 1) % 3;
  const Result diff = Run({"diff", Save("a.Q40", a), Save("b.Q40", b)});
  EXPECT_EQ(diff.code, kExitDifferent);
  EXPECT_NE(diff.out.find("byte 0x0023"), std::string::npos) << diff.out;
  EXPECT_NE(diff.out.find("Memory 9: stored data"), std::string::npos);
  EXPECT_EQ(std::count(diff.out.begin(), diff.out.end(), '\n'), 4) << diff.out;
}

TEST_F(Ctl, Lint) {
  const std::string fresh = Save("fresh.Q40", FreshData());
  const Result clean = Run({"lint", fresh});
  EXPECT_EQ(clean.code, 0) << clean.out;
  EXPECT_EQ(clean.out, "");
  EXPECT_EQ(clean.err, "no findings\n");
  EXPECT_EQ(Run({"lint", "--json", fresh}).out, "[]\n");

  // What a file still tells: two channels of one frequency, the second with a ")" in its code.
  const std::string rest = ",145,5KHz,None,67,67,023,023,None,0,Off,Lo,0,Off,Off,Off,Off,Normal,";
  test::Store(folder_ / "two.csv",
              "RX-Q40,MEMORY,7" + rest + "ONE,Off\nRX-Q40,MEMORY,D1" + rest + "A1,Off\n");
  ASSERT_EQ(Run({"import", fresh, folder_ / "two.csv"}).code, 0);
  std::string text = test::Content(fresh);
  text.replace(34 * (36 + 2 * 201) + 2, 2, "5D");
  test::Store(fresh, text);
  const Result lint = Run({"lint", fresh});
  EXPECT_EQ(lint.code, kExitFindings);
  EXPECT_EQ(lint.out,
            "Memory D1, Frequency: 145.0000 MHz is also the frequency of channel 7; the radio "
            "keeps both.\n"
            "Memory D1, Name: \"A)\" is read back as \"A(\": \")\" becomes \"(\".\n");
  EXPECT_EQ(lint.err, "");
  const auto json = nlohmann::json::parse(Run({"lint", "--json", fresh}).out);
  ASSERT_EQ(json.size(), 2U);
  EXPECT_EQ(json[1]["place"], "Memory D1");
  EXPECT_EQ(json[1]["name"], "Name");
  EXPECT_EQ(json[1]["kind"], "name-lost");
  EXPECT_EQ(json[1]["severity"], "loss");
  EXPECT_EQ(test::Content(fresh), text);
  std::string dial = text;
  test::Store(folder_ / "dial.Q40", dial.replace(34 * 27, 3, "12E"));
  EXPECT_TRUE(
      Run({"lint", folder_ / "dial.Q40"}).out.starts_with("Auto dialer, M3: The file keeps"));

  test::Store(folder_ / "bad.Q40", text.substr(0, 1000));
  EXPECT_EQ(Run({"lint", folder_ / "bad.Q40"}).code, kExitDataError);
}

TEST_F(Ctl, ExportAndImport) {
  const std::string path = Save("a.Q40", test::RandomDocument(4));
  const std::string before = test::Content(path);
  const std::string csv = folder_ / "a.csv";
  EXPECT_EQ(Run({"export", path, csv}).code, 0);
  EXPECT_EQ(Run({"export", path, "-"}).out, test::Content(csv));
  EXPECT_EQ(Run({"import", path, csv}).code, 0);
  EXPECT_EQ(test::Content(path), before);

  // A slip between two names costs neither a clone file nor a list.
  EXPECT_EQ(Run({"export", path, path}).code, kExitUsage);
  EXPECT_EQ(Run({"import", path, csv, "-o", csv}).code, kExitUsage);
  EXPECT_EQ(Run({"import", path, csv, "-o", ""}).code, kExitCannotWrite);
  EXPECT_EQ(test::Content(path), before);

  const std::string rest =
      ",145,5KHz,None,67,67,023,023,None,0,Off,Lo,0,Off,Off,Off,Off,Normal,NEW,Off\n";
  test::Store(csv, "RX-Q40,MEMORY,210" + rest + "RX-Q40,MEMORY,0" + rest);
  const Result import = Run({"import", path, csv, "-o", folder_ / "b.Q40"});
  EXPECT_EQ(import.code, kExitImportedInPart);
  EXPECT_NE(import.err.find("line 1: passed over, channel \"210\""), std::string::npos);
  EXPECT_EQ(test::Content(path), before);
  EXPECT_EQ(Run({"diff", path, folder_ / "b.Q40"}).code, 1);

  // What was understood, but is not kept, is told too; quietly in one line.
  test::Store(csv, "RX-Q40,MEMORY,0,145,25KHz,None,67,67,023,023,Split" + rest.substr(33));
  const Result loss = Run({"import", path, csv, "-o", folder_ / "c.Q40"});
  EXPECT_EQ(loss.code, kExitImportedInPart);
  EXPECT_NE(loss.err.find("line 1, STEP: The radio and the file store 25KHz"), std::string::npos);
  EXPECT_NE(loss.err.find("line 1, SHIFT: The radio and the file store \"Split\""),
            std::string::npos);
  const Result quiet = Run({"--quiet", "import", path, csv, "-o", folder_ / "d.Q40"});
  EXPECT_EQ(quiet.code, kExitImportedInPart);
  EXPECT_EQ(quiet.err, "rxq40ctl: " + csv +
                           ": imported, but the clone file does not keep all of it (2 notes)\n");
  EXPECT_EQ(test::Content(folder_ / "c.Q40"), test::Content(folder_ / "d.Q40"));

  for (const char* bad : {"", "no channels here\n", "RX-Q40;MEMORY;0;145\n",
                          "RX-Q40,MEMORY,abc,1\n", "RX-Q40,MEMORY,0,\"145"}) {
    test::Store(csv, bad);
    EXPECT_EQ(Run({"import", path, csv}).code, kExitDataError) << bad;
    EXPECT_EQ(test::Content(path), before) << bad;
  }
}

}  // namespace
}  // namespace q40
