#include "geometry/mapping.h"

#include "geometry/attributes.h"
#include "geometry/placement_reader.h"

namespace Kessel::Geometry {

Mapping read_mapping(const GeometryRecords& records, Index item) {
  const Attributes mapped(records, item, "MAPPED_ITEM", 1);
  const Index map = mapped.record(0);
  require(records.instances().is(map, "REPRESENTATION_MAP"));
  const Attributes source(records, map, "REPRESENTATION_MAP", 0);
  return {source.record(1), source.record(0), mapped.record(1)};
}

Frame frame_between(const GeometryRecords& records, Index origin, Index target, double unit) {
  const Frame back = inverse(read_frame(records, origin));
  return after(read_frame(records, target), scaled(unit, back));
}

}  // namespace Kessel::Geometry
