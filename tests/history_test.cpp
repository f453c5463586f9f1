// Steps and the way back: random walks of everything that can happen to a document.
#include "document/history.h"

#include <functional>
#include <random>
#include <utility>

#include <gtest/gtest.h>

#include "document/clone_document.h"
#include "document/defaults.h"
#include "support/random_document.h"

namespace q40 {
namespace {

using Facts = History::Facts;

// What is compared, byte for byte.
struct State {
  CloneData data;
  std::string facts;
};

bool Same(const State& a, const State& b) { return a.data == b.data && a.facts == b.facts; }

std::string TextOf(const Facts& facts) {
  return facts.path + (facts.settings_changed ? " S" : " -") + (facts.memory_changed ? "M" : "-");
}

// A document with its history, as the window keeps them, and every state that was passed.
class Walk : public DocumentListener {
 public:
  explicit Walk(unsigned seed) : random_(seed), document_(test::RandomDocument(seed)) {
    document_.SetListener(this);
    history_.Reset(document_.data(), Now());
    Remember();
  }

  void DocumentChanged(const DocumentChange& change) override {
    if (change.act == DocumentAct::kRestore) return;
    if (change.act == DocumentAct::kChooseBand) return history_.Amend(document_.data(), Now());
    const bool replaces = change.anew || change.act == DocumentAct::kOpen;
    if (replaces) path_ = change.anew ? "" : "opened.Q40";
    history_.Take(document_.data(), Now(), {"step", History::Label::kByDifference, replaces});
  }

  void Step();
  bool Go(bool back);
  [[nodiscard]] int place() const { return static_cast<int>(place_); }
  [[nodiscard]] int size() const { return static_cast<int>(states_.size()); }

 private:
  const CloneData& Other() {
    static const std::vector<CloneData> others = {test::RandomDocument(1), test::RandomDocument(2),
                                                  test::RandomDocument(3)};
    return others[static_cast<std::size_t>(Below(3))];
  }
  int Below(int top) { return std::uniform_int_distribution<int>(0, top - 1)(random_); }
  Facts Now() { return {path_, document_.SettingsChanged(), document_.MemoryChanged()}; }
  void Remember() { states_.push_back({document_.data(), TextOf(Now())}); }
  void Read();

  std::mt19937 random_;
  CloneDocument document_;
  History history_;
  std::string path_;
  std::vector<State> states_;
  std::size_t place_ = 0;
};

// Broken off somewhere; one step, as the listener only hears of its parts.
void Walk::Read() {
  document_.SetListener(nullptr);
  const CloneData& radio = Other();
  document_.TakeSettingsLines(radio.image.SettingsLine);
  document_.TakeSpecialSet(Band::kUhf, radio.image.UhfSpecialSet);
  document_.TakeDialBlock(Below(kDialCount), MakeDialData(radio.dial, Below(kDialCount)));
  for (int n = Below(kMemoryChannelCount); n >= 0; --n) {
    const auto lines = EncodeMemoryChannel(radio.image, n);
    EXPECT_FALSE(document_.TakeMemoryChannel(n, lines->Joined()));
  }
  document_.SetListener(this);
  history_.Take(document_.data(), Now(), {"read"});
}

// One operation; where it made a step, a state more, and those that could be done again are gone.
void Walk::Step() {
  CloneDocument& d = document_;
  const CloneData& other = Other();
  const std::function<void()> acts[] = {
      [&] { d.InsertChannel(Below(kMemoryChannelCount)); },
      [&] { d.DeleteChannel(Below(kMemoryChannelCount)); },
      [&] { d.ClearChannel(Below(kMemoryChannelCount)); },
      [&] { d.StoreMemoryChannel(Below(kMemoryChannelCount), other.image.MemoryTable[1]); },
      [&] { d.StoreSpecialChannel(Below(5), other.image.UhfSpecialSet[2]); },
      [&] { d.ClearLimit(kPhRow + Below(2)); },
      [&] { d.ChooseBand(kBands.at(static_cast<std::size_t>(Below(2)))); },
      [&] { d.ChangeSetting(Settings()[static_cast<std::size_t>(Below(28))], Below(2)); },
      [&] { d.ChangeDialText(Below(kDialCount), other.dial[3]); },
      [&] { d.ChangeLooseSetting(); },
      [&] { Read(); },
      [&] {  // saved
        d.RebuildSettingsLines();
        d.ForgetChanges();
        path_ = "saved.Q40";
        history_.Save(d.data(), Now());
        for (State& state : states_) {  // which of them are unsaved now, the last test shows
          state.facts.clear();
        }
      },
      [&] { d.ClearAllChannels(); },
      [&] { d.New(); },
      [&] { d.ChangeModel(Below(kModelCount)); },
      [&] { d.Open(other); },
      [&] { d.Import(other.image); },
  };
  const bool rare = Below(8) == 0;
  acts[static_cast<std::size_t>(rare ? 10 + Below(7) : Below(10))]();
  if (history_.CanRedo()) {  // nothing was done, or what nobody takes back
    states_[place_] = {d.data(), TextOf(Now())};
  } else {
    states_.resize(history_.size());
    place_ = history_.size();
    Remember();
  }
}

// False: there is no further state, or it is not as it was.
bool Walk::Go(bool back) {
  if (!(back ? history_.CanUndo() : history_.CanRedo())) return false;
  CloneData data = document_.data();
  int part = 0;
  const Facts facts = back ? history_.Undo(data, part) : history_.Redo(data, part);
  document_.Restore(std::move(data), facts.settings_changed, facts.memory_changed);
  path_ = facts.path;
  place_ = back ? place_ - 1 : place_ + 1;
  State& before = states_[place_];
  const State now = {document_.data(), TextOf(Now())};
  if (before.facts.empty()) before.facts = now.facts;
  return Same(before, now);
}

TEST(History, EveryWalkGoesBackToItsStartAndForthToItsEnd) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    Walk walk(seed);
    std::mt19937 random(seed);
    for (int step = 0; step < 120; ++step) {
      walk.Step();
      for (int n = random() % 5 == 0 ? static_cast<int>(random() % 6) : 0; n > 0; --n) {
        const bool back = random() % 3 != 0;
        const bool possible = back ? walk.place() > 0 : walk.place() + 1 < walk.size();
        ASSERT_EQ(walk.Go(back), possible) << seed << " step " << step;
      }
    }
    const int steps = walk.size() - 1;
    while (walk.place() < steps) ASSERT_TRUE(walk.Go(false)) << seed;
    for (int n = steps; n > 0; --n) ASSERT_TRUE(walk.Go(true)) << seed << " back to " << n - 1;
    EXPECT_FALSE(walk.Go(true));
    for (int n = 1; n <= steps; ++n) ASSERT_TRUE(walk.Go(false)) << seed << " forth to " << n;
    EXPECT_FALSE(walk.Go(false));
  }
}

