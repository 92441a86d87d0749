// velkstep split IN OUTDIR
#include "commands/split_command.h"

#include <filesystem>
#include <memory>
#include <string>

#include "formats/split_json.h"
#include "run/exit_codes.h"
#include "run/split_arguments.h"
#include "run/split_run.h"

namespace Velkstep {

namespace {

struct Arguments : SplitArguments {
  bool json = false;
};

/// A path on each line.
std::string list_of(const FinishedSplit& split, const std::filesystem::path& outdir) {
  std::string list;
  for (const Kessel::WrittenFile& file : split.files) {
    list += shown_path(outdir, file.path.string()) + '\n';
  }
  return list;
}

int split(const Arguments& arguments) {
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

void add_split_command(CLI::App& app, Action& action) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand("split", "Split IN into one file per part under OUTDIR");
  add_split_arguments(command, *arguments);
  command->add_flag("--json", arguments->json,
                    "Print one line of JSON in place of the files' paths");
  command->footer(EXIT_CODES);
  command->callback([&action, arguments] { action = [arguments] { return split(*arguments); }; });
}

}  // namespace Velkstep
