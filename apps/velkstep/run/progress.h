// What a run in the library is given to tell how far it has come.
#pragma once

#include <functional>

#include "system/interruption.h"
#include "text/progress_bar.h"

namespace Velkstep {

/// Shows it on `bar`, which must outlive the run, and ends the run when it is interrupted.
inline std::function<void(const Kessel::Progress&)> progress_on(ProgressBar& bar) {
  return [&bar](const Kessel::Progress& progress) {
    throw_if_interrupted();
    bar.show(progress);
  };
}

}  // namespace Velkstep
