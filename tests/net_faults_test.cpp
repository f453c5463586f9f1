// What keeps a radio from being lost: backup, restore, a write of changes, and going on after a break.
// Breaks at every unit, and every fault of the simulated radio at the exchanges of each command. It
// makes the third table of docs/faults.md.
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
    const CloneData before = document;
    document.settings.Slider1 = (document.settings.Slider1 + 1) % 30;
    document.dial[9] = before.dial[9] == "77" ? "78" : "77";
    document.image.MemoryTable[100] = document.image.TemplateChannel();
    document.image.ChannelInUse[100] = true;
    if (count < 3) {
      document.image.MemoryTable[100] = before.image.MemoryTable[100];
      document.image.ChannelInUse[100] = before.image.ChannelInUse[100];
    }
    if (count < 2) document.dial[9] = before.dial[9];
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
  Words Command(const std::string& line) const {
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
// How the command ends when the fault happens once, and when it stays. D: done, the radio holds what it
// shall, or the backup what the radio holds; C: "Communication Error"; P: "COM Port Error"; X: not as
// known; K: not kept; U: done, and the backup is wrong, which no answer tells.
struct Row {
  const char* fault;
  std::array<std::string_view, kClasses> ends;
};
constexpr Row kRows[] = {
    {"silence", {"CC", "CC", "CC", "CC", "CC", "CC", "DD"}},
};

struct Sweep : Net {
  struct Case {
    const char* name;
    const char* line;
    RadioMemory before;
    std::vector<Class> exchanges;
  };
};

}  // namespace
}  // namespace q40
