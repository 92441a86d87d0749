// velkstep tree IN...
#include "commands/tree_command.h"

#include <filesystem>
#include <string>

#include "formats/tree_formats.h"
#include "json/documents.h"
#include "kessel/drawing.h"
#include "run/each_input.h"
#include "run/unpacked.h"
#include "run/warnings.h"
#include "run/with_input.h"

namespace Velkstep {

namespace {

/// Text for people about one of several files begins with its name.
std::string titled(const std::string& in, const std::string& text, const TreeArguments& arguments,
                   const Colours& colours) {
  if (arguments.in.size() == 1) return text;
  return colours.bold(printable(shown_name(in))) + '\n' + text;
}

std::string formatted(const Kessel::Assembly& assembly, const PartSizes& sizes,
                      const std::string& in, const TreeArguments& arguments,
                      const Colours& colours) {
  if (arguments.json) return tree_json(assembly, in);
  if (arguments.dot) return tree_dot(assembly, arguments.depth, in);
  if (arguments.csv) {
    const bool is_alone = arguments.in.size() == 1;
    const std::string heading = is_alone ? parts_list_csv_heading({}, arguments.sizes) : "";
    return heading + parts_list_csv(assembly, arguments.order, is_alone ? "" : in, sizes);
  }
  return titled(in,
                arguments.bom ? parts_list_text(assembly, arguments.order, colours, sizes)
                              : tree_text(assembly, arguments.depth, colours),
                arguments, colours);
}

int tree_of_one(const std::string& in, const TreeArguments& arguments, const Colours& colours) {
  return with_input(in, [&](const std::filesystem::path& path) {
    Warnings warnings;
    Unpacked unpacked;
    Kessel::Options options{.names = arguments.names,
                            .input_folder = folder_of_input(in),
                            .follow_references = arguments.follow,
                            .follow_outside = arguments.follow_outside,
                            .readable = unpacked.readable(),
                            .memory_limit = arguments.memory_limit};
    warnings.listen(options);
    Kessel::Drawing drawing;
    if (arguments.sizes) {
      // Boxes are those of lines: fine ones, so that round parts are as wide as they are.
      drawing = Kessel::read_drawing(path, {.tolerance = 1e-5}, options);
    } else {
      drawing.assembly = Kessel::read_assembly(path, options);
    }
    const Kessel::Assembly& assembly = drawing.assembly;
    if (assembly.parts.empty()) mention_no_part(in);
    warnings.mention(in);
    return print(formatted(assembly, sizes_of(drawing), in, arguments, colours));
  });
}

}  // namespace

int tree(const TreeArguments& arguments) {
  const Colours colours(arguments.colours);
  EachInput each{.inputs = arguments.in, .jobs = arguments.jobs};
  if (arguments.csv) each.heading = parts_list_csv_heading("input", arguments.sizes);
  if (!arguments.json && !arguments.dot && !arguments.csv) each.gap = "\n";
  return for_each_input(
      each, [&](std::size_t i) { return tree_of_one(arguments.in[i], arguments, colours); });
}

}  // namespace Velkstep
