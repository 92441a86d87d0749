// velkstep shrink IN -o OUT
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "kessel/options.h"
#include "text/progress_bar.h"

namespace Velkstep {

struct ShrinkArguments {
  std::string in;
  std::filesystem::path out;
  std::uint64_t memory_limit = Kessel::Options::NO_LIMIT;
  bool drop_unreachable = false;
  bool renumber = false;
  bool force = false;
  bool quiet = false;
  bool json = false;
  ShowProgress progress = ShowProgress::automatic;
};

/// Writes `arguments.in` without what it says again to `arguments.out`, and prints how much is
/// left, and on standard error what about the input deserves a look.
int shrink(const ShrinkArguments& arguments);

}  // namespace Velkstep
