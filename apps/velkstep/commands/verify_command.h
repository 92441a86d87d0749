// velkstep verify IN OUTDIR
#pragma once

#include <filesystem>
#include <string>

#include "kessel/options.h"
#include "text/progress_bar.h"

namespace Velkstep {

struct VerifyArguments {
  std::string in;
  std::filesystem::path outdir;
  Kessel::Options options;
  ShowProgress progress = ShowProgress::automatic;
  bool json = false;
};

/// Checks the files that `arguments.in` was split into and prints what is not as it should be.
int verify(const VerifyArguments& arguments);

}  // namespace Velkstep
