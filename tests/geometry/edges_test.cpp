// Edges between their vertices, each once, and what of them cannot be drawn.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numbers>
#include <ostream>

#include "geometry/drawn_text.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Vertices #31 at (2,0,0), #32 at (0,2,0), #33 at (-2,0,0), #34 at (0,-2,0); a circle #40 through
/// them, and the same as a closed spline #41, a square's way round.
const std::string EDGE_RECORDS =
    "#21=CARTESIAN_POINT('',(2.,0.,0.));\n#22=CARTESIAN_POINT('',(0.,2.,0.));\n"
    "#23=CARTESIAN_POINT('',(-2.,0.,0.));\n#24=CARTESIAN_POINT('',(0.,-2.,0.));\n"
    "#25=CARTESIAN_POINT('',(0.,0.,0.));\n#26=DIRECTION('',(0.,0.,1.));\n"
    "#31=VERTEX_POINT('',#21);\n#32=VERTEX_POINT('',#22);\n#33=VERTEX_POINT('',#23);\n"
    "#34=VERTEX_POINT('',#24);\n#35=AXIS2_PLACEMENT_3D('',#25,#26,#36);\n"
    "#36=DIRECTION('',(1.,0.,0.));\n#40=CIRCLE('',#35,2.);\n"
    "#41=B_SPLINE_CURVE_WITH_KNOTS('',1,(#21,#22,#23,#24,#21),.UNSPECIFIED.,.T.,.F.,(2,1,1,1,2),"
    "(0.,1.,2.,3.,4.),.UNSPECIFIED.);\n#42=POLYLINE('',(#21,#22,#23));\n"
    "#43=LINE('',#21,#44);\n#44=VECTOR('',#36,1.);\n";

/// The edges are #50 and so on, all in one set.
DrawnPart draw_edges(const std::string& edges, const std::string& items) {
  return draw(drawn_product("#20") + "#20=EDGE_BASED_WIREFRAME_MODEL('',(#19));\n" +
                  "#19=CONNECTED_EDGE_SET('',(" + items + "));\n" + EDGE_RECORDS + edges,
              {.tolerance = 1e-6})
      .parts.at(0);
}

struct EdgeCase {
  const char* name;
  const char* edge;
  double length;
  Point3 first;
  Point3 last;
};

void PrintTo(const EdgeCase& one, std::ostream* out) {
  *out << one.name;
}

const double SIDE = 2 * std::numbers::sqrt2;

const EdgeCase EDGES[] = {
    {"quarter_along", "#50=EDGE_CURVE('',#31,#32,#40,.T.);\n", PI, {2, 0, 0}, {0, 2, 0}},
    {"quarter_against", "#50=EDGE_CURVE('',#31,#32,#40,.F.);\n", 3 * PI, {2, 0, 0}, {0, 2, 0}},
    {"over_the_seam", "#50=EDGE_CURVE('',#34,#32,#40,.T.);\n", 2 * PI, {0, -2, 0}, {0, 2, 0}},
    {"all_around", "#50=EDGE_CURVE('',#33,#33,#40,.T.);\n", 4 * PI, {-2, 0, 0}, {-2, 0, 0}},
    {"all_around_against", "#50=EDGE_CURVE('',#33,#33,#40,.F.);\n", 4 * PI, {-2, 0, 0}, {-2, 0, 0}},
    {"closed_spline", "#50=EDGE_CURVE('',#31,#31,#41,.T.);\n", 4 * SIDE, {2, 0, 0}, {2, 0, 0}},
    {"closed_spline_over_its_seam",
     "#50=EDGE_CURVE('',#34,#32,#41,.T.);\n",
     2 * SIDE,
     {0, -2, 0},
     {0, 2, 0}},
    {"closed_spline_against",
     "#50=EDGE_CURVE('',#32,#34,#41,.F.);\n",
     2 * SIDE,
     {0, 2, 0},
     {0, -2, 0}},
    {"part_of_a_polyline", "#50=EDGE_CURVE('',#32,#33,#42,.T.);\n", SIDE, {0, 2, 0}, {-2, 0, 0}},
    {"straight", "#50=EDGE_CURVE('',#33,#31,#43,.T.);\n", 4, {-2, 0, 0}, {2, 0, 0}},
    {"over_a_surface_curve",
     "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=SURFACE_CURVE('',#40,(),.CURVE_3D.);\n",
     PI,
     {2, 0, 0},
     {0, 2, 0}},
    {"over_a_trimmed_curve",
     "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=TRIMMED_CURVE('',#40,(#24),(#23),.T.,.CARTESIAN.);"
     "\n",
     PI,
     {2, 0, 0},
     {0, 2, 0}},
    {"subedge",
     "#50=SUBEDGE('',#31,#32,#51);\n#51=EDGE_CURVE('',#34,#33,#40,.T.);\n",
     PI,
     {2, 0, 0},
     {0, 2, 0}},
    {"direction_by_mistake", "#50=EDGE_CURVE('',#33,#32,#42,.T.);\n", SIDE, {-2, 0, 0}, {0, 2, 0}},
};

