// velkstep check IN...
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kessel/options.h"

namespace Velkstep {

struct CheckArguments {
  std::vector<std::string> in;
  std::size_t jobs = 0;
  Kessel::Options options;
  bool json = false;
};

/// Prints what is wrong or unusual in every input; EXIT_WARNINGS where all of it are warnings.
int check(const CheckArguments& arguments);

}  // namespace Velkstep
