#include "arguments/command_line.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <system_error>

#include "arguments/commands.h"
#include "run/exit_codes.h"
#include "run/input_names.h"
#include "run/meant_files.h"
#include "run/with_input.h"
#include "run/wrong_usage.h"
#include "text/near_miss.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

std::vector<std::string> commands_of(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands({})) names.push_back(command->get_name());
  return names;
}

std::vector<std::string> flags_of(const CLI::App& app) {
  std::vector<std::string> flags;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) flags.push_back("--" + name);
  }
  return flags;
}

/// What is to be said about a word that nothing is called.
std::string unknown(const std::string& typed, const std::vector<std::string>& words) {
  const std::string meant = near_miss(typed, words);
  const std::string what = typed.starts_with("-") ? "option" : "command";
  std::error_code error;
  if (what == "option" && std::filesystem::exists(typed, error)) {
    return printable(typed) + ": no such option; ./" + printable(typed) + " names the file";
  }
  return printable(typed) + (meant.empty() ? ": no such " + what : ": did you mean " + meant + "?");
}

/// What is to be said about a word that is left.
std::string one_too_many(const std::string& typed, const CLI::App& command) {
  std::string all;
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_positional()) all += (all.empty() ? "" : " and ") + option->get_name(true);
  }
  const std::string begin = printable(typed) + " is one too many; ";
  if (command.get_name() != "join") return begin + "it takes " + all + " only";
  const std::string split = split_of(typed);  // Who names the pieces means the whole.
  if (!split.empty()) return begin + "velkstep join " + in_command(split) + " joins that split";
  return begin + "name only the file that refers to the others, or the folder of a split";
}

/// What is to be said about an option with too few or too many values; `text` is CLI11's, which
/// names it: "--jobs: 1 required N missing", "Could not convert: --json = x".
std::string wrong_values(const std::string& text, const CLI::App& command) {
  const std::size_t begin = std::min(text.find("--"), text.size());
  const std::string name = text.substr(begin, text.find_first_of(": =", begin) - begin);
  const CLI::Option* const option = command.get_option_no_throw(name);
  if (option == nullptr) return printable(text);
  if (option->get_expected_max() == 0) return name + " takes no value";
  if (option->count() > 1) return name + " is there more than once; give it once";
  return name + " wants a value: " + option->get_type_name();
}

/// What is to be said about something that is not there; `text` is CLI11's: "IN is required".
std::string what_is_required(const std::string& text, const CLI::App& command) {
  const CLI::Option* const option = command.get_option_no_throw(text.substr(0, text.find(' ')));
  if (option == nullptr) return text;
  if (!option->get_positional()) {
    const bool is_short = !option->get_snames().empty();
    return text + "; " +
           (is_short ? "-" + option->get_snames().front() : "--" + option->get_lnames().front()) +
           " " + option->get_type_name() + " names it";
  }
  const bool may_be_read = option->get_description().find("standard input") != std::string::npos;
  return may_be_read ? text + "; - reads standard input" : text;
}

/// What is wrong with the arguments of `command`, which is the program itself where none was found.
std::string sentence(const CLI::App& app, const CLI::App& command, const CLI::ParseError& error) {
  const std::vector<std::string> left = command.remaining();
  const std::string typed =
      left.empty() ? std::string() : left.front().substr(0, left.front().find('='));
  if (&command == &app) {
    if (left.empty()) return "a command is required";
    for (const char* word : {"version", "-v", "-V"}) {
      if (typed == word) return typed + ": did you mean --version?";
    }
    if (!stem_of(typed).empty()) {
      return printable(typed) + ": no such command; velkstep split " + printable(typed) +
             " splits that file";
    }
    return unknown(typed, typed.starts_with("-") ? flags_of(app) : commands_of(app));
  }
  const bool is_required = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
  if (is_required && typed.starts_with("-")) return unknown(typed, flags_of(command));
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
    return typed.starts_with("-") ? unknown(typed, flags_of(command))
                                  : one_too_many(typed, command);
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr ||
      dynamic_cast<const CLI::ConversionError*>(&error) != nullptr) {
    return wrong_values(error.what(), command);
  }
  if (is_required && left.empty()) return what_is_required(error.what(), command);
  const bool is_for_output = left.size() == 1 && !typed.starts_with("-") &&
                             error.what() == std::string("--output is required");
  return printable(error.what()) +
         (is_for_output ? "; did you mean -o " + printable(typed) + "?" : "");
}

/// Says what is wrong with the arguments, and where help is.
int refuse(const std::string& command, const std::string& sentence) {
  std::cerr << command << ": " << sentence << "\n" << command << " --help says how to use it.\n";
  return EXIT_WRONG_USAGE;
}

/// The arguments, the last one first as CLI11 takes them. "help", or its option in front of a
/// command, asks for the help of that command.
std::vector<std::string> arguments_of(int argc, char** argv, const CLI::App& app) {
  std::vector<std::string> arguments(argv + 1, argv + std::max(argc, 1));
  const bool asks = !arguments.empty() &&
                    (arguments[0] == "help" || arguments[0] == "-h" || arguments[0] == "--help");
  if (asks) {
    const std::vector<std::string> commands = commands_of(app);
    arguments.erase(arguments.begin());
    arguments.resize(std::min<std::size_t>(arguments.size(), 1));
    const bool is_unknown =
        !arguments.empty() && !arguments[0].starts_with('-') &&
        std::find(commands.begin(), commands.end(), arguments[0]) == commands.end();
    if (!is_unknown) arguments.emplace_back("--help");
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

}  // namespace

int run_command_line(int argc, char** argv) {
  CLI::App app;
  Action action;
  add_commands(app, action);
  const auto command = [&]() -> const CLI::App& {
    const auto chosen = app.get_subcommands();
    return chosen.empty() ? app : *chosen.front();
  };
  const auto name = [&] {
    return &command() == &app ? "velkstep" : "velkstep " + command().get_name();
  };
  try {
    app.parse(arguments_of(argc, argv, app));
    return action();
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {  // Help, or the version.
      std::ostringstream text;
      app.exit(error, text, text);
      return print(text.str());
    }
    return refuse(name(), sentence(app, command(), error));
  } catch (const WrongUsage& error) {
    return refuse(name(), printable(error.what()));
  }
}

}  // namespace Velkstep
