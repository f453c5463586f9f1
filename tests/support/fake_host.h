// Runs sequences as the window would, without one: answers questions and writes down what it hears.
#pragma once

#include <string>
#include <vector>

#include "link/sequences.h"

namespace q40::test {

class FakeHost final : public SequenceQuestions, public SequenceWatcher, public DocumentListener {
 public:
  explicit FakeHost(CloneDocument& document) : document_(document) { document.SetListener(this); }

  bool answer_save = true;    // Yes or No; false: Cancel
  bool answer_select = true;  // the question of a model change
  int save_questions = 0;
  bool version_a_at_question = false;  // what a save would put into the file
  std::vector<int> shown;              // memory channels, as they came from the radio
  std::vector<int> progress;           // units done when each exchange began
  std::vector<SequenceReport> ends;
  int begins = 0;
  char version_letter = '\0';  // of the radio, as the progress told
  std::function<void()> on_progress;

  bool AskToSave() override {
    ++save_questions;
    return answer_save;
  }
  bool SelectModel(int model) override {
    version_a_at_question = document_.image().VersionA;
    if (!answer_select && model != document_.model()) return false;
    document_.ChangeModel(model);
    return true;
  }
  void Begin(Sequence /*sequence*/) override { ++begins; }
  void ShowProgress(const SequenceProgress& at) override {
    progress.push_back(at.done);
    version_letter = at.version_letter;
    if (on_progress) on_progress();
  }
  void End(const SequenceReport& report) override { ends.push_back(report); }
  void DocumentChanged(const DocumentChange& change) override {
    if (change.as_read) shown.push_back(change.index);
  }

 private:
  CloneDocument& document_;
};

// The data of a document, for a test that needs it to be something in particular.
inline CloneData& DataOf(CloneDocument& document) {
  return const_cast<CloneData&>(document.data());
}
// Sets the change flags as if something had been edited, or not.
inline void SetChanged(CloneDocument& document, bool settings, bool memory) {
  document.ForgetChanges();
  if (settings) document.ChangeLooseSetting();
  if (memory) document.KeepMemoryChanges();
}

}  // namespace q40::test
