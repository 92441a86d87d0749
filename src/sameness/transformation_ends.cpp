#include "sameness/transformation_ends.h"

#include <cstddef>
#include <string_view>

#include "products/parameter_reader.h"

namespace Kessel::Sameness {

namespace {

constexpr std::string_view RELATIONSHIP = "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION";

Index certain_owner(const Owners& owners, Index representation) {
  if (representation == NO_RECORD || !owners.is_certain(representation)) return NO_RECORD;
  return owners.of(representation);
}

}  // namespace

TransformationEnds::TransformationEnds(const Instances& instances, const Owners& owners)
    : instances_(instances) {
  for (const Index record : instances.kept_with(RELATIONSHIP)) {
    const bool is_complex = instances.types().is_complex(instances.type(record));
    const ParameterReader related(instances, record, "REPRESENTATION_RELATIONSHIP");
    const ParameterReader transforming(instances, record, RELATIONSHIP);
    const Index transformation = transforming.record(is_complex ? 0 : 4);
    if (transformation == NO_RECORD ||
        !instances.is(transformation, "ITEM_DEFINED_TRANSFORMATION")) {
      continue;
    }
    type_ = instances.type(transformation);
    const std::array<Index, 2> of_it = {certain_owner(owners, related.record(2)),
                                        certain_owner(owners, related.record(3))};
    const auto [before, is_new] = ends_.try_emplace(transformation, of_it);
    if (is_new) continue;
    for (std::size_t end = 0; end < of_it.size(); ++end) {
      if (before->second[end] != of_it[end]) before->second[end] = NO_RECORD;
    }
  }
}

}  // namespace Kessel::Sameness
