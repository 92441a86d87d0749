#include "geometry/placement_reader.h"

#include <string_view>

#include "geometry/attributes.h"

namespace Kessel::Geometry {

namespace {

Frame read_axis_placement(const GeometryRecords& records, Index placement) {
  // Of a complex record, the location stands with the supertype.
  const bool is_complex =
      records.instances().types().is_complex(records.instances().type(placement));
  const Attributes located(records, placement, "PLACEMENT", 1);
  const Attributes own(records, placement, "AXIS2_PLACEMENT_3D", is_complex ? 0 : 2);
  const Vector axis = own.is_given(0) ? read_direction(records, own.record(0)) : Vector{0, 0, 1};
  const Vector reference =
      own.is_given(1) ? read_direction(records, own.record(1)) : any_reference(axis);
  return perpendicular_frame(read_point(records, located.record(0)), axis, reference);
}

/// What the file says of an operator. Systems differ in how many texts stand in front.
struct Operator {
  Operator(const GeometryRecords& records, Index record) {
    const bool is_complex =
        records.instances().types().is_complex(records.instances().type(record));
    const Attributes all(records, record, "CARTESIAN_TRANSFORMATION_OPERATOR", 0);
    require(all.size() >= (is_complex ? 4u : 5u));
    const std::size_t first = is_complex ? 0 : all.size() - 5;
    if (all.is_given(first)) x = read_direction(records, all.record(first));
    if (all.is_given(first + 1)) y = read_direction(records, all.record(first + 1));
    origin = read_point(records, all.record(first + 2));
    if (all.is_given(first + 3)) scale = all.number(first + 3);
    const Attributes third(records, record, "CARTESIAN_TRANSFORMATION_OPERATOR_3D",
                           is_complex ? 0 : first + 4);
    if (third.is_given(0)) z = read_direction(records, third.record(0));
    has_x = all.is_given(first);
    has_y = all.is_given(first + 1);
    has_z = third.is_given(0);
  }

  Vector origin;
  Vector x, y, z;
  double scale = 1;
  bool has_x = false;
  bool has_y = false;
  bool has_z = false;
};

/// The axes are made perpendicular; the second may point either way, which mirrors.
Frame read_operator(const GeometryRecords& records, Index record) {
  const Operator said(records, record);
  require(std::isnormal(said.scale));
  const Vector z = said.has_z ? said.z : Vector{0, 0, 1};
  const Vector reference = said.has_x ? said.x : any_reference(z);
  Frame frame = perpendicular_frame(said.origin, z, reference);
  if (said.has_y && dot(said.y, frame.y) < 0) frame.y = -1 * frame.y;
  frame.x = said.scale * frame.x;
  frame.y = said.scale * frame.y;
  frame.z = said.scale * frame.z;
  return frame;
}

}  // namespace

Frame read_frame(const GeometryRecords& records, Index placement) {
  require(placement != NO_RECORD);
  if (records.instances().is(placement, "AXIS2_PLACEMENT_3D")) {
    return read_axis_placement(records, placement);
  }
  require(records.instances().is(placement, "CARTESIAN_TRANSFORMATION_OPERATOR_3D"));
  return read_operator(records, placement);
}

Vector read_direction(const GeometryRecords& records, Index direction) {
  require(records.instances().is(direction, "DIRECTION"));
  return unit(records.triple(direction));
}

Vector read_point(const GeometryRecords& records, Index point) {
  const Instances& instances = records.instances();
  if (instances.is(point, "VERTEX_POINT")) {
    const auto references = instances.references(point);
    require(!references.empty());
    point = references.back().record();
    require(point != NO_RECORD);
  }
  require(instances.is(point, "CARTESIAN_POINT"));
  return records.triple(point);
}

}  // namespace Kessel::Geometry
