#include "system/patient_output.h"

#include <limits.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "system/interruption.h"

namespace Velkstep {

namespace {

/// Waits until so much as a pipe takes at once can be written without waiting. Signals come through
/// only here, so that none comes unseen between a look and a wait.
void wait_until_writable(int descriptor) {
  sigset_t all;
  sigset_t before;
  ::sigfillset(&all);
  ::sigprocmask(SIG_BLOCK, &all, &before);
  pollfd waiting = {descriptor, POLLOUT, 0};
  int ready = 0;
  while (ready <= 0 && !is_interrupted()) {
    ready = ::ppoll(&waiting, 1, nullptr, &before);
    if (ready < 0 && errno != EINTR) break;  // The write tells why.
  }
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
  throw_if_interrupted();
}

}  // namespace

void write_patiently(int descriptor, std::string_view text) {
  while (!text.empty()) {
    wait_until_writable(descriptor);
    const ssize_t written =
        ::write(descriptor, text.data(), text.size() < PIPE_BUF ? text.size() : PIPE_BUF);
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno == EPIPE) {
      throw Interrupted(SIGPIPE);
    } else if (errno != EINTR && errno != EAGAIN) {
      throw std::system_error(errno, std::system_category());
    }
  }
}

}  // namespace Velkstep
