// rxq40ctl in this process, on a simulated radio without time.
#pragma once

#include <gtest/gtest.h>

#include "cli/commands.h"
#include "files/clone_file.h"
#include "sim/simulated_port.h"
#include "support/fake_link.h"
#include "support/random_document.h"
#include "support/temp_folder.h"

namespace q40::test {

struct SimulatedLine final : RadioLine {
  SimulatedLine(SimulatedRadio& radio, FakeTime& time)
      : time_(time),
        port_(
            radio, [&time] { return time.clock.now; },
            [this](TimePoint at) { wake_ = std::min(wake_.value_or(at), at); }) {
    time.pump.next_arrival = [this] { return std::exchange(wake_, std::nullopt); };
  }
  Port& port() override { return port_; }
  LinkTimers timers() override { return time_.Timers(); }
  EventPump& pump() override { return time_.pump; }

  FakeTime& time_;
  std::optional<TimePoint> wake_;
  SimulatedPort port_;
};

// rxq40ctl with a radio at every port.
class Ctl : public testing::Test {
 protected:
  struct Result {
    int code = -1;
    std::string out;
    std::string err;
    long ms = 0;
  };

  Ctl() { Radio({}); }

  void Radio(const std::vector<std::string>& faults, int model = 0) {
    SimulatedRadio::Options options;
    options.model = model;
    for (const std::string& text : faults) {
      std::string why;
      options.faults.push_back(ParseFault(text, why).value());
    }
    radio_.emplace(std::move(options));
    CloneDocument document = RandomDocument(21);
    StoreDocument(document, radio_->memory());
  }

  Result Run(std::vector<std::string> words) {
    char* out = nullptr;
    char* err = nullptr;
    std::size_t out_size = 0;
    std::size_t err_size = 0;
    std::FILE* out_file = open_memstream(&out, &out_size);
    std::FILE* err_file = open_memstream(&err, &err_size);
    Result result;
    const long start = time_.clock.Ms();
    {
      CommandContext context{.console = Console(out_file, err_file),
                             .line_to = [&](const std::string& device) {
                               device_ = device;
                               return std::make_unique<SimulatedLine>(*radio_, time_);
                             }};
      std::vector<const char*> argv = {"rxq40ctl"};
      for (const std::string& word : words) argv.push_back(word.c_str());
      result.code = RunCommandLine(static_cast<int>(argv.size()), argv.data(), context);
    }
    std::fclose(out_file);
    std::fclose(err_file);
    result.out.assign(out, out_size);
    result.err.assign(err, err_size);
    result.ms = time_.clock.Ms() - start;
    std::free(out);
    std::free(err);
    return result;
  }

  std::string Save(const std::string& name, CloneDocument document) {
    EXPECT_FALSE(SaveCloneFile(folder_ / name, document, document.model));
    return folder_ / name;
  }

  TempFolder folder_;
  FakeTime time_;
  std::optional<SimulatedRadio> radio_;
  std::string device_;
};

}  // namespace q40::test
