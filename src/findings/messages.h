// Where the sentences about problems in the data go.
#pragma once

#include <ostream>

namespace Kessel {

/// Standard error; on a thread with a `Silence`, a stream that drops everything.
std::ostream& messages();

/// While one lives, its thread prints no messages.
class Silence {
 public:
  Silence();
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;
  ~Silence();

 private:
  bool before_;
};

}  // namespace Kessel
