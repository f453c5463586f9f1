// The built programs on a pseudo-terminal: what only real processes, signals and devices can show.
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/ctl_process.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

using std::chrono::milliseconds;
using test::Ctl;
using test::ProcessResult;
using test::Says;
using test::SimulatorProcess;

TEST(Programs, ReadEditWriteReadThroughALink) {
  test::TempFolder folder;
  const std::string link = folder / "radio";
  ASSERT_EQ(Ctl({"new", "--model", "RX-Q40E", folder / "a.Q40"}).code, 0);
  ASSERT_EQ(Ctl({"new", "--model", "RX-Q20A", folder / "q20.Q40"}).code, 0);
  test::Store(folder / "one.csv",
              "RX-Q40,MEMORY,D9,433.5,12.5KHz,Tone,88.5,88.5,023,023,-Shift,1.6,Off,Hi,"
              "5,Off,Off,Off,Off,Normal,HOME,On\r\n");
  {
    SimulatorProcess radio({"--load", folder / "a.Q40", "--version", "A", "--link", link, "--save",
                            folder / "after.Q40", "--save-memory", folder / "after.bin"});
    const std::vector<std::string> refused[] = {{"--link", link},  // it is taken
                                                {"--save", folder / "nowhere/a.Q40"},
                                                {"--load", folder / "q20.Q40"},
                                                {"--fault", "nothing"},
                                                {"--fault", "ng", "ng"}};
    for (const auto& words : refused) EXPECT_EQ(SimulatorProcess(words).device(), "") << words[1];
    EXPECT_EQ(Ctl({"identify", "-p", "7"}, {.environment = {{"RXQ40_COM7", link}}}).out,
              "RX-Q40E version A\n");
    EXPECT_EQ(Ctl({"read", "-p", link, folder / "b.Q40"}).code, 0);
    EXPECT_EQ(Ctl({"import", folder / "b.Q40", folder / "one.csv"}).code, 0);
    EXPECT_EQ(Ctl({"write", "-p", radio.device(), folder / "b.Q40"}).code, 0);
    EXPECT_EQ(Ctl({"read", "-p", link, folder / "c.Q40"}).code, 0);
    const ProcessResult diff = Ctl({"diff", folder / "b.Q40", folder / "c.Q40"});
    EXPECT_EQ(diff.out, "UHF RPT: Frequency: \"435.0000\" -> \"445.0000\"\n");
    EXPECT_EQ(radio.Stop(), 0);
  }
  EXPECT_EQ(test::Content(folder / "after.Q40"), test::Content(folder / "c.Q40"));
  EXPECT_EQ(test::Content(folder / "after.bin").size(), 8192U);
  EXPECT_FALSE(std::filesystem::is_symlink(link));
  {
    SimulatorProcess radio({"--memory", folder / "after.bin", "--model", "RX-Q40E"});
    EXPECT_EQ(Ctl({"read", "-p", radio.device(), folder / "d.Q40"}).code, 0);
    EXPECT_EQ(Ctl({"diff", folder / "c.Q40", folder / "d.Q40"}).out,
              "Radio: Version: \"A\" -> \"0\"\n");
  }
}

TEST(Programs, PortsThatCannotBeOpenedSayWhyAndWhatToDo) {
  test::TempFolder folder;
  test::Store(folder / "file", "");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  SimulatorProcess radio({});
  const int held = open(radio.device().c_str(), O_RDWR | O_NOCTTY);
  ASSERT_EQ(flock(held, LOCK_EX), 0);
  const std::tuple<std::string, const char*> cases[] = {
      {folder / "missing", "does not exist"},
      {radio.device(), "in use by another program"},
      {folder.path(), "is a folder, not a serial port"},
      {folder / "file", "is a file, not a serial port"},
      {folder / "pipe", "not a serial port"},
      {"/dev/null", "not a serial port"}};
  for (const auto& [port, words] : cases) {
    const ProcessResult result = Ctl({"identify", "-p", port});
    EXPECT_EQ(result.code, 3) << port;
    EXPECT_TRUE(Says(result, "COM Port Error: ") && Says(result, words)) << result.err;
  }
  close(held);
  EXPECT_EQ(Ctl({"identify", "-p", radio.device()}).code, 0);
}

