// Which product each record belongs to.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "instances/column.h"
#include "instances/instances.h"
#include "products/products.h"
#include "sameness/fingerprints.h"
#include "sameness/order.h"

namespace Kessel::Sameness {

/// A product definition that owns a record beside the first one.
struct FurtherOwner {
  Index record;
  Index owner;
  friend auto operator<=>(const FurtherOwner&, const FurtherOwner&) = default;
};

/// Owners of all records: the product definitions whose shapes they are in. What says something of
/// such a record, or of a product definition, belongs to the owner of the first one that it names
/// and that one product alone owns.
class Owners {
 public:
  /// At most `most_further` owners are found beside the first ones; where there are more, none.
  Owners(const Instances& instances, const Fingerprints& fingerprints, const Order& order,
         const Products& products, std::uint64_t most_further);

  /// The product definition that owns `record`, the first of several; NO_RECORD for none.
  Index of(Index record) const { return owners_[record]; }
  /// Whether that does not depend on which of several products the file has first.
  bool is_certain(Index record) const { return is_certain_[record]; }

  /// The others, ascending. Only records that bear identity, or lead to some, have any.
  const std::vector<FurtherOwner>& further() const { return further_; }
  /// Whether there would have been more than `most_further` of them.
  bool has_too_many() const { return has_too_many_; }

 private:
  Column<Index> owners_;
  Column<bool> is_certain_;
  std::vector<FurtherOwner> further_;
  bool has_too_many_ = false;
};

}  // namespace Kessel::Sameness
