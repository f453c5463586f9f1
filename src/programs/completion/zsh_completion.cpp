#include "link/com_ports.h"
#include "programs/completion/command_words.h"

namespace q40 {
namespace {

// For text inside the single quotes of an _arguments or _describe entry.
std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\n') break;  // the first line says enough
    if (c == '\'') {
      escaped += R"('\'')";
      continue;
    }
    if (c == '[' || c == ']' || c == ':' || c == '\\') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

std::string Choice(const std::vector<std::string>& words) {
  std::string text = "(";
  for (const std::string& word : words) text += (text.size() > 1 ? " " : "") + word;
  return text + ')';
}

std::string Action(const std::string& tool, const ValueWords& value) {
  switch (value.kind) {
    case ValueKind::kWords: return Choice(value.words);
    case ValueKind::kPort: return "_" + tool + "_port";
    case ValueKind::kCloneFile: return R"(_files -g "*.[qQ]40")";
    case ValueKind::kCsvFile: return R"(_files -g "*.[cC][sS][vV]")";
    case ValueKind::kFile: return "_files";
    default: return " ";
  }
}

// The name with the sign for "its value may be joined to it": -p1, --port=1.
std::string Joinable(const std::string& name, bool has_value) {
  if (!has_value) return name;
  return name + (name.starts_with("--") ? '=' : '+');
}

// '(-p --port)'{-p+,--port=}'[what it is]:PORT:action'
std::string OptionEntry(const std::string& tool, const OptionWords& option) {
  const bool has_value = option.value.kind != ValueKind::kNone;
  std::string text = "'";
  if (option.names.size() == 1) {
    text += Joinable(option.names.front(), has_value);
  } else {
    std::string all;
    std::string braces;
    for (const std::string& name : option.names) {
      all += (all.empty() ? "" : " ") + name;
      braces += (braces.empty() ? "" : ",") + Joinable(name, has_value);
    }
    text.append("(").append(all).append(")'{").append(braces).append("}'");
  }
  text += '[' + Escaped(option.description) + ']';
  if (has_value) text += ':' + Escaped(option.value.name) + ':' + Action(tool, option.value);
  return text + '\'';
}

std::string Arguments(const std::string& tool, const CommandWords& command,
                      const std::string& indent) {
  std::string text = "_arguments";
  for (const OptionWords& option : command.options) {
    text.append(" \\\n").append(indent).append("  ").append(OptionEntry(tool, option));
  }
  for (const PositionalWords& positional : command.positionals) {
    text.append(" \\\n").append(indent).append("  '").append(positional.repeats ? "*:" : ":");
    text += Escaped(positional.value.name) + ':' + Action(tool, positional.value) + '\'';
  }
  return text;
}

std::string PortFunction(const std::string& tool) {
  std::vector<std::string> numbers;
  for (int n = 1; n <= kComPortCount; ++n) numbers.push_back(std::to_string(n));
  numbers.emplace_back("auto");
  return "_" + tool + "_port() {\n  _alternative 'number:COM port:" + Choice(numbers) +
         "' 'device:device:_files'\n}\n\n";
}

std::string CommandFunction(const ToolWords& tool) {
  const std::string& name = tool.top.name;
  std::string text = "  local curcontext=$curcontext state line\n  local -a commands=(\n";
  for (const CommandWords& command : tool.commands) {
    text += "    '" + Escaped(command.name) + ':' + Escaped(command.description) + "'\n";
  }
  text += "  )\n  " + Arguments(name, tool.top, "  ").replace(0, 10, "_arguments -C");
  text += " \\\n    '1:command:->command' '*::argument:->argument' && return\n  case $state in\n";
  text += "    command) _describe -t commands command commands ;;\n    argument)\n";
  text += "      case $words[1] in\n";
  for (const CommandWords& command : tool.commands) {
    text += "        " + command.name + ") " + Arguments(name, command, "          ") + " ;;\n";
  }
  return text + "      esac ;;\n  esac\n";
}

}  // namespace

std::string ZshCompletion(const ToolWords& tool) {
  const std::string& name = tool.top.name;
  std::string text = "#compdef " + name + "\n\n" + PortFunction(name) + '_' + name + "() {\n";
  text +=
      tool.commands.empty() ? "  " + Arguments(name, tool.top, "  ") + '\n' : CommandFunction(tool);
  return text + "}\n\n_" + name + " \"$@\"\n";
}

}  // namespace q40