// Steps of a document with one setting that counts them.
class Steps : public testing::Test {
 protected:
  Steps() { history_.Reset(data_, {}); }
  void Do(int volume, History::Label label = {"Volume", kFirstSettingPart}, bool goes_on = false) {
    data_.settings.Slider1 = volume;
    history_.Take(data_, {path_, true, false}, std::move(label), goes_on);
  }
  void Save(const char* path) {
    path_ = path;
    history_.Save(data_, {path_});
  }
  std::string Undo() { return Text(history_.Undo(data_, part_)); }
  std::string Redo() { return Text(history_.Redo(data_, part_)); }
  [[nodiscard]] std::string Text(const Facts& facts) const {
    return std::to_string(data_.settings.Slider1) + ' ' + TextOf(facts);
  }

  CloneData data_ = FreshData();
  History history_;
  std::string path_;
  int part_ = 0;
};

TEST_F(Steps, OnlyTheSavedStateIsSaved) {
  for (const int volume : {1, 2, 3}) Do(volume);
  Undo();
  Save("a.Q40");
  EXPECT_EQ(Redo(), "3 a.Q40 SM");
  EXPECT_EQ(Undo(), "2 a.Q40 --");
  EXPECT_EQ(Undo(), "1 a.Q40 SM");
  // Another document, saved elsewhere, and then over the first one.
  path_ = "";
  Do(7, {"New", History::Label::kEverywhere, true});
  Save("b.Q40");
  EXPECT_EQ(Undo(), "1 a.Q40 SM");
  Save("a.Q40");
  EXPECT_EQ(Redo(), "7 b.Q40 --");
  Save("a.Q40");
  EXPECT_EQ(Undo(), "1 a.Q40 SM");
}

TEST_F(Steps, AVisitIsOneStepUntilItIsClosed) {
  const History::Label label = {"Volume", kFirstSettingPart};
  for (const int volume : {1, 2, 3}) Do(volume, label, true);
  history_.Close();
  for (const int volume : {4, 5}) Do(volume, label, true);
  Do(6, {"Volume", kFirstSettingPart + 1}, true);
  Do(6, label);  // nothing changes: no step
  EXPECT_EQ(history_.size(), 3U);
  for (const char* state : {"5  S-", "3  S-", "15  --"}) EXPECT_EQ(Undo(), state);
  const std::string dial = std::exchange(data_.dial[3], "77");
  history_.Amend(data_, {"x", false, true});
  EXPECT_EQ(Redo(), "3  S-");
  EXPECT_EQ(data_.dial[3], dial);
  EXPECT_EQ(Undo(), "15 x -M");
  EXPECT_EQ(data_.dial[3], "77");
}

// The way back begins where the document differs; 1,000 steps, or what fits into the bytes.
TEST_F(Steps, PlacesAndLimits) {
  data_.image.MemoryTable[kTemplateRow].value[3] = 5;
  data_.image.MemoryTable[7].value[3] = -5;
  Do(9, {"Read All"});
  Undo();
  Redo();
  EXPECT_EQ(data_.image.MemoryTable[7].value[3], -5);
  Undo();
  EXPECT_EQ(part_, kFirstMemoryPart + 7);
  data_.image.TemplateChannel().value[3] = 6;  // nobody sees it
  Do(8, {"Model"});
  Undo();
  EXPECT_EQ(part_, kFirstSettingPart + 11);
  for (int n = 0; n < 1100; ++n) Do(1 + n % 2);
  EXPECT_EQ(history_.size(), 1100U);
  const std::size_t small = history_.bytes();
  EXPECT_LT(small, 1'000'000U);
  CloneDocument document(test::RandomDocument(5));
  history_.Reset(document.data(), {});
  for (int n = 0; n < 1000; ++n) {  // channels that move are not stored again
    const ChannelRecord record = document.image().MemoryTable[kMemoryChannelCount - 1];
    document.InsertChannel(0);
    document.StoreMemoryChannel(0, record);
    history_.Take(document.data(), {}, {"Insert"});
  }
  EXPECT_EQ(history_.size(), 1000U);
  const CloneData others[] = {test::RandomDocument(1), test::RandomDocument(2)};
  for (std::size_t n = 0; n < 300; ++n) {
    history_.Take(others[n % 2], {}, {"Open"});
    EXPECT_LE(history_.bytes(), History::kMostBytes);
  }
  EXPECT_LT(history_.size(), 1300U);
  EXPECT_GT(history_.bytes(), History::kMostBytes - 200'000);
}

}  // namespace
}  // namespace q40
