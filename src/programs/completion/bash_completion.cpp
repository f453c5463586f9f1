#include "link/com_ports.h"
#include "programs/completion/command_words.h"

namespace q40 {
namespace {

// The same for every tool, whose name takes the place of "TOOL". No helper of the bash-completion package is used: the
// script also works where only bash is.
constexpr std::string_view kEngine = R"(
# What to offer for a value: adds to COMPREPLY.
_TOOL_offer() {
  local cur=$1 kind=$2 pattern=
  shift 2
  case $kind in
    words) mapfile -t COMPREPLY < <(compgen -W "$*" -- "$cur"); return ;;
    port) if [[ $cur != /* ]]; then _TOOL_offer "$cur" words "$@"; return; fi ;;
    clone) pattern='!*.[qQ]40' ;;
    csv) pattern='!*.[cC][sS][vV]' ;;
    file) ;;
    *) return ;;
  esac
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -d -- "$cur"; compgen -f -X "$pattern" -- "$cur" |
    while IFS= read -r path; do [[ -d $path ]] || printf '%s\n' "$path"; done)
}

_TOOL() {
  local cur=${COMP_WORDS[COMP_CWORD]} command= place=0 index word
  local options=() value=() places=()
  [[ $cur == = ]] && cur=
  for ((index = 1; index < COMP_CWORD; ++index)); do
    word=${COMP_WORDS[index]}
    [[ $word == = ]] && continue  # "--option=value" comes as three words
    if [[ ${#value[@]} -gt 0 ]]; then
      value=()
    elif [[ $word == -?* ]]; then
      _TOOL_value "$command" "$word"
    elif [[ -z $command ]] && _TOOL_is_command "$word"; then
      command=$word
    else
      ((++place))
    fi
  done
  COMPREPLY=()
  if [[ ${#value[@]} -gt 0 ]]; then
    _TOOL_offer "$cur" "${value[@]}"
    return
  fi
  _TOOL_words "$command"
  if [[ $cur == -* ]]; then
    _TOOL_offer "$cur" words "${options[@]}"
    return
  fi
  # The last place may stand for all that follow.
  index=$((${#places[@]} - 1))
  ((index >= 0 && place > index)) && [[ ${places[index]} == *... ]] && place=$index
  word=${places[place]-}
  word=${word%...}
  # shellcheck disable=SC2086 # the words are apart on purpose
  [[ -n $word ]] && _TOOL_offer "$cur" $word
}

complete -F _TOOL TOOL
)";

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

std::string ReplaceAll(std::string_view text, std::string_view what, const std::string& with) {
  std::string result;
  for (auto at = text.find(what); at != std::string_view::npos; at = text.find(what)) {
    result.append(text.substr(0, at)).append(with);
    text.remove_prefix(at + what.size());
  }
  return result.append(text);
}

std::string Offer(const ValueWords& value) {
  switch (value.kind) {
    case ValueKind::kWords: return "words " + Joined(value.words);
    case ValueKind::kCloneFile: return "clone";
    case ValueKind::kCsvFile: return "csv";
    case ValueKind::kFile: return "file";
    case ValueKind::kPort: {
      std::string text = "port";
      for (int n = 1; n <= kComPortCount; ++n) text += ' ' + std::to_string(n);
      text += " auto";
      return text;
    }
    default: return "text";
  }
}

std::string WordsCase(const std::string& label, const CommandWords& command,
                      const std::string& first_place) {
  std::vector<std::string> names;
  for (const OptionWords& option : command.options) {
    names.insert(names.end(), option.names.begin(), option.names.end());
  }
  std::string text = "    " + label + ")\n      options=(" + Joined(names) + ")\n      places=(";
  if (!first_place.empty()) text += "'" + first_place + "'";
  for (std::size_t i = 0; i < command.positionals.size(); ++i) {
    const PositionalWords& positional = command.positionals[i];
    text += (i == 0 ? "'" : " '") + Offer(positional.value) + (positional.repeats ? "...'" : "'");
  }
  return text + ")\n      ;;\n";
}

std::string ValueCases(const std::string& command, const CommandWords& words) {
  std::string text;
  for (const OptionWords& option : words.options) {
    if (option.value.kind == ValueKind::kNone) continue;
    std::string labels;
    for (const std::string& name : option.names) {
      labels.append(labels.empty() ? "'" : " | '").append(command).append(" ");
      labels.append(name).append("'");
    }
    text += "    " + labels + ") value=(" + Offer(option.value) + ") ;;\n";
  }
  return text;
}

}  // namespace

std::string BashCompletion(const ToolWords& tool) {
  const std::string& name = tool.top.name;
  std::vector<std::string> commands;
  for (const CommandWords& command : tool.commands) commands.push_back(command.name);

  std::string text = "# bash completion for " + name + "\n\n_" + name + "_is_command() {\n  [[ ' " +
                     Joined(commands) + " ' == *\" $1 \"* ]]\n}\n\n" +
                     "# The options of a command, and what its places take.\n_" + name +
                     "_words() {\n  case $1 in\n";
  text += WordsCase("''", tool.top, commands.empty() ? "" : "words " + Joined(commands));
  for (const CommandWords& command : tool.commands) text += WordsCase(command.name, command, "");
  text += "  esac\n}\n\n# What the option of a command takes; empty for a flag.\n_" + name +
          "_value() {\n  case \"$1 $2\" in\n";
  text += ValueCases("", tool.top);
  for (const CommandWords& command : tool.commands) text += ValueCases(command.name, command);
  text += "    *) value=() ;;\n  esac\n}\n";
  return text + ReplaceAll(kEngine, "TOOL", name);
}

}  // namespace q40
