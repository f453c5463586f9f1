// Runs sequences as the window would, without one: answers questions and writes down what it hears.
#pragma once

#include <string>
#include <vector>

#include "document/defaults.h"
#include "link/sequences.h"

namespace q40::test {

class FakeHost final : public SequenceHost {
 public:
  explicit FakeHost(CloneDocument& document) : document_(document) {}

  bool answer_save = true;    // Yes or No; false: Cancel
  bool answer_select = true;  // the question of a model change
  int save_questions = 0;
  bool version_a_at_question = false;  // what a save would put into the file
  std::vector<std::string> shown;      // "settings", "special", "dial 3", "memory 7"
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
    version_a_at_question = document_.image.VersionA;
    if (!answer_select && model != document_.model) return false;
    ChangeModel(document_, model);
    return true;
  }
  void New() override { ResetToDefaults(document_); }
  void Begin(Sequence /*sequence*/) override { ++begins; }
  void ShowProgress(const SequenceProgress& at) override {
    progress.push_back(at.done);
    version_letter = at.version_letter;
    if (on_progress) on_progress();
  }
  void ShowSettings() override { shown.emplace_back("settings"); }
  void ShowSpecialChannels() override { shown.emplace_back("special"); }
  void ShowDialText(int index) override { shown.push_back("dial " + std::to_string(index)); }
  void ShowMemoryChannel(int n) override { shown.push_back("memory " + std::to_string(n)); }
  void End(const SequenceReport& report) override { ends.push_back(report); }

 private:
  CloneDocument& document_;
};

}  // namespace q40::test
