// What somebody may have meant who typed something else.
#pragma once

#include <string>
#include <vector>

namespace Velkstep {

/// The one of `words` that is nearest to `typed`; empty where none is near. Letters that are left
/// out, too many, wrong or swapped with the next count one each; a word that begins with `typed`
/// is near, too.
std::string near_miss(const std::string& typed, const std::vector<std::string>& words);

/// What to say to somebody who gave an option a word that is none of `words`.
std::string no_choice(const std::string& typed, const std::vector<std::string>& words);

}  // namespace Velkstep
