// velkstep tree IN
#pragma once

#include <cstddef>
#include <string>

#include "kessel/options.h"

namespace Velkstep {

struct TreeArguments {
  std::string in;
  // Deeper than products are; what is nested deeper gets too wide to read.
  std::size_t depth = 100;
  Kessel::NameStyle names = Kessel::Options().names;
  bool json = false;
  bool dot = false;
  bool bom = false;
  bool csv = false;
};

/// Prints how the parts of `arguments.in` are put together.
int tree(const TreeArguments& arguments);

}  // namespace Velkstep
