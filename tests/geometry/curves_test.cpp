// Each kind of curve, as long as it is by calculation, from one end to the other.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numbers>
#include <ostream>

#include "geometry/drawn_text.h"

namespace Kessel::test {
namespace {

/// Points #21 (0,0,0), #22 (1,0,0), #23 (0,2,0), #24 (3,4,0), #25 (1,1,0), #26 (2,0,0); placements
/// #31 at the origin and #32 at #24, turned by a quarter around z; a line #33 along x by 2.
const std::string POINTS =
    "#21=CARTESIAN_POINT('',(0.,0.,0.));\n#22=CARTESIAN_POINT('',(1.,0.,0.));\n"
    "#23=CARTESIAN_POINT('',(0.,2.,0.));\n#24=CARTESIAN_POINT('',(3.,4.,0.));\n"
    "#25=CARTESIAN_POINT('',(1.,1.,0.));\n#26=CARTESIAN_POINT('',(2.,0.,0.));\n"
    "#27=DIRECTION('',(0.,0.,1.));\n#28=DIRECTION('',(1.,0.,0.));\n#29=DIRECTION('',(0.,5.,0.));\n"
    "#31=AXIS2_PLACEMENT_3D('',#21,#27,#28);\n#32=AXIS2_PLACEMENT_3D('',#24,$,#29);\n"
    "#33=LINE('',#21,#34);\n#34=VECTOR('',#28,2.);\n";

struct CurveCase {
  const char* name;
  const char* records;  ///< the curve is #50
  double length;
  Point3 first;
  Point3 last;
  const char* units = "#8,#9";
};

void PrintTo(const CurveCase& one, std::ostream* out) {
  *out << one.name;
}

const CurveCase CURVES[] = {
    {"circle", "#50=CIRCLE('',#31,2.);\n", 4 * PI, {2, 0, 0}, {2, 0, 0}},
    {"circle_elsewhere", "#50=CIRCLE('',#32,2.);\n", 4 * PI, {3, 6, 0}, {3, 6, 0}},
    {"ellipse", "#50=ELLIPSE('',#31,2.,1.);\n", 9.688448220547675, {2, 0, 0}, {2, 0, 0}},
    {"polyline",
     "#50=POLYLINE('',(#21,#22,#25,#23));\n",
     2 + std::numbers::sqrt2,
     {0, 0, 0},
     {0, 2, 0}},
    // The arc of y^2 = 4x up to x = 1.
    {"parabola",
     "#51=PARABOLA('',#31,1.);\n#50=TRIMMED_CURVE('',#51,(PARAMETER_VALUE(0.)),"
     "(PARAMETER_VALUE(1.)),.T.,.PARAMETER.);\n",
     2.295587149392638,
     {0, 0, 0},
     {1, 2, 0}},
    // The arc of x^2 - y^2 = 1 up to the parameter 1.
    {"hyperbola",
     "#51=HYPERBOLA('',#31,1.,1.);\n#50=TRIMMED_CURVE('',#51,(PARAMETER_VALUE(0.)),"
     "(PARAMETER_VALUE(1.)),.T.,.PARAMETER.);\n",
     1.3171893821380716,
     {1, 0, 0},
     {1.5430806348152437, 1.1752011936438014, 0}},
    {"trimmed_line",
     "#50=TRIMMED_CURVE('',#33,(PARAMETER_VALUE(0.5)),(PARAMETER_VALUE(2.)),.T.,.PARAMETER.);\n",
     3,
     {1, 0, 0},
     {4, 0, 0}},
    {"trimmed_line_by_points",
     "#50=TRIMMED_CURVE('',#33,(#26),(#21),.F.,.CARTESIAN.);\n",
     2,
     {2, 0, 0},
     {0, 0, 0}},
    {"arc_in_radians",
     "#51=CIRCLE('',#31,2.);\n#50=TRIMMED_CURVE('',#51,(PARAMETER_VALUE(0.)),"
     "(PARAMETER_VALUE(1.5707963267948966)),.T.,.PARAMETER.);\n",
     PI,
     {2, 0, 0},
     {0, 2, 0}},
    {"arc_in_degrees",
     "#51=CIRCLE('',#31,2.);\n#50=TRIMMED_CURVE('',#51,(PARAMETER_VALUE(0.)),"
     "(PARAMETER_VALUE(90.)),.T.,.PARAMETER.);\n",
     PI,
     {2, 0, 0},
     {0, 2, 0},
     "#8,#10"},
    {"arc_the_long_way",
     "#51=CIRCLE('',#31,2.);\n#50=TRIMMED_CURVE('',#51,(#26),(#23),.F.,.CARTESIAN.);\n",
     3 * PI,
     {2, 0, 0},
     {0, 2, 0}},
    {"arc_over_the_seam",
     "#51=CIRCLE('',#31,2.);\n#50=TRIMMED_CURVE('',#51,(#23),(#26),.T.,.CARTESIAN.);\n",
     3 * PI,
     {0, 2, 0},
     {2, 0, 0}},
    {"arc_whose_parameters_are_degrees_by_mistake",
     "#51=CIRCLE('',#31,2.);\n#50=TRIMMED_CURVE('',#51,(PARAMETER_VALUE(0.),#26),"
     "(PARAMETER_VALUE(90.),#23),.T.,.PARAMETER.);\n",
     PI,
     {2, 0, 0},
     {0, 2, 0}},
    // The parabola y = x^2 from -1 to 1 as a Bezier curve.
    {"bezier",
     "#51=CARTESIAN_POINT('',(-1.,1.,0.));\n#52=CARTESIAN_POINT('',(0.,-1.,0.));\n"
     "#50=BEZIER_CURVE('',2,(#51,#52,#25),.UNSPECIFIED.,.F.,.F.);\n",
     2.9578857150891946,
     {-1, 1, 0},
     {1, 1, 0}},
    {"spline_with_knots",
     "#51=CARTESIAN_POINT('',(-1.,1.,0.));\n#52=CARTESIAN_POINT('',(0.,-1.,0.));\n"
     "#50=B_SPLINE_CURVE_WITH_KNOTS('',2,(#51,#52,#25),.UNSPECIFIED.,.F.,.F.,(3,3),(5.,7.),"
     ".UNSPECIFIED.);\n",
     2.9578857150891946,
     {-1, 1, 0},
     {1, 1, 0}},
    // Degree 1: the way along the poles.
    {"quasi_uniform",
     "#50=QUASI_UNIFORM_CURVE('',1,(#21,#22,#25,#23),.UNSPECIFIED.,.F.,.F.);\n",
     2 + std::numbers::sqrt2,
     {0, 0, 0},
     {0, 2, 0}},
    // Poles in a row: from the second's neighbourhood to that of the last but one.
    {"uniform",
     "#51=CARTESIAN_POINT('',(3.,0.,0.));\n#50=UNIFORM_CURVE('',2,(#21,#22,#26,#51),"
     ".UNSPECIFIED.,.F.,.F.);\n",
     2,
     {0.5, 0, 0},
     {2.5, 0, 0}},
    // A quarter of a circle.
    {"rational_complex",
     "#50=(BOUNDED_CURVE()B_SPLINE_CURVE(2,(#22,#25,#51),.CIRCULAR_ARC.,.F.,.F.)"
     "B_SPLINE_CURVE_WITH_KNOTS((3,3),(0.,1.),.UNSPECIFIED.)CURVE()"
     "GEOMETRIC_REPRESENTATION_ITEM()RATIONAL_B_SPLINE_CURVE((1.,0.70710678118654752,1.))"
     "REPRESENTATION_ITEM(''));\n#51=CARTESIAN_POINT('',(0.,1.,0.));\n",
     PI / 2,
     {1, 0, 0},
     {0, 1, 0}},
    {"rational_bezier_complex",
     "#50=(BEZIER_CURVE()BOUNDED_CURVE()B_SPLINE_CURVE(2,(#22,#25,#51),.CIRCULAR_ARC.,.F.,.F.)"
     "CURVE()GEOMETRIC_REPRESENTATION_ITEM()RATIONAL_B_SPLINE_CURVE((1.,0.70710678118654752,1.))"
     "REPRESENTATION_ITEM(''));\n#51=CARTESIAN_POINT('',(0.,1.,0.));\n",
     PI / 2,
     {1, 0, 0},
     {0, 1, 0}},
    {"composite",
     "#51=POLYLINE('',(#21,#26));\n#52=CIRCLE('',#31,2.);\n"
     "#53=TRIMMED_CURVE('',#52,(#23),(#26),.F.,.CARTESIAN.);\n"
     "#54=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,#51);\n"
     "#55=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.F.,#53);\n"
     "#50=COMPOSITE_CURVE('',(#54,#55),.F.);\n",
     2 + PI,
     {0, 0, 0},
     {0, 2, 0}},
    {"surface_curve",
     "#51=CIRCLE('',#31,2.);\n#50=SURFACE_CURVE('',#51,(),.CURVE_3D.);\n",
     4 * PI,
     {2, 0, 0},
     {2, 0, 0}},
    {"seam_curve",
     "#51=CIRCLE('',#31,2.);\n#50=SEAM_CURVE('',#51,(),.CURVE_3D.);\n",
     4 * PI,
     {2, 0, 0},
     {2, 0, 0}},
    {"intersection_curve",
     "#51=CIRCLE('',#31,2.);\n#50=INTERSECTION_CURVE('',#51,(),.CURVE_3D.);\n",
     4 * PI,
     {2, 0, 0},
     {2, 0, 0}},
    {"replica",
     "#51=POLYLINE('',(#21,#26));\n#50=CURVE_REPLICA('',#51,#52);\n"
     "#52=CARTESIAN_TRANSFORMATION_OPERATOR_3D('','','',$,$,#24,2.,$);\n",
     4,
     {3, 4, 0},
     {7, 4, 0}},
    // A circle seen against its turn: the offset goes to the left of its tangent.
    {"offset",
     "#51=CIRCLE('',#31,2.);\n#50=OFFSET_CURVE_3D('',#51,0.5,.F.,#27);\n",
     3 * PI,
     {1.5, 0, 0},
     {1.5, 0, 0}},
};

class WholeCurve : public testing::TestWithParam<CurveCase> {};

/// The curve #50 of `records` as the only line of a part.
DrawnPart draw_curve(const std::string& records, double tolerance, const char* units = "#8,#9") {
  return draw(drawn_product("#20", units) + "#20=GEOMETRIC_CURVE_SET('',(#50));\n" + POINTS +
                  records,
              {.tolerance = tolerance})
      .parts.at(0);
}

void expect_box(const Box3& box, const Box3& expected, double error) {
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(box.low[i], expected.low[i], error) << i;
    EXPECT_NEAR(box.high[i], expected.high[i], error) << i;
  }
}

TEST_P(WholeCurve, HasATruerBoxThanItsLine) {
  const CurveCase& curve = GetParam();
  const DrawnPart fine = draw_curve(curve.records, 1e-8, curve.units);
  const DrawnPart usual = draw_curve(curve.records, 1e-3, curve.units);
  EXPECT_LE(usual.points.size(), 150u);
  expect_box(usual.box, fine.box, 1.5e-5 * distance(fine.box.low, fine.box.high));
}

TEST(Curves, TiltedCirclesReachAsFarAsTheyDo) {
  // Across the direction (1,2,2) the unit circle reaches as far as the sine of the angle to an
  // axis.
  const DrawnPart part = draw_curve(
      "#50=CIRCLE('',#51,3.);\n#51=AXIS2_PLACEMENT_3D('',#24,#52,$);\n"
      "#52=DIRECTION('',(1.,2.,2.));\n",
      1e-3);
  const double x = std::sqrt(8.0);
  const double y = std::sqrt(5.0);
  expect_box(part.box, {{3 - x, 4 - y, -y}, {3 + x, 4 + y, y}}, 1e-12);
}

TEST_P(WholeCurve, IsAsLongAsItIs) {
  const CurveCase& expected = GetParam();
  const DrawnPart part = draw_curve(expected.records, 1e-7, expected.units);
  EXPECT_EQ(part.dropped, 0u);
  ASSERT_EQ(part.lines.size(), 1u);
  EXPECT_EQ(part.lines[0].record, 50u);
  EXPECT_NEAR(length_of(part, part.lines[0]), expected.length, 1e-5 * expected.length);
  const auto points = Drawing::points_of(part, part.lines[0]);
  EXPECT_LE(distance(points.front(), expected.first), 1e-7);
  EXPECT_LE(distance(points.back(), expected.last), 1e-7);
}

INSTANTIATE_TEST_SUITE_P(Kinds, WholeCurve, testing::ValuesIn(CURVES),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace Kessel::test
