// velkstep join ROOT -o OUT
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "kessel/options.h"
#include "text/progress_bar.h"

namespace Velkstep {

struct JoinArguments {
  std::string root;
  std::filesystem::path out;
  std::uint64_t memory_limit = Kessel::Options::NO_LIMIT;
  bool force = false;
  bool follow_outside = false;
  bool shrink = false;
  bool quiet = false;
  bool json = false;
  ShowProgress progress = ShowProgress::automatic;
};

/// Joins `arguments.root` and the files that it refers to into `arguments.out`, and prints how
/// much that was, and on standard error what about it deserves a look.
int join(const JoinArguments& arguments);

}  // namespace Velkstep
