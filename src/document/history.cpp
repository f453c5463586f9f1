#include "document/history.h"

#include <algorithm>
#include <cassert>

namespace q40 {
namespace {

// Beside the bytes of a part: the string, its counter, and what the allocator adds.
constexpr std::size_t kAroundBytes = 80;

}  // namespace

void History::Reset(const CloneData& data, Facts facts) {
  for (int part = 0; part < kPartCount; ++part) {
    now_[static_cast<std::size_t>(part)] =
        std::make_shared<const std::string>(EncodePart(data, part));
  }
  steps_.clear();
  facts_ = {std::move(facts)};
  done_ = bytes_ = 0;
  open_ = false;
}

// ---- what differs

// The channels before and behind are looked at: most steps that change many channels move them by one.
History::Bytes History::Shared(int part, std::string bytes, std::size_t& cost) const {
  for (const int other : {part - 1, part + 1}) {
    if (other < kFirstMemoryPart || other >= kPartCount) continue;
    const Bytes& there = now_[static_cast<std::size_t>(other)];
    if (*there == bytes) return there;
  }
  cost += kAroundBytes + bytes.size();
  return std::make_shared<const std::string>(std::move(bytes));
}

// Between the present state and `data`, which becomes it.
std::vector<History::Difference> History::TakeDifferences(const CloneData& data) {
  std::vector<Difference> differences;
  cost_ = sizeof(Step) + sizeof(Facts);
  for (int part = 0; part < kPartCount; ++part) {
    const Bytes& before = now_[static_cast<std::size_t>(part)];
    std::string bytes = EncodePart(data, part);
    if (*before == bytes) continue;
    differences.push_back({part, before, Shared(part, std::move(bytes), cost_)});
  }
  for (const Difference& d : differences) now_[static_cast<std::size_t>(d.part)] = d.after;
  cost_ += differences.size() * sizeof(Difference);
  return differences;
}

// `more` happened after the step.
void History::Grow(Step& step, const std::vector<Difference>& more) {
  for (const Difference& d : more) {
    const auto known = std::find_if(step.differences.begin(), step.differences.end(),
                                    [&](const Difference& k) { return k.part == d.part; });
    if (known == step.differences.end()) {
      step.differences.push_back(d);
    } else {
      known->after = d.after;
    }
  }
  std::erase_if(step.differences, [](const Difference& d) { return *d.before == *d.after; });
}

// ---- steps

void History::ForgetRedo() {
  for (; steps_.size() > done_; steps_.pop_back()) bytes_ -= steps_.back().cost;
  facts_.resize(done_ + 1);
}

void History::ForgetOldest() {
  while (bytes_ > kMostBytes && done_ > 1) {
    bytes_ -= steps_.front().cost;
    steps_.pop_front();
    facts_.pop_front();
    --done_;
  }
}

void History::Take(const CloneData& data, Facts facts, Label label, bool goes_on) {
  auto differences = TakeDifferences(data);
  const Facts& before = facts_[done_];
  const bool same_flags = before.settings_changed == facts.settings_changed &&
                          before.memory_changed == facts.memory_changed;
  if (differences.empty() && same_flags && !label.replaces) {
    facts_[done_] = std::move(facts);
    return;
  }
  ForgetRedo();
  const bool grows = goes_on && open_ && CanUndo() && UndoLabel().part == label.part &&
                     UndoLabel().name == label.name;
  if (grows) {
    Step& step = steps_.back();
    Grow(step, differences);
    step.cost += cost_;
    facts_.back() = std::move(facts);
  } else {
    steps_.push_back({std::move(label), std::move(differences), cost_});
    facts_.push_back(std::move(facts));
    ++done_;
  }
  bytes_ += cost_;
  open_ = true;
  ForgetOldest();
}

// Both neighbours of the state must lead to it and away from it.
void History::Amend(const CloneData& data, Facts facts) {
  facts_[done_] = std::move(facts);
  const auto differences = TakeDifferences(data);
  if (CanUndo()) Grow(steps_[done_ - 1], differences);
  if (!CanRedo()) return;
  auto& next = steps_[done_].differences;
  for (const Difference& d : differences) {
    const auto known = std::find_if(next.begin(), next.end(),
                                    [&](const Difference& k) { return k.part == d.part; });
    if (known == next.end()) {
      next.push_back({d.part, d.after, d.before});
    } else {
      known->before = d.after;
    }
  }
}

void History::Rename(std::string name) {
  if (CanUndo()) steps_[done_ - 1].label.name = std::move(name);
}

// ---- saving

void History::Mark(std::size_t state, const std::string& path) {
  Facts& facts = facts_[state];
  facts.path = path;
  facts.settings_changed = facts.memory_changed = true;
}

void History::Save(const CloneData& data, Facts facts) {
  const std::string path = facts.path;
  Amend(data, std::move(facts));
  open_ = false;
  std::size_t first = done_;
  while (first > 0 && !steps_[first - 1].label.replaces) --first;
  std::size_t last = done_;
  while (last < steps_.size() && !steps_[last].label.replaces) ++last;
  for (std::size_t state = 0; state < facts_.size(); ++state) {
    const bool same_document = state >= first && state <= last;
    if (state != done_ && (same_document || facts_[state].path == path)) Mark(state, path);
  }
}

// ---- moving

const History::Facts& History::MoveBy(const Step& step, Bytes Difference::*to, CloneData& data,
                                      int& part) {
  for (const Difference& d : step.differences) {
    const bool decoded = DecodePart(*(d.*to), d.part, data);
    assert(decoded);
    static_cast<void>(decoded);
    now_[static_cast<std::size_t>(d.part)] = d.*to;
  }
  ShowBand(data.image, data.image.ShownBand);
  open_ = false;
  part = step.label.part;
  if (part != Label::kByDifference) return facts_[done_];
  part = Label::kEverywhere;
  int settings = kPartCount;
  int channels = kPartCount;
  for (const Difference& d : step.differences) {
    int& first = d.part < kFirstMemoryPart ? settings : channels;
    const bool has_place = d.part >= kFirstSettingPart && d.part != kPartCount - 1;
    if (has_place) first = std::min(first, d.part);
  }
  if (const int first = channels < kPartCount ? channels : settings; first < kPartCount) {
    part = first;
  }
  return facts_[done_];
}

const History::Facts& History::Undo(CloneData& data, int& part) {
  assert(CanUndo());
  --done_;
  return MoveBy(steps_[done_], &Difference::before, data, part);
}

const History::Facts& History::Redo(CloneData& data, int& part) {
  assert(CanRedo());
  ++done_;
  return MoveBy(steps_[done_ - 1], &Difference::after, data, part);
}

}  // namespace q40
