#include "link/link.h"

#include "support/scripted_radio.h"

namespace q40 {
namespace {

using test::milliseconds;
using test::Radio;
using test::ScriptedLink;

// What a command gives for a reply in pieces, and how long it takes.
using ReplyCase = std::tuple<const char*, test::ScriptedPort::Reply, std::string, long>;

const std::string kEcho = "KX~WHO\r\n";
const std::string kAnswer = "RXQ40-0A-\r\n";

// A radio that answers everything alike.
auto Always(test::ScriptedPort::Reply reply) {
  return [reply = std::move(reply)](const std::string& /*sent*/) { return reply; };
}

TEST(TxCommand, CompleteByLengthAndLineFeed) {
  const ReplyCase cases[] = {
      {"echo and answer at once", {{kEcho + kAnswer}}, kEcho + kAnswer, 0},
      {"in pieces",
       {{"KX~", milliseconds(5)},
        {"WHO\r\nRXQ", milliseconds(50)},
        {"40-0A-\r\n", milliseconds(100)}},
       kEcho + kAnswer,
       155},
      {"silence", {}, "False01", 2000},
      {"echo only", {{kEcho}}, "False01", 2000},
      {"no line feed", {{kEcho + "RXQ40-0A-\r"}}, "False01", 2000},
      {"five characters more than the command",
       {{kEcho + "OK\r\n", milliseconds(30)}},
       kEcho + "OK\r\n",
       30},
      {"ends on a line feed inside",
       {{kEcho + "12\r\n"}, {"34\r\n", milliseconds(1)}},
       kEcho + "12\r\n",
       0},
      {"one too short", {{kEcho + "O\r\n"}}, "False01", 2000},
      {"together with the end of the time",
       {{kEcho + kAnswer, milliseconds(2000)}},
       kEcho + kAnswer,
       2000},
      {"too late", {{kEcho + kAnswer, milliseconds(2001)}}, "False01", 2000}};
  for (const auto& [name, reply, result, ms] : cases) {
    ScriptedLink t;
    t.port.reply = Always(reply);
    t.port.Open();
    EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), result) << name;
    EXPECT_EQ(t.clock.Ms(), ms) << name;
    ASSERT_EQ(t.port.sent.size(), 1U);
    EXPECT_EQ(t.port.sent[0].bytes, kEcho);
    EXPECT_FALSE(t.timer2.IsRunning()) << name;
  }
}

TEST(Link, PortFailuresEndEverythingAtOnce) {
  std::string digits;
  const std::function<bool(Link&)> calls[] = {
      [](Link& link) { return link.OpenPort(), link.TxCommand("KX~WHO\r") == "False00"; },
      [](Link& link) { return link.OpenPort(), !link.ServiceRead("KX~F0D60R\r", {}); },
      [](Link& link) { return link.RxBlock("KX~F0D60R\r") == "ERROR00"; },
      [](Link& link) { return link.TxBlock("KX~F0D60W\r") == 3; },
      [&](Link& link) { return ReadChannelBitmap(link, digits) == BlockOutcome::kPortError; }};
  for (const auto& fails : calls) {
    for (const int kind : {0, 1, 2}) {
      ScriptedLink t;
      t.port.can_open = kind != 0;
      t.port.dies_at_write = kind == 1 ? 0 : -1;
      t.port.dies_at_read = kind == 2;
      EXPECT_TRUE(fails(t.link)) << kind;
      // A port that was lost is not opened again behind the caller's back.
      t.port.can_open = true;
      EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), "False00") << kind;
      EXPECT_LE(t.clock.Ms(), 20) << kind;
      EXPECT_FALSE(t.port.IsOpen() || t.timer1.IsRunning()) << kind;
    }
  }
}

TEST(TxCommand, NothingIsSentOnALineThatIsAlreadyLost) {
  ScriptedLink t;
  t.port.reply = Always({{kEcho + kAnswer}});
  t.port.Open();
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), kEcho + kAnswer);
  EXPECT_TRUE(t.link.WasSent());
  t.port.dies_at_read = true;
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), "False00");
  EXPECT_FALSE(t.link.WasSent());
  EXPECT_EQ(t.port.sent.size(), 1U);
}

