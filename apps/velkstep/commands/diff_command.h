// velkstep diff A B
#pragma once

#include <string>

#include "kessel/options.h"
#include "text/progress_bar.h"

namespace Velkstep {

struct DiffArguments {
  std::string a;
  std::string b;
  Kessel::Options options;
  bool json = false;
  bool summary = false;
  ShowProgress progress = ShowProgress::automatic;
};

/// Compares two files and prints what differs. Returns EXIT_DONE where they say the same,
/// EXIT_DIFFERENT where they do not, and EXIT_TROUBLE where that could not be found out.
int diff(const DiffArguments& arguments);

}  // namespace Velkstep
