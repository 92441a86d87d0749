// The records of a file, each behind what it refers to.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "instances/column.h"
#include "instances/instances.h"

namespace Kessel::Sameness {

/// Every record once, each behind all that it refers to; records that refer to each other in a
/// circle, or lead to each other along references, stand next to each other.
struct Order {
  Column<Index> records;
  /// The circles: positions in `records`, from and behind, ascending. A record that refers to
  /// itself is one, too.
  std::vector<std::pair<Index, Index>> circles;
};

Order order_of(const Instances& instances);

}  // namespace Kessel::Sameness
