// Forms of curves that the samples lack, compared with what a CAD kernel reads from the same file.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "geometry/drawn_text.h"
#include "interop/kernel_edges.h"

namespace Kessel::test {
namespace {

/// A file of curves.
struct CurveForm {
  const char* name;
  const char* items;            ///< of a curve set: "#20"
  const char* records;          ///< those, from #20 on
  const char* units = "#8,#9";  ///< millimetres and radians
};

// Points and axes for all of them, from #900 on: an axis at (1, 2, 3) that lies askew, and one at
// the origin.
constexpr const char* SHARED =
    "#900=CARTESIAN_POINT('',(1.,2.,3.));\n#901=DIRECTION('',(0.,0.6,0.8));\n"
    "#902=DIRECTION('',(1.,0.,0.));\n#903=AXIS2_PLACEMENT_3D('',#900,#901,#902);\n"
    "#904=CARTESIAN_POINT('',(0.,0.,0.));\n#905=AXIS2_PLACEMENT_3D('',#904,$,$);\n"
    "#910=CARTESIAN_POINT('',(0.,0.,0.));\n#911=CARTESIAN_POINT('',(10.,5.,1.));\n"
    "#912=CARTESIAN_POINT('',(20.,-5.,2.));\n#913=CARTESIAN_POINT('',(30.,8.,-4.));\n"
    "#914=CARTESIAN_POINT('',(45.,0.,3.));\n#915=CARTESIAN_POINT('',(50.,12.,0.));\n"
    "#916=CARTESIAN_POINT('',(61.,4.,9.));\n"
    "#920=CIRCLE('',#903,7.);\n#921=ELLIPSE('',#903,9.,4.);\n#922=HYPERBOLA('',#903,3.,2.);\n"
    "#923=PARABOLA('',#903,2.5);\n#924=VECTOR('',#901,4.);\n#925=LINE('',#900,#924);\n";

constexpr const char* DEGREES = "#8,#10";
constexpr const char* INCHES = "#13,#9";

constexpr CurveForm FORMS[] = {
    {"Knots", "#20",
     "#20=B_SPLINE_CURVE_WITH_KNOTS('',3,(#910,#911,#912,#913,#914,#915,#916),.UNSPECIFIED.,.F.,.F."
     ","
     "(4,2,1,4),(0.,1.5,2.,7.),.UNSPECIFIED.);\n"},
    {"KnotsOfACorner", "#20",
     "#20=B_SPLINE_CURVE_WITH_KNOTS('',3,(#910,#911,#912,#913,#914,#915,#916),.UNSPECIFIED.,.F.,.F."
     ","
     "(4,3,4),(-2.,1.,4.),.UNSPECIFIED.);\n"},
    {"KnotsBeyondTheEnds", "#20",
     "#20=B_SPLINE_CURVE_WITH_KNOTS('',2,(#910,#911,#912,#913,#914),.UNSPECIFIED.,.F.,.F.,"
     "(1,1,1,1,1,1,1,1),(0.,1.,2.,3.,5.,6.,7.,8.),.UNSPECIFIED.);\n"},
    {"Weights", "#20",
     "#20=(BOUNDED_CURVE()B_SPLINE_CURVE(3,(#910,#911,#912,#913,#914,#915,#916),.UNSPECIFIED.,.F.,"
     ".F.)B_SPLINE_CURVE_WITH_KNOTS((4,2,1,4),(0.,1.5,2.,7.),.UNSPECIFIED.)CURVE()"
     "GEOMETRIC_REPRESENTATION_ITEM()RATIONAL_B_SPLINE_CURVE((1.,2.,0.5,3.,1.,0.25,1.))"
     "REPRESENTATION_ITEM(''));\n"},
    {"QuasiUniform", "#20",
     "#20=QUASI_UNIFORM_CURVE('',3,(#910,#911,#912,#913,#914,#915),.UNSPECIFIED.,.F.,.F.);\n"},
    {"Uniform", "#20",
     "#20=UNIFORM_CURVE('',2,(#910,#911,#912,#913,#914,#915),.UNSPECIFIED.,.F.,.F.);\n"},
    {"Bezier", "#20", "#20=BEZIER_CURVE('',3,(#910,#911,#912,#913),.UNSPECIFIED.,.F.,.F.);\n"},
    {"ArcByParameters", "#20",
     "#20=TRIMMED_CURVE('',#920,(PARAMETER_VALUE(0.5)),(PARAMETER_VALUE(2.25)),.T.,.PARAMETER.);"
     "\n"},
    {"ArcAgainstTheCurve", "#20",
     "#20=TRIMMED_CURVE('',#920,(PARAMETER_VALUE(0.5)),(PARAMETER_VALUE(2.25)),.F.,.PARAMETER.);"
     "\n"},
    {"ArcOverZero", "#20",
     "#20=TRIMMED_CURVE('',#920,(PARAMETER_VALUE(5.5)),(PARAMETER_VALUE(1.)),.T.,.PARAMETER.);\n"},
    {"ArcInDegrees", "#20",
     "#20=TRIMMED_CURVE('',#920,(PARAMETER_VALUE(30.)),(PARAMETER_VALUE(200.)),.T.,.PARAMETER.);\n",
     DEGREES},
    {"EllipseInDegreesAgainstTheCurve", "#20",
     "#20=TRIMMED_CURVE('',#921,(PARAMETER_VALUE(30.)),(PARAMETER_VALUE(200.)),.F.,.PARAMETER.);\n",
     DEGREES},
    {"ArcByPoints", "#20",
     "#20=TRIMMED_CURVE('',#920,(#21),(#22),.T.,.CARTESIAN.);\n"
     "#21=CARTESIAN_POINT('',(8.,2.,3.));\n#22=CARTESIAN_POINT('',(-6.,2.,3.));\n"},
    {"ArcByPointsAgainstTheCurve", "#20",
     "#20=TRIMMED_CURVE('',#920,(#21,PARAMETER_VALUE(0.)),(#22),.F.,.CARTESIAN.);\n"
     "#21=CARTESIAN_POINT('',(8.,2.,3.));\n#22=CARTESIAN_POINT('',(-6.,2.,3.));\n"},
    {"Ellipse", "#20",
     "#20=TRIMMED_CURVE('',#921,(PARAMETER_VALUE(0.3)),(PARAMETER_VALUE(4.)),.T.,.PARAMETER.);\n"},
    {"Hyperbola", "#20",
     "#20=TRIMMED_CURVE('',#922,(PARAMETER_VALUE(-1.2)),(PARAMETER_VALUE(0.7)),.T.,.PARAMETER.);"
     "\n"},
    // By points: the kernel has parameters of its own for it.
    {"Parabola", "#20",
     "#20=TRIMMED_CURVE('',#923,(#21),(#22),.T.,.CARTESIAN.);\n"
     "#21=CARTESIAN_POINT('',(6.625,-4.,7.5));\n#22=CARTESIAN_POINT('',(11.,10.,-3.));\n"},
    {"ParabolaAgainstTheCurve", "#20",
     "#20=TRIMMED_CURVE('',#923,(#22),(#21),.F.,.CARTESIAN.);\n"
     "#21=CARTESIAN_POINT('',(6.625,-4.,7.5));\n#22=CARTESIAN_POINT('',(11.,10.,-3.));\n"},
    {"LineByParameters", "#20",
     "#20=TRIMMED_CURVE('',#925,(PARAMETER_VALUE(-1.)),(PARAMETER_VALUE(2.5)),.T.,.PARAMETER.);\n"},
    {"LineAgainstTheCurve", "#20",
     "#20=TRIMMED_CURVE('',#925,(PARAMETER_VALUE(2.5)),(PARAMETER_VALUE(-1.)),.F.,.PARAMETER.);\n"},
    {"SplinePiece", "#20",
     "#20=TRIMMED_CURVE('',#21,(PARAMETER_VALUE(1.)),(PARAMETER_VALUE(4.5)),.T.,.PARAMETER.);\n"
     "#21=B_SPLINE_CURVE_WITH_KNOTS('',3,(#910,#911,#912,#913,#914,#915,#916),.UNSPECIFIED.,.F.,.F."
     ","
     "(4,2,1,4),(0.,1.5,2.,7.),.UNSPECIFIED.);\n"},
    {"WholeCircle", "#920", ""},
    {"WholeEllipse", "#921", ""},
    {"Polyline", "#20", "#20=POLYLINE('',(#910,#911,#912));\n"},
    {"Inches", "#20,#21",
     "#20=TRIMMED_CURVE('',#920,(PARAMETER_VALUE(0.5)),(PARAMETER_VALUE(2.25)),.T.,.PARAMETER.);\n"
     "#21=TRIMMED_CURVE('',#925,(PARAMETER_VALUE(-1.)),(PARAMETER_VALUE(2.5)),.T.,.PARAMETER.);\n",
     INCHES},
    {"InchesAndDegrees", "#20",
     "#20=TRIMMED_CURVE('',#921,(PARAMETER_VALUE(10.)),(PARAMETER_VALUE(95.)),.T.,.PARAMETER.);\n",
     "#13,#10"},
    {"Offset", "#20",
     "#20=TRIMMED_CURVE('',#21,(PARAMETER_VALUE(0.5)),(PARAMETER_VALUE(2.25)),.T.,.PARAMETER.);\n"
     "#21=OFFSET_CURVE_3D('',#920,2.,.F.,#901);\n"},
    {"OffsetInwards", "#20",
     "#20=TRIMMED_CURVE('',#21,(PARAMETER_VALUE(0.5)),(PARAMETER_VALUE(2.25)),.T.,.PARAMETER.);\n"
     "#21=OFFSET_CURVE_3D('',#921,-1.,.F.,#901);\n"},
    // Not scaled: the kernel leaves that out.
    {"Replica", "#20",
     "#20=TRIMMED_CURVE('',#21,(PARAMETER_VALUE(0.5)),(PARAMETER_VALUE(2.25)),.T.,.PARAMETER.);\n"
     "#21=CURVE_REPLICA('',#921,#22);\n"
     "#22=CARTESIAN_TRANSFORMATION_OPERATOR_3D('','','',#23,#24,#911,1.,#25);\n"
     "#23=DIRECTION('',(0.,1.,0.));\n#24=DIRECTION('',(0.,0.,1.));\n"
     "#25=DIRECTION('',(1.,0.,0.));\n"},
};

void PrintTo(const CurveForm& form, std::ostream* out) {
  *out << form.name;
}

std::string curves(const std::string& items, const std::string& records,
                   const std::string& units = "#8,#9") {
  return drawn_product("#15,#905", units) + SHARED + records + "#15=GEOMETRIC_CURVE_SET('',(" +
         items + "));\n";
}

/// What differs between the lines that are drawn and the kernel's edges; empty for nothing.
std::string differences_of(const std::filesystem::path& in) {
  const Drawing drawing = read_drawing(in, {.tolerance = 1e-6});
  std::string differences;
  for (const DrawnPart& part : drawing.parts) {
    if (part.dropped != 0) differences += "an edge is not drawn\n";
  }
  const std::vector<PlacedEdge> read = read_edges(in);
  if (read.empty()) differences += "the kernel reads nothing\n";
  KernelEdges kernel(read);
  for (const PlacedEdge& edge : drawn_edges(drawing)) differences += kernel.take(edge);
  return differences + kernel.left();
}

class CurveForms : public testing::TestWithParam<CurveForm> {};

TEST_P(CurveForms, AreDrawnAsTheKernelReadsThem) {
  const ScratchFolder folder;
  const CurveForm& form = GetParam();
  const auto in =
      folder.write("in.stp", exchange_file(curves(form.items, form.records, form.units)));
  EXPECT_EQ(differences_of(in), "");
}

INSTANTIATE_TEST_SUITE_P(All, CurveForms, testing::ValuesIn(FORMS),
                         [](const auto& test) { return std::string(test.param.name); });

/// One line here, an edge for each segment there.
TEST(CompositeCurve, HasTheLengthAndBoxOfItsSegments) {
  const ScratchFolder folder;
  const auto in = folder.write(
      "in.stp",
      exchange_file(curves("#20",
                           "#20=COMPOSITE_CURVE('',(#21,#22,#23),.F.);\n"
                           "#21=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,#24);\n"
                           "#22=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.F.,#25);\n"
                           "#23=COMPOSITE_CURVE_SEGMENT(.DISCONTINUOUS.,.T.,#26);\n"
                           "#24=POLYLINE('',(#910,#911));\n#25=POLYLINE('',(#912,#911));\n"
                           "#26=BEZIER_CURVE('',2,(#912,#913,#914),.UNSPECIFIED.,.F.,.F.);\n")));
  const std::vector<PlacedEdge> drawn = drawn_edges(read_drawing(in, {.tolerance = 1e-6}));
  ASSERT_EQ(drawn.size(), 1u);
  double length = 0;
  Box3 box;
  for (const PlacedEdge& edge : read_edges(in)) {
    length += edge.length;
    box.add({edge.box[0], edge.box[1], edge.box[2]});
    box.add({edge.box[3], edge.box[4], edge.box[5]});
  }
  EXPECT_NEAR(drawn[0].length, length, 1e-3 * length);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(drawn[0].box[i], box.low[i], 0.02);
    EXPECT_NEAR(drawn[0].box[i + 3], box.high[i], 0.02);
  }
}

constexpr const char* ARC_AND_SPLINE =
    "#20=TRIMMED_CURVE('',#920,(PARAMETER_VALUE(0.5)),(PARAMETER_VALUE(2.25)),.T.,.PARAMETER.);\n"
    "#21=BEZIER_CURVE('',3,(#910,#911,#912,#913),.UNSPECIFIED.,.F.,.F.);\n";

/// The product #51 with the product #1 in it, whose lengths are in inches, turned and moved.
constexpr const char* IN_MILLIMETRES =
    "#51=PRODUCT_DEFINITION('','',#53,$);\n#52=PRODUCT('whole','whole','',());\n"
    "#53=PRODUCT_DEFINITION_FORMATION('','',#52);\n#54=PRODUCT_DEFINITION_SHAPE('','',#51);\n"
    "#55=SHAPE_DEFINITION_REPRESENTATION(#54,#56);\n#56=SHAPE_REPRESENTATION('',(#903),#57);\n"
    "#57=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#8,#10))"
    "REPRESENTATION_CONTEXT('',''));\n"
    "#58=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#51,#1,$);\n"
    "#59=PRODUCT_DEFINITION_SHAPE('','',#58);\n"
    "#60=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#61,#59);\n"
    "#61=(REPRESENTATION_RELATIONSHIP('','',#6,#56)"
    "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#62)SHAPE_REPRESENTATION_RELATIONSHIP());\n"
    "#62=ITEM_DEFINED_TRANSFORMATION('','',#905,#903);\n";

TEST(PlacedCurves, OfInchesInAnAssemblyOfMillimetres) {
  const ScratchFolder folder;
  const auto in = folder.write(
      "in.stp", exchange_file(curves("#20,#21", ARC_AND_SPLINE, INCHES) + IN_MILLIMETRES));
  EXPECT_EQ(differences_of(in), "");
}

/// A representation map, shown by a mapped item with this target.
std::string mapped(const std::string& target) {
  return drawn_product("#905,#40") + SHARED + ARC_AND_SPLINE +
         "#15=GEOMETRIC_CURVE_SET('',(#20,#21));\n#41=SHAPE_REPRESENTATION('',(#905,#15),#7);\n"
         "#42=REPRESENTATION_MAP(#905,#41);\n#40=MAPPED_ITEM('',#42,#43);\n" +
         target;
}

/// Not scaled: the kernel leaves that out.
TEST(PlacedCurves, OfMappedItems) {
  const ScratchFolder folder;
  for (const char* const target :
       {"#43=AXIS2_PLACEMENT_3D('',#900,#901,#902);\n",
        "#43=CARTESIAN_TRANSFORMATION_OPERATOR_3D('','','',#902,$,#911,1.,#901);\n",
        "#43=CARTESIAN_TRANSFORMATION_OPERATOR_3D('','','',$,$,#911,$,$);\n"}) {
    EXPECT_EQ(differences_of(folder.write("in.stp", exchange_file(mapped(target)))), "") << target;
  }
}

}  // namespace
}  // namespace Kessel::test
