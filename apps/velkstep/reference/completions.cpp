#include "reference/completions.h"

namespace Velkstep {

namespace {

std::string joined(const std::vector<std::string>& words) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : " ") + word;
  return all;
}

/// `text` in single quotes, as all three shells take it.
std::string in_quotes(const std::string& text) {
  std::string out = "'";
  for (const char c : text) out += c == '\'' ? "'\\''" : std::string(1, c);
  return out + "'";
}

std::vector<std::string> subcommand_names(const std::vector<CommandDescription>& commands) {
  std::vector<std::string> names;
  for (std::size_t i = 1; i < commands.size(); ++i) names.push_back(commands[i].name);
  return names;
}

std::vector<std::string> flags_of(const CommandDescription& command) {
  std::vector<std::string> flags;
  for (const OptionDescription& option : command.options) {
    flags.insert(flags.end(), option.flags.begin(), option.flags.end());
  }
  return flags;
}

std::string zsh_paths(const OptionDescription& option) {
  return option.is_folder ? "_directories" : "_files";
}

/// What zsh's `_arguments` is told of a flag. Brackets and colons mean something to it.
std::string zsh_flag(const std::string& flag, const OptionDescription& option) {
  std::string text = flag;
  if (!option.value.empty()) text += flag.starts_with("--") ? "=" : "+";
  text += '[';
  for (const char c : option.text) {
    if (c == '[' || c == ']' || c == ':' || c == '\\') text += '\\';
    text += c;
  }
  text += "]";
  if (!option.value.empty()) text += ":value:";
  if (!option.words.empty()) text += "(" + joined(option.words) + ")";
  if (option.is_path) text += zsh_paths(option);
  return in_quotes(text);
}

std::string zsh_argument(const OptionDescription& argument) {
  return in_quotes((argument.repeats ? "*:" : ":") + argument.value + ":" + zsh_paths(argument));
}

}  // namespace

std::string bash_completion(const std::vector<CommandDescription>& commands) {
  std::string out =
      "# bash completion for velkstep\n"
      "_velkstep() {\n"
      "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} words=\n"
      "  COMPREPLY=()\n"
      "  # \"--option=word\" arrives as three words.\n"
      "  if [[ $current == = ]]; then current=; elif [[ $previous == = ]]; then\n"
      "    previous=${COMP_WORDS[COMP_CWORD-2]}\n"
      "  fi\n"
      "  if (( COMP_CWORD == 1 )); then\n"
      "    words=" +
      in_quotes(joined(subcommand_names(commands)) + " " + joined(flags_of(commands[0]))) +
      "\n"
      "  else\n"
      "    case ${COMP_WORDS[1]}:$previous in\n";
  for (std::size_t i = 1; i < commands.size(); ++i) {
    for (const OptionDescription& option : commands[i].options) {
      if (option.words.empty()) continue;
      out += "      " + commands[i].name + ":" + option.flags.back() +
             ") words=" + in_quotes(joined(option.words)) + " ;;\n";
    }
  }
  out += "      *) [[ $current == -* ]] && case ${COMP_WORDS[1]} in\n";
  for (std::size_t i = 1; i < commands.size(); ++i) {
    out += "        " + commands[i].name + ") words=" + in_quotes(joined(flags_of(commands[i]))) +
           " ;;\n";
  }
  return out +
         "      esac ;;\n"
         "    esac\n"
         "  fi\n"
         "  if [[ $words ]]; then\n"
         "    COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
         "  else\n"
         "    compopt -o filenames 2>/dev/null\n"
         "    mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
         "  fi\n"
         "}\n"
         "complete -F _velkstep velkstep\n";
}

std::string zsh_completion(const std::vector<CommandDescription>& commands) {
  std::string out =
      "#compdef velkstep\n"
      "_velkstep() {\n"
      "  local -a commands=(\n";
  for (std::size_t i = 1; i < commands.size(); ++i) {
    out += "    " + in_quotes(commands[i].name + ":" + commands[i].text) + "\n";
  }
  out +=
      "  )\n"
      "  if (( CURRENT == 2 )); then\n"
      "    _describe command commands\n"
      "    compadd -- " +
      joined(flags_of(commands[0])) +
      "\n"
      "    return\n"
      "  fi\n"
      "  local command=$words[2]\n"
      "  shift words\n"
      "  (( CURRENT-- ))\n"
      "  case $command in\n";
  for (std::size_t i = 1; i < commands.size(); ++i) {
    out += "  " + commands[i].name + ") _arguments -s \\\n";
    for (const OptionDescription& option : commands[i].options) {
      for (const std::string& flag : option.flags) out += "    " + zsh_flag(flag, option) + " \\\n";
    }
    for (const OptionDescription& argument : commands[i].arguments) {
      out += "    " + zsh_argument(argument) + " \\\n";
    }
    out += "    ;;\n";
  }
  return out +
         "  esac\n"
         "}\n"
         "_velkstep \"$@\"\n";
}

std::string fish_completion(const std::vector<CommandDescription>& commands) {
  std::string out = "# fish completion for velkstep\n";
  const auto append = [&](const std::string& condition, const OptionDescription& option) {
    out += "complete -c velkstep -n " + in_quotes(condition);
    for (const std::string& flag : option.flags) {
      out += flag.starts_with("--") ? " -l " + flag.substr(2) : " -s " + flag.substr(1);
    }
    if (!option.value.empty()) out += option.is_path ? " -r" : " -x";
    if (option.is_folder) out += " -a '(__fish_complete_directories)'";
    if (!option.words.empty()) out += " -a " + in_quotes(joined(option.words));
    out += " -d " + in_quotes(option.text) + "\n";
  };
  for (std::size_t i = 1; i < commands.size(); ++i) {
    out += "complete -c velkstep -n __fish_use_subcommand -f -a " + commands[i].name + " -d " +
           in_quotes(commands[i].text) + "\n";
  }
  for (const OptionDescription& option : commands[0].options) {
    append("__fish_use_subcommand", option);
  }
  for (std::size_t i = 1; i < commands.size(); ++i) {
    for (const OptionDescription& option : commands[i].options) {
      append("__fish_seen_subcommand_from " + commands[i].name, option);
    }
  }
  return out;
}

}  // namespace Velkstep
