// The command line: arguments in, exit code out.
#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <iostream>

#include "commands/commands.h"
#include "run/exit_codes.h"
#include "run/with_input.h"
#include "system/interruption.h"

namespace {

int run(int argc, char** argv) {
  CLI::App app;
  Velkstep::Action action;
  Velkstep::add_commands(app, action);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? Velkstep::EXIT_DONE : Velkstep::EXIT_WRONG_USAGE;
  }
  return action();
}

}  // namespace

int main(int argc, char** argv) {
#ifdef SIGXFSZ
  std::signal(SIGXFSZ, SIG_IGN);  // A file that grows too large is an error, not the end.
#endif
  try {
    return run(argc, argv);
  } catch (const Velkstep::Interrupted& interruption) {
    Velkstep::end_by(interruption);
  } catch (const std::exception& error) {
    std::cerr << "velkstep: " << Velkstep::reason_of(error) << '\n';
    return Velkstep::EXIT_FAILED;
  }
}
