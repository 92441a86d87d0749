// Options whose value is one of a few words.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

namespace Velkstep {

/// The words of an option and what they stand for, in the order in which the help names them.
template <class Value>
using Choices = std::vector<std::pair<std::string, Value>>;

/// The word that stands for `value`.
template <class Value>
std::string word_for(const Choices<Value>& choices, Value value) {
  for (const auto& [word, meaning] : choices) {
    if (meaning == value) return word;
  }
  return {};
}

/// Adds an option that sets `value`, whose present value is the default, to what the given word
/// stands for. `choices` must outlive the parsing.
template <class Value>
CLI::Option* add_choice(CLI::App* command, const std::string& name, Value& value,
                        const Choices<Value>& choices, const std::string& description) {
  std::vector<std::string> words;
  std::string all;
  for (const auto& [word, meaning] : choices) {
    words.push_back(word);
    all += (all.empty() ? "" : "|") + word;
  }
  const auto choose = [&value, &choices](const std::string& given) {
    for (const auto& [word, meaning] : choices) {
      if (word == given) value = meaning;
    }
  };
  return command->add_option_function<std::string>(name, choose, description)
      ->check(CLI::IsMember(words).description(""))
      ->type_name(all)
      ->default_str(word_for(choices, value));
}

}  // namespace Velkstep
