// velkstep picture IN -o OUT.svg
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "kessel/picture.h"
#include "text/progress_bar.h"

namespace Velkstep {

struct PictureArguments {
  std::string in;
  std::filesystem::path out;
  std::string part;
  Kessel::View view = Kessel::View::isometric;
  std::uint64_t memory_limit = Kessel::Options::NO_LIMIT;
  bool follow = false;
  bool follow_outside = false;
  bool force = false;
  bool quiet = false;
  bool json = false;
  ShowProgress progress = ShowProgress::automatic;
};

/// Draws a part of `arguments.in`, or all of it, into `arguments.out`, and prints how much that
/// was.
int picture(const PictureArguments& arguments);

}  // namespace Velkstep
