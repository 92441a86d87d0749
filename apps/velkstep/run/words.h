// The words of the command line for what can be chosen, as data.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "kessel/options.h"
#include "kessel/picture.h"
#include "text/part_label.h"
#include "text/progress_bar.h"
#include "text/terminal.h"

namespace Velkstep {

/// The words of an option and what they stand for, in the order in which the help names them.
template <class Value>
using Choices = std::vector<std::pair<std::string, Value>>;

extern const Choices<Kessel::AssemblyStyle> ASSEMBLY_STYLES;
extern const Choices<Kessel::NameStyle> NAME_STYLES;
extern const Choices<Kessel::Reading> READINGS;
extern const Choices<Kessel::View> VIEWS;
extern const Choices<ShowProgress> PROGRESS;
extern const Choices<ColourChoice> COLOURS;
extern const Choices<PartsOrder> PARTS_ORDERS;

/// The word that stands for `value`.
template <class Value>
std::string word_for(const Choices<Value>& choices, Value value) {
  for (const auto& [word, meaning] : choices) {
    if (meaning == value) return word;
  }
  return {};
}

/// The word by which the command line chooses a style.
std::string word_of(Kessel::AssemblyStyle style);
std::string word_of(Kessel::NameStyle style);

}  // namespace Velkstep
