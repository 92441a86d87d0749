// What the library warns of while a command works on an input.
#pragma once

#include <cstdint>
#include <string>

#include "kessel/options.h"

namespace Velkstep {

/// Adds up warnings, to mention them in one line.
class Warnings {
 public:
  void add(const Kessel::Finding& warning) { count_ += warning.count; }

  /// Has `options` tell it, as long as it lives, of what the library warns.
  void listen(Kessel::Options& options);

  /// Prints how many there were in the input that the user called `argument`; nothing for none.
  void mention(const std::string& argument) const;

 private:
  std::uint64_t count_ = 0;
};

}  // namespace Velkstep
