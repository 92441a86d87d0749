// velkstep tree IN...
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "formats/tree_formats.h"
#include "kessel/options.h"

namespace Velkstep {

struct TreeArguments {
  std::vector<std::string> in;
  std::size_t jobs = 0;
  // Deeper than products are; what is nested deeper gets too wide to read.
  std::size_t depth = 100;
  Kessel::NameStyle names = Kessel::Options().names;
  bool json = false;
  bool dot = false;
  bool bom = false;
  bool csv = false;
  bool sizes = false;
  bool follow = false;
  bool follow_outside = false;
  std::uint64_t memory_limit = Kessel::Options::NO_LIMIT;
  PartsOrder order = PartsOrder::file;
  ColourChoice colours = ColourChoice::automatic;
};

/// Prints how the parts of each input are put together; of several, below its name.
int tree(const TreeArguments& arguments);

}  // namespace Velkstep
