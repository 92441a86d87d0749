// Searching and taking apart a text, as all of this folder does it.
#pragma once

#include <cstddef>
#include <string_view>

namespace Kessel {

/// What a search in a text gives where there is nothing.
inline constexpr std::size_t NONE = std::string_view::npos;

/// Takes `beginning` off the front of `text`; false where the text begins otherwise.
inline bool take(std::string_view& text, std::string_view beginning) {
  if (!text.starts_with(beginning)) return false;
  text.remove_prefix(beginning.size());
  return true;
}

}  // namespace Kessel
