// What is wrong with a command line, in one line for people: the parser's own words name neither
// the command nor what to do next.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace q40 {

// For the error that parsing ended with: `read: there is no option "--frce". Did you mean --force?`
std::string UsageError(const CLI::App& app, const CLI::ParseError& error);

}  // namespace q40
