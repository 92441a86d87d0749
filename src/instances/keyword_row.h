// Rows of tables of entity names: those that a name is, begins with or ends in.
#pragma once

#include <cstdint>
#include <string_view>

namespace Kessel::Keywords {

enum class Match : std::uint8_t { exactly, beginning, ending };

/// Which entity names a row of a table is about.
struct Row {
  Match match;
  std::string_view name;

  bool fits(std::string_view keyword) const {
    switch (match) {
      case Match::exactly:
        return keyword == name;
      case Match::beginning:
        return keyword.starts_with(name);
      case Match::ending:
        break;
    }
    return keyword.ends_with(name);
  }
};

}  // namespace Kessel::Keywords
