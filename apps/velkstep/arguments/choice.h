// Options whose value is one of a few words.
#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string>
#include <vector>

#include "run/words.h"
#include "text/near_miss.h"

namespace Velkstep {

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
  const auto fault = [words](const std::string& given) {
    return std::find(words.begin(), words.end(), given) == words.end() ? no_choice(given, words)
                                                                       : std::string();
  };
  return command->add_option_function<std::string>(name, choose, description)
      ->check(CLI::Validator(fault, ""))
      ->type_name(all)
      ->default_str(word_for(choices, value));
}

}  // namespace Velkstep
