// Walks along components from the roots down.
#pragma once

#include "kessel/assembly.h"

namespace Kessel {

/// Completes an assembly whose parts have their components, with `count` but nothing else of
/// `PartUse`: finds the uses that close a cycle, adds roots until every part can be reached,
/// counts totals and levels, and turns the uses around into `used_in`.
///
/// Linear in parts and uses, and without recursion.
void complete(Assembly& assembly);

}  // namespace Kessel
