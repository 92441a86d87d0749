// The entry point of hosts.
#include "kessel/shrink.h"

#include <system_error>

#include "kessel/errors.h"
#include "output/finished_file.h"
#include "shrink/shrinking.h"

namespace Kessel {

Shrunk shrink(const std::filesystem::path& in, const std::filesystem::path& out,
              const ShrinkOptions& options) {
  FinishedFile file(out, options.replace);
  std::error_code ignored;  // What cannot be compared is not the same.
  if (std::filesystem::equivalent(in, out, ignored)) {
    throw OutputError(out, std::make_error_code(std::errc::file_exists));
  }
  Shrunk shrunk = Shrink::shrink_into(in, file.stream(), options);
  shrunk.bytes_after = file.finish();
  return shrunk;
}

}  // namespace Kessel
