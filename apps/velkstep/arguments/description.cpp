#include "arguments/description.h"

#include <cstddef>
#include <sstream>

#include "arguments/commands.h"

namespace Velkstep {

namespace {

std::vector<std::string> split_at(const std::string& text, char separator) {
  std::vector<std::string> words;
  std::istringstream in(text);
  for (std::string word; std::getline(in, word, separator);) words.push_back(word);
  return words;
}

OptionDescription describe(const CLI::Option& option) {
  OptionDescription description;
  for (const std::string& name : option.get_snames()) description.flags.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) description.flags.push_back("--" + name);
  if (option.get_positional()) {
    description.value = option.get_name(true);
    description.is_path = true;
    description.repeats = option.get_items_expected_max() > 1;
  } else if (option.get_type_size() != 0) {
    description.value = option.get_type_name();
    if (description.value.find('|') != std::string::npos) {
      description.words = split_at(description.value, '|');
    }
    description.is_path = description.value.starts_with("OUT");
  }
  description.is_folder = description.value == "OUTDIR";
  if (description.repeats) description.value += "...";
  description.preset = option.get_default_str();
  description.text = option.get_description();
  return description;
}

/// What stands in the line of --help that begins with "Usage:", from "[OPTIONS]" on.
std::vector<std::string> usage_of(const CLI::App& app) {
  const std::string help = app.help();
  const std::size_t begin = help.find("[OPTIONS]", help.find("Usage: "));
  return split_at(help.substr(begin, help.find('\n', begin) - begin), ' ');
}

CommandDescription describe_command(const CLI::App& app) {
  CommandDescription description;
  description.name = app.get_name();
  description.text = app.get_description();
  description.usage = usage_of(app);
  for (const CLI::Option* option : app.get_options()) {
    auto& list = option->get_positional() ? description.arguments : description.options;
    list.push_back(describe(*option));
  }
  return description;
}

}  // namespace

std::vector<CommandDescription> describe_command_line() {
  CLI::App app;
  Action action;
  add_commands(app, action);
  std::vector<CommandDescription> commands = {describe_command(app)};
  for (const CLI::App* command : app.get_subcommands({})) {
    commands.push_back(describe_command(*command));
  }
  return commands;
}

}  // namespace Velkstep