// Rights and locks of another user can only be shown by root.
TEST(Programs, AnotherUsersPortsAndLocks) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root";
  test::TempFolder folder;
  std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
  SimulatorProcess radio({});
  const test::ProcessOptions nobody = {.as_nobody = true};
  const std::string& device = radio.device();
  constexpr gid_t kDialout = 20;

  ASSERT_EQ(chown(device.c_str(), 0, kDialout), 0);
  ASSERT_EQ(chmod(device.c_str(), 0660), 0);
  ProcessResult result = Ctl({"identify", "-p", device}, nobody);
  EXPECT_EQ(result.code, 3);
  EXPECT_TRUE(Says(result, "no permission") && Says(result, "sudo usermod -aG dialout $USER"))
      << result.err;

  ASSERT_EQ(chmod(device.c_str(), 0600), 0);
  result = Ctl({"identify", "-p", device}, nobody);
  EXPECT_TRUE(Says(result, "no permission") && !Says(result, "usermod")) << result.err;

  // Lock files, in a folder that lets nobody remove them; they are those of the device itself.
  const std::string link = folder / "by-id";
  std::filesystem::create_symlink(device, link);
  ASSERT_EQ(chmod(device.c_str(), 0666), 0);
  std::string name = "/run/lock/LCK.." + device.substr(5);
  name.replace(name.rfind('/'), 1, "_");
  const std::string me = std::to_string(getpid());
  const std::string held = "(programs_test, process " + me + "; its lock file is " + name + ")";
  const std::tuple<std::string, int, std::string> cases[] = {
      {"999999999\n", 0, "a program that is gone. Remove its lock file: sudo rm " + name},
      {me + "\n", 0, held},
      {me + " programs_test root\n", 99, held},
      {me + "\n", 99, "sudo rm " + name},  // its number was given to this process
      {me + "\nminicom\n", 0, "sudo rm " + name},
      {"", 0, name + " is new and names none yet: try again"},
      {"", 99, "names no program"}};
  for (const auto& [content, hours_ago, words] : cases) {
    test::Store(name, content);
    std::filesystem::last_write_time(
        name, std::filesystem::file_time_type::clock::now() - std::chrono::hours(hours_ago));
    result = Ctl({"identify", "-p", link}, nobody);
    EXPECT_EQ(result.code, 3);
    EXPECT_TRUE(Says(result, words)) << words << '\n' << result.err;
    std::filesystem::remove(name);
  }
  const std::string elsewhere = "/tmp" + name.substr(name.rfind('/'));  // as older programs do
  test::Store(elsewhere, me);
  EXPECT_TRUE(Says(Ctl({"identify", "-p", device}, nobody), "(programs_test, process " + me));
  std::filesystem::remove(elsewhere);
  EXPECT_EQ(Ctl({"identify", "-p", device}, nobody).code, 0);
}

