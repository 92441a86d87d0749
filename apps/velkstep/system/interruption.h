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

/// From now on SIGINT, SIGTERM and SIGHUP (if not ignored) wait until somebody asks for them.
void hold_interruptions();

/// Throws `Interrupted` when one of these signals has come.
void throw_if_interrupted();

/// Ends the process by the signal, so that whoever started it sees what happened.
[[noreturn]] void end_by(const Interrupted& interruption);

}  // namespace Velkstep
