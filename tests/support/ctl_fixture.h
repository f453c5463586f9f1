// A test of rxq40ctl: the commands in this process, with a simulated radio at every port.
#pragma once

#include <gtest/gtest.h>

#include "files/clone_file.h"
#include "support/random_document.h"
#include "support/run_ctl.h"
#include "support/temp_folder.h"

namespace q40::test {

class Ctl : public testing::Test {
 protected:
  struct Result : CtlResult {
    long ms = 0;
  };

  Ctl() { Radio({}); }

  void Radio(const std::vector<std::string>& faults, int model = 0, char version = '0') {
    SimulatedRadio::Options options = WithFaults(faults);
    options.model = model;
    options.version = version;
    radio_.emplace(std::move(options));
    static const RadioMemory kMemory = [] {
      RadioMemory memory;
      StoreDocument(RandomDocument(21), memory);
      return memory;
    }();
    radio_->memory() = kMemory;
  }

  Result Run(const std::vector<std::string>& words) {
    const long start = time_.clock.Ms();
    const auto line_to = [&](const std::string& device) {
      if (on_open_) on_open_();
      device_ = device;
      return std::make_unique<SimulatedLine>(*radio_, time_);
    };
    Result result{RunCtl(words, line_to, plugged_in_, folder_ / "user")};
    result.ms = time_.clock.Ms() - start;
    return result;
  }

  std::string Save(const std::string& name, CloneData document) {
    EXPECT_FALSE(SaveCloneFile(folder_ / name, document, document.model));
    return folder_ / name;
  }

  TempFolder folder_;
  FakeTime time_;
  std::optional<SimulatedRadio> radio_;
  std::string device_;  // that was opened last
  std::vector<PresentPort> plugged_in_;
  std::function<void()> on_open_;  // what happens while the radio is talked to
};

}  // namespace q40::test
