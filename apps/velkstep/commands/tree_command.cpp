// velkstep tree IN
#include "commands/tree_command.h"

#include <cstddef>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "formats/tree_formats.h"
#include "kessel/assembly.h"
#include "run/exit_codes.h"
#include "run/split_arguments.h"
#include "run/with_input.h"

namespace Velkstep {

namespace {

struct TreeArguments {
  std::string in;
  // Deeper than products are; what is nested deeper gets too wide to read.
  std::size_t depth = 100;
  Kessel::NameStyle names = Kessel::NameStyle::record;
  bool json = false;
  bool dot = false;
  bool bom = false;
  bool csv = false;
};

std::string formatted(const Kessel::Assembly& assembly, const TreeArguments& arguments) {
  if (arguments.json) return tree_json(assembly, arguments.in);
  if (arguments.dot) return tree_dot(assembly, arguments.depth, arguments.in);
  if (arguments.csv) return parts_list_csv(assembly);
  const Colours colours;
  if (arguments.bom) return parts_list_text(assembly, colours);
  return tree_text(assembly, arguments.depth, colours);
}

int tree(const TreeArguments& arguments) {
  return with_input(arguments.in, [&](const std::filesystem::path& path) {
    const Kessel::Assembly assembly = Kessel::read_assembly(path, {.names = arguments.names});
    if (assembly.parts.empty()) {
      std::cerr << "velkstep: " << printable(shown_name(arguments.in)) << ": holds no part\n";
    }
    return print(formatted(assembly, arguments));
  });
}

}  // namespace

void add_tree_command(CLI::App& app, Action& action) {
  const auto arguments = std::make_shared<TreeArguments>();
  CLI::App* command = app.add_subcommand("tree", "Show how the parts of IN are put together");
  command->add_option("IN", arguments->in, "The exchange file; - reads standard input")->required();
  CLI::Option* depth =
      command->add_option("--depth", arguments->depth, "Levels to show below the root")
          ->type_name("N")
          ->check(CLI::NonNegativeNumber)
          ->capture_default_str();
  add_names_option(command, arguments->names);
  CLI::Option* json = command->add_flag("--json", arguments->json, "Print one line of JSON");
  CLI::Option* dot = command->add_flag("--dot", arguments->dot, "Print a graph for Graphviz");
  CLI::Option* bom = command->add_flag("--bom", arguments->bom,
                                       "List the parts that have a shape, with total quantities");
  command->add_flag("--csv", arguments->csv, "With --bom: as comma-separated values")->needs(bom);
  json->excludes(dot)->excludes(bom)->excludes(depth);
  dot->excludes(bom);
  bom->excludes(depth);
  command->footer(EXIT_CODES);
  command->callback([&action, arguments] { action = [arguments] { return tree(*arguments); }; });
}

}  // namespace Velkstep
