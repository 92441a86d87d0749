// What can be drawn of a curve, whatever its kind.
#pragma once

#include <memory>
#include <vector>

#include "geometry/bad_geometry.h"
#include "geometry/vector.h"

namespace Kessel::Geometry {

using Points = std::vector<Vector>;

/// How finely a curve is drawn. The box around its points is truer than that.
struct Fineness {
  double chord = 0;  ///< the largest distance between a piece and the curve; infinite: whatever
  Budget* budget = nullptr;
};

/// A curve (ISO 10303-42) with its parameter.
class Curve {
 public:
  virtual ~Curve() = default;

  virtual Vector at(double t) const = 0;
  /// Where it begins and ends; infinite where it does not.
  virtual double begin() const = 0;
  virtual double end() const = 0;
  /// After which difference of parameters the same point comes again; 0 for never. A curve with
  /// ends that closes has their difference.
  virtual double period() const = 0;
  /// The parameter of the point of the curve that is next to `point`.
  virtual double nearest(const Vector& point) const = 0;
  /// What a parameter in a file is multiplied with; angles are measured in units of `angle`.
  virtual double parameter_unit(double /*angle*/) const { return 1; }
  /// Appends what is behind `from` up to `to`, which is larger; both are in the curve's range.
  virtual void trace(double from, double to, const Fineness& fineness, Points& points) const = 0;
};

using CurvePointer = std::shared_ptr<const Curve>;

/// Appends the curve from `from` to `to`, both ends included; `to` is larger, and may be so by up
/// to a period where there is one.
void trace_whole(const Curve& curve, double from, double to, const Fineness& fineness,
                 Points& points);

/// Appends what is behind `from` up to `to` by cutting pieces in halves until they are near enough.
/// Where the curve turns along an axis that is a hundredth of the chord, so that boxes are true.
void trace_by_halves(const Curve& curve, double from, double to, const Fineness& fineness,
                     Points& points);

/// How much larger than `from` the parameter `to` of a closed curve is, above 0 and up to `period`.
double way_around(double from, double to, double period);

}  // namespace Kessel::Geometry
