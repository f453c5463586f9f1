// The line itself: its traces, its latency, the ports that there are.
#include "link/com_ports.h"
#include "link/low_latency.h"
#include "link/traced_port.h"
#include "support/fake_link.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

using test::milliseconds;

// What a trace tells of a conversation; everything passes through unchanged.
TEST(TracedPort, TellsWhatWentOverTheLine) {
  test::FakeTime time;
  test::ScriptedPort port(time.clock);
  TracedPort traced(port, [&] { return time.clock.now; });
  Link link(traced, time.Timers(), time.pump);
  time.pump.next_arrival = [&] { return port.NextArrival(); };
  std::string trace;
  int room = 12;  // lines that the file takes
  time.clock.now += milliseconds(700);
  traced.Start([&](std::string_view line) { return room-- > 0 && (trace += line, true); });
  port.LeaveOver("\xFF\\");
  const std::string echo = "KX~WHO\r\n";
  const std::string answer = "RXQ40-0A-\r\n";
  port.reply = [&](auto& /*sent*/) -> test::ScriptedPort::Reply {
    return {{echo, milliseconds(5)}, {answer, milliseconds(7)}};
  };
  EXPECT_TRUE(link.OpenPort());
  EXPECT_EQ(link.TxCommand("KX~WHO\r"), echo + answer);
  traced.Close();
  port.can_open = false;
  EXPECT_FALSE(link.OpenPort());
  port.can_open = true;
  traced.Open();
  port.Close();  // the cable, while nobody listens
  port.reply = {};
  traced.Write("nothing of this goes anywhere");
  EXPECT_EQ(link.TxCommand("KX~WHO\r"), "False00");
  EXPECT_TRUE(link.OpenPort());
  port.dies_at_write = 2;
  EXPECT_EQ(link.TxCommand("KX~E\r"), "False00");
  traced.Open();
  const std::string told =
      "# rxq40 trace 1\n"
      "      0 = open\n"
      "      0 < \\xFF\\\\\n"
      "     20 > KX~WHO\\r\\n\n"
      "     25 < KX~WHO\\r\\n\n"
      "     32 < RXQ40-0A-\\r\\n\n"
      "     32 = closed\n"
      "     32 = not opened: the scripted port is closed\n"
      "     32 = open\n"
      "     32 = lost: the scripted port is closed\n"
      "     32 = open\n"
      "     52 > KX~E\\r\\n\n";
  EXPECT_EQ(trace, told);  // and no more, though the port was lost
  EXPECT_EQ(room, -1);     // a file that took no line is not asked again
  std::vector<TraceEvent> events;
  EXPECT_FALSE(ParseTrace(trace, "t", events));
  std::string again = std::string(kTraceTitle) + '\n';
  for (const TraceEvent& event : events) again += TraceLine(event);
  EXPECT_EQ(again, told);
}

TEST(Trace, KeepsEveryByteAndNamesWhatIsWrong) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  const std::string title = std::string(kTraceTitle) + "\r\n# by mail\n\n";
  const std::string line = TraceLine({milliseconds(123456789), TraceEvent::Kind::kArrived, bytes});
  std::vector<TraceEvent> events;
  ASSERT_FALSE(ParseTrace(title + line, "t", events));
  EXPECT_EQ(events.at(0).bytes, bytes);
  EXPECT_EQ(events[0].at, milliseconds(123456789));
  EXPECT_EQ(events[0].line, 4);
  const std::pair<const char*, const char*> cases[] = {
      {"", "t, line 1: no trace: it does not begin with \"# rxq40 trace 1\""},
      {"# rxq40 trace 2\n", "line 1: no trace"},
      {"# rxq40 trace 1", "line 1: the line is not whole"},
      {"# rxq40 trace 1\n1 > a\n2 > b", "line 3: the line is not whole; remove it"},
      {"# rxq40 trace 1\n> a\n", "line 2: it does not begin with a time"},
      {"# rxq40 trace 1\n-1 > a\n", "line 2: it does not begin with a time"},
      {"# rxq40 trace 1\n99999999999999999999 > a\n", "line 2: it does not begin with a time"},
      {"# rxq40 trace 1\n1 ? a\n", "line 2: no >, < or ="},
      {"# rxq40 trace 1\n1 >a\n", "line 2: no >, < or ="},
      {"# rxq40 trace 1\n1 > \n", "line 2: nothing behind the sign"},
      {"# rxq40 trace 1\n1 > a\\q\n", "line 2: a character or an escape"},
      {"# rxq40 trace 1\n1 > a\\x1\n", "line 2: a character or an escape"},
      {"# rxq40 trace 1\n1 > a\t\n", "line 2: a character or an escape"},
      {"# rxq40 trace 1\n5 > a\n4 < b\n", "line 3: its time lies before"}};
  for (const auto& [text, what] : cases) {
    events.clear();
    const auto problem = ParseTrace(text, "t", events);
    ASSERT_TRUE(problem) << text;
    EXPECT_NE(problem->Message().find(what), std::string::npos) << problem->Message();
  }
}

