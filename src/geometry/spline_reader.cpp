#include "geometry/spline_reader.h"

#include "geometry/attributes.h"
#include "geometry/placement_reader.h"

namespace Kessel::Geometry {

namespace {

// How many attributes a simple record has in front of those of its own type: name, degree, poles,
// form, whether it is closed, whether it intersects itself.
constexpr std::size_t OF_SUPERTYPES = 6;

/// Each knot as often as `counts` says; what does not fit `wanted` is none of ours.
std::vector<double> repeat_knots(const std::vector<std::uint32_t>& counts,
                                 const std::vector<double>& distinct, std::size_t wanted) {
  require(counts.size() == distinct.size());
  std::uint64_t total = 0;
  for (const std::uint32_t count : counts) total += count;
  require(total == wanted);
  std::vector<double> knots;
  knots.reserve(wanted);
  for (std::size_t i = 0; i < counts.size(); ++i) {
    knots.insert(knots.end(), counts[i], distinct[i]);
  }
  return knots;
}

std::vector<double> read_knots(const GeometryRecords& records, Index record, int degree,
                               std::size_t poles) {
  const Instances& instances = records.instances();
  if (instances.is(record, "B_SPLINE_CURVE_WITH_KNOTS")) {
    const Attributes own(records, record, "B_SPLINE_CURVE_WITH_KNOTS", OF_SUPERTYPES);
    require(degree >= 1 && degree <= SplineCurve::MOST_DEGREE);
    return repeat_knots(own.integers(0), own.numbers(1),
                        poles + static_cast<std::size_t>(degree) + 1);
  }
  if (instances.is(record, "QUASI_UNIFORM_CURVE")) return quasi_uniform_knots(degree, poles);
  if (instances.is(record, "UNIFORM_CURVE")) return uniform_knots(degree, poles);
  return bezier_knots(degree, poles);
}

}  // namespace

SplineData read_spline(const GeometryRecords& records, Index record) {
  SplineData spline;
  const Attributes curve(records, record, "B_SPLINE_CURVE", 1);
  spline.degree = curve.integer(0);
  for (const Index pole : curve.records(1)) spline.poles.push_back(read_point(records, pole));
  spline.knots = read_knots(records, record, spline.degree, spline.poles.size());
  if (records.instances().is(record, "RATIONAL_B_SPLINE_CURVE")) {
    spline.weights =
        Attributes(records, record, "RATIONAL_B_SPLINE_CURVE", OF_SUPERTYPES).numbers(0);
    require(!spline.weights.empty());
  }
  return spline;
}

}  // namespace Kessel::Geometry
