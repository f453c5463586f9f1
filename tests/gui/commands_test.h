// For tests of the commands without a window: answers that are prepared, and a simulated radio.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "app/file_commands.h"
#include "app/list_commands.h"
#include "app/main_options.h"
#include "app/prompts.h"
#include "app/radio_commands.h"
#include "app/session.h"
#include "app/unit_commands.h"
#include "sim/demo_radio.h"
#include "support/temp_folder.h"

namespace q40::test {

// Gives the prepared answers, and keeps a line for all that was asked and told.
class FakePrompts final : public Prompts {
 public:
  Answer AskToSave() override {
    log += "save? ";
    return answer;
  }
  std::string AskPath(FileDialog kind, const std::string& /*path*/, int /*model*/) override {
    log += "path" + std::to_string(static_cast<int>(kind)) + "? ";
    return path;
  }
  Instead AskInstead(const QString& /*why*/) override {
    log += "instead? ";
    return instead;
  }
  bool Confirm(const char* title, const QString& text) override {
    log += std::string(title) + "? ";
    question = text.toStdString();
    return true;
  }
  void ShowError(const QString& text) override { log += "error: " + text.toStdString() + ' '; }
  void ShowGone(const QString& text) override { log += "gone: " + text.toStdString() + ' '; }
  void Note(const QString& text) override { note = text.toStdString(); }
  void NoteFailure(const QString& text) override { note = "! " + text.toStdString(); }
  std::string TakeLog() { return std::exchange(log, {}); }

  Answer answer = Answer::kYes;
  Instead instead = Instead::kNothing;
  std::string question;
  std::string path;
  std::string log;
  std::string note;
};

class Commands : public testing::Test {
 protected:
  void Start(const std::vector<std::string>& faults = {}) {
    options_.simulation = {true, 0, faults, [this](std::string_view line) {
                             heard_.append(line) += ' ';
                             if (line == stop_at_) session_->Stop();
                           }};
    options_.backup_folder = folder_ / "backups";
    units_.reset();
    radio_.reset();
    lists_.reset();
    files_.reset();
    session_ = std::make_unique<Session>(options_, nullptr);
    files_ = std::make_unique<FileCommands>(*session_, prompts_);
    lists_ = std::make_unique<ListCommands>(*session_, prompts_, *files_);
    const auto net = [this] { return RadioCommands::NetChoice{backs_up_, false}; };
    radio_ = std::make_unique<RadioCommands>(*session_, prompts_, *files_,
                                             RadioCommands::Options{options_.backup_folder, net});
    units_ = std::make_unique<UnitCommands>(*session_, prompts_, *radio_);
  }
  CloneDocument& document() { return session_->document(); }
  // A document with what the radio holds, without having read it.
  void OpenDemo() { document().Open(DemoDocument()); }
  std::string TakeHeard() { return std::exchange(heard_, {}); }
  [[nodiscard]] bool Told(const std::string& part) const {
    return prompts_.note.find(part) != std::string::npos;
  }

  TempFolder folder_;
  MainOptions options_;
  FakePrompts prompts_;
  std::string heard_;
  std::string stop_at_;
  bool backs_up_ = true;
  std::unique_ptr<Session> session_;
  std::unique_ptr<FileCommands> files_;
  std::unique_ptr<ListCommands> lists_;
  std::unique_ptr<RadioCommands> radio_;
  std::unique_ptr<UnitCommands> units_;
};

}  // namespace q40::test
