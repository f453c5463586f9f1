// What rxq40ctl says to a wrong command line, and how it treats names and texts of unknown origin.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "document/defaults.h"
#include "programs/ctl/helper_program.h"
#include "support/ctl_fixture.h"

namespace q40 {
namespace {

using test::Ctl;

TEST_F(Ctl, Dump) {
  radio_->memory().Write(0x0200, "00112233445566778899AABBCCDDEEFF");
  EXPECT_EQ(Run({"dump", "-p", "1", "--first", "20", "--count", "1"}).out,
            "20\t00112233445566778899AABBCCDDEEFF\n");
  const Result end = Run({"dump", "-p", "1", "--first", "0x1fE"});
  EXPECT_EQ(end.out, "1FE\t" + std::string(32, 'F') + "\n1FF\t" + std::string(32, 'F') + "\n");
  EXPECT_EQ(end.code, 0);
  EXPECT_EQ(Run({"dump", "-p", "1"}).out.size(), 256U * 36);
}

// One line, with the name of the command and what to do next.
TEST_F(Ctl, WrongUsageIsTwo) {
  const std::pair<std::vector<std::string>, const char*> lines[] = {
      {{}, "a command is missing. See rxq40ctl --help."},
      {{"raed", "-p", "1", "x.Q40"}, "there is no command \"raed\". Did you mean read?"},
      {{"ixport"}, "there is no command \"ixport\". Did you mean export?"},  // or import
      {{"\x1B[31m\n"}, R"(there is no command "\x1B[31m\x0A". See rxq40ctl --help.)"},
      {{"read", "x.Q40"}, "read: --port is required. See rxq40ctl read --help."},
      {{"read", "--FRCE=1", "x"}, "read: there is no option \"--FRCE\". Did you mean --force?"},
      {{"read", "-p", "1", "--qui", "x"},
       "read: there is no option \"--qui\". Did you mean --quiet?"},
      {{"read", "-p", "1", "-z"}, "read: there is no option \"-z\". See rxq40ctl read --help."},
      {{"-p", "1", "read", "x"},
       "read: -p must stand behind the command. See rxq40ctl read --help."},
      {{"read", "-p", "15", "x"}, "\"15\" is no port: use 1 to 14, the path of a device, or auto"},
      {{"identify", "-p", "1", "--force"},
       "identify: --force requires --trace. See rxq40ctl identify --help."},
      {{"read", "-p", "com1", "x"}, "\"com1\" is no port: did you mean 1?"},
      {{"read", "-p", "COM15", "x"}, "\"COM15\" is no port: did you mean 1 to 14?"},
      {{"read", "-p", "ttyUSB0", "x"}, "\"ttyUSB0\" is no port: did you mean /dev/ttyUSB0?"},
      {{"read", "-p", "1", "--only", "half", "x"},
       "read: --only: half not in {settings,memory}. See rxq40ctl read --help."},
      {{"new", "--model", "RX-1", "x"},
       "new: --model: RX-1 not in {RX-Q40T,RX-Q40E,RX-Q40T1,RX-Q20A}. See rxq40ctl new --help."},
      {{"write", "-p", "1", "--before", "a", "b"},
       "write: --before requires --rest. See rxq40ctl write --help."},
      {{"restore", "-p", "1", "--rest", "--backup", "a", "b"},
       "restore: --backup excludes --rest. See rxq40ctl restore --help."},
      {{"write", "-p", "1", "--changes", "-", "-"}, "only one of the files can be standard input"},
      {{"show", "a", "b"}, "show: \"b\" is one argument too many. See rxq40ctl show --help."},
      {{"dump", "-p", "1", "--count", "0"},
       "dump: --count is a number from 1 to 512. See rxq40ctl dump --help."},
      {{"dump", "-p", "1", "--first", "1FE", "--count", "3"},
       "dump: the memory ends with block 1FF. Use --count 2 at most."}};
  for (const auto& [line, message] : lines) {
    const Result result = Run(line);
    EXPECT_EQ(result.code, kExitUsage);
    EXPECT_EQ(result.err, "rxq40ctl: " + std::string(message) + '\n');
  }
  for (const char* bad : {"200", "0x200", "-1", "xyz", "0x", "", "0x-1"}) {
    EXPECT_EQ(Run({"dump", "-p", "1", "--first", bad}).code, kExitUsage) << bad;
  }
  EXPECT_EQ(Run({"--help"}).code, 0);
  for (const char* command :
       {"ports", "identify", "read", "write", "backup", "restore", "new", "check", "show", "diff",
        "lint", "export", "import", "dump", "card"}) {
    EXPECT_NE(Run({command, "--help"}).out.find("xample"), std::string::npos) << command;
  }
}

TEST(HelperProgram, GivesItsOutputOrItsLastWords) {
  const std::string input(300'000, 'x');  // more than a pipe holds
  const struct {
    const char* script;
    int code;
    std::string output;
    const char* message;
  } cases[] = {{"cat; echo a warning >&2", 0, input, ""},
               {"cat; cat >&2", 0, input, ""},
               {"exec >&-; echo one >&2; echo two >&2; echo >&2; exit 6", 6, "", "two"},
               {"exit 3", 3, "", "/bin/sh failed"},
               {"echo half; kill -9 $$", kExitInternal, "half\n", "/bin/sh failed"},
               {"sleep 60", kExitInternal, "", "/bin/sh did not finish in time"}};
  for (const auto& c : cases) {
    const bool sleeps = std::string_view(c.script) == "sleep 60";
    const HelperResult result = RunHelper({"/bin/sh", "-c", std::string("exec 3<&0; ") + c.script},
                                          input, std::chrono::seconds(sleeps ? 0 : 30));
    EXPECT_EQ(result.code, c.code) << c.script;
    EXPECT_TRUE(result.output == c.output) << c.script;
    EXPECT_EQ(result.message, c.message) << c.script;
  }
  EXPECT_EQ(RunHelper({"/nowhere/at all"}, "").message,
            "/nowhere/at all: No such file or directory");
}

// What a terminal would obey reaches it from no file, no name and no device.
TEST_F(Ctl, NothingSteersTheTerminal) {
  // NOLINTNEXTLINE(misc-misleading-bidirectional): it is meant to mislead
  const std::string nasty = "\x1B\x7F\x9B\xC2\x9B\xE2\x80\xAE\xC0\x9B\xED\xA0\x80K\xC3\xB6ln";
  const std::string escaped =
      "\\x1B\\x7F\\x9B\\xC2\\x9B\\xE2\\x80\\xAE\\xC0\\x9B\\xED\\xA0\\x80K\xC3\xB6ln";
  CloneData document = FreshData();
  document.dial[0] = nasty;
  const std::string plain = Save("plain.Q40", FreshData());
  const std::string path = Save(nasty, document);
  const std::string missing = path + "?";
  setenv("RXQ40_COM14", nasty.c_str(), 1);
  const std::vector<std::string> lines[] = {
      {"show", path}, {"diff", plain, path}, {"check", path},           {"check", missing},
      {"ports"},      {"show", missing},     {"read", "-p", "1", path}, {"import", plain, missing}};
  for (const auto& line : lines) {
    const Result result = Run(line);
    EXPECT_NE((result.out + result.err).find(escaped), std::string::npos) << line[0];
    EXPECT_EQ((result.out + result.err).find(nasty[0]), std::string::npos) << line[0];
  }
  const std::vector<std::string> json_lines[] = {{"show", "--json", path},
                                                 {"check", "--json", missing},
                                                 {"diff", "--json", plain, path},
                                                 {"ports", "--json"}};
  for (const auto& line : json_lines) {
    const std::string json = Run(line).out;
    EXPECT_FALSE(nlohmann::json::parse(json).empty());
    EXPECT_TRUE(std::all_of(json.begin(), json.end(), [](char c) {
      return c == '\n' || (c >= ' ' && c < 0x7F);
    })) << json;
    EXPECT_EQ(json.find("\"line\": 0"), std::string::npos);
  }
  unsetenv("RXQ40_COM14");
}

TEST_F(Ctl, Ports) {
  const auto json = nlohmann::json::parse(Run({"ports", "--json"}).out);
  ASSERT_EQ(json.size(), 14U);
  EXPECT_EQ(json[8]["number"], 9);
  EXPECT_EQ(json[8]["device"], "/dev/ttyACM0");
  plugged_in_ = {{"/dev/ttyUSB1", "an adapter", "/dev/serial/by-id/usb-X"}};
  EXPECT_NE(Run({"ports"}).out.find(
                "COM  2  /dev/ttyUSB1  present  an adapter  /dev/serial/by-id/usb-X\n"),
            std::string::npos);
  EXPECT_EQ(nlohmann::json::parse(Run({"ports", "--json"}).out)[1]["stablePath"],
            "/dev/serial/by-id/usb-X");
  setenv("RXQ40_COM14", "/dev/null", 1);
  const std::string text = Run({"ports"}).out;
  EXPECT_TRUE(text.starts_with("COM  1  ")) << text;
  EXPECT_NE(text.find("COM 14  /dev/null  present"), std::string::npos) << text;
  unsetenv("RXQ40_COM14");
}

// The only adapter, or none: nothing is tried.
TEST_F(Ctl, TheOnlyAdapter) {
  const PresentPort chip = {"/dev/ttyS0", ""};
  const PresentPort one = {"/dev/ttyUSB3", "FT232R USB UART, FTDI"};
  const PresentPort other = {"/dev/ttyACM0", ""};
  const std::tuple<std::vector<PresentPort>, int, const char*, const char*> cases[] = {
      {{chip, one}, 0, "/dev/ttyUSB3", "Port: /dev/ttyUSB3 (FT232R USB UART, FTDI)\n"},
      {{chip}, 3, "", "COM Port Error: no adapter is plugged in. Plug in the cable, or name"},
      {{one, other},
       2,
       "",
       "2 adapters are plugged in. Choose one with -p: /dev/ttyUSB3 (FT232R "
       "USB UART, FTDI), /dev/ttyACM0\n"}};
  for (const auto& [plugged_in, code, device, says] : cases) {
    plugged_in_ = plugged_in;
    device_.clear();
    const Result result = Run({"identify", "-p", "auto"});
    EXPECT_EQ(result.code, code);
    EXPECT_EQ(device_, device);
    EXPECT_NE(result.err.find(says), std::string::npos) << result.err;
  }
}

// What becomes of the file of a trace, whatever becomes of the command.
TEST_F(Ctl, ATraceIsKeptAndReplacesNothing) {
  const std::string clone = Save("a.Q40", FreshData());
  const std::string kept = test::Content(clone);
  const std::string trace = folder_ / "t.txt";
  const auto identify = [&](const std::string& path, const char* more = "--quiet") {
    return Run({"identify", "-p", "1", "--trace", path, more});
  };
  const auto refused = [](const Result& result, int code, const char* why) {
    return result.code == code && result.out.empty() && result.err.find(why) != std::string::npos;
  };
  EXPECT_EQ(identify(trace).err, "");
  const std::string told = test::Content(trace);
  EXPECT_TRUE(told.starts_with("# rxq40 trace 1\n") && told.ends_with(" = closed\n")) << told;
  EXPECT_NE(told.find(" > KX~WHO\\r\\n\n"), std::string::npos) << told;
  EXPECT_TRUE(refused(identify(trace), 2, "t.txt exists. Use --force to replace it."));
  EXPECT_EQ(test::Content(trace), told);
  Radio({"silence"});
  EXPECT_EQ(identify(trace, "--force").code, 4);
  EXPECT_EQ(test::Content(trace).find(" < "), std::string::npos);
  EXPECT_TRUE(refused(identify(clone, "--force"), 2, "is a clone file. Name another file"));
  EXPECT_EQ(test::Content(clone), kept);
  EXPECT_TRUE(refused(Run({"read", "-p", "1", "--trace", folder_ / "./b", folder_ / "b"}), 2,
                      "b is the clone file. Name another"));
  EXPECT_TRUE(refused(identify(folder_ / "no/t.txt"), 7, "no/t.txt"));
  // A command that never comes to its port makes none.
  const std::string second = folder_ / "second.txt";
  EXPECT_EQ(Run({"write", "-p", "1", "--trace", second, folder_ / "none"}).code, kExitDataError);
  EXPECT_FALSE(std::filesystem::exists(second));
  // A file that cannot be made after all costs the trace, and nothing else.
  on_open_ = [&] { test::Store(second, "precious"); };
  const Result late = identify(second);
  EXPECT_EQ(late.code, 0);
  EXPECT_EQ(late.out, "RX-Q40T version 0\n");
  EXPECT_EQ(late.err, "rxq40ctl: " + second +
                          ": File exists. The trace is not whole; the radio was not disturbed.\n");
  EXPECT_EQ(test::Content(second), "precious");
}

}  // namespace
}  // namespace q40
