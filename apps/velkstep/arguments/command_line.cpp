#include "arguments/command_line.h"

#include "arguments/commands.h"
#include "run/exit_codes.h"

namespace Velkstep {

int run_command_line(int argc, char** argv) {
  CLI::App app;
  Action action;
  add_commands(app, action);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? EXIT_DONE : EXIT_WRONG_USAGE;
  }
  return action();
}

}  // namespace Velkstep
