// From space onto paper.
#pragma once

#include "kessel/drawing.h"
#include "kessel/picture.h"

namespace Kessel {

/// A point on paper: to the right, upwards, and towards the eye.
struct Projected {
  double right = 0;
  double up = 0;
  double near = 0;
};

/// What a view makes of points; far and near are shown alike.
class Projection {
 public:
  explicit Projection(View view);

  Projected operator()(const Point3& point) const {
    return {dot(right_, point), dot(up_, point), dot(near_, point)};
  }

 private:
  static double dot(const Point3& a, const Point3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
  }
  Point3 right_;
  Point3 up_;
  Point3 near_;
};

}  // namespace Kessel
