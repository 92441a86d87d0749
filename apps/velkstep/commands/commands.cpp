#include "commands/commands.h"

#include "commands/check_command.h"
#include "commands/info_command.h"
#include "commands/report_command.h"
#include "commands/split_command.h"
#include "commands/tree_command.h"
#include "commands/verify_command.h"
#include "run/exit_codes.h"

namespace Velkstep {

void add_commands(CLI::App& app, Action& action) {
  app.name("velkstep");
  app.description("Splits STEP assemblies (ISO 10303-21 files) into one file per part.");
  app.set_version_flag("--version", "velkstep " VELKSTEP_VERSION, "Print the version and exit");
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.require_subcommand(1);
  app.footer(EXIT_CODES);

  add_split_command(app, action);
  add_check_command(app, action);
  add_verify_command(app, action);
  add_tree_command(app, action);
  add_info_command(app, action);
  add_report_command(app, action);
}

}  // namespace Velkstep
