#include "programs/completion/command_words.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "sim/fault.h"

namespace q40 {
namespace {

struct NameRow {
  std::string_view name;
  ValueKind kind;
};

// What the names that --help shows for values stand for.
constexpr NameRow kNames[] = {
    {"PORT", ValueKind::kPort},          {"FILE", ValueKind::kCloneFile},
    {"BASE", ValueKind::kCloneFile},     {"A", ValueKind::kCloneFile},
    {"B", ValueKind::kCloneFile},        {"OUT", ValueKind::kCloneFile},
    {"CSV", ValueKind::kCsvFile},        {"JSON", ValueKind::kFile},
    {"FILE.Q40", ValueKind::kCloneFile}, {"FILE.bin", ValueKind::kFile},
    {"FILE.trace", ValueKind::kFile},    {"PATH", ValueKind::kFile},
    {"FAULT", ValueKind::kWords},        {"BAUD", ValueKind::kText},
    {"HEX", ValueKind::kText},           {"N", ValueKind::kText},
    {"MAP", ValueKind::kFile},           {"CHANNEL", ValueKind::kText},
};

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> words;
  std::istringstream stream(text);
  for (std::string word; std::getline(stream, word, separator);) words.push_back(word);
  return words;
}

std::vector<std::string> FaultNames() {
  std::vector<std::string> names = Split(FaultHelp(), '\n');
  for (std::string& line : names) {
    line.erase(0, line.find_first_not_of(' '));
    line.erase(line.find(' '));
  }
  return names;
}

// The parser shows a choice as "MODEL:{RX-Q40T,RX-Q40E}".
ValueWords ValueOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  ValueWords value;
  value.name = option.nonpositional() ? type.substr(0, type.find(':')) : option.get_name(true);
  const auto open = type.find('{');
  if (open != std::string::npos) {
    value.kind = ValueKind::kWords;
    value.words = Split(type.substr(open + 1, type.find('}') - open - 1), ',');
    return value;
  }
  const auto* const row = std::find_if(std::begin(kNames), std::end(kNames),
                                       [&](const NameRow& r) { return r.name == value.name; });
  if (row == std::end(kNames)) {
    throw std::runtime_error("no completion is known for the value " + value.name);
  }
  value.kind = row->kind;
  if (value.name == "FAULT") value.words = FaultNames();
  return value;
}

void AddOption(CommandWords& command, const CLI::Option& option) {
  if (!option.nonpositional()) {
    command.positionals.push_back({ValueOf(option), option.get_items_expected_max() > 1});
    return;
  }
  OptionWords words;
  for (const std::string& name : option.get_snames()) words.names.push_back('-' + name);
  for (const std::string& name : option.get_lnames()) words.names.push_back("--" + name);
  words.description = option.get_description();
  if (option.get_items_expected_max() > 0) words.value = ValueOf(option);
  command.options.push_back(std::move(words));
}

CommandWords CommandOf(const CLI::App& app) {
  CommandWords command{app.get_name(), app.get_description(), {}, {}};
  for (const CLI::Option* option : app.get_options()) AddOption(command, *option);
  return command;
}

bool HasOption(const CommandWords& command, const OptionWords& option) {
  return std::any_of(command.options.begin(), command.options.end(),
                     [&](const OptionWords& own) { return own.names == option.names; });
}

}  // namespace

ToolWords WordsOf(const CLI::App& app) {
  ToolWords tool{CommandOf(app), {}};
  const CLI::Option* version = app.get_version_ptr();
  for (const CLI::App* sub : app.get_subcommands([](const CLI::App*) { return true; })) {
    CommandWords command = CommandOf(*sub);
    for (const OptionWords& option : tool.top.options) {
      const bool is_version = version != nullptr && option.names.back() == version->get_name();
      if (app.get_fallthrough() && !is_version && !HasOption(command, option)) {
        command.options.push_back(option);
      }
    }
    tool.commands.push_back(std::move(command));
  }
  return tool;
}

std::string OptionList(const ToolWords& tool) {
  std::string text;
  const auto add = [&](const std::string& command, const CommandWords& words) {
    for (const OptionWords& option : words.options) {
      for (const std::string& name : option.names) text.append(command).append(name).append("\n");
    }
  };
  add("", tool.top);
  for (const CommandWords& command : tool.commands) {
    text += command.name + '\n';
    add(command.name + ' ', command);
  }
  return text;
}

}  // namespace q40