TEST(TxCommand, NothingIsSentBehindTheDeadline) {
  ScriptedLink t;
  t.port.reply = Always({{kEcho + kAnswer}});
  t.port.Open();
  t.link.StartDeadline(2);
  t.clock.now += milliseconds(2 * 2010 + 5000 - 1);
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), kEcho + kAnswer);
  t.clock.now += milliseconds(1);
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), "False01");
  EXPECT_EQ(t.port.sent.size(), 1U);
  t.link.StopDeadline();
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), kEcho + kAnswer);
}

TEST(Wait, EndsWithItsTimeOrAStopRequest) {
  ScriptedLink t;
  t.link.Wait(700);
  EXPECT_EQ(t.clock.Ms(), 700);
  t.pump.stop = true;
  t.link.Wait(700);
  EXPECT_EQ(t.clock.Ms(), 700);
}

TEST(TxCommand, LateAnswerToTheCommandBeforeIsThrownAway) {
  ScriptedLink t;
  ASSERT_TRUE(t.link.OpenPort());
  t.port.LeaveOver(kEcho + kAnswer);
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), "False01");
}

// What lies on the line before the first command, and how long the link waits for its end.
TEST(OpenPort, WaitsUntilTheLineIsQuiet) {
  using Reply = test::ScriptedPort::Reply;
  const Reply chatter(100, {"x", milliseconds(10)});
  const std::tuple<const char*, bool, Reply, long> cases[] = {
      {"just opened", false, {}, 20},
      {"open and quiet", true, {}, 0},
      {"the rest of an answer", false, {{"5\r\n", milliseconds(19)}}, 39},
      {"quiet before it comes", false, {{"5\r\n", milliseconds(21)}}, 20},
      {"open, something lies there", true, {{"5"}, {"5\r\n", milliseconds(15)}}, 35},
      {"never quiet", false, chatter, 200},
      {"more than any radio says", false, {{"x"}, {std::string(5000, 'x'), milliseconds(2)}}, 2}};
  for (const auto& [name, was_open, garbage, ms] : cases) {
    ScriptedLink t;
    if (was_open) t.port.Open();
    t.port.Leave(garbage);
    EXPECT_TRUE(t.link.OpenPort()) << name;
    EXPECT_EQ(t.clock.Ms(), ms) << name;
    EXPECT_TRUE(t.port.sent.empty() && !t.timer1.IsRunning() && !t.timer3.IsRunning()) << name;
  }
  ScriptedLink lost;
  lost.port.Leave(chatter);
  lost.pump.on_wait = [&] { lost.port.dies_at_read = true; };
  EXPECT_FALSE(lost.link.OpenPort());
  ScriptedLink stopped;
  stopped.port.Leave(chatter);
  stopped.pump.stop = true;
  EXPECT_TRUE(stopped.link.OpenPort());
  EXPECT_EQ(stopped.clock.Ms(), 0);
}

TEST(TxCommand, EndlessChatterEndsAndIsNotCollected) {
  ScriptedLink t;
  t.port.reply = Always(test::ScriptedPort::Reply(3000, {std::string(100, 'x'), milliseconds(1)}));
  t.port.Open();
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), "False01");
  EXPECT_EQ(t.clock.Ms(), 2000);
  // Enough rubbish in front, and not even a proper end makes a reply of it.
  t.port.reply = Always({{std::string(5000, 'x')}, {"\r\n"}});
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), "False01");
  // A line that goes dead meanwhile is still noticed.
  t.pump.on_wait = [&] { t.port.Close(); };
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), "False00");
}

TEST(TxCommand, AStopRequestLetsTheExchangeFinishAndSendsNothingMore) {
  ScriptedLink t;
  t.port.reply = Always({{kEcho + kAnswer, milliseconds(80)}});
  t.port.Open();
  t.pump.on_wait = [&] { t.pump.stop = true; };
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), kEcho + kAnswer);
  EXPECT_EQ(t.link.TxCommand("KX~WHO\r"), kStopped);
  EXPECT_EQ(t.port.sent.size(), 1U);
}

