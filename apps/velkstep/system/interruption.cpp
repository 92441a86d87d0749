#include "system/interruption.h"

#include <signal.h>
#include <unistd.h>

#include <initializer_list>

namespace Velkstep {

namespace {

volatile sig_atomic_t received_signal = 0;

void receive(int signal) {
  received_signal = signal;
}

}  // namespace

void hold_interruptions() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGPIPE}) {
    struct sigaction action = {};
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler == SIG_IGN) continue;  // As nohup wants it.
    action.sa_handler = signal == SIGPIPE ? SIG_IGN : receive;
    action.sa_flags = SA_RESTART;  // The library's calls are not to fail halfway.
    ::sigaction(signal, &action, nullptr);
  }
}

bool is_interrupted() {
  return received_signal != 0;
}

void throw_if_interrupted() {
  if (is_interrupted()) throw Interrupted(received_signal);
}

void end_by(const Interrupted& interruption) {
  ::signal(interruption.signal(), SIG_DFL);
  ::raise(interruption.signal());
  ::_exit(128 + interruption.signal());
}

}  // namespace Velkstep
