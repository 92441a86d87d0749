#include "arguments/help_format.h"

#include <cstddef>
#include <set>
#include <sstream>
#include <string>
#include <utility>

namespace Velkstep {

namespace {

constexpr std::size_t WIDTH = 80;
constexpr std::size_t COLUMN = 28;          // where descriptions of options begin
constexpr std::size_t COMMAND_COLUMN = 12;  // and those of commands

/// `text` in lines that end before WIDTH, behind `name` in a column of its own; a name that does
/// not fit there has a line for itself. All is ASCII.
std::string in_columns(const std::string& name, const std::string& text, std::size_t column) {
  std::string out = "  " + name;
  bool is_begun = out.size() + 2 <= column;  // Whether the line may take words.
  std::size_t at = out.size();
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const bool is_first = at <= column;
    if (!is_begun || (!is_first && at + 1 + word.size() > WIDTH)) {
      out += '\n';
      at = 0;
      is_begun = true;
    }
    const std::size_t gap = at <= column ? column - at : 1;
    out += std::string(gap, ' ') + word;
    at += gap + word.size();
  }
  return out + '\n';
}

/// The names of options, in their order.
std::string listed(const std::set<CLI::Option*>& options) {
  std::set<std::string> names;  // The options are in that of their addresses.
  for (const CLI::Option* option : options) names.insert(option->get_name(false, false));
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ", ") + name;
  return list;
}

std::string argument_name(const CLI::Option& option) {
  return option.get_name(true) + (option.get_items_expected_max() > 1 ? "..." : "");
}

std::string flags(const CLI::Option& option) {
  std::string flags;
  for (const std::string& name : option.get_snames()) flags += "-" + name + ", ";
  for (const std::string& name : option.get_lnames()) flags += "--" + name;
  return option.get_type_size() == 0 ? flags : flags + " " + option.get_type_name();
}

/// What it does, what it is without being given, and what it does not go with.
std::string described(const CLI::Option& option) {
  std::string text = option.get_description();
  const std::string preset = option.get_positional() ? "" : option.get_default_str();
  const std::string excluded = listed(option.get_excludes());
  if (!preset.empty()) text += " (default: " + preset + ")";
  if (!excluded.empty()) text += ". Not with " + excluded;
  return text;
}

class HelpFormat final : public CLI::Formatter {
 public:
  explicit HelpFormat(std::string required) : required_(std::move(required)) {
    label("Positionals", "Arguments");
  }

  std::string make_usage(const CLI::App* app, std::string name) const override {
    std::string usage = "Usage: " + name + " [OPTIONS]";
    for (const CLI::Option* option : app->get_options()) {
      if (option->get_positional()) usage += " " + argument_name(*option);
    }
    for (const CLI::Option* option : app->get_options()) {
      if (option->get_positional() || !option->get_required()) continue;
      usage += " -" + option->get_snames().front() + " " + option->get_type_name();
    }
    if (!app->get_subcommands({}).empty()) usage += " COMMAND";
    return usage + (required_.empty() ? "" : " " + required_) + "\n";
  }

  std::string make_option(const CLI::Option* option, bool is_positional) const override {
    return in_columns(is_positional ? argument_name(*option) : flags(*option), described(*option),
                      COLUMN);
  }

  std::string make_subcommand(const CLI::App* command) const override {
    return in_columns(command->get_name(), command->get_description(), COMMAND_COLUMN);
  }

 private:
  std::string required_;
};

}  // namespace

std::shared_ptr<CLI::FormatterBase> help_format(const std::string& required) {
  return std::make_shared<HelpFormat>(required);
}

}  // namespace Velkstep
