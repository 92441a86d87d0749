#include "run/one_output.h"

#include <system_error>

namespace Velkstep {

void refuse_to_replace(const std::string& in, const std::filesystem::path& out) {
  std::error_code ignored;  // What cannot be compared is not the same.
  if (in != "-" && std::filesystem::equivalent(in, out, ignored)) {
    throw Kessel::OutputError(out, std::make_error_code(std::errc::file_exists));
  }
}

}  // namespace Velkstep
