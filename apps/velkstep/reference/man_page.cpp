#include "reference/man_page.h"

#include <sstream>

#include "run/exit_codes.h"

namespace Velkstep {

namespace {

/// Text that roff shows as it stands.
std::string roff(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (c == '\\' || c == '-') out += '\\';
    out += c == '\\' ? "e" : std::string(1, c);
  }
  return out.starts_with('.') || out.starts_with('\'') ? "\\&" + out : out;
}

std::string bold(const std::string& text) {
  return "\\fB" + roff(text) + "\\fR";
}

std::string italic(const std::string& text) {
  return "\\fI" + roff(text) + "\\fR";
}

std::string value_of(const OptionDescription& option) {
  if (option.words.empty()) return italic(option.value);
  std::string all;
  for (const std::string& word : option.words) all += (all.empty() ? "" : "|") + bold(word);
  return all;
}

std::string synopsis(const std::vector<CommandDescription>& commands) {
  std::string out;
  for (std::size_t i = 1; i < commands.size(); ++i) {
    out += bold("velkstep " + commands[i].name);
    for (const std::string& word : commands[i].usage) {
      const bool is_literal = word.starts_with('-');
      out += " " + (word == "[OPTIONS]" ? "[" + italic("OPTIONS") + "]"
                    : is_literal        ? bold(word)
                                        : italic(word));
    }
    out += "\n.br\n";
  }
  return out;
}

void append_items(std::string& out, const std::vector<OptionDescription>& options) {
  for (const OptionDescription& option : options) {
    std::string head;
    for (const std::string& flag : option.flags) head += (head.empty() ? "" : ", ") + bold(flag);
    if (!option.value.empty()) head += (head.empty() ? "" : " ") + value_of(option);
    out += ".TP\n" + head + "\n" + roff(option.text);
    if (!option.preset.empty()) out += "; " + bold(option.preset) + " if not given";
    out += ".\n";
  }
}

std::string command_sections(const std::vector<CommandDescription>& commands) {
  std::string out;
  for (std::size_t i = 1; i < commands.size(); ++i) {
    out += ".SS velkstep " + roff(commands[i].name) + "\n" + roff(commands[i].text) + ".\n";
    append_items(out, commands[i].arguments);
    append_items(out, commands[i].options);
  }
  return out;
}

/// The exit codes are a list of "code  meaning" below a heading.
std::string exit_codes() {
  std::istringstream in(EXIT_CODES);
  std::string out;
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    const std::size_t code = line.find_first_not_of(' ');
    const std::size_t meaning = line.find_first_not_of(' ', line.find(' ', code));
    out += ".TP\n" + bold(line.substr(code, line.find(' ', code) - code)) + "\n" +
           roff(line.substr(meaning)) + "\n";
  }
  return out;
}

void replace(std::string& page, const std::string& mark, std::string text) {
  if (text.ends_with('\n')) text.pop_back();
  for (std::size_t at = 0; (at = page.find(mark, at)) != std::string::npos; at += text.size()) {
    page.replace(at, mark.size(), text);
  }
}

}  // namespace

std::string man_page(std::string page, const std::vector<CommandDescription>& commands) {
  replace(page, "@VERSION@", VELKSTEP_VERSION);
  replace(page, "@SYNOPSIS@", synopsis(commands));
  replace(page, "@COMMANDS@", command_sections(commands));
  replace(page, "@EXIT_CODES@", exit_codes());
  return page;
}

}  // namespace Velkstep
