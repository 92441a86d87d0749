// Walks along components from the roots down.
#pragma once

#include "kessel/assembly.h"

namespace Kessel {

/// Completes an assembly whose parts have their components, and whose roots lead to every part
/// without the uses that close a cycle: counts totals and levels, and turns the uses around into
/// `used_in`.
///
/// Linear in parts and uses, and without recursion.
void complete(Assembly& assembly);

}  // namespace Kessel
