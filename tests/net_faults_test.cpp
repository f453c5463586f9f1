// What keeps a radio from being lost: backup, restore, a write of changes, and going on after a break.
// Breaks at every unit, and every fault of the simulated radio at the exchanges of each command. It
// makes a table of docs/faults.md.
#include <map>
#include <sstream>

#include "files/radio_copy_file.h"
#include "support/ctl_fixture.h"
#include "support/generated_table.h"

namespace q40 {
namespace {

using Words = std::vector<std::string>;

std::string UnitBytes(const RadioMemory& memory) {
  std::string bytes;
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    bytes += memory.raw().substr(static_cast<std::size_t>(unit.address()), kUnitSize);
  }
  return bytes;
}

class Net : public test::Ctl {
 protected:
  Net() : old_(radio_->memory()) {
    StoreDocument(test::RandomDocument(5), other_);
    CloneData document = test::RandomDocument(21);
    Keep("old.Q40", old_);
    Keep("other.Q40", other_);
    Save("all.Q40", test::RandomDocument(5));
    // What a write of three units changes.
    Changed(document, kChanged.size());
    Save("new.Q40", document);
  }

  // `document` with the first `count` units of kChanged changed.
  static void Changed(CloneData& document, std::size_t count) {
    if (count > 0) document.settings.Slider1 = (document.settings.Slider1 + 1) % 30;
    if (count > 1) document.dial[9] = document.dial[9] == "77" ? "78" : "77";
    if (count < kChanged.size()) return;
    document.image.MemoryTable[100] = document.image.TemplateChannel();
    document.image.ChannelInUse[100] = true;
  }

  void Keep(const std::string& name, const RadioMemory& memory) {
    RadioCopy copy{0, '0', {}};
    for (const Unit unit : UnitsOf(Half::kBoth)) {
      copy.units.push_back({unit, memory.Read(unit.address(), kUnitSize).value()});
    }
    ASSERT_FALSE(SaveRadioCopy(folder_ / name, copy));
  }

  // A radio that holds this, with a fault ("" for none).
  void Start(const RadioMemory& memory, const std::string& fault) {
    const RadioMemory held = memory;
    time_.clock.now += std::chrono::seconds(3);
    Radio(fault.empty() ? Words() : Words{fault});
    radio_->memory() = held;
  }

  // Words of a command on the radio, with the files where they are.
  [[nodiscard]] Words Command(const std::string& line) const {
    Words words;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) {
      words.push_back(word.ends_with(".Q40") ? folder_ / word : word);
      if (words.size() == 1) words.insert(words.end(), {"-p", "1"});
    }
    return words;
  }

  // What the message tells the user to paste; empty when it tells nothing.
  static Words Told(const Result& result, const std::string& start) {
    const std::string key = start + ": rxq40ctl ";
    const auto at = result.err.find(key);
    Words words;
    if (at == std::string::npos) return words;
    std::istringstream stream(
        result.err.substr(at + key.size(), result.err.find('\n', at) - at - key.size()));
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
  }

  static constexpr std::array<int, 3> kChanged = {0, 16, 117};  // places of units

  const RadioMemory old_;
  RadioMemory other_;
};

// ---- breaks

