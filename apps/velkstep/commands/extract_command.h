// velkstep extract IN --part WHAT -o OUT
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "kessel/options.h"
#include "text/progress_bar.h"

namespace Velkstep {

struct ExtractArguments {
  std::string in;                  ///< "-" for standard input
  std::vector<std::string> parts;  ///< what they are called
  std::filesystem::path out;       ///< a file; a folder for several files
  Kessel::NameStyle names = Kessel::NameStyle::product;
  std::uint64_t memory_limit = Kessel::Options::NO_LIMIT;
  bool bodies = false;
  bool list = false;
  bool shrink = false;
  bool follow = false;
  bool copy_references = false;
  bool follow_outside = false;
  bool force = false;
  bool quiet = false;
  bool json = false;
  ShowProgress progress = ShowProgress::automatic;
};

/// Writes the parts of `arguments.in` into files of their own, and prints which and how large they
/// are; or lists what there is to be extracted.
int extract(const ExtractArguments& arguments);

}  // namespace Velkstep
