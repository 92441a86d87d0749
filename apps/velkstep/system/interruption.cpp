#include "system/interruption.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <cstddef>

namespace Velkstep {

namespace {

constexpr std::array STOPPING = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGPIPE};

volatile sig_atomic_t received_signal = 0;

/// What the signals did before they were held.
std::array<struct sigaction, STOPPING.size()> actions_before;
bool are_held = false;

void receive(int signal) {
  received_signal = signal;
}

}  // namespace

void hold_interruptions() {
  if (are_held) return;
  for (std::size_t i = 0; i < STOPPING.size(); ++i) {
    struct sigaction& action = actions_before[i];
    ::sigaction(STOPPING[i], nullptr, &action);
    if (action.sa_handler == SIG_IGN) continue;  // As nohup wants it.
    struct sigaction held = action;
    held.sa_handler = STOPPING[i] == SIGPIPE ? SIG_IGN : receive;
    held.sa_flags = SA_RESTART;  // The library's calls are not to fail halfway.
    ::sigaction(STOPPING[i], &held, nullptr);
  }
  are_held = true;
}

void stop_holding_interruptions() {
  for (std::size_t i = 0; are_held && i < STOPPING.size(); ++i) {
    ::sigaction(STOPPING[i], &actions_before[i], nullptr);
  }
  are_held = false;
  throw_if_interrupted();
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
