// Where mapped items put what they map (ISO 10303-43).
#pragma once

#include "geometry/geometry_records.h"
#include "geometry/transformation.h"

namespace Kessel::Geometry {

/// What a MAPPED_ITEM maps.
struct Mapping {
  Index representation = NO_RECORD;
  Index origin = NO_RECORD;  ///< a placement in that representation
  Index target = NO_RECORD;  ///< a placement or transformation operator where the item is
};

/// Throws BadGeometry where the records do not say it.
Mapping read_mapping(const GeometryRecords& records, Index item);

/// From the coordinates in which `origin` stands to those of `target`; lengths in the former are
/// `unit` times those in the latter.
Frame frame_between(const GeometryRecords& records, Index origin, Index target, double unit);

}  // namespace Kessel::Geometry
