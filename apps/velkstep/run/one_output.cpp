#include "run/one_output.h"

#include <system_error>

#include "run/with_input.h"

namespace Velkstep {

void refuse_to_replace(const std::string& in, const std::filesystem::path& out) {
  std::error_code ignored;  // What cannot be compared is not the same.
  if (in != "-" && std::filesystem::equivalent(in, out, ignored)) {
    throw Kessel::OutputError(out, std::make_error_code(std::errc::file_exists));
  }
}

int refuse_output(const Kessel::OutputError& error) {
  if (error.reason() == std::errc::file_exists) {
    return fail(error.path().string(),
                "is there already; --force replaces it, unless it is an input");
  }
  return fail(error.path().string(), "cannot be written: " + error.reason().message());
}

}  // namespace Velkstep
