// velkstep info IN...
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "kessel/options.h"
#include "text/terminal.h"

namespace Velkstep {

struct InfoArguments {
  std::vector<std::string> in;
  std::size_t jobs = 0;
  ColourChoice colours = ColourChoice::automatic;
  bool follow = false;
  bool follow_outside = false;
  std::uint64_t memory_limit = Kessel::Options::NO_LIMIT;
  bool json = false;
};

/// Looks at every input, also behind one that failed. The text of each is followed by an empty
/// line, but for the last.
int info(const InfoArguments& arguments);

}  // namespace Velkstep
