// velkstep info IN...
#include "commands/info_command.h"

#include <filesystem>
#include <string>

#include "formats/info_formats.h"
#include "json/documents.h"
#include "kessel/summary.h"
#include "run/each_input.h"
#include "run/unpacked.h"
#include "run/warnings.h"
#include "run/with_input.h"

namespace Velkstep {

namespace {

int info_one(const std::string& in, const Colours& colours, const InfoArguments& arguments) {
  return with_input(in, [&](const std::filesystem::path& path) {
    Warnings warnings;
    Unpacked unpacked;
    Kessel::Options options{.input_folder = folder_of_input(in),
                            .follow_references = arguments.follow,
                            .follow_outside = arguments.follow_outside,
                            .readable = unpacked.readable(),
                            .memory_limit = arguments.memory_limit};
    warnings.listen(options);
    const Kessel::Summary summary = Kessel::read_summary(path, options);
    warnings.mention(in);
    return print(arguments.json ? info_json(summary, in)
                                : info_text(summary, shown_name(in), colours));
  });
}

}  // namespace

int info(const InfoArguments& arguments) {
  const Colours colours(arguments.colours);
  return for_each_input(
      {.inputs = arguments.in, .jobs = arguments.jobs, .gap = arguments.json ? "" : "\n"},
      [&](std::size_t i) { return info_one(arguments.in[i], colours, arguments); });
}

}  // namespace Velkstep
