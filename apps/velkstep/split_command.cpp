// velkstep split IN OUTDIR
#include "split_command.h"

#include <memory>
#include <string>

#include "exit_codes.h"
#include "split_arguments.h"
#include "split_json.h"
#include "split_run.h"
#include "with_input.h"

namespace Velkstep {

namespace {

struct Arguments : SplitArguments {
  bool json = false;
};

int split(const Arguments& arguments) {
  return run_split(arguments, [&](const FinishedSplit& split) {
    if (arguments.json) return print(split_json(split, arguments));
    if (arguments.quiet) return int{EXIT_DONE};
    std::string list;
    for (const Kessel::WrittenFile& file : split.files) {
      list += (arguments.outdir / file.path).lexically_normal().string() + '\n';
    }
    return print(list);
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
