// The entry point of hosts.
#include "kessel/shrink.h"

#include "findings/named_errors.h"
#include "output/finished_file.h"
#include "output/own_input.h"
#include "shrink/shrinking.h"

namespace Kessel {

Shrunk shrink(const std::filesystem::path& in, const std::filesystem::path& out,
              const ShrinkOptions& options) {
  return with_named_errors(in, [&] {
    FinishedFile file(out, options.replace);
    refuse_to_replace(in, out);
    Shrunk shrunk = Shrink::shrink_into(in, file.stream(), options);
    shrunk.bytes_after = file.finish();
    return shrunk;
  });
}

}  // namespace Kessel
