// Arguments that make no sense together.
#pragma once

#include <stdexcept>

namespace Velkstep {

/// The arguments make no sense; `what()` says why. Means EXIT_WRONG_USAGE.
class WrongUsage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace Velkstep