// The cable is pulled out, and the radio has not stored the unit; or the radio falls silent for good until
// it is switched on again, and has stored the unit without saying so.
TEST_F(Net, AfterABreakAtAnyUnitTheRestMakesItWhole) {
  const struct {
    const char* line;
    int first;            // exchange of the first unit that is written
    bool second_opening;  // End, announcement, identification between the halves
  } cases[] = {{"write --backup kept.Q40 all.Q40", 232, true},
               {"write --changes old.Q40 all.Q40", 232, false},
               {"restore other.Q40", 3, false}};
  for (const auto& c : cases) {
    Start(old_, "");
    ASSERT_EQ(Run(Command(c.line)).code, 0);
    const std::string wanted = UnitBytes(radio_->memory());
    EXPECT_NE(wanted, UnitBytes(old_));
    for (int unit = 0; unit < kUnitCount; ++unit) {
      const int exchange = c.first + unit + (c.second_opening && unit >= kSettingsUnits ? 3 : 0);
      for (const char* fault : {"hang-up@#", "silence@#"}) {
        const bool stays = *fault == 's';
        const std::string text = fault + std::to_string(exchange) + (stays ? "+" : "");
        SCOPED_TRACE(std::string(c.line) + ", " + text);
        std::filesystem::remove(folder_ / "kept.Q40");
        Start(old_, text);
        const Result broken = Run(Command(c.line));
        ASSERT_EQ(broken.code, stays ? kExitCommunicationError : kExitPortError) << broken.err;
        if (stays) Start(radio_->memory(), "");
        time_.clock.now += std::chrono::seconds(3);
        const Result rest = Run(Told(broken, "To go on"));
        ASSERT_EQ(rest.code, 0) << rest.err;
        ASSERT_TRUE(UnitBytes(radio_->memory()) == wanted);
      }
    }
  }
}

// ---- faults

// What an exchange is about; faults show by it.
enum Class : std::size_t { kWho, kAnnounce, kBackUp, kCompare, kWrite, kVerify, kEnd, kClasses };
constexpr std::array<const char*, kClasses> kClassNames = {
    "identification",           "announcement", "read of a backup", "read of a comparison", "write",
    "read of what was written", "End"};
// How the command ends when the fault happens once, and when it stays. D: done; W: done in the end, after
// waiting for 2 s; A: the same, but an announcement behind it gets the late answer, and that is a
// "Communication Error"; C: "Communication Error"; P: "COM Port Error"; X: not as it was known; K: not
// kept; U: done, and the backup is wrong, which no answer tells; "." the fault has nothing to change there.
struct Row {
  const char* fault;
  std::array<std::string_view, kClasses> ends;
};
constexpr Row kRows[] = {
    {"silence", {"CC", "CC", "CC", "CC", "CC", "CC", "WW"}},
    {"echo-only", {"CC", "CC", "CC", "CC", "CC", "CC", "WW"}},
    {"no-echo", {"WC", "CC", "DC", "DC", "CC", "DC", "WW"}},
    {"bad-echo", {"DC", "DD", "DC", "DC", "DD", "DC", "DD"}},
    {"short", {"DC", "CC", "DC", "DC", "CC", "DC", "WW"}},
    {"long", {"DC", "CC", "DC", "DC", "CC", "DC", "DD"}},
    {"non-hex", {"CC", "..", "DC", "DC", "..", "DC", ".."}},
    {"ng", {"..", "CC", "..", "..", "CC", "..", "DD"}},
    {"pieces", {"DD", "DD", "DD", "DD", "DD", "DD", "DD"}},
    {"late", {"CC", "CC", "CC", "CC", "CC", "CC", "AW"}},
    {"late=1900", {"DD", "DD", "DD", "DD", "DD", "DD", "DD"}},
    {"stray", {"DC", "CC", "DC", "DC", "CC", "DC", "DD"}},
    {"other-address", {"..", "..", "UU", "XX", "..", "KK", ".."}},
    {"not-stored", {"..", "..", "..", "..", "KK", "..", ".."}},
    {"hang-up", {"PP", "PP", "PP", "PP", "PP", "PP", "DD"}},
    {"wrong-identity", {"CC", "..", "..", "..", "..", "..", ".."}},
};

using Classes = std::vector<Class>;

void Append(Classes& exchanges, std::initializer_list<Class> opening, Class kind, int units) {
  exchanges.insert(exchanges.end(), opening);
  exchanges.insert(exchanges.end(), static_cast<std::size_t>(units), kind);
  exchanges.push_back(kEnd);
}

struct Case {
  const char* name;
  const char* line;
  std::size_t held;  // of kChanged, the units that the radio has already
  Classes exchanges;
};

