#include "programs/sim/sim_command_line.h"

#include "sim/fault.h"

namespace q40 {
namespace {

constexpr const char* kDescription =
    "A simulated RX-Q40 radio behind a pseudo-terminal.\n"
    "Prints the path of its device, then serves until SIGINT or SIGTERM.\n";

std::string Footer() {
  return "FAULT is KIND[=VALUE][@WHERE][+]. WHERE: @0200 (an address), @WHO, @RXQ40, @END or\n"
         "@#7 (the seventh exchange); without it the first exchange. \"+\": from then on.\n" +
         FaultHelp() +
         "\nExample: rxq40sim --pace 9600 --link /tmp/radio --fault ng@0200\n"
         "Exit codes: 0 done, 1 the commands were not those of the trace, 2 wrong usage, 6 a file "
         "cannot be loaded or the memory cannot be\n"
         "decoded, 7 a file, a link or a device cannot be made\n";
}

}  // namespace

void DefineSimCommandLine(CLI::App& app, SimArguments& arguments) {
  app.name("rxq40sim");
  app.description(kDescription);
  app.add_option("--model", arguments.model, "the model it reports (RX-Q40T)")
      ->check(CLI::IsMember({"RX-Q40T", "RX-Q40E", "RX-Q40T1"}, CLI::ignore_case));
  app.add_option("--version", arguments.version, "the version letter it reports (0)")
      ->check(CLI::IsMember({"A", "0"}));
  app.add_option("--load", arguments.load, "clone file to start with")->type_name("FILE.Q40");
  app.add_option("--save", arguments.save, "clone file to write at the end")->type_name("FILE.Q40");
  app.add_option("--memory", arguments.memory, "raw memory to start with, 8192 bytes")
      ->type_name("FILE.bin");
  app.add_option("--save-memory", arguments.save_memory, "raw memory to write at the end")
      ->type_name("FILE.bin");
  app.add_option("--pace", arguments.baud, "speed of the wire; without it as fast as it can")
      ->type_name("BAUD")
      ->check(CLI::Range(1, 10'000'000));
  app.add_option("--link", arguments.link, "symbolic link to the device")->type_name("PATH");
  app.add_option("--fault", arguments.faults, "what goes wrong, see below")
      ->type_name("FAULT")
      ->allow_extra_args(false);
  auto* replay =
      app.add_option("--replay", arguments.replay,
                     "answer as this trace of rxq40ctl --trace tells; another command ends it")
          ->type_name("FILE.trace");
  for (CLI::Option* option : app.get_options()) {
    const bool has_own_meaning =
        option == replay || option == app.get_help_ptr() || option->check_lname("link");
    if (!has_own_meaning) replay->excludes(option);
  }
  app.footer(Footer());
}

}  // namespace q40
