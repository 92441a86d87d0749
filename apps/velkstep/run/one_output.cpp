#include "run/one_output.h"

#include <system_error>

#include "system/staged_output.h"

namespace Velkstep {

void refuse_to_replace(const std::string& in, const std::filesystem::path& out) {
  std::error_code ignored;  // What cannot be compared is not the same.
  if (in != "-" && std::filesystem::equivalent(in, out, ignored)) {
    throw UnusableOutput(out, "is the input; choose another name");
  }
}

}  // namespace Velkstep
