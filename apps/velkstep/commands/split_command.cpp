// velkstep split IN OUTDIR
#include "commands/split_command.h"

#include <filesystem>
#include <string>

#include "json/documents.h"
#include "run/exit_codes.h"
#include "run/split_run.h"

namespace Velkstep {

namespace {

/// A path on each line.
std::string list_of(const FinishedSplit& split, const std::filesystem::path& outdir) {
  std::string list;
  for (const Kessel::WrittenFile& file : split.files) {
    list += shown_path(outdir, file.path.string()) + '\n';
  }
  return list;
}

}  // namespace

int split(const SplitCommandArguments& arguments) {
  return run_split(arguments, [&](const FinishedSplit& split) {
    Delivery delivery;
    if (arguments.json) {
      delivery.text = split_json(split, arguments);
    } else if (!arguments.quiet) {
      delivery.text = list_of(split, arguments.outdir);
    }
    return delivery;
  });
}

}  // namespace Velkstep
