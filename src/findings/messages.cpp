// Where the sentences about problems in the data go.
#include "findings/messages.h"

#include <iostream>
#include <utility>

namespace Kessel {

namespace {
thread_local bool _silent = false;
}

std::ostream& messages() {
  if (!_silent) return std::cerr;
  thread_local std::ostream nowhere(nullptr);
  return nowhere;
}

Silence::Silence() : before_(std::exchange(_silent, true)) {}

Silence::~Silence() {
  _silent = before_;
}

}  // namespace Kessel
