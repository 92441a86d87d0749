// What a reader can do about a message: the next step that stands behind it.
#pragma once

#include <string>

#include "kessel/finding.h"

namespace Velkstep {

/// What can be done about an error in an input: a sentence. Empty where the finding's own sentence
/// says it, and for what only a comparison finds. `path` is where the input is looked for, or
/// "standard input".
std::string advice_on(const Kessel::Finding& finding, const std::string& path);

/// What can be done about something that joining files is warned of, and that stays in what comes
/// of it: a sentence. Empty where nothing can.
std::string advice_on_joined(const Kessel::Finding& warning);

/// As advice_on() where the file is one of a split, or its folder.
std::string advice_on_split(const Kessel::Finding& finding, const std::string& path);

/// The finding's sentence, and behind it what can be done, for a message about the input at `path`.
std::string sentence_with_advice(const Kessel::Finding& finding, const std::string& path);

}  // namespace Velkstep
