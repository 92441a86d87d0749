// velkstep info IN...
#include "commands/info_command.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "formats/info_formats.h"
#include "kessel/summary.h"
#include "run/exit_codes.h"
#include "run/with_input.h"

namespace Velkstep {

namespace {

struct InfoArguments {
  std::vector<std::string> in;
  bool json = false;
};

/// Looks at every input, also behind one that failed. The text of each is followed by an empty
/// line, but for the last.
int info(const InfoArguments& arguments) {
  const Colours colours;
  std::string gap;
  int code = EXIT_DONE;
  for (const std::string& in : arguments.in) {
    const int this_code = with_input(in, [&](const std::filesystem::path& path) {
      const Kessel::Summary summary = Kessel::read_summary(path);
      if (arguments.json) return print(info_json(summary, in));
      const int printed = print(gap + info_text(summary, shown_name(in), colours));
      gap = "\n";
      return printed;
    });
    if (this_code != EXIT_DONE) code = this_code;
  }
  return code;
}

}  // namespace

void add_info_command(CLI::App& app, Action& action) {
  const auto arguments = std::make_shared<InfoArguments>();
  CLI::App* command =
      app.add_subcommand("info", "Show what the header of each IN says, and count what it holds");
  command->add_option("IN", arguments->in, "The exchange files; - reads standard input")
      ->required();
  command->add_flag("--json", arguments->json, "Print one line of JSON for each file");
  command->footer(EXIT_CODES);
  command->callback([&action, arguments] { action = [arguments] { return info(*arguments); }; });
}

}  // namespace Velkstep
