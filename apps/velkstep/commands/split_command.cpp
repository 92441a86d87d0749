// velkstep split IN... [-o OUTDIR]
#include "commands/split_command.h"

#include <filesystem>
#include <string>

#include "json/documents.h"
#include "run/split_plan.h"
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

int split_one(const SplitArguments& arguments) {
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

}  // namespace

int split(const SplitArguments& arguments) {
  return for_each_split(arguments, split_one);
}

}  // namespace Velkstep
