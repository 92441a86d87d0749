// velkstep info IN...
#include "commands/info_command.h"

#include <filesystem>
#include <string>

#include "formats/info_formats.h"
#include "json/documents.h"
#include "kessel/summary.h"
#include "run/exit_codes.h"
#include "run/with_input.h"

namespace Velkstep {

int info(const InfoArguments& arguments) {
  const Colours colours;
  std::string gap;
  int code = EXIT_DONE;
  for (const std::string& in : arguments.in) {
    const int this_code = with_input(in, [&](const std::filesystem::path& path) {
      const Kessel::Summary summary = Kessel::read_summary(path, {.input_folder = folder_of(in)});
      if (arguments.json) return print(info_json(summary, in));
      const int printed = print(gap + info_text(summary, shown_name(in), colours));
      gap = "\n";
      return printed;
    });
    if (this_code != EXIT_DONE) code = this_code;
  }
  return code;
}

}  // namespace Velkstep