std::vector<Case> Cases() {
  Case backup{"backup", "backup kept.Q40", 0, {}};
  Append(backup.exchanges, {kWho}, kBackUp, kUnitCount);
  Case restore{"restore", "restore other.Q40", 0, {}};
  Append(restore.exchanges, {kAnnounce, kWho}, kWrite, kUnitCount);
  Append(restore.exchanges, {kWho}, kVerify, kUnitCount);
  const auto swap = [](const char* name, const char* line, std::size_t held, int compared,
                       int written) {
    Case one{name, line, held, {}};
    Append(one.exchanges, {kWho}, kCompare, compared);
    Append(one.exchanges, {kAnnounce, kWho}, kWrite, written);
    Append(one.exchanges, {kWho}, kVerify, written);
    return one;
  };
  // The rest: two units, and the two rows of RPT.
  return {backup, restore, swap("changes", "write --changes old.Q40 new.Q40", 0, 3, 3),
          swap("rest", "write --rest --before old.Q40 new.Q40", 1, kUnitCount, 4)};
}

// Units of a long run behave alike: the first of each kind, one in the middle, the last.
bool IsTried(const Classes& exchanges, std::size_t at) {
  const Class kind = exchanges[at];
  if (kind == kEnd || kind == kWho || kind == kAnnounce) return true;
  const auto same = [&](std::size_t i) { return i < exchanges.size() && exchanges[i] == kind; };
  std::size_t first = at;
  while (first > 0 && same(first - 1)) --first;
  constexpr std::array<std::size_t, 6> kTried = {0, 2, 12, 17, 117, kUnitCount - 1};
  const bool is_long = same(first + kTried[1]) && same(first + 10);
  return !is_long || std::find(kTried.begin(), kTried.end(), at - first) != kTried.end();
}

int CodeOf(char end) {
  switch (end) {
    case 'C': return kExitCommunicationError;
    case 'P': return kExitPortError;
    case 'X': return kExitNotAsKnown;
    case 'K': return kExitNotKept;
    default: return kExitDone;
  }
}

// Telling what is different takes its time: a radio all of whose units differ is none of the runs.
bool DiffersFarAndWide(const Row& row, const Classes& exchanges, std::size_t at, bool stays) {
  constexpr int kMany = 20;
  const auto differs = [&](Class kind) {
    return row.ends[kind][1] == 'X' || row.ends[kind][1] == 'K';
  };
  return stays && std::count_if(exchanges.begin() + static_cast<std::ptrdiff_t>(at),
                                exchanges.end(), differs) > kMany;
}

// The end of a command in which a fault happens at an exchange.
char EndOf(const Row& row, const Classes& exchanges, std::size_t at, bool stays) {
  char end = 'D';
  for (std::size_t i = at; i < exchanges.size() && (stays || i == at); ++i) {
    const char one = row.ends[exchanges[i]][stays ? 1 : 0];
    const bool is_announced = i + 1 < exchanges.size() && exchanges[i + 1] == kAnnounce;
    if (one == 'C' || one == 'P' || (one == 'A' && is_announced)) return one == 'P' ? 'P' : 'C';
    // What was not kept shows in the end; what is not as known, behind the last comparison.
    if (end == 'X' && exchanges[i] == kEnd) return end;
    if (one == 'X' || one == 'K' || one == 'U') end = one;
  }
  return end;
}

class Sweep : public Net {
 protected:
  void Prepare(const Case& one);
  void RunOne(const Row& row, std::size_t at, bool stays);
  void GoOn(const Result& result);

  const Case* case_ = nullptr;
  RadioMemory before_;
  std::string wanted_;
  int runs_ = 0;
};

void Sweep::Prepare(const Case& one) {
  case_ = &one;
  CloneData document = test::RandomDocument(21);
  Changed(document, one.held);
  StoreDocument(document, before_);
  std::filesystem::remove(folder_ / "kept.Q40");
  Start(before_, "");
  const Result result = Run(Command(one.line));
  ASSERT_EQ(result.code, 0) << result.err;
  ASSERT_EQ(radio_->Exchanges(), static_cast<int>(one.exchanges.size()));
  wanted_ = UnitBytes(radio_->memory());
}