// A radio that has everything gets it even when the user stops.
TEST(TxEnd, SendsTheDoubledLineFeedAndIgnoresSilenceAndStops) {
  ScriptedLink t;
  t.port.Open();
  t.link.TxEnd();
  EXPECT_EQ(t.port.sent[0].bytes, "KX~E\r\n\n");
  EXPECT_EQ(t.clock.Ms(), 2010);
  t.port.reply = Always({{"KX~E\r\n\nOK\r\n"}});
  t.pump.stop = true;  // there is no pause any more
  t.link.TxEnd();
  EXPECT_EQ(t.port.sent.size(), 2U);
  EXPECT_EQ(t.clock.Ms(), 2010);
}

TEST(RxBlock, TakesTheLast36Characters) {
  const std::string data = "0123456789ABCDEF0123456789abcdef";
  const std::string answer = "\r\n" + data + "\r\n";
  const ReplyCase cases[] = {{"with echo", {{"KX~F0D60R\r"}, {answer, milliseconds(3)}}, answer, 3},
                             {"four characters in front", {{"abcd" + answer}}, answer, 0},
                             {"bad frame", {{"xx" + data + "\r\n"}}, "ERROR02", 0},
                             {"35 characters", {{answer.substr(1)}}, "ERROR01", 500},
                             {"silence", {}, "ERROR01", 500},
                             {"no end", {{answer + "x"}}, "ERROR02", 500},
                             {"no line end behind 36", {{"\r\n" + data + "xx"}}, "ERROR02", 500}};
  for (const auto& [name, reply, result, ms] : cases) {
    ScriptedLink t;
    t.port.Open();
    t.port.reply = Always(reply);
    EXPECT_EQ(t.link.RxBlock("KX~F0D60R\r"), result) << name;
    EXPECT_EQ(t.clock.Ms(), ms) << name;
    EXPECT_EQ(t.port.sent[0].bytes, "KX~F0D60R\r");
  }
}

TEST(TxBlock, WaitsForMoreThan46AndAccepts46) {
  const std::tuple<const char*, std::string, int, long> cases[] = {
      {"48 characters", std::string(42, 'e') + "\r\nOK\r\n", 0, 0},
      {"47 characters", std::string(41, 'e') + "\r\nOK\r\n", 0, 0},
      {"46 characters", std::string(40, 'e') + "\r\nOK\r\n", 0, 500},
      {"45 characters", std::string(39, 'e') + "\r\nOK\r\n", 2, 500},
      {"47 characters without an end", std::string(47, 'e'), 1, 500},
      {"refused", std::string(42, 'e') + "\r\nNG\r\n", 1, 0}};
  for (const auto& [name, reply, result, ms] : cases) {
    ScriptedLink t;
    t.port.Open();
    t.port.reply = Always({{reply}});
    EXPECT_EQ(t.link.TxBlock("KX~F0D60W\r"), result) << name;
    EXPECT_EQ(t.clock.Ms(), ms) << name;
  }
}

TEST(CheckedBlocks, TenSendsAndAGoodReplyResetsTheCount) {
  const std::string block(32, '5');
  ScriptedLink t;
  int silent = 9;  // sends that stay unanswered before each block
  int left = silent;
  t.port.reply = [&](const std::string& sent) -> test::ScriptedPort::Reply {
    if (left-- > 0) return {};
    left = silent;
    return {{sent + "\r\n" + (sent.size() > 10 ? "OK" : block) + "\r\n"}};
  };
  std::string digits;
  EXPECT_EQ(ReadChannelBitmap(t.link, digits), BlockOutcome::kDone);
  EXPECT_EQ(digits, block + block);
  ASSERT_EQ(t.port.sent.size(), 20U);
  EXPECT_EQ(t.port.sent[0].bytes, "KX~F0D60R\r");
  EXPECT_EQ(t.port.sent[10].bytes, "KX~F0D70R\r");
  EXPECT_EQ(WriteChannelBitmap(t.link, digits), BlockOutcome::kDone);
  EXPECT_EQ(t.port.sent.back().bytes, "KX~F0D70W" + block + "\r");

  left = silent = 10;
  t.port.sent.clear();
  EXPECT_EQ(ReadChannelBitmap(t.link, digits), BlockOutcome::kCommunicationError);
  EXPECT_EQ(t.port.sent.size(), 10U);
  t.port.dies_at_write = 12;
  EXPECT_EQ(WriteChannelBitmap(t.link, block + block), BlockOutcome::kPortError);
  EXPECT_EQ(t.port.sent.size(), 12U);

  // A badly framed answer is asked for again, a write that is refused is sent again.
  ScriptedLink bad;
  bad.port.reply = [&](const std::string& sent) -> test::ScriptedPort::Reply {
    if (sent.size() > 10) return {{sent + "\r\nNG\r\n"}};
    return {{sent + (bad.port.sent.size() == 1 ? "??" : "\r\n") + block + "\r\n"}};
  };
  EXPECT_EQ(ReadChannelBitmap(bad.link, digits), BlockOutcome::kDone);
  EXPECT_EQ(bad.port.sent.size(), 3U);
  EXPECT_EQ(WriteChannelBitmap(bad.link, digits), BlockOutcome::kCommunicationError);
  EXPECT_EQ(bad.port.sent.size(), 13U);
}

