// Every fault that the simulated radio knows, at every exchange of every sequence, once and from then
// on. Time is simulated, so the sweep covers hours of waiting. It makes the first table of
// docs/faults.md, the test of file faults the second.
#include <map>

#include <gtest/gtest.h>

#include "support/generated_table.h"
#include "support/random_document.h"
#include "support/simulated_bench.h"

namespace q40 {
namespace {

// ---- what must happen

// What an exchange is about; faults show by it.
enum Class : std::size_t { kWho, kAnnounce, kRead, kWrite, kEnd, kClasses };
constexpr std::array<const char*, kClasses> kClassNames = {"identification", "announcement", "read",
                                                           "write", "End"};
// D: the sequence goes on and is done; C: "Communication Error"; P: "COM Port Error"; L: a late
// "Communication Error", when the 2 s are over; W: done in the end, after waiting for 2 s; N: done,
// with a note; U: done, and the data is wrong, which no answer tells; M: the data is wrong, and a note
// tells; "." the fault has nothing to change there.
struct Row {
  const char* fault;
  std::array<char, kClasses> ends;
  const char* meaning;
};
constexpr Row kRows[] = {
    {"silence", {'L', 'L', 'L', 'L', 'W'}, "nothing comes back"},
    {"echo-only", {'L', 'L', 'L', 'L', 'W'}, "the echo comes, the answer does not"},
    {"no-echo", {'L', 'L', 'C', 'L', 'W'}, "the answer comes, the echo does not"},
    {"bad-echo", {'N', 'N', 'N', 'N', 'D'}, "one character of the echo is another"},
    {"short", {'C', 'L', 'C', 'L', 'W'}, "an answer of one character too few"},
    {"long", {'C', 'C', 'C', 'C', 'D'}, "one too many"},
    {"non-hex", {'C', '.', 'M', '.', '.'}, "no hexadecimal digits in the data"},
    {"ng", {'.', 'C', '.', 'C', 'D'}, "\"NG\" instead of \"OK\""},
    {"pieces", {'D', 'D', 'D', 'D', 'D'}, "an answer in pieces, 50 ms apart"},
    {"late", {'L', 'L', 'L', 'L', 'W'}, "the answer comes after 2.5 s"},
    {"late=1900", {'D', 'D', 'D', 'D', 'D'}, "the answer comes after 1.9 s"},
    {"stray", {'C', 'C', 'C', 'C', 'D'}, "foreign characters before the answer"},
    {"other-address", {'.', '.', 'U', '.', '.'}, "the data of the next address"},
    {"not-stored", {'.', '.', '.', 'U', '.'}, "a write is acknowledged but not kept"},
    {"hang-up", {'P', 'P', 'P', 'P', 'D'}, "the line is closed"},
    {"wrong-identity", {'C', '.', '.', '.', '.'}, "another radio answers"},
};

struct Exchange {
  Class kind;
  Address address = 0;
};

struct SequenceCase {
  const char* name;
  SequenceReport (Sequences::*run)();
  std::vector<Exchange> exchanges;
};

std::vector<Exchange> Exchanges(std::vector<Class> first, Class kind,
                                const std::vector<Unit>& units) {
  std::vector<Exchange> exchanges;
  for (const Class one : first) exchanges.push_back({one});
  for (const Unit unit : units) exchanges.push_back({kind, unit.address()});
  if (!units.empty()) exchanges.push_back({kEnd});
  return exchanges;
}

const std::vector<SequenceCase>& SequenceCases() {
  static const std::vector<SequenceCase> cases = {
      {"Identify", &Sequences::Identify, Exchanges({kWho}, kRead, {})},
      {"Auto Select", &Sequences::AutoSelect, Exchanges({kWho}, kRead, {})},
      {"Read Settings", &Sequences::ReadSettings,
       Exchanges({kWho}, kRead, UnitsOf(Half::kSettings))},
      {"Read Memory", &Sequences::ReadMemory, Exchanges({kWho}, kRead, UnitsOf(Half::kMemory))},
      {"Write Settings", &Sequences::WriteSettings,
       Exchanges({kAnnounce, kWho}, kWrite, UnitsOf(Half::kSettings))},
      {"Write Memory", &Sequences::WriteMemory,
       Exchanges({kAnnounce, kWho}, kWrite, UnitsOf(Half::kMemory))},
  };
  return cases;
}

struct Expected {
  std::size_t failing;  // index of the exchange that ends the sequence; their number when none does
  char end = 'D';
};

Expected ExpectedOf(const Row& row, const std::vector<Exchange>& exchanges, std::size_t at,
                    bool stays) {
  for (std::size_t i = at; i < exchanges.size() && (stays || i == at); ++i) {
    const char end = row.ends[exchanges[i].kind];
    if (end == 'C' || end == 'L' || end == 'P') return {i, end};
  }
  return {exchanges.size(), 'D'};
}

Outcome OutcomeOf(char end) {
  if (end == 'P') return Outcome::kPortError;
  return end == 'D' ? Outcome::kDone : Outcome::kCommunicationError;
}

// ---- one run

// A radio with a random memory, and a program with another document.
struct Talk : test::SimulatedBench {
  explicit Talk(const std::string& fault) : SimulatedBench(test::WithFaults({fault})) {
    held = Mine();
    radio.memory() = TheirMemory();
  }
  static const CloneData& Mine() {
    static const CloneData mine = Document(1);
    return mine;
  }
  static const RadioMemory& TheirMemory() {
    static const RadioMemory theirs = [] {
      RadioMemory memory;
      StoreDocument(Document(2), memory);
      return memory;
    }();
    return theirs;
  }
  static CloneData Document(unsigned seed) {
    CloneData document = test::RandomDocument(seed);
    document.model = 0;
    document.image.VersionA = false;
    return document;
  }
};

// What a read that ends before exchange `failing` leaves behind: settings, each band's channels and
// each dialer unit arrive as a whole or not at all.
CloneData AfterRead(CloneData document, const std::vector<Exchange>& exchanges,
                    std::size_t failing) {
  const auto done = [&](std::size_t last) { return failing > last; };
  for (std::size_t i = 0; i < std::min(failing, exchanges.size()); ++i) {
    if (exchanges[i].kind != kRead) continue;
    const Address address = exchanges[i].address;
    std::size_t last_of_group = i;
    if (address < 0x0200) last_of_group = i <= 2 ? 2 : i <= 7 ? 7 : 12;
    if (!done(last_of_group)) continue;
    EXPECT_FALSE(LoadUnit(
        {*Unit::At(address), Talk::TheirMemory().Read(address, kUnitSize).value()}, document));
  }
  return document;
}

std::string Units(const RadioMemory& memory, const std::vector<Exchange>& exchanges,
                  std::size_t from, std::size_t to) {
  std::string bytes;
  for (std::size_t i = from; i < std::min(to, exchanges.size()); ++i) {
    if (exchanges[i].kind == kWrite) bytes += memory.raw().substr(exchanges[i].address, kUnitSize);
  }
  return bytes;
}

// What a complete write stores.
const RadioMemory& AfterWrite(const SequenceCase& sequence) {
  static std::map<std::string, RadioMemory> memories;
  const auto found = memories.find(sequence.name);
  if (found != memories.end()) return found->second;
  Talk run("silence@#9999");
  EXPECT_EQ((run.sequences.*sequence.run)().outcome, Outcome::kDone);
  return memories[sequence.name] = run.radio.memory();
}

class Sweep : public testing::Test {
 protected:
  void RunOne(const SequenceCase& sequence, const Row& row, std::size_t at, bool stays);
  static void CheckEnd(const Talk& run, const SequenceCase& sequence, const SequenceReport& report,
                       const Expected& expected, bool wrong_data);