// What the user does next with a radio that is well again.
void Sweep::GoOn(const Result& result) {
  const Words told = Told(result, "To go on");
  const bool wrote = UnitBytes(radio_->memory()) != UnitBytes(before_);
  EXPECT_TRUE(!wrote || !told.empty()) << result.err;
  if (result.err.find("othing was written") != std::string::npos) {
    EXPECT_FALSE(wrote);
  }
  Start(radio_->memory(), "");
  EXPECT_EQ(Run(told.empty() ? Command(case_->line) : told).code, 0);
  EXPECT_TRUE(UnitBytes(radio_->memory()) == wanted_);
}

void Sweep::RunOne(const Row& row, std::size_t at, bool stays) {
  const std::string fault = row.fault + ("@#" + std::to_string(at + 1)) + (stays ? "+" : "");
  SCOPED_TRACE(std::string(case_->line) + ", " + fault);
  std::filesystem::remove(folder_ / "kept.Q40");
  Start(before_, fault);
  const Result result = Run(Command(case_->line));
  ++runs_;
  const char end = EndOf(row, case_->exchanges, at, stays);
  ASSERT_EQ(result.code, CodeOf(end)) << result.err;
  const std::string held = UnitBytes(radio_->memory());
  const std::string before = UnitBytes(before_);
  for (std::size_t unit = 0; unit < held.size(); unit += kUnitSize) {
    const std::string bytes = held.substr(unit, kUnitSize);
    EXPECT_TRUE(bytes == wanted_.substr(unit, kUnitSize) ||
                bytes == before.substr(unit, kUnitSize));
  }
  if (result.code == kExitDone) {
    EXPECT_TRUE(held == wanted_);
  }
  const bool backs_up = case_->exchanges[1] == kBackUp;
  EXPECT_EQ(std::filesystem::exists(folder_ / "kept.Q40"), backs_up && result.code == kExitDone);
  if (backs_up && end == 'D') {
    EXPECT_TRUE(test::Content(folder_ / "kept.Q40") == test::Content(folder_ / "old.Q40"));
  }
  if (result.code != kExitDone) GoOn(result);
}

// ---- the table for people

const std::map<char, const char*> kEndTexts = {{'C', "Communication Error"},
                                               {'P', "COM Port Error"},
                                               {'X', "not as known"},
                                               {'K', "not kept"},
                                               {'U', "done, wrong backup"},
                                               {'W', "done, 2 s later"},
                                               {'A', "done, 2 s later (1)"},
                                               {'D', "done"},
                                               {'.', "no effect"}};

std::string Table(int runs) {
  std::string text = test::TableHead(runs, kClassNames);
  for (const Row& row : kRows) {
    text += "| `" + std::string(row.fault) + "` |";
    for (const std::string_view ends : row.ends) {
      text += std::string(" ") + kEndTexts.at(ends[0]);
      if (ends[0] != ends[1]) text += std::string("; stays: ") + kEndTexts.at(ends[1]);
      text += " |";
    }
    text += '\n';
  }
  return text;
}

TEST_F(Sweep, EveryFaultInEveryCommand) {
  for (const Case& one : Cases()) {
    Prepare(one);
    for (const Row& row : kRows) {
      for (std::size_t at = 0; at < one.exchanges.size(); ++at) {
        if (!IsTried(one.exchanges, at)) continue;
        for (const bool stays : {false, true}) {
          if (!DiffersFarAndWide(row, one.exchanges, at, stays)) RunOne(row, at, stays);
          if (HasFailure()) return;  // one run says what is wrong, thousands hide it
        }
      }
    }
  }
  test::CheckTable("faults of the net", Table(runs_));
}

}  // namespace
}  // namespace q40
