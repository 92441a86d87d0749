// A place in a text.
#pragma once

#include <cstdint>

namespace Kessel {

struct Place {
  std::uint64_t offset = 0;  ///< bytes from its beginning
  std::uint64_t line = 0;    ///< from 1
};

}  // namespace Kessel
