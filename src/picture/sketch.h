// The lines of a picture on paper.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kessel/drawing.h"
#include "picture/projection.h"

namespace Kessel {

/// A line in tenths of a pixel from the top left corner: no two points in a row are nearer than
/// anybody sees.
struct SketchedLine {
  std::size_t first = 0;  ///< of its points
  std::size_t count = 0;
  std::int32_t colour = NO_COLOUR;
  double near = 0;        ///< how near its middle is to the eye
  std::int64_t size = 0;  ///< of the box around it, both sides together
};

struct SketchedPoint {
  std::int32_t right = 0;
  std::int32_t down = 0;

  bool operator==(const SketchedPoint&) const = default;
};

/// What is to be seen. Plain data.
struct Sketch {
  std::int32_t width = 0;  ///< tenths of a pixel
  std::int32_t height = 0;
  double nearest = 0;               ///< of all lines
  double farthest = 0;              ///< likewise
  std::vector<SketchedLine> lines;  ///< the nearest first
  std::vector<SketchedPoint> points;
  std::uint64_t places = 0;
  std::uint64_t left_out = 0;  ///< lines
};

/// Draws `part` with all below it. Lines that look like a nearer one are not in it, nor are those
/// that look like points.
Sketch sketch(const Drawing& drawing, std::size_t part, const Projection& projection);

}  // namespace Kessel
