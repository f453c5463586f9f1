#include "programs/usage_error.h"

#include <algorithm>

#include "base/plain_text.h"
#include "programs/nearest.h"

namespace q40 {
namespace {

using Words = std::vector<std::string>;

Words CommandsOf(const CLI::App& app) {
  Words names;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    names.push_back(command->get_name());
  }
  return names;
}

bool IsOption(const std::string& word) { return word.size() > 1 && word.starts_with('-'); }

void AddOptions(const CLI::App& app, Words& names) {
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
}

// "there is no command "raed". Did you mean read?"
std::string Unknown(const std::string& kind, const std::string& word, const Words& known,
                    const std::string& help) {
  const auto nearest = Nearest(word, known);
  return "there is no " + kind + ' ' + Quoted(word) + ". " +
         (nearest ? "Did you mean " + *nearest + '?' : help);
}

}  // namespace

std::string UsageError(const CLI::App& app, const CLI::ParseError& error) {
  const auto chosen = app.get_subcommands();
  const CLI::App& command = chosen.empty() ? app : *chosen.front();
  const std::string name = chosen.empty() ? std::string() : command.get_name();
  const std::string help = "See " + app.get_name() + (name.empty() ? "" : ' ' + name) + " --help.";
  const std::string prefix = name.empty() ? name : name + ": ";

  Words left_over = app.remaining(true);
  std::erase(left_over, "--");
  const Words commands = CommandsOf(app);
  if (chosen.empty() && !commands.empty()) {
    if (left_over.empty()) return "a command is missing. " + help;
    if (!IsOption(left_over.front())) {
      return Unknown("command", left_over.front(), commands, help);
    }
  }
  const auto option = std::find_if(left_over.begin(), left_over.end(), IsOption);
  if (option != left_over.end()) {
    const std::string typed = option->substr(0, option->find('='));
    if (command.get_option_no_throw(typed) != nullptr) {
      return prefix + typed + " must stand behind the command. " + help;
    }
    Words options;
    AddOptions(command, options);
    if (!chosen.empty()) AddOptions(app, options);
    return prefix + Unknown("option", typed, options, help);
  }
  const std::string what = left_over.empty()
                               ? std::string(error.what())
                               : Quoted(left_over.front()) + " is one argument too many";
  return prefix + what + ". " + help;
}

}  // namespace q40
