// Signals that ask the command to stop.
#pragma once

#include <exception>

namespace Velkstep {

/// Thrown where the command notices that it was asked to stop; what it had begun is undone on the
/// way up.
class Interrupted : public std::exception {
 public:
  explicit Interrupted(int signal) : signal_(signal) {}
  int signal() const { return signal_; }
  const char* what() const noexcept override { return "interrupted"; }

 private:
  int signal_;
};

/// From now on the signals that ask to stop (SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU; not those
/// that are ignored) wait until somebody asks for them, and SIGPIPE is ignored.
void hold_interruptions();

/// Undoes that, for a process that begins as a copy of one that holds them. Throws `Interrupted`
/// when one has come.
void stop_holding_interruptions();

/// Whether one of these signals has come.
bool is_interrupted();

/// Throws `Interrupted` when one of these signals has come.
void throw_if_interrupted();

/// Ends the process by the signal, so that whoever started it sees what happened.
[[noreturn]] void end_by(const Interrupted& interruption);

}  // namespace Velkstep
