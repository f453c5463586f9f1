// Steps that can be taken back and done again. Keeps for each step only the parts in which the document
// before it differs from the one behind it, and knows nothing of what a step does: whoever changes the
// document need not know that there is a history.
//
//   state 0 --step 0--> state 1 --step 1--> state 2 ...
//
// A state is the document with its Facts. Undo and Redo move from state to state; a new step forgets
// those that were taken back.
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "document/clone_data.h"
#include "document/document_parts.h"

namespace q40 {

class History {
 public:
  // What belongs to a state beside the data.
  struct Facts {
    std::string path;  // of the clone file; empty: none
    bool settings_changed = false;
    bool memory_changed = false;
    int tag = 0;  // the owner's

    [[nodiscard]] bool IsChanged() const { return settings_changed || memory_changed; }
  };
  // What a step is called, and where it took place.
  struct Label {
    // No part: everywhere. By difference: the first part that the step has changed, a channel if any.
    static constexpr int kEverywhere = -1;
    static constexpr int kByDifference = -2;

    std::string name;
    int part = kByDifference;
    // Behind the step there is another document, which has its own file.
    bool replaces = false;
  };

  // The steps that have been taken back and were forgotten by a new one do not count.
  static constexpr std::size_t kMostBytes = std::size_t{16} << 20U;

  // Without a step; the document as it is.
  void Reset(const CloneData& data, Facts facts);

  // The document has become `data`: a step, unless neither data nor flags differ. Where `goes_on`, a
  // step of the same name at the same place that nothing has closed grows instead.
  void Take(const CloneData& data, Facts facts, Label label, bool goes_on = false);
  // The present state is `data`, and has been all along: what nobody takes back. No step is forgotten.
  void Amend(const CloneData& data, Facts facts);
  // Nothing goes on with the last step.
  void Close() { open_ = false; }
  [[nodiscard]] bool IsOpen() const { return open_; }
  void Rename(std::string name);  // of the last step that was done

  // The present state has been saved: as `facts`, which say so. The other states of the same document
  // are unsaved from now on, under the same path; so is any other that believed to be in that file.
  void Save(const CloneData& data, Facts facts);

  [[nodiscard]] bool CanUndo() const { return done_ > 0; }
  [[nodiscard]] bool CanRedo() const { return done_ < steps_.size(); }
  // Of the step that would be taken back, and done again.
  [[nodiscard]] const Label& UndoLabel() const { return steps_[done_ - 1].label; }
  [[nodiscard]] const Label& RedoLabel() const { return steps_[done_].label; }
  // Turn `data`, the present state, into the one before or behind it, and return its facts. `part`
  // becomes the place of the step.
  const Facts& Undo(CloneData& data, int& part);
  const Facts& Redo(CloneData& data, int& part);

  [[nodiscard]] std::size_t size() const { return steps_.size(); }
  [[nodiscard]] std::size_t bytes() const { return bytes_; }

 private:
  // Shared: a channel that only moves is stored once.
  using Bytes = std::shared_ptr<const std::string>;
  struct Difference {
    int part;
    Bytes before;
    Bytes after;
  };
  struct Step {
    Label label;
    std::vector<Difference> differences;
    std::size_t cost = 0;
  };

  std::vector<Difference> TakeDifferences(const CloneData& data);
  [[nodiscard]] Bytes Shared(int part, std::string bytes, std::size_t& cost) const;
  static void Grow(Step& step, const std::vector<Difference>& more);
  void ForgetRedo();
  void ForgetOldest();
  void Mark(std::size_t state, const std::string& path);
  const Facts& MoveBy(const Step& step, Bytes Difference::*to, CloneData& data, int& part);

  std::array<Bytes, kPartCount> now_;
  std::deque<Step> steps_;
  std::deque<Facts> facts_ = {Facts()};  // one more than there are steps
  std::size_t done_ = 0;                 // steps; the present state is facts_[done_]
  std::size_t bytes_ = 0;
  std::size_t cost_ = 0;  // of what TakeDifferences found last
  bool open_ = false;
};

}  // namespace q40