// A driver in each state it can be in: what it is told, and what it is left with.
TEST(LowLatency, IsPutBackAsItWas) {
  struct Driver final : LatencyControl {
    std::optional<bool> low;
    bool obeys = true;
    std::string told;
    std::optional<bool> IsLow() override { return low; }
    bool SetLow(bool wanted) override {
      told += wanted ? '+' : '-';
      if (obeys) low = wanted;
      return obeys;
    }
  };
  const std::tuple<std::optional<bool>, bool, const char*> cases[] = {
      {false, true, "+-"}, {true, true, ""}, {std::nullopt, true, ""}, {false, false, "+"}};
  for (const auto& [low, obeys, told] : cases) {
    Driver driver;
    driver.low = low;
    driver.obeys = obeys;
    LowLatency latency;
    latency.Ask(driver);
    EXPECT_EQ(driver.low.value_or(false), low && (*low || obeys));
    latency.PutBack(driver);
    latency.PutBack(driver);
    EXPECT_EQ(driver.told, told);
    EXPECT_EQ(driver.low, low);
  }
}

TEST(ComPorts, StablePathsAndAdapters) {
  test::TempFolder folder;
  std::filesystem::create_symlink("/dev/null", folder / "usb-B-if00-port0");
  std::filesystem::create_symlink("/dev/null", folder / "usb-A-if00-port0");
  std::filesystem::create_symlink("/dev/nowhere", folder / "usb-0-gone");
  EXPECT_EQ(StablePath("/dev/null", folder.path()), folder / "usb-A-if00-port0");
  EXPECT_EQ(StablePath("/dev/zero", folder.path()), "");
  EXPECT_EQ(StablePath("/dev/null", folder / "missing"), "");
  const auto adapters = Adapters({{"/dev/ttyS0", ""},
                                  {"/dev/ttyUSB11", ""},
                                  {"/dev/ttyXR0", "", "/dev/serial/by-id/x"},
                                  {"/dev/ttyACM0", ""}});
  ASSERT_EQ(adapters.size(), 3U);
  EXPECT_EQ(adapters[0].device + adapters[1].device, "/dev/ttyUSB11/dev/ttyXR0");
  const auto states = ComPortStates({{"/dev/ttyUSB0", "an adapter", "/dev/serial/by-id/x"}});
  EXPECT_EQ(states[0].stable_path, "/dev/serial/by-id/x");
}

TEST(ComPorts, NumbersPathsAndOverrides) {
  unsetenv("RXQ40_COM1");
  EXPECT_EQ(ComDevice(8), "/dev/ttyUSB7");
  EXPECT_EQ(ComDevice(9), "/dev/ttyACM0");
  EXPECT_EQ(ComDevice(14), "/dev/ttyS3");
  setenv("RXQ40_COM1", "/tmp/radio", 1);
  EXPECT_EQ(DeviceOf("1"), "/tmp/radio");
  setenv("RXQ40_COM1", "", 1);
  EXPECT_EQ(DeviceOf("1"), "/dev/ttyUSB0");
  unsetenv("RXQ40_COM1");
  EXPECT_EQ(DeviceOf("/dev/pts/3"), "/dev/pts/3");
  setenv("RXQ40_COM2", "/dev/null", 1);  // there, and no serial adapter
  setenv("RXQ40_COM3", "/dev", 1);
  const auto states = ComPortStates({{"/dev/ttyUSB0", "an adapter"}, {"/dev/ttyS3", ""}});
  unsetenv("RXQ40_COM2");
  unsetenv("RXQ40_COM3");
  ASSERT_EQ(states.size(), 14U);
  EXPECT_TRUE(states[0].present && states[1].present && states[13].present);
  EXPECT_FALSE(states[2].present);   // a folder
  EXPECT_FALSE(states[12].present);  // a board has this node without a chip behind it
  EXPECT_EQ(states[0].number, 1);
  EXPECT_EQ(states[0].description, "an adapter");
  EXPECT_EQ(states[1].device, "/dev/null");
  for (const char* bad : {"", "0", "15", "01", "99999999999999999999"})
    EXPECT_FALSE(DeviceOf(bad)) << bad;
}

}  // namespace
}  // namespace q40
