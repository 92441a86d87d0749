// Runs of the library without the interpreter's lock, one at a time, with errors for Python.
#pragma once

#include <pybind11/pybind11.h>

#include <filesystem>
#include <functional>

#include "kessel/options.h"

namespace Velkstep {

/// Calls `run`, which must not touch Python, on the caller's thread without the interpreter's lock,
/// and after the runs of other threads. Needs that lock, and holds it again afterwards.
///
/// Throws what becomes InputError about `input`, OutputError, MemoryError or ValueError in Python,
/// RuntimeError when this thread is inside a run already, and what a Python function inside `run`
/// raised, as it is.
void run_alone(const std::filesystem::path& input, const std::function<void()>& run);

/// What tells `function` how far a run has come, unless it is None, and ends the run when it raises
/// or when a signal's handler does. Takes the interpreter's lock for that. `function` must outlive
/// it.
std::function<void(const Kessel::Progress&)> progress_for(const pybind11::object& function);

}  // namespace Velkstep
