#include "sim/trace_replay.h"
#include "support/random_document.h"
#include "support/simulated_bench.h"

namespace q40 {
namespace {

using test::milliseconds;

Fault FaultOf(const std::string& text) { return test::WithFaults({text}).faults.front(); }

// A radio with a random memory.
struct Bench : test::SimulatedBench {
  explicit Bench(const std::vector<std::string>& faults = {})
      : SimulatedBench(test::WithFaults(faults)) {
    StoreDocument(test::RandomDocument(5), radio.memory());
    cable.port.Open();
  }
};

TEST(SimulatedRadio, PacedExchangesTakeTheTimeOfTheirBytes) {
  SimulatedRadio::Options paced;
  paced.baud = 9600;
  test::SimulatedBench bench(paced);
  bench.cable.port.Open();
  EXPECT_EQ(bench.link.TxCommand("KX~F0200R\r").size(), 77U);
  const double wire_ms = 77 * 10 * 1000 / 9600.0;
  EXPECT_NEAR(static_cast<double>(bench.clock.Ms()), wire_ms, 1.0);
}

TEST(SimulatedRadio, AnswersBothLineForms) {
  Bench bench;
  const std::string unit = *bench.radio.memory().Read(0x0200, 32);
  EXPECT_EQ(bench.link.TxCommand("KX~F0200R\r"), "KX~F0200R\r\n" + unit + "\r\n");
  EXPECT_EQ(bench.link.RxBlock("KX~F0210R\r"), "\r\n" + unit.substr(32) + "\r\n");
  EXPECT_EQ(bench.link.TxBlock("KX~F0D60W" + std::string(32, '5') + "\r"), 0);
  EXPECT_EQ(bench.radio.memory().Read(0x0D60, 16), std::string(32, '5'));
  EXPECT_EQ(bench.link.TxCommand("KX~E\r\n"), "KX~E\r\n\nOK\r\n");
  EXPECT_EQ(bench.link.TxCommand("KX~F1FF0R\r"), "False01");  // past the end of the memory
  // What is no command is echoed and changes nothing.
  const std::string memory(bench.radio.memory().raw());
  for (const std::string& line :
       {std::string("KX~F0200X\r"), std::string("hello\r"), std::string("KX~F0200R00\r"),
        std::string("KX~F02\r"), std::string("KX~F02G0R\r"),
        "KX~F0200W" + std::string(32, '5') + '\r', "KX~F0200W" + std::string(66, '5') + '\r',
        "KX~F0200W" + std::string(63, '5') + "g\r"}) {
    EXPECT_EQ(bench.link.TxCommand(line), "False01") << line;
  }
  EXPECT_EQ(bench.radio.memory().raw(), memory);
}

TEST(SimulatedRadio, EchoesBytesThatArriveOneByOne) {
  SimulatedRadio radio({});
  test::TimePoint now{};
  std::string heard;
  for (const char c : std::string("KX~WHO\r\n")) {
    radio.Receive(std::string(1, c), now);
    now += milliseconds(1);
    heard += radio.Take(now);
  }
  now += milliseconds(10);
  heard += radio.Take(now);
  EXPECT_EQ(heard, "KX~WHO\r\nRXQ40-00-\r\n");
  // A broken-off line is echoed too, after a moment, and goes on.
  radio.Receive("KX~", now);
  ASSERT_TRUE(radio.NextDue());
  EXPECT_EQ(radio.Take(*radio.NextDue()), "KX~");
  EXPECT_FALSE(radio.NextDue());
  radio.Receive("E\r\n", now + milliseconds(20));
  EXPECT_EQ(radio.Take(now + milliseconds(20)), "E\r\nOK\r\n");
}

TEST(SimulatedRadio, FaultsMakeTheRepliesTheyDescribe) {
  const std::string read = "KX~F0200R\r";
  const std::string write = "KX~F0200W" + std::string(64, 'A') + "\r";
  const std::string unit = *Bench().radio.memory().Read(0x0200, 32);
  const std::string other = *Bench().radio.memory().Read(0x0220, 32);
  const std::string echo = read + "\n";
  const std::tuple<const char*, std::string, std::string, long> cases[] = {
      {"silence", read, "False01", 2000},
      {"echo-only", read, "False01", 2000},
      {"no-echo", read, unit + "\r\n", 0},
      {"bad-echo", read, "KX~F0200?\r\n" + unit + "\r\n", 0},
      {"short@0200", read, echo + unit.substr(0, 63) + "\r\n", 0},
      {"long@#1", read, echo + unit + "X\r\n", 0},
      {"non-hex", read, echo + "ZZ" + unit.substr(2) + "\r\n", 0},
      {"non-hex=31", read, echo + unit.substr(0, 62) + "ZZ\r\n", 0},
      {"non-hex=32", read, echo + unit + "\r\n", 0},
      {"ng", write, write + "\nNG\r\n", 0},
      {"pieces=20", read, echo + unit + "\r\n", 120},
      {"late=300", read, echo + unit + "\r\n", 300},
      {"late", read, "False01", 2000},
      {"stray=2", read, echo + "??" + unit + "\r\n", 0},
      {"other-address", read, echo + other + "\r\n", 0},
      {"not-stored", write, write + "\nOK\r\n", 0},
      {"hang-up", read, "False00", 0},
      {"wrong-identity=RXQ40-3A-", "KX~WHO\r", "KX~WHO\r\nRXQ40-3A-\r\n", 0}};
  for (const auto& [fault, command, reply, ms] : cases) {
    Bench bench({fault});
    EXPECT_EQ(bench.link.TxCommand(command), reply) << fault;
    EXPECT_EQ(bench.clock.Ms(), ms) << fault;
    const bool stored = std::string_view(fault) == "ng";
    EXPECT_EQ(bench.radio.memory().Read(0x0200, 32), stored ? std::string(64, 'A') : unit);
    // Once: the next exchange is good again.
    bench.cable.port.Open();
    if (std::string(fault) != "late") {
      EXPECT_EQ(bench.link.TxCommand("KX~F0240R\r").size(), 77U) << fault;
    }
  }
}

TEST(Faults, StayWhereTheyAreToldTo) {
  Fault once = FaultOf("ng@0240");
  Fault stays = FaultOf("silence@#3+");
  Fault named = FaultOf("late=7@who+");
  std::string happened;
  const char* const commands[] = {"WHO", "0240", "0260", "0240", "0280"};
  for (int i = 0; i < 5; ++i) {
    happened += Happens(once, i + 1, commands[i]) ? 'o' : '-';
    happened += Happens(stays, i + 1, commands[i]) ? 's' : '-';
    happened += Happens(named, i + 1, commands[i]) ? 'n' : '-';
    happened += ' ';
  }
  EXPECT_EQ(happened, "--n o-n -sn -sn -sn ");
  EXPECT_EQ(FaultOf("stray=60000").number, 60'000);
  EXPECT_EQ(FaultOf("late").number, 2500);
  EXPECT_NE(FaultHelp().find("late            the answer comes =MS later (2500)\n"),
            std::string::npos);
  EXPECT_NE(FaultHelp().find("ng              \"NG\" instead of \"OK\"\n"), std::string::npos);
  std::string why;
  for (const char* bad : {"", "sleep", "ng=3", "late=x", "late=-1", "ng@", "ng@20", "ng@02G0",
                          "ng@#0", "ng@#x", "ng@2000", "ng@0201", "stray=60001"}) {
    EXPECT_FALSE(ParseFault(bad, why)) << bad;
  }
}

TEST(SimulatedRadio, ALineThatIsBackHasForgottenWhatWasOnIt) {
  SimulatedRadio radio(test::WithFaults({"hang-up=700@0220"}));
  const test::TimePoint now{};
  radio.Receive("KX~F0200R\r\nKX~F0220R\r\n", now);
  EXPECT_TRUE(radio.HungUp());
  EXPECT_EQ(radio.ComesBackAfter(), milliseconds(700));
  radio.Reconnect();
  EXPECT_EQ(radio.Take(now + milliseconds(10)), "");
  radio.Receive("KX~E\r\n", now);
  EXPECT_EQ(radio.Take(now), "KX~E\r\nOK\r\n");
  SimulatedRadio gone(test::WithFaults({"hang-up=700@0220+"}));
  gone.Receive("KX~F0220R\r\n", now);
  EXPECT_TRUE(gone.HungUp() && !gone.ComesBackAfter());
}

// A trace of two commands, a late answer, a lost line and a third one.
TEST(TraceReplay, AnswersAsTheTraceTells) {
  std::vector<TraceEvent> events;
  ASSERT_FALSE(
      ParseTrace("# rxq40 trace 1\n10 = open\n12 < ??\n"
                 "30 > KX~WHO\\r\\n\n40 < KX~WHO\\r\\n\n90 < RXQ40-1A-\\r\\n\n"
                 "100 > KX~F0200R\\r\n105 < KX~\n90000 < late\n90001 = lost: pulled\n"
                 "95000 = open\n95001 > KX~F0200R\\r\\n\n",
                 "t", events));
  TraceReplay replay(events);
  const test::TimePoint now = test::TimePoint() + std::chrono::hours(1);
  EXPECT_EQ(replay.Take(now), "??");
  replay.Receive("KX~W", now);
  replay.Receive("HO\r\n", now);
  EXPECT_EQ(replay.NextDue(), now + milliseconds(10));
  EXPECT_EQ(replay.Take(now + milliseconds(59)), "KX~WHO\r\n");
  EXPECT_EQ(replay.Take(now + milliseconds(60)), "RXQ40-1A-\r\n");
  replay.Receive("KX~F0200R\r", now);
  EXPECT_EQ(replay.Take(now + milliseconds(2999)), "KX~");
  EXPECT_EQ(replay.Take(now + milliseconds(3000)), "late");
  EXPECT_FALSE(replay.HungUp());
  EXPECT_EQ(replay.Take(now + milliseconds(3000)), "");
  EXPECT_TRUE(replay.HungUp() && replay.ComesBackAfter());
  replay.Reconnect();
  replay.Receive("KX~F0200R\r\n", now);
  EXPECT_FALSE(replay.Difference() || replay.NextDue());
}

// What comes instead of the commands of a trace: whether that ends it, and what is said.
TEST(TraceReplay, NamesEveryOtherCommand) {
  std::vector<TraceEvent> events;
  ASSERT_FALSE(
      ParseTrace("# rxq40 trace 1\n1 > A\\r\n2 < a\n3 > B\\r\\n\n4 < b\n5 > C\\r\n", "t", events));
  const std::tuple<const char*, bool, int, const char*> cases[] = {
      {"A\rB\r\nC\r", false, -1, ""},
      {"", false, 2, "the command did not come: A\\r"},
      {"A\rB\r", false, 4, "the command did not come whole: B\\r instead of B\\r\\n"},
      {"X\r", true, 2, "another command came: X\\r instead of A\\r"},
      {"A\r\n", true, 2, "another command came: A\\r\\n instead of A\\r"},
      {"A\rC\r", true, 4, "instead of B\\r\\n, which the trace has later, in line 6"},
      {"A\rA\r", true, 4, "another command came: A\\r instead of B\\r\\n"},
      {"A\rB\r\nC\rD", true, 0, "the trace has ended, and another command came: D"}};
  for (const auto& [sent, over, line, what] : cases) {
    TraceReplay replay(events);
    replay.Receive(sent, {});
    EXPECT_EQ(replay.IsOver(), over) << sent;
    const auto difference = replay.Difference();
    EXPECT_EQ(difference ? difference->line : -1, line) << sent;
    if (difference) {
      EXPECT_NE(difference->what.find(what), std::string::npos) << difference->what;
    }
    EXPECT_FALSE(over && replay.NextDue()) << sent;
  }
}

TEST(RadioMemory, TakesNothingThatIsNoDocumentNoMemoryOrNoDigits) {
  RadioMemory memory;
  memory.Write(0x0200, "80" + std::string(22, '0') + "FF");
  std::string why;
  EXPECT_FALSE(DocumentOf(memory, 0, false, why));
  EXPECT_FALSE(memory.SetRaw("short"));
  EXPECT_FALSE(memory.Write(0x1FFF, "0011"));
  EXPECT_FALSE(memory.Write(0x0200, "000G"));
  EXPECT_EQ(memory.Read(0x0200, 1), "80");
  EXPECT_TRUE(memory.SetRaw(std::string(8192, '\1')));
  EXPECT_EQ(memory.Read(0x1FFE, 2), "0101");
}

}  // namespace
}  // namespace q40
