// Whose items a transformation between two representations takes to each other.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>

#include "instances/instances.h"
#include "sameness/owners.h"

namespace Kessel::Sameness {

/// The products between whose representations transformations stand. An item that both have, as the
/// origin often is, means the one that its own representation has: the first item of an
/// ITEM_DEFINED_TRANSFORMATION that of the relationship's first representation, the second that of
/// its second (ISO 10303-43).
class TransformationEnds {
 public:
  TransformationEnds(const Instances& instances, const Owners& owners);

  /// Whose item reference `place` of `record` is; NO_RECORD where `record` is no transformation,
  /// or relationships between other products have it, too.
  Index owner(Index record, std::uint32_t place) const {
    if (place >= 2 || ends_.empty() || instances_.type(record) != type_) return NO_RECORD;
    const auto found = ends_.find(record);
    return found == ends_.end() ? NO_RECORD : found->second[place];
  }

 private:
  const Instances& instances_;
  TypeId type_ = 0;  // of the transformations
  std::unordered_map<Index, std::array<Index, 2>> ends_;
};

}  // namespace Kessel::Sameness
