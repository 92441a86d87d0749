// velkstep tree IN
#include "commands/tree_command.h"

#include <filesystem>
#include <iostream>
#include <string>

#include "formats/tree_formats.h"
#include "json/documents.h"
#include "kessel/assembly.h"
#include "run/exit_codes.h"
#include "run/with_input.h"

namespace Velkstep {

namespace {

std::string formatted(const Kessel::Assembly& assembly, const TreeArguments& arguments) {
  if (arguments.json) return tree_json(assembly, arguments.in);
  if (arguments.dot) return tree_dot(assembly, arguments.depth, arguments.in);
  if (arguments.csv) return parts_list_csv(assembly);
  const Colours colours;
  if (arguments.bom) return parts_list_text(assembly, colours);
  return tree_text(assembly, arguments.depth, colours);
}

}  // namespace

int tree(const TreeArguments& arguments) {
  return with_input(arguments.in, [&](const std::filesystem::path& path) {
    const Kessel::Assembly assembly = Kessel::read_assembly(
        path, {.names = arguments.names, .input_folder = folder_of(arguments.in)});
    if (assembly.parts.empty()) {
      std::cerr << "velkstep: " << printable(shown_name(arguments.in))
                << ": holds no part: no product definition has a shape or a component\n";
    }
    return print(formatted(assembly, arguments));
  });
}

}  // namespace Velkstep