// A report from the field becomes a test: what a program met once it meets again, with the same end.
TEST(Programs, ATraceIsReplayed) {
  test::TempFolder folder;
  ASSERT_EQ(Ctl({"new", "--model", "RX-Q40T", folder / "a.Q40"}).code, 0);
  using Words = std::vector<std::string>;
  const Words read = {"read", "--only", "settings", "--force", folder / "b.Q40"};
  const Words write = {"write", "--verify", "--only", "settings", folder / "a.Q40"};
  const std::pair<const char*, Words> cases[] = {
      {"pieces=30@0020", read}, {"bad-echo@0040", read},  {"late=2500@0180", read},
      {"hang-up@00C0", read},   {"stray=3@0100", read},   {"not-stored@0040", write},
      {"silence@0020", write},  {"wrong-identity", write}};
  const std::string trace = folder / "t.txt";
  // What the program says, prints and leaves in its file, and everything that goes over the line.
  const auto run = [&](const std::string& device, Words words) {
    words.insert(words.begin() + 1, {"-p", device, "--trace", trace});
    std::filesystem::remove(trace);
    std::filesystem::remove(folder / "b.Q40");
    const ProcessResult result = Ctl(words);
    std::string said = result.err;
    for (auto at = said.find(device); at != std::string::npos; at = said.find(device))
      said.replace(at, device.size(), "PORT");
    return std::to_string(result.code) + result.out + said + test::Content(folder / "b.Q40");
  };
  for (const auto& [fault, words] : cases) {
    std::string first;
    {
      SimulatorProcess radio({"--fault", fault});
      first = run(radio.device(), words);
    }
    std::filesystem::copy(trace, folder / "field.txt",
                          std::filesystem::copy_options::overwrite_existing);
    SimulatorProcess replay({"--replay", folder / "field.txt"});
    EXPECT_EQ(run(replay.device(), words), first) << fault;
    EXPECT_EQ(replay.Stop(), 0) << fault;
  }
  // Another command ends it at once.
  std::string device;
  test::Background replay({test::Program("rxq40sim"), "--replay", trace}, {}, &device);
  EXPECT_EQ(Ctl({"dump", "-p", device}).code, 3);
  EXPECT_EQ(replay.Wait(milliseconds(2000)), 1);
  EXPECT_EQ(test::Run({test::Program("rxq40sim"), "--replay", folder / "a.Q40"}).code, 6);
  EXPECT_EQ(test::Run({test::Program("rxq40sim"), "--replay", trace, "--pace", "9600"}).code, 2);
}

// What a program that is killed had told is in the file; a full disk costs the trace alone.
TEST(Programs, ATraceOutlivesItsProgram) {
  test::TempFolder folder;
  SimulatorProcess radio({"--pace", "9600"});
  const std::string trace = folder / "t.txt";
  Ctl({"read", "-p", radio.device(), "--trace", trace, folder / "a.Q40"},
      {.signal = SIGKILL, .signal_after = milliseconds(400)});
  const std::string told = test::Content(trace);
  EXPECT_TRUE(told.find("KX~F0020R") != std::string::npos && told.ends_with('\n')) << told;
  // The next command meets the rest of the answer.
  const std::string dump = "ulimit -f 1; exec " + test::Program("rxq40ctl") + " dump -p " +
                           radio.device() + " --count 20 --quiet --trace ";
  const ProcessResult full = test::Run({"/bin/sh", "-c", dump + folder.path() + "/u.txt"});
  EXPECT_EQ(full.code, 0) << full.err;
  EXPECT_EQ(full.out.size(), 20U * 36);
  EXPECT_TRUE(Says(full, "u.txt: File too large. The trace is not whole")) << full.err;
}

TEST(Programs, ADeviceThatNeverStopsTalkingEndsWithAnIdleProcessor) {
  const int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
  ASSERT_TRUE(grantpt(master) == 0 && unlockpt(master) == 0);
  const std::string device = ptsname(master);
  const int slave = open(device.c_str(), O_RDWR | O_NOCTTY);
  std::atomic<bool> stop = false;
  std::thread chatter([&] {
    const std::string noise(512, 'x');
    while (!stop) {
      if (write(master, noise.data(), noise.size()) < 0) usleep(1000);
    }
  });
  const ProcessResult result = Ctl({"identify", "-p", device});
  stop = true;
  chatter.join();
  close(slave);
  close(master);
  EXPECT_EQ(result.code, 4);
  EXPECT_LT(result.cpu_seconds, 0.1 * result.seconds);
}

// Waiting costs nothing, whatever is waited for. What the program takes to start is not counted.
TEST(Programs, NoFaultBurnsTheProcessor) {
  test::TempFolder folder;
  double start = 0;
  for (int i = 0; i < 3; ++i) start = std::max(start, Ctl({"--version"}).cpu_seconds);
  for (const std::string fault : {"silence", "short", "pieces", "late", "stray", "hang-up"}) {
    SimulatorProcess radio({"--pace", "9600", "--fault", fault + "@1D80"});
    const ProcessResult result =
        Ctl({"read", "-p", radio.device(), "--only", "settings", folder / fault});
    EXPECT_GT(result.seconds, 1) << fault;  // it did talk
    EXPECT_LT(result.cpu_seconds - start, 0.05 * result.seconds) << fault;
  }
}

