// Runs the commands of rxq40ctl in this process, on a simulated radio without time.
#pragma once

#include "programs/ctl/commands.h"
#include "support/simulated_bench.h"

namespace q40::test {

struct SimulatedLine final : RadioLine {
  SimulatedLine(SimulatedRadio& radio, FakeTime& time) : time_(time), cable_(radio, time) {}
  Port& port() override { return cable_.port; }
  LinkTimers timers() override { return time_.Timers(); }
  EventPump& pump() override { return time_.pump; }

  FakeTime& time_;
  SimulatedCable cable_;
};

struct CtlResult {
  int code = -1;
  std::string out;
  std::string err;
};

// `words` without the program's name. Exceptions pass through, as they do to main().
inline CtlResult RunCtl(const std::vector<std::string>& words, LineFactory line_to,
                        const std::vector<PresentPort>& plugged_in = {},
                        const std::string& user_folder = {}) {
  char* out = nullptr;
  char* err = nullptr;
  std::size_t out_size = 0;
  std::size_t err_size = 0;
  std::FILE* out_file = open_memstream(&out, &out_size);
  std::FILE* err_file = open_memstream(&err, &err_size);
  CtlResult result;
  {
    CommandContext context{.console = Console(out_file, err_file), .line_to = std::move(line_to)};
    context.present_ports = [&] { return plugged_in; };
    context.user_folder = user_folder;
    std::vector<const char*> argv = {"rxq40ctl"};
    for (const std::string& word : words) argv.push_back(word.c_str());
    result.code = RunCommandLine(static_cast<int>(argv.size()), argv.data(), context);
  }
  std::fclose(out_file);
  std::fclose(err_file);
  result.out.assign(out, out_size);
  result.err.assign(err, err_size);
  std::free(out);
  std::free(err);
  return result;
}

}  // namespace q40::test