  int runs_ = 0;
};

void Sweep::CheckEnd(const Talk& run, const SequenceCase& sequence, const SequenceReport& report,
                     const Expected& expected, bool wrong_data) {
  const std::vector<Exchange>& exchanges = sequence.exchanges;
  const bool reads = exchanges.back().kind == kEnd && exchanges[0].kind == kWho;
  const bool writes = exchanges[0].kind == kAnnounce;
  const bool done = expected.end == 'D';
  // Nothing was sent behind the failure.
  EXPECT_EQ(run.radio.Exchanges(),
            static_cast<int>(std::min(expected.failing + 1, exchanges.size())));
  EXPECT_EQ(run.host.begins, static_cast<int>(run.host.ends.size()));
  if (!done && exchanges[expected.failing].kind != kWho &&
      exchanges[expected.failing].kind != kAnnounce) {
    EXPECT_EQ(report.where, Unit::At(exchanges[expected.failing].address)->Name());
  }
  if (writes) {
    const std::size_t openings = 2;
    const std::size_t units = exchanges.size() - openings - 1;
    EXPECT_EQ(report.acknowledged.size(),
              std::min(expected.failing - std::min(expected.failing, openings), units));
    const bool in_flight = !done && expected.failing >= openings;
    EXPECT_EQ(report.in_flight,
              in_flight ? Unit::At(exchanges[expected.failing].address) : std::nullopt);
    EXPECT_EQ(run.document.image().MemoryTable, Talk::Mine().image.MemoryTable);
    EXPECT_EQ(run.document.image().ChannelInUse, Talk::Mine().image.ChannelInUse);
    EXPECT_FALSE(run.document.SettingsChanged() || run.document.MemoryChanged());
    // The units before the failure are in the radio, those behind it are as before.
    if (!wrong_data) {
      EXPECT_EQ(Units(run.radio.memory(), exchanges, 0, expected.failing),
                Units(AfterWrite(sequence), exchanges, 0, expected.failing));
    }
    EXPECT_EQ(Units(run.radio.memory(), exchanges, expected.failing + 1, exchanges.size()),
              Units(Talk::TheirMemory(), exchanges, expected.failing + 1, exchanges.size()));
  } else {
    EXPECT_EQ(run.radio.memory().raw(), Talk::TheirMemory().raw());
  }
  if (!reads) return;
  const bool memory = exchanges[1].kind == kRead && exchanges[1].address >= 0x0200;
  EXPECT_EQ(run.document.SettingsChanged(), !memory && expected.failing > 2);
  EXPECT_EQ(run.document.MemoryChanged(), memory && done);
  if (wrong_data) return;
  const CloneData after = AfterRead(Talk::Mine(), exchanges, expected.failing);
  EXPECT_TRUE(run.document.image() == after.image);
  EXPECT_EQ(run.document.settings(), after.settings);
  EXPECT_EQ(run.document.dial(), after.dial);
}

void Sweep::RunOne(const SequenceCase& sequence, const Row& row, std::size_t at, bool stays) {
  const std::string fault =
      std::string(row.fault) + "@#" + std::to_string(at + 1) + (stays ? "+" : "");
  SCOPED_TRACE(std::string(sequence.name) + ", " + fault);
  const Expected expected = ExpectedOf(row, sequence.exchanges, at, stays);
  Talk run(fault);
  const SequenceReport report = (run.sequences.*sequence.run)();
  ++runs_;
  EXPECT_EQ(report.outcome, OutcomeOf(expected.end));
  const Class kind = sequence.exchanges[at].kind;
  bool wrong_data = false;
  std::size_t noted = 0;
  for (std::size_t i = at; i < sequence.exchanges.size() && (stays || i == at); ++i) {
    const char end = row.ends[sequence.exchanges[i].kind];
    wrong_data = wrong_data || end == 'U' || end == 'M';
    if (i < expected.failing && (end == 'N' || end == 'M')) ++noted;
  }
  EXPECT_EQ(report.damaged.size(), noted);
  EXPECT_EQ(report.note.find("damaged") != std::string::npos, noted > 0) << report.note;
  CheckEnd(run, sequence, report, expected, wrong_data);

  // Its time: 20 ms until the line is known to be quiet, 10 ms a pause, and what the fault takes.
  const long pauses =
      10 * static_cast<long>(std::min(expected.failing + 1, sequence.exchanges.size())) + 10 + 20;
  if (!stays) {
    const long waited = run.clock.Ms();
    const char end = row.ends[kind];
    const long limit =
        end == 'L' || end == 'W' || std::string_view(row.fault) == "late=1900" ? 2000 : 400;
    EXPECT_LE(waited, limit + pauses);
    EXPECT_TRUE(waited >= 2000 || (end != 'L' && end != 'W')) << waited;
  } else {
    EXPECT_LE(run.clock.Ms(), 2010L * static_cast<long>(sequence.exchanges.size()) + 5000);
  }

  // A moment later the port serves the next command.
  if (stays) return;
  run.clock.now += std::chrono::seconds(3);
  EXPECT_EQ(run.sequences.Identify().outcome, Outcome::kDone);
}

// ---- the table for people

const std::map<char, const char*> kEndTexts = {{'C', "Communication Error, at once"},
                                               {'L', "Communication Error, after 2 s"},
                                               {'P', "COM Port Error, at once"},
                                               {'W', "done, 2 s later"},
                                               {'N', "done, with a note"},
                                               {'U', "done, with wrong data"},
                                               {'M', "done, with wrong data and a note"},
                                               {'D', "done"},
                                               {'.', "no effect"}};

std::string Table(int runs) {
  std::string text = test::TableHead(runs, kClassNames);
  for (const Row& row : kRows) {
    text += "| `" + std::string(row.fault) + "`: " + row.meaning + " |";
    for (const char end : row.ends) text += std::string(" ") + kEndTexts.at(end) + " |";
    text += '\n';
  }
  return text;
}

TEST_F(Sweep, EveryFaultAtEveryExchange) {
  for (const SequenceCase& sequence : SequenceCases()) {
    for (const Row& row : kRows) {
      for (std::size_t at = 0; at < sequence.exchanges.size(); ++at) {
        for (const bool stays : {false, true}) {
          RunOne(sequence, row, at, stays);
          if (HasFailure()) return;  // one run says what is wrong, thousands hide it
        }
      }
    }
  }
  test::CheckTable("faults of the radio", Table(runs_));
}

}  // namespace
}  // namespace q40
