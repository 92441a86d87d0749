// What the names of exchange files tell.
#pragma once

#include <string>

namespace Velkstep {

/// The name of an input without what says that it is compressed or an exchange file: "lamp" for
/// "a/lamp.step", "lamp.STP.gz" and "lamp.stpz". Empty where nothing says so.
std::string stem_of(const std::string& in);

}  // namespace Velkstep
