// Decides which instances each part's file receives, and under which numbers.
#pragma once

#include "kessel/options.h"
#include "model/store.h"

namespace Kessel {

/// Enters the parts of `store`, which are linked and classified, into the `part_numbers` of its
/// records: recognition, the passes in their order, and the instances that no pass
/// reached. Throws as the rules do.
void associate_entities(const Store& store, const Options& options = Options::classic());

/// Enters every part's definition into the root's file, and every leaf's into its own as number 1.
/// Without a root, only the latter. Unlike the rules, this gives no number back when the definition
/// holds the part already; a gap in the root's numbers is part of the output.
void initiate_recognition(const Store& store);

/// Lets every instance without a part take the parts of what it refers to, in ascending order of
/// numbers; one that gains nothing queues again behind the others. The visits are limited to five
/// per instance that was without a part at first, which may leave long chains partly unclaimed:
/// outputs depend on it. Returns how many visits there were.
std::size_t associate_others(const Store& store);

}  // namespace Kessel
