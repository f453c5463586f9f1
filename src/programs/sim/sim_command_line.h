// The options of rxq40sim.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace q40 {

// As written on the command line; an empty text and 0 mean "not given".
struct SimArguments {
  std::string model;
  std::string version;
  std::string load;
  std::string save;
  std::string memory;
  std::string save_memory;
  int baud = 0;
  std::string link;
  std::string replay;
  std::vector<std::string> faults;
};

// Parsing fills `arguments`, which must outlive the app.
void DefineSimCommandLine(CLI::App& app, SimArguments& arguments);

}  // namespace q40
