// rxq40sim: the simulated radio as a program.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "base/plain_text.h"
#include "document/defaults.h"
#include "files/clone_file.h"
#include "files/standard_streams.h"
#include "files/whole_file.h"
#include "programs/exit_codes.h"
#include "programs/sim/pty_server.h"
#include "programs/sim/sim_command_line.h"
#include "programs/usage_error.h"
#include "sim/simulated_radio.h"
#include "sim/trace_replay.h"

namespace q40 {
namespace {

volatile std::sig_atomic_t stop = 0;
extern "C" void Stop(int /*signal*/) { stop = 1; }

int Complain(int code, const std::string& message) {
  std::cerr << "rxq40sim: " << Printable(message) << '\n';
  return code;
}

// The radio's memory from --load and --memory. The clone file also names model and version, unless
// the command line does.
int Load(const SimArguments& arguments, SimulatedRadio::Options& options, RadioMemory& memory) {
  CloneData document = FreshData();
  if (!arguments.load.empty()) {
    if (const auto result = OpenCloneFile(arguments.load, document); result.problem) {
      return Complain(kExitDataError,
                      std::string(kDataErrorText) + ": " + result.problem->Message());
    }
    if (document.model > 2 && arguments.model.empty()) {
      return Complain(kExitUsage, arguments.load + ": no radio reports itself as " +
                                      std::string(ModelName(document.model)) + "; use --model");
    }
    options.model = document.model;
    options.version = document.image.VersionA ? 'A' : '0';
  }
  if (!arguments.model.empty()) options.model = FindModel(arguments.model).value_or(0);
  if (!arguments.version.empty()) options.version = arguments.version[0];
  if (arguments.load.empty()) ChangeModel(document, options.model);
  StoreDocument(document, memory);

  if (arguments.memory.empty()) return kExitDone;
  std::string raw;
  if (const auto problem = ReadFile(arguments.memory, kMemorySize + 1, raw)) {
    return Complain(kExitDataError, problem->Message());
  }
  if (!memory.SetRaw(raw)) {
    return Complain(kExitDataError, arguments.memory + ": a memory file has 8192 bytes");
  }
  return kExitDone;
}

int Save(const SimArguments& arguments, const SimulatedRadio& radio) {
  int code = kExitDone;
  if (!arguments.save_memory.empty()) {
    if (const auto problem = WriteFile(arguments.save_memory, radio.memory().raw())) {
      code = Complain(kExitCannotWrite, problem->Message());
    }
  }
  if (arguments.save.empty()) return code;
  std::string why;
  auto document =
      DocumentOf(radio.memory(), radio.options().model, radio.options().version == 'A', why);
  if (!document) return Complain(kExitDataError, "the memory cannot be decoded: " + why);
  if (const auto problem = SaveCloneFile(arguments.save, *document, document->model)) {
    return Complain(kExitCannotWrite, problem->Message());
  }
  return code;
}

// Blocks the stop signals except while the server waits, so that none gets lost in between.
sigset_t CatchSignals() {
  struct sigaction action {};
  action.sa_handler = Stop;
  sigset_t stop_signals;
  sigset_t while_waiting;
  sigemptyset(&stop_signals);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before {};
    // What the parent wants ignored (nohup) stays ignored.
    if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) continue;
    sigaction(number, &action, nullptr);
    sigaddset(&stop_signals, number);
  }
  sigprocmask(SIG_BLOCK, &stop_signals, &while_waiting);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigdelset(&while_waiting, number);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  return while_waiting;
}

// Before the radio has a memory that could be lost.
int CheckSaves(const SimArguments& arguments) {
  for (const std::string& path : {arguments.save, arguments.save_memory}) {
    if (path.empty()) continue;
    if (const auto problem = CheckReplaceable(path)) {
      return Complain(kExitCannotWrite, problem->Message());
    }
  }
  return kExitDone;
}

// Until a signal comes, or the far end has nothing more to say.
int Serve(FarEnd& radio, const std::string& link) {
  const sigset_t while_waiting = CatchSignals();
  PtyServer server(radio, link);
  std::string why;
  if (!server.Start(why)) return Complain(kExitCannotWrite, why);
  std::cout << server.device() << std::endl;
  if (!std::cout) return Complain(kExitCannotWrite, "standard output takes no more");
  server.Serve(stop, while_waiting);
  return kExitDone;
}

int RunReplay(const SimArguments& arguments) {
  constexpr std::size_t kLongestTrace = 64U << 20U;
  std::string text;
  std::vector<TraceEvent> events;
  auto problem = ReadFile(arguments.replay, kLongestTrace, text);
  if (!problem) problem = ParseTrace(text, arguments.replay, events);
  if (problem) {
    return Complain(kExitDataError, std::string(kDataErrorText) + ": " + problem->Message());
  }
  TraceReplay replay(events);
  if (const int code = Serve(replay, arguments.link); code != kExitDone) return code;
  std::cerr << "rxq40sim: " << replay.Answered() << " of " << replay.Commands()
            << " commands of the trace\n";
  auto difference = replay.Difference();
  if (!difference) return kExitDone;
  difference->path = arguments.replay;
  return Complain(kExitDifferent, difference->Message());
}

int Run(const SimArguments& arguments) {
  if (!arguments.replay.empty()) return RunReplay(arguments);
  SimulatedRadio::Options options;
  options.baud = arguments.baud;
  for (const std::string& text : arguments.faults) {
    std::string why;
    const auto fault = ParseFault(text, why);
    if (!fault) return Complain(kExitUsage, why + ". See rxq40sim --help.");
    options.faults.push_back(*fault);
  }
  RadioMemory memory;
  if (const int code = Load(arguments, options, memory); code != kExitDone) return code;
  if (const int code = CheckSaves(arguments); code != kExitDone) return code;
  SimulatedRadio radio(std::move(options));
  radio.memory() = memory;
  if (const int code = Serve(radio, arguments.link); code != kExitDone) return code;
  std::cerr << "rxq40sim: " << radio.Exchanges() << " exchanges\n";
  return Save(arguments, radio);
}

int ParseAndRun(int argc, char** argv) {
  CLI::App app;
  SimArguments arguments;
  DefineSimCommandLine(app, arguments);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) return Complain(kExitUsage, UsageError(app, error));
    return app.exit(error);
  }
  return Run(arguments);
}

}  // namespace
}  // namespace q40

int main(int argc, char** argv) {
  q40::OpenStandardStreams();
  try {
    return q40::ParseAndRun(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "rxq40sim: %s\n", q40::Printable(error.what()).c_str());
    return q40::kExitInternal;
  }
}
