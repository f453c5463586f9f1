// The program itself, on a real display, with a radio on a pseudo-terminal: what a user does with keys,
// and what then is in the radio and on the disk.
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include "files/journal.h"
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
    // -r: on a busy machine a key would repeat between its press and its release.
    display_ = std::make_unique<Background>(
        std::vector<std::string>{"/usr/bin/Xvfb", "-displayfd", "1", "-noreset", "-r", "-screen",
                                 "0", "1000x700x24", "-nolisten", "tcp"},
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

  static test::ProcessResult Ctl(std::vector<std::string> words) {
    words.insert(words.begin(), test::Program("rxq40ctl"));
    return test::Run(words);
  }
  // False: it has not come true in ten seconds.
  static bool Await(const std::function<bool()>& what) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!what()) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(milliseconds(50));
    }
    return true;
  }
  int XdoTool(std::vector<std::string> words) {
    words.insert(words.begin(), "/usr/bin/xdotool");
    return test::Run(words, {.environment = environment_}).code;
  }
  void Keys(std::vector<std::string> keys) {
    keys.insert(keys.begin(), "key");
    EXPECT_EQ(XdoTool(keys), 0);
  }
  bool IsShown(const std::string& title) {
    return XdoTool({"search", "--onlyvisible", "--name", title}) == 0;
  }
  // Waits for the window. There is no window manager that would give it the keys.
  void Focus(const std::string& title) {
    EXPECT_TRUE(Await([&] { return IsShown(title); })) << title;
    EXPECT_EQ(XdoTool({"search", "--onlyvisible", "--name", title, "windowfocus", "--sync"}), 0);
  }
  // From the page that is shown at the start to the first row of the memory grid.
  void GoToGrid() { Keys({"ctrl+shift+Tab", "Tab", "ctrl+Home"}); }
  // Saves until `file` is no longer what it was: while the radio is busy, so is the window.
  void SaveAChange(const std::string& file) {
    const std::string before = test::Content(file);
    EXPECT_TRUE(Await([&] {
      Keys({"ctrl+s"});
      return test::Content(file) != before;
    })) << file;
  }
  // The memory channel that stands in the file; -1: none does.
  static int Where(const std::string& file) {
    const std::string list = Ctl({"export", file, "-"}).out;
    for (int n = 0; n < 200; ++n) {
      if (list.find(R"("MEMORY",")" + std::to_string(n) + R"(","145.7250)") != std::string::npos)
        return n;
    }
    return -1;
  }
  // The first memory channel in use in what the window has put aside; -1: there is none.
  int WhereUnsaved() {
    std::error_code none_yet;
    for (const auto& entry :
         std::filesystem::directory_iterator(folder_ / "state/rxq40", none_yet)) {
      const auto journal = JournalFrom(test::Content(entry.path()));
      if (!journal) continue;
      const auto& used = journal->now.data.image.ChannelInUse;
      return static_cast<int>(std::find(used.begin(), used.end(), true) - used.begin());
    }
    return -1;
  }
  // Starts the window; `shown` is in a title only when the start-up pause is over.
  std::unique_ptr<Background> Window(std::vector<std::string> words, const std::string& shown) {
    words.insert(words.begin(), test::Program("rxq40"));
    auto window = std::make_unique<Background>(words, environment_);
    Focus(shown);
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
  auto window = Window({folder_ / "mine.Q40"}, "mine.Q40");
  GoToGrid();
  Keys({"F7"});  // Read All
  SaveAChange(folder_ / "mine.Q40");
  EXPECT_EQ(Ctl({"diff", folder_ / "radio.Q40", folder_ / "mine.Q40"}).out, "");

  // Edit channel 7: the eighth row of the grid, the dialog, a new frequency, OK.
  Keys({"Down", "Down", "Down", "Down", "Down", "Down", "Down", "Return"});
  const std::string dialog = "Modify Memory Channel Parameter";
  Focus(dialog);
  EXPECT_EQ(XdoTool({"type", "--delay", "50", "1461000"}), 0);
  Keys({"Return"});
  EXPECT_TRUE(Await([&] { return !IsShown(dialog); }));
  Focus("mine.Q40");
  Keys({"shift+F7"});  // Write All
  SaveAChange(folder_ / "mine.Q40");
  Keys({"ctrl+q"});
  EXPECT_EQ(window->Wait(milliseconds(10000)), 0);
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
  const auto insert = [&](std::size_t count) { Keys(std::vector<std::string>(count, "Insert")); };
  auto window = Window({file}, "mine.Q40");
  GoToGrid();
  insert(3);
  EXPECT_TRUE(Await([&] { return WhereUnsaved() == 10; }));
  insert(2);
  EXPECT_EQ(window->Stop(SIGKILL), 128 + SIGKILL);

  const auto restore = [&] {
    window = Window({}, "Unsaved Changes");
    Keys({"alt+r"});
    Focus("mine.Q40");
  };
  restore();
  SaveAChange(file);
  const int kept = Where(file);
  EXPECT_TRUE(kept >= 10 && kept <= 12) << kept;
  GoToGrid();
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
