// The command line: arguments in, exit code out.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <exception>
#include <iostream>

#include "arguments/command_line.h"
#include "run/exit_codes.h"
#include "run/with_input.h"
#include "system/interruption.h"

namespace {

/// No file that is opened later may be taken for one of the standard streams. As when they are
/// closed, neither is the input readable nor are the outputs writable.
void open_standard_streams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(stream, F_GETFD) >= 0) continue;
    // The system takes the lowest number, and that is this one.
    [[maybe_unused]] const int opened =
        ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

}  // namespace

int main(int argc, char** argv) {
  open_standard_streams();
#ifdef SIGXFSZ
  std::signal(SIGXFSZ, SIG_IGN);  // A file that grows too large is an error, not the end.
#endif
  try {
    return Velkstep::run_command_line(argc, argv);
  } catch (const Velkstep::Interrupted& interruption) {
    Velkstep::end_by(interruption);
  } catch (const std::exception& error) {
    std::cerr << "velkstep: " << Velkstep::reason_of(error) << '\n';
    return Velkstep::EXIT_FAILED;
  }
}
