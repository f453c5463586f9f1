// The program itself, on a real display, with a radio on a pseudo-terminal: what a user does with keys,
// and what then is in the radio and on the disk.
#include <csignal>
#include <filesystem>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/process.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

using std::chrono::milliseconds;
using test::Background;
using test::SimulatorProcess;

class Xvfb : public testing::Test {
 protected:
  void SetUp() override {
    std::string number;  // of a display that nobody has
    display_ = std::make_unique<Background>(
        std::vector<std::string>{"/usr/bin/Xvfb", "-displayfd", "1", "-noreset", "-screen", "0",
                                 "1000x700x24", "-nolisten", "tcp"},
        std::map<std::string, std::string>(), &number);
    ASSERT_NE(number, "");
    environment_ = {{"DISPLAY", ":" + number},
                    {"QT_QPA_PLATFORM", "xcb"},
                    {"HOME", folder_.path()},
                    {"XDG_CONFIG_HOME", folder_ / "config"},
                    {"XDG_STATE_HOME", folder_ / "state"},
                    {"XDG_RUNTIME_DIR", folder_.path()},
                    {"RXQ40_COM1", folder_ / "radio"}};
  }

  test::ProcessResult Ctl(std::vector<std::string> words) {
    words.insert(words.begin(), test::Program("rxq40ctl"));
    return test::Run(words);
  }
  void Keys(std::vector<std::string> words) {
    words.insert(words.begin(), "/usr/bin/xdotool");
    EXPECT_EQ(test::Run(words, {.environment = environment_}).code, 0);
  }
  // There is no window manager that would give a window the keys.
  void Focus(const std::string& title) {
    Keys({"search", "--sync", "--onlyvisible", "--name", title, "windowfocus", "--sync"});
  }
  // Saves until `file` is no longer what it was: while the radio is busy, so is the window.
  void SaveAChange(const std::string& file) {
    const std::string before = test::Content(file);
    for (int tries = 0; tries < 40 && test::Content(file) == before; ++tries) {
      Keys({"key", "ctrl+s"});
      usleep(250'000);
    }
    EXPECT_NE(test::Content(file), before);
  }
  // The memory channel that stands in the file; -1: none does.
  int Where(const std::string& file) {
    const std::string list = Ctl({"export", file, "-"}).out;
    for (int n = 0; n < 200; ++n) {
      if (list.find("\"MEMORY\",\"" + std::to_string(n) + "\",\"145.7250") != std::string::npos)
        return n;
    }
    return -1;
  }
  // Starts the window and waits until its start-up pause is over.
  std::unique_ptr<Background> Window(const std::string& file) {
    std::vector<std::string> command = {test::Program("rxq40")};
    if (!file.empty()) command.push_back(file);
    auto window = std::make_unique<Background>(command, environment_);
    usleep(3'000'000);
    EXPECT_TRUE(window->IsRunning());
    Focus("Korvex RX-Q40 Clone Utility");
    return window;
  }

  test::TempFolder folder_;
  std::unique_ptr<Background> display_;
  std::map<std::string, std::string> environment_;
};

const char* const kChannel =
    "RX-Q40,MEMORY,7,145.7250,12.5KHz,Tone,88.5,88.5,023,023,-Shift,0.6,Off,Hi,5,Off,"
    "BS-1,Off,Off,Normal,HOME,Off\r\n";

TEST_F(Xvfb, ReadAllSaveAndWriteAll) {
  // A radio with a channel, a file without one.
  ASSERT_EQ(Ctl({"new", "--model", "RX-Q40T", folder_ / "radio.Q40"}).code, 0);
  ASSERT_EQ(Ctl({"new", "--model", "RX-Q40T", folder_ / "mine.Q40"}).code, 0);
  test::Store(folder_ / "one.csv", kChannel);
  ASSERT_EQ(Ctl({"import", folder_ / "radio.Q40", folder_ / "one.csv"}).code, 0);

  SimulatorProcess radio({"--load", folder_ / "radio.Q40", "--link", folder_ / "radio", "--save",
                          folder_ / "after.Q40"});
  auto window = Window(folder_ / "mine.Q40");
  Keys({"key", "F7"});  // Read All
  SaveAChange(folder_ / "mine.Q40");
  EXPECT_EQ(Ctl({"diff", folder_ / "radio.Q40", folder_ / "mine.Q40"}).out, "");

  // Edit channel 7: the eighth row of the grid, the dialog, a new frequency, OK.
  Keys({"mousemove", "206", "63", "click", "1", "mousemove", "200", "110", "click", "1"});
  Keys({"key", "ctrl+Home", "Down", "Down", "Down", "Down", "Down", "Down", "Down", "Return"});
  Focus("Modify Memory Channel Parameter");
  Keys({"type", "--delay", "50", "1461000"});
  Keys({"key", "Return"});
  Focus("Korvex RX-Q40 Clone Utility");
  Keys({"key", "shift+F7"});  // Write All
  SaveAChange(folder_ / "mine.Q40");
  Keys({"key", "ctrl+q"});
  EXPECT_EQ(window->Wait(milliseconds(3000)), 0);
  EXPECT_EQ(radio.Stop(), 0);
  const std::string diff = Ctl({"diff", folder_ / "radio.Q40", folder_ / "after.Q40"}).out;
  EXPECT_EQ(diff,
            "Memory 7: Frequency: \"145.7250\" -> \"146.1000\"\n"
            "Memory 7: Step: \"12.5KHz\" -> \"5KHz\"\n");
  EXPECT_EQ(Ctl({"diff", folder_ / "mine.Q40", folder_ / "after.Q40"}).out, "");
}

// The last second of work may be gone, and no more; a program that is asked to end loses nothing.
TEST_F(Xvfb, WhatWasNotSavedOutlivesTheProgram) {
  const std::string file = folder_ / "mine.Q40";
  ASSERT_EQ(Ctl({"new", "--model", "RX-Q40T", file}).code, 0);
  test::Store(folder_ / "one.csv", kChannel);
  ASSERT_EQ(Ctl({"import", file, folder_ / "one.csv"}).code, 0);
  const auto insert = [&](int count) {
    for (int i = 0; i < count; ++i) Keys({"key", "Insert"});
  };
  auto window = Window(file);
  Keys({"mousemove", "206", "63", "click", "1", "mousemove", "200", "110", "click", "1"});
  Keys({"key", "ctrl+Home"});
  insert(3);
  usleep(1'000'000);
  insert(2);
  EXPECT_EQ(window->Stop(SIGKILL), 128 + SIGKILL);

  const auto restore = [&] {
    window = Window("");
    Focus("Unsaved Changes");
    Keys({"key", "alt+r"});
    Focus("mine.Q40");
  };
  restore();
  SaveAChange(file);
  const int kept = Where(file);
  EXPECT_TRUE(kept >= 10 && kept <= 12) << kept;
  Keys({"mousemove", "206", "63", "click", "1", "mousemove", "200", "110", "click", "1"});
  Keys({"key", "ctrl+Home"});
  insert(1);
  EXPECT_EQ(window->Stop(), 0);
  restore();
  SaveAChange(file);
  EXPECT_EQ(Where(file), kept + 1);
  EXPECT_EQ(window->Stop(), 0);
  EXPECT_TRUE(std::filesystem::is_empty(folder_ / "state/rxq40"));
}

// Neither does a program without a display end otherwise.
TEST(WrongUsage, IsSaidInOneLineByEveryProgram) {
  const std::tuple<std::vector<std::string>, int, const char*> cases[] = {
      {{"rxq40", "--nope"}, 1, "rxq40: there is no option \"--nope\". See rxq40 --help.\n"},
      {{"rxq40", "-style", "-x", "--title=a", "--simualte"},
       1,
       "rxq40: there is no option \"--simualte\". Did you mean --simulate?\n"},
      {{"rxq40sim", "--pase", "1"},
       2,
       "rxq40sim: there is no option \"--pase\". Did you mean --pace?\n"},
      {{"rxq40sim", "--load", "\x1B"},
       6,
       "rxq40sim: Data Error: \\x1B: No such file or directory\n"},
  };
  for (auto [words, code, line] : cases) {
    words[0] = test::Program(words[0]);
    const auto result =
        test::Run(words, {.environment = {{"DISPLAY", ""}, {"QT_QPA_PLATFORM", "xcb"}}});
    EXPECT_EQ(result.code, code);
    EXPECT_EQ(result.err, line);
  }
}

}  // namespace
}  // namespace q40
