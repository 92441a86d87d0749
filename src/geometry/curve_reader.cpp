#include "geometry/curve_reader.h"

#include <iterator>
#include <string_view>
#include <utility>

#include "geometry/attributes.h"
#include "geometry/conics.h"
#include "geometry/derived_curves.h"
#include "geometry/placement_reader.h"
#include "geometry/polyline.h"
#include "geometry/spline_reader.h"
#include "geometry/trimming.h"

namespace Kessel::Geometry {

namespace {

CurvePointer read_nested(const CurveReading& reading, Index record, int depth);

/// What reads one kind of curve. `depth` counts curves that lead to it.
using Reader = CurvePointer (*)(const CurveReading& reading, Index record, int depth);

CurvePointer read_line(const CurveReading& reading, Index record, int) {
  const Attributes line(reading.records, record, "LINE", 1);
  const Attributes vector(reading.records, line.record(1), "VECTOR", 1);
  const Vector direction = read_direction(reading.records, vector.record(0));
  return std::make_shared<Line>(read_point(reading.records, line.record(0)),
                                vector.number(1) * direction);
}

/// The placement of a conic, and the attributes behind it.
template <class Conic, std::size_t... SIZES>
CurvePointer read_conic(const CurveReading& reading, Index record, std::string_view keyword) {
  const Attributes placed(reading.records, record, "CONIC", 1);
  const bool is_complex = reading.records.body(record).starts_with('(');
  const Attributes own(reading.records, record, keyword, is_complex ? 0 : 2);
  const Frame frame = read_frame(reading.records, placed.record(0));
  return std::make_shared<Conic>(frame, own.number(SIZES)...);
}

CurvePointer read_circle(const CurveReading& reading, Index record, int) {
  return read_conic<Ellipse, 0, 0>(reading, record, "CIRCLE");
}

CurvePointer read_ellipse(const CurveReading& reading, Index record, int) {
  return read_conic<Ellipse, 0, 1>(reading, record, "ELLIPSE");
}

CurvePointer read_parabola(const CurveReading& reading, Index record, int) {
  return read_conic<Parabola, 0>(reading, record, "PARABOLA");
}

CurvePointer read_hyperbola(const CurveReading& reading, Index record, int) {
  return read_conic<Hyperbola, 0, 1>(reading, record, "HYPERBOLA");
}

CurvePointer read_polyline(const CurveReading& reading, Index record, int) {
  Points points;
  for (const Index point : Attributes(reading.records, record, "POLYLINE", 1).records(0)) {
    points.push_back(read_point(reading.records, point));
  }
  return std::make_shared<Polyline>(std::move(points));
}

CurvePointer read_trimmed(const CurveReading& reading, Index record, int depth) {
  const Attributes trimmed(reading.records, record, "TRIMMED_CURVE", 1);
  CurvePointer basis = read_nested(reading, trimmed.record(0), depth);
  return trim(reading, std::move(basis), trimmed);
}

CurvePointer read_composite(const CurveReading& reading, Index record, int depth) {
  const Attributes composite(reading.records, record, "COMPOSITE_CURVE", 1);
  Points points;
  for (const Index segment : composite.records(0)) {
    const Attributes said(reading.records, segment, "COMPOSITE_CURVE_SEGMENT", 0);
    const CurvePointer parent = read_nested(reading, said.record(2), depth);
    Points some;
    trace_all(*parent, reading.fineness, some);
    // Where one ends, the next one begins.
    const std::ptrdiff_t known = points.empty() ? 0 : 1;
    if (said.is_true(1)) {
      points.insert(points.end(), some.begin() + known, some.end());
    } else {
      points.insert(points.end(), some.rbegin() + known, some.rend());
    }
  }
  return std::make_shared<Polyline>(std::move(points));
}

CurvePointer read_surface_curve(const CurveReading& reading, Index record, int depth) {
  return read_nested(reading, Attributes(reading.records, record, "SURFACE_CURVE", 1).record(0),
                     depth);
}

CurvePointer read_replica(const CurveReading& reading, Index record, int depth) {
  const Attributes replica(reading.records, record, "CURVE_REPLICA", 1);
  return std::make_shared<MovedCurve>(read_nested(reading, replica.record(0), depth),
                                      read_frame(reading.records, replica.record(1)));
}

CurvePointer read_offset(const CurveReading& reading, Index record, int depth) {
  const Attributes offset(reading.records, record, "OFFSET_CURVE_3D", 1);
  return std::make_shared<OffsetCurve>(read_nested(reading, offset.record(0), depth),
                                       offset.number(1),
                                       read_direction(reading.records, offset.record(3)));
}

CurvePointer read_spline_curve(const CurveReading& reading, Index record, int) {
  return std::make_shared<SplineCurve>(read_spline(reading.records, record));
}

struct CurveRow {
  std::string_view keyword;
  Reader read;
};

// Of a complex instance, the first row that fits counts.
constexpr CurveRow CURVES[] = {
    {"LINE", read_line},
    {"CIRCLE", read_circle},
    {"ELLIPSE", read_ellipse},
    {"PARABOLA", read_parabola},
    {"HYPERBOLA", read_hyperbola},
    {"POLYLINE", read_polyline},
    {"TRIMMED_CURVE", read_trimmed},
    {"B_SPLINE_CURVE_WITH_KNOTS", read_spline_curve},
    {"UNIFORM_CURVE", read_spline_curve},
    {"QUASI_UNIFORM_CURVE", read_spline_curve},
    {"BEZIER_CURVE", read_spline_curve},
    {"COMPOSITE_CURVE", read_composite},
    {"COMPOSITE_CURVE_ON_SURFACE", read_composite},
    {"BOUNDARY_CURVE", read_composite},
    {"OUTER_BOUNDARY_CURVE", read_composite},
    {"SURFACE_CURVE", read_surface_curve},
    {"SEAM_CURVE", read_surface_curve},
    {"INTERSECTION_CURVE", read_surface_curve},
    {"BOUNDED_SURFACE_CURVE", read_surface_curve},
    {"CURVE_REPLICA", read_replica},
    {"OFFSET_CURVE_3D", read_offset},
};

CurvePointer read_nested(const CurveReading& reading, Index record, int depth) {
  constexpr int MOST_LEVELS = 12;  // More than any curve needs: they may go in a circle.
  require(depth < MOST_LEVELS);
  reading.fineness.budget->spend(1 + reading.records.body(record).size());
  for (const CurveRow& row : CURVES) {
    if (reading.records.instances().is(record, row.keyword)) {
      return row.read(reading, record, depth + 1);
    }
  }
  throw BadGeometry();
}

}  // namespace

CurvePointer read_curve(const CurveReading& reading, Index record) {
  return read_nested(reading, record, 0);
}

void trace_all(const Curve& curve, const Fineness& fineness, Points& points) {
  const bool has_ends = std::isfinite(curve.begin()) && std::isfinite(curve.end());
  require(has_ends || curve.period() > 0);
  const double from = has_ends ? curve.begin() : 0;
  trace_whole(curve, from, has_ends ? curve.end() : from + curve.period(), fineness, points);
}

}  // namespace Kessel::Geometry