TEST(ServiceRead, ShowsTheGrowingReplyAndChecksNothing) {
  ScriptedLink t;
  t.port.reply = Always({{"KX~F0020R\r"}, {"junk", milliseconds(7)}});
  std::string last;
  EXPECT_FALSE(t.link.ServiceRead("KX~F0020R\r", {}));  // closed
  t.port.Open();
  const auto reply = t.link.ServiceRead("KX~F0020R\r", [&](const std::string& r) { last = r; });
  EXPECT_EQ(reply, "KX~F0020R\rjunk");
  EXPECT_EQ(last, *reply);
  EXPECT_EQ(t.clock.Ms(), 500);
}

TEST(Replies, WhatCameBackInsteadIsSaid) {
  const std::string echo = "KX~WHO\r\n";
  const std::tuple<std::string, const char*> cases[] = {
      {"", "nothing came back within 2 s"},
      {echo, "only the echo came back within 2 s, and no answer"},
      {"RXQ40-0A-\r\n", "the answer came without the echo of the command"},
      {"RXQ40-0A-.\n", "no complete answer within 2 s, but 11 of 19 characters"},
      {echo + "RXQ40", "no complete answer within 2 s, but 13 of 19 characters"},
      {echo + "RXQ40-0A.\r.", "no complete answer within 2 s, but 19 characters"},
      {echo + "RXQ40-0A--\r\n", "an answer of 20 characters instead of 19"}};
  for (const auto& [received, why] : cases) {
    Radio radio;
    radio.port.reply = Always({{received}});
    EXPECT_EQ(radio.sequences.Identify().why, why);
  }
}

// A reply counts by its length. What is damaged in it otherwise is told, and stops nothing.
TEST(Replies, DamagedOnesOfTheRightLengthAreNamed) {
  Radio radio;
  const auto proper = radio.port.reply;
  radio.port.reply = [&](const std::string& sent) {
    auto reply = proper(sent);
    if (sent.starts_with("KX~F0020")) reply[0].bytes[5] = '8';
    if (sent.starts_with("KX~F0220")) reply[1].bytes[63] = 'G';
    if (sent.starts_with("KX~F1C20")) reply[1].bytes[64] = ' ';
    return reply;
  };
  const SequenceReport report = radio.sequences.ReadAll();
  EXPECT_EQ(report.outcome, Outcome::kDone);
  EXPECT_EQ(radio.host.ends[0].note, "1 reply was damaged: settings area 1; read again");
  EXPECT_EQ(report.note,
            "3 replies were damaged: settings area 1, memory channel 1, memory channel D9; read "
            "again");
  radio.port.reply = [&](const std::string& sent) {
    auto reply = proper(sent);
    reply[0].bytes[0] = '?';
    return reply;
  };
  EXPECT_EQ(radio.sequences.WriteAll().note,
            "231 replies were damaged: announcement, identification, settings area 1, settings "
            "area 2, VHF special channel VFO and 226 more; write again");
}

}  // namespace
}  // namespace q40
