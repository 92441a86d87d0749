// What commands that split are asked for.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "kessel/options.h"
#include "text/progress_bar.h"

namespace Velkstep {

struct SplitArguments {
  std::vector<std::string> inputs;  ///< "-" for standard input; the last may be the folder
  std::filesystem::path output;     ///< the folder for all; empty where none was named
  std::size_t jobs = 0;             ///< how many inputs to work on at once; 0 for one per core
  std::string in;                   ///< the one that is split
  std::filesystem::path outdir;     ///< where its files go
  std::vector<std::string> parts;   ///< what to split of each input; empty for all
  std::string part;                 ///< the one that is split; empty for all
  Kessel::Options options;
  bool force = false;
  bool quiet = false;
  bool json = false;
  bool pictures = true;  ///< whether a report shows the parts
  bool dry_run = false;
  ShowProgress progress = ShowProgress::automatic;
};

}  // namespace Velkstep
