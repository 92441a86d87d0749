// velkstep check IN
#pragma once

#include <string>

#include "kessel/options.h"

namespace Velkstep {

struct CheckArguments {
  std::string in;
  Kessel::Options options;
  bool json = false;
};

/// Prints what is wrong or unusual in `arguments.in`; EXIT_WARNINGS where all of it are warnings.
int check(const CheckArguments& arguments);

}  // namespace Velkstep
