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
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action = {};
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler == SIG_IGN) continue;  // As nohup wants it.
    action.sa_handler = receive;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
  }
}

void throw_if_interrupted() {
  if (received_signal != 0) throw Interrupted(received_signal);
}

void end_by(const Interrupted& interruption) {
  ::signal(interruption.signal(), SIG_DFL);
  ::raise(interruption.signal());
  ::_exit(128 + interruption.signal());
}

}  // namespace Velkstep