class OneEdge : public testing::TestWithParam<EdgeCase> {};

TEST_P(OneEdge, GoesFromVertexToVertex) {
  const EdgeCase& expected = GetParam();
  const DrawnPart part = draw_edges(expected.edge, "#50");
  EXPECT_EQ(part.dropped, 0u);
  ASSERT_EQ(part.lines.size(), 1u);
  EXPECT_EQ(part.lines[0].record, 50u);
  EXPECT_NEAR(length_of(part, part.lines[0]), expected.length, 1e-4 * expected.length);
  EXPECT_EQ(Drawing::points_of(part, part.lines[0]).front(), expected.first);
  EXPECT_EQ(Drawing::points_of(part, part.lines[0]).back(), expected.last);
}

INSTANTIATE_TEST_SUITE_P(Senses, OneEdge, testing::ValuesIn(EDGES),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(Edges, OfTwoFacesAreDrawnOnce) {
  const DrawnPart part =
      draw(drawn_product("#20") + EDGE_RECORDS +
           "#20=MANIFOLD_SOLID_BREP('',#45);\n#45=CLOSED_SHELL('',(#46,#47));\n"
           "#46=ADVANCED_FACE('',(#48),$,.T.);\n#47=ADVANCED_FACE('',(#49),$,.T.);\n"
           "#48=FACE_OUTER_BOUND('',#51,.T.);\n#49=FACE_BOUND('',#52,.T.);\n"
           "#51=EDGE_LOOP('',(#53));\n#52=EDGE_LOOP('',(#54));\n"
           "#53=ORIENTED_EDGE('',*,*,#50,.T.);\n#54=ORIENTED_EDGE('',*,*,#50,.F.);\n"
           "#50=EDGE_CURVE('',#31,#33,#43,.T.);\n")
          .parts.at(0);
  ASSERT_EQ(part.lines.size(), 1u);
  EXPECT_EQ(part.lines[0].record, 50u);
  EXPECT_EQ(part.box.low, (Point3{-2, 0, 0}));
  EXPECT_EQ(part.box.high, (Point3{2, 0, 0}));
}

TEST(Edges, AreAsFineAsTheCallerWants) {
  const std::string file =
      drawn_product("#20") + EDGE_RECORDS + "#20=GEOMETRIC_CURVE_SET('',(#40));\n";
  const auto sagitta = [](const DrawnPart& part) {
    const auto points = Drawing::points_of(part, part.lines.at(0));
    return 2 - std::hypot(points[0][0] + points[1][0], points[0][1] + points[1][1]) / 2;
  };
  const double diagonal = 4 * std::numbers::sqrt2;
  for (const double tolerance : {1e-2, 1e-3, 1e-5, 1e-7}) {
    const DrawnPart part = draw(file, {.tolerance = tolerance}).parts.at(0);
    EXPECT_LE(sagitta(part), tolerance * diagonal);
    EXPECT_GE(sagitta(part), tolerance * diagonal / 4);  // and not much finer
  }
  const DrawnPart part = draw(file, {.tolerance_metres = 1e-6}).parts.at(0);
  EXPECT_LE(sagitta(part), 1e-3);
  EXPECT_GE(sagitta(part), 1e-3 / 2);
}

TEST(Edges, WithoutEnoughRoomAreDropped) {
  const std::string file =
      drawn_product("#20") + EDGE_RECORDS + "#20=GEOMETRIC_CURVE_SET('',(#40,#42));\n";
  const DrawnPart part = draw(file, {.most_points = 3}).parts.at(0);
  ASSERT_EQ(part.lines.size(), 1u);
  EXPECT_EQ(part.lines[0].record, 42u);
  EXPECT_EQ(part.dropped, 1u);
}

/// Edges that say nothing that can be drawn: #50 each.
const char* const BAD[] = {
    "",  // there is none
    "#50=EDGE_CURVE('',#31,#99,#40,.T.);\n",
    "#50=EDGE_CURVE('',#31,$,#40,.T.);\n",
    "#50=EDGE_CURVE('',#31,#32,#99,.T.);\n",
    "#50=EDGE_CURVE('',#31,#32,#40,.U.);\n",
    "#50=EDGE_CURVE('',#31,#32,#40);\n",
    "#50=EDGE_CURVE();\n",
    "#50=EDGE_CURVE('',#31,#51,#40,.T.);\n#51=VERTEX_POINT('',#52);\n"
    "#52=CARTESIAN_POINT('',(NAN,0.,0.));\n",
    "#50=EDGE_CURVE('',#31,#51,#40,.T.);\n#51=VERTEX_POINT('',#52);\n"
    "#52=CARTESIAN_POINT('',());\n",
    "#50=EDGE_CURVE('',#31,#51,#40,.T.);\n#51=VERTEX_POINT('',#52);\n"
    "#52=CARTESIAN_POINT('',(1.E999,0.,0.));\n",
    "#50=EDGE_CURVE('',#31,#31,#43,.T.);\n",  // no length
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=CIRCLE('',#35,0.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=CIRCLE('',#35,-2.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=CIRCLE('',#35,$);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=CIRCLE('',#52,2.);\n"
    "#52=AXIS2_PLACEMENT_3D('',#25,#53,$);\n#53=DIRECTION('',(0.,0.,0.));\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=CIRCLE('',#52,2.);\n"
    "#52=AXIS2_PLACEMENT_3D('',#25,#26,#26);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=SURFACE_CURVE('',#51,(),.CURVE_3D.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=TRIMMED_CURVE('',#51,(#21),(#22),.T.,.CARTESIAN.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=COMPOSITE_CURVE('',(#52,#52),.F.);\n"
    "#52=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,#51);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=COMPOSITE_CURVE('',(),.F.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=POLYLINE('',(#21));\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=PCURVE('',$,$);\n",
    // Knots that do not fit, in number, order, or size.
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=B_SPLINE_CURVE_WITH_KNOTS('',1,(#21,#22),"
    ".UNSPECIFIED.,.F.,.F.,(2,1),(0.,1.),.UNSPECIFIED.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=B_SPLINE_CURVE_WITH_KNOTS('',1,(#21,#22),"
    ".UNSPECIFIED.,.F.,.F.,(2,4294967295),(0.,1.),.UNSPECIFIED.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=B_SPLINE_CURVE_WITH_KNOTS('',1,(#21,#22),"
    ".UNSPECIFIED.,.F.,.F.,(2,2),(1.,0.),.UNSPECIFIED.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=B_SPLINE_CURVE_WITH_KNOTS('',1,(#21,#22),"
    ".UNSPECIFIED.,.F.,.F.,(2,2),(0.,0.),.UNSPECIFIED.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=B_SPLINE_CURVE_WITH_KNOTS('',1,(#21,#22),"
    ".UNSPECIFIED.,.F.,.F.,(2,2),(0.,INF),.UNSPECIFIED.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=B_SPLINE_CURVE_WITH_KNOTS('',2147483647,(#21,#22),"
    ".UNSPECIFIED.,.F.,.F.,(2,2),(0.,1.),.UNSPECIFIED.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=B_SPLINE_CURVE_WITH_KNOTS('',-1,(#21,#22),"
    ".UNSPECIFIED.,.F.,.F.,(1,1),(0.,1.),.UNSPECIFIED.);\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=BEZIER_CURVE('',2,(#21,#22),.UNSPECIFIED.,.F.,.F.);"
    "\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=(BEZIER_CURVE()BOUNDED_CURVE()B_SPLINE_CURVE(1,"
    "(#21,#22),.UNSPECIFIED.,.F.,.F.)RATIONAL_B_SPLINE_CURVE((1.,0.)));\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=(BEZIER_CURVE()BOUNDED_CURVE()B_SPLINE_CURVE(1,"
    "(#21,#22),.UNSPECIFIED.,.F.,.F.)RATIONAL_B_SPLINE_CURVE((1.)));\n",
    "#50=EDGE_CURVE('',#31,#32,#51,.T.);\n#51=CURVE_REPLICA('',#40,#52);\n"
    "#52=CARTESIAN_TRANSFORMATION_OPERATOR_3D('','','',$,$,#25,0.,$);\n",
};

TEST(Edges, ThatSayNothingAreCountedAndTheOthersDrawn) {
  for (const char* bad : BAD) {
    const DrawnPart part =
        draw_edges(std::string(bad) + "#60=EDGE_CURVE('',#31,#33,#43,.T.);\n", "#50,#60");
    ASSERT_EQ(part.lines.size(), 1u) << bad;
    EXPECT_EQ(part.lines[0].record, 60u) << bad;
    EXPECT_EQ(part.dropped, *bad == '\0' ? 0u : 1u) << bad;
  }
}

TEST(Edges, OfWhatIsNoGeometryAreNone) {
  for (const char* records :
       {"", "#20=ADVANCED_FACE('',(#20),$,.T.);\n", "#20=PRODUCT('','','',());\n",
        "#20=MANIFOLD_SOLID_BREP('',#99);\n"}) {
    const DrawnPart part = draw(drawn_product("#20") + records).parts.at(0);
    EXPECT_THAT(part.lines, IsEmpty()) << records;
    EXPECT_TRUE(part.box.is_empty());
  }
  EXPECT_THAT(draw("").parts, IsEmpty());
}

}  // namespace
}  // namespace Kessel::test
