// Runs the built programs as a user's shell would. For tests and benchmarks.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace q40::test {

struct ProcessResult {
  int code = -1;  // exit code; 128 + signal when a signal ended it, 137 after the limit
  std::string out;
  std::string err;
  double seconds = 0;
  double cpu_seconds = 0;
  long peak_kib = 0;  // largest resident memory
};

struct ProcessOptions {
  std::map<std::string, std::string> environment{};
  bool as_nobody = false;      // drops the rights of root
  bool ignore_hangup = false;  // as nohup does
  int signal = 0;              // sent after `signal_after`
  std::chrono::milliseconds signal_after{0};
  std::chrono::milliseconds limit{20000};  // killed after this
};

// Path of a program of this build.
std::string Program(const std::string& name);

ProcessResult Run(const std::vector<std::string>& command, const ProcessOptions& options = {});

// A program in the background, ended with SIGTERM at the latest by the destructor.
class Background {
 public:
  // Waits for the first line that it prints when somebody wants it.
  explicit Background(const std::vector<std::string>& command,
                      const std::map<std::string, std::string>& environment = {},
                      std::string* first_line = nullptr);
  ~Background() { Stop(); }
  Background(const Background&) = delete;
  Background& operator=(const Background&) = delete;

  bool IsRunning();
  // Its exit code, -1 when it is still running after `limit`.
  int Wait(std::chrono::milliseconds limit);
  // Ends it with a signal, SIGTERM if none is given; its exit code.
  int Stop(int signal = 0);

 private:
  pid_t pid_ = -1;
  int code_ = -1;
};

// rxq40sim, from construction to destruction.
class SimulatorProcess {
 public:
  explicit SimulatorProcess(std::vector<std::string> arguments)
      : process_((arguments.insert(arguments.begin(), Program("rxq40sim")), arguments), {},
                 &device_) {}
  // Empty when it did not start.
  [[nodiscard]] const std::string& device() const { return device_; }
  int Stop() { return process_.Stop(); }

 private:
  std::string device_;
  Background process_;
};

}  // namespace q40::test
