// What commands that split are asked for.
#pragma once

#include <filesystem>
#include <string>

#include "kessel/options.h"
#include "text/progress_bar.h"

namespace Velkstep {

struct SplitArguments {
  std::string in;  ///< "-" for standard input
  std::filesystem::path outdir;
  Kessel::Options options;
  bool force = false;
  bool quiet = false;
  ShowProgress progress = ShowProgress::automatic;
};

}  // namespace Velkstep
