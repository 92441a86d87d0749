// velkstep info IN...
#pragma once

#include <string>
#include <vector>

namespace Velkstep {

struct InfoArguments {
  std::vector<std::string> in;
  bool json = false;
};

/// Looks at every input, also behind one that failed. The text of each is followed by an empty
/// line, but for the last.
int info(const InfoArguments& arguments);

}  // namespace Velkstep
