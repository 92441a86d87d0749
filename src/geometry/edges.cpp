#include "geometry/edges.h"

#include <algorithm>
#include <utility>

#include "geometry/attributes.h"
#include "geometry/placement_reader.h"

namespace Kessel::Geometry {

namespace {

/// The part of `curve` between two of its points, in its direction.
void trace_between(const Curve& curve, const Vector& first, const Vector& second, bool is_one_point,
                   const Fineness& fineness, Points& points) {
  double from = curve.nearest(first);
  double to = is_one_point ? from : curve.nearest(second);
  require(std::isfinite(from) && std::isfinite(to));
  if (curve.period() > 0) {
    to = from + way_around(from, to, curve.period());
  } else if (from > to) {
    std::swap(from, to);  // The file is wrong about the direction; there is but one part between.
  }
  trace_whole(curve, from, to, fineness, points);
}

bool is_straight(const GeometryRecords& records, Index curve) {
  return records.instances().is(curve, "LINE");
}

}  // namespace

bool trace_edge(const CurveReading& reading, Index edge, Points& points) {
  const GeometryRecords& records = reading.records;
  const bool is_part_of_edge = records.instances().is(edge, "SUBEDGE");
  const Attributes ends(records, edge, "EDGE", 1);
  // A complex record has its curve elsewhere.
  const bool is_complex = records.body(edge).starts_with('(');
  const Index whole =
      is_part_of_edge ? Attributes(records, edge, "SUBEDGE", is_complex ? 0 : 3).record(0) : edge;
  const bool is_whole_complex = records.body(whole).starts_with('(');
  const Attributes own(records, whole, "EDGE_CURVE", is_whole_complex ? 0 : 3);
  const Index first = ends.record(0);
  const Index second = ends.record(1);
  Vector begin = read_point(records, first);
  Vector end = read_point(records, second);
  reading.fineness.budget->spend(1);
  const Index curve = own.record(0);
  if (is_straight(records, curve)) {
    require(distance(begin, end) > 0);
    points.push_back(begin);
    points.push_back(end);
    return true;
  }
  const bool goes_along = own.is_true(1);
  const bool is_one_point = first == second || !(distance(begin, end) > 0);
  const CurvePointer geometry = read_curve(reading, curve);
  const std::size_t behind = points.size();
  if (!goes_along) std::swap(begin, end);
  trace_between(*geometry, begin, end, is_one_point, reading.fineness, points);
  const auto first_point = points.begin() + static_cast<std::ptrdiff_t>(behind);
  if (distance(points[behind], begin) > distance(points[behind], end)) {
    std::reverse(first_point, points.end());
  }
  // Edges meet in their vertices, whatever little their curves miss them by.
  points[behind] = begin;
  points.back() = end;
  if (!goes_along) std::reverse(first_point, points.end());
  return false;
}

void trace_curve(const CurveReading& reading, Index curve, Points& points) {
  const CurvePointer geometry = read_curve(reading, curve);
  trace_all(*geometry, reading.fineness, points);
}

}  // namespace Kessel::Geometry