TEST(Programs, ACableThatIsPulledOutIsNoSilence) {
  test::TempFolder folder;
  SimulatorProcess radio(
      {"--model", "RX-Q40E", "--link", folder / "radio", "--fault", "hang-up=300@0400"});
  const ProcessResult result = Ctl({"read", "-p", folder / "radio", folder / "a.Q40"});
  EXPECT_EQ(result.code, 3);
  EXPECT_TRUE(Says(result, "was disconnected")) << result.err;
  EXPECT_LT(result.cpu_seconds, 0.5 * result.seconds);
  EXPECT_FALSE(std::filesystem::exists(folder / "a.Q40"));
  SimulatorProcess blocks({"--fault", "hang-up@#3"});  // of 16 bytes, as the service page reads
  EXPECT_EQ(Ctl({"dump", "-p", blocks.device()}).code, 3);
  SimulatorProcess other({});  // takes the number of the device that is gone
  usleep(500'000);             // plugged in again, as another device behind the same link
  EXPECT_EQ(Ctl({"identify", "-p", folder / "radio"}).out, "RX-Q40E version 0\n");
}

TEST(Programs, AnInterruptLeavesTheFileAndSaysWhatTheRadioGot) {
  test::TempFolder folder;
  ASSERT_EQ(Ctl({"new", "--model", "RX-Q40T", folder / "a.Q40"}).code, 0);
  const std::string before = test::Content(folder / "a.Q40");
  SimulatorProcess radio({"--pace", "9600", "--link", folder / "radio"});
  const test::ProcessOptions interrupt = {.signal = SIGINT, .signal_after = milliseconds(600)};
  const ProcessResult read =
      Ctl({"read", "--force", "-p", folder / "radio", folder / "a.Q40"}, interrupt);
  EXPECT_EQ(read.code, 130);
  EXPECT_EQ(test::Content(folder / "a.Q40"), before);
  const ProcessResult write = Ctl({"write", "-p", folder / "radio", folder / "a.Q40"}, interrupt);
  EXPECT_EQ(write.code, 130);
  EXPECT_TRUE(Says(write, "Interrupted") && Says(write, "the rest as before")) << write.err;
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(Programs, WhatWasStoppedOrKilledGoesOn) {
  test::TempFolder folder;
  const std::string link = folder / "radio";
  ASSERT_EQ(Ctl({"new", "--model", "RX-Q40T", folder / "a.Q40"}).code, 0);
  const std::vector<std::string> write = {"write", "-p", link, folder / "a.Q40"};
  const auto interrupted = [&](int signal) {
    return Ctl(write, {.signal = signal, .signal_after = milliseconds(600)});
  };
  {
    // A radio that closes the line when it gets the End command.
    SimulatorProcess radio({"--pace", "9600", "--link", link, "--fault", "hang-up@END+"});
    EXPECT_EQ(interrupted(SIGINT).code, 130);
    EXPECT_EQ(Ctl({"identify", "-p", link}).code, 3);
  }
  for (const int signal : {SIGINT, SIGKILL}) {
    SimulatorProcess radio({"--link", link, "--save", folder / "after.Q40"});
    const ProcessResult broken = interrupted(signal);
    EXPECT_EQ(broken.code, 128 + signal);
    EXPECT_EQ(Says(broken, "To go on: rxq40ctl write -p " + link + " --rest "), signal == SIGINT);
    EXPECT_EQ(Ctl({"write", "-p", link, "--rest", folder / "a.Q40"}).code, 0);
    radio.Stop();
    EXPECT_EQ(Ctl({"diff", folder / "a.Q40", folder / "after.Q40"}).code, 0);
    std::filesystem::remove(folder / "after.Q40");
  }
}

TEST(Programs, SignalsThatTheParentIgnoresStayIgnored) {
  test::TempFolder folder;
  SimulatorProcess radio({"--fault", "late=600"});
  const ProcessResult result =
      Ctl({"read", "--only", "settings", "-p", radio.device(), folder / "a.Q40"},
          {.ignore_hangup = true, .signal = SIGHUP, .signal_after = milliseconds(200)});
  EXPECT_EQ(result.code, 0) << result.err;
}

}  // namespace
}  // namespace q40
