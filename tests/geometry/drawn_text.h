// Draws products that stand in a test.
#pragma once

#include <cmath>
#include <fstream>
#include <numbers>
#include <string>

#include "kessel/drawing.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {

inline constexpr double PI = std::numbers::pi;

/// A product #1 (its definition) with a representation #6 of `items`, whose context #7 has
/// millimetres and radians unless `units` says otherwise. Own records are to begin at #20.
inline std::string drawn_product(const std::string& items, const std::string& units = "#8,#9") {
  return "#1=PRODUCT_DEFINITION('','',#3,$);\n#2=PRODUCT('one','one','',());\n"
         "#3=PRODUCT_DEFINITION_FORMATION('','',#2);\n#4=PRODUCT_DEFINITION_SHAPE('','',#1);\n"
         "#5=SHAPE_DEFINITION_REPRESENTATION(#4,#6);\n#6=SHAPE_REPRESENTATION('',(" +
         items + "),#7);\n#7=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((" +
         units +
         "))REPRESENTATION_CONTEXT('',''));\n"
         "#8=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
         "#9=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));\n"
         "#10=(CONVERSION_BASED_UNIT('DEGREE',#11)NAMED_UNIT(#12)PLANE_ANGLE_UNIT());\n"
         "#11=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(0.0174532925199433),#9);\n"
         "#12=DIMENSIONAL_EXPONENTS(0.,0.,0.,0.,0.,0.,0.);\n"
         "#13=(CONVERSION_BASED_UNIT('INCH',#14)LENGTH_UNIT()NAMED_UNIT(#12));\n"
         "#14=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#8);\n";
}

inline Drawing draw(const std::string& records, const DrawingOptions& options = {},
                    const Options& reading = {}) {
  const ScratchFolder folder;
  std::ofstream(folder / "in.stp", std::ios::binary) << exchange_file(records);
  return read_drawing(folder / "in.stp", options, reading);
}

inline double distance(const Point3& a, const Point3& b) {
  return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

inline double length_of(const DrawnPart& part, const DrawnLine& line) {
  const auto points = Drawing::points_of(part, line);
  double length = 0;
  for (std::size_t i = 1; i < points.size(); ++i) length += distance(points[i - 1], points[i]);
  return length;
}

}  // namespace Kessel::test
