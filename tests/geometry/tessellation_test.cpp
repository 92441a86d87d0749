// Faceted and tessellated shapes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "geometry/drawn_text.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Corners of a square, and a point above its middle.
const std::string CORNERS =
    "#30=COORDINATES_LIST('',5,((0.,0.,0.),(2.,0.,0.),(2.,2.,0.),(0.,2.,0.),(1.,1.,3.)));\n";

double whole_length(const DrawnPart& part) {
  double length = 0;
  for (const DrawnLine& line : part.lines) length += length_of(part, line);
  return length;
}

std::vector<std::uint64_t> records_of(const DrawnPart& part) {
  std::vector<std::uint64_t> records;
  for (const DrawnLine& line : part.lines) records.push_back(line.record);
  return records;
}

DrawnPart draw_items(const std::string& items, const std::string& records) {
  return draw(drawn_product(items) + CORNERS + records).parts.at(0);
}

TEST(Tessellation, EdgesAreLines) {
  const DrawnPart part =
      draw_items("#20",
                 "#20=TESSELLATED_WIRE('',(#21,#22),$);\n#21=TESSELLATED_EDGE('',#30,$,(1,2,3));\n"
                 "#22=TESSELLATED_CONNECTING_EDGE('',#30,$,(3,4),.F.,#98,#99,(1),(1));\n");
  EXPECT_THAT(records_of(part), ElementsAre(21u, 22u));
  EXPECT_EQ(whole_length(part), 6);
  EXPECT_EQ(part.lines[0].count, 3u);
}

TEST(Tessellation, CurveSetsAreLines) {
  const DrawnPart part =
      draw_items("#20", "#20=TESSELLATED_CURVE_SET('',#30,((1,2,3),(3,4,1)));\n");
  EXPECT_THAT(records_of(part), ElementsAre(20u, 20u));
  EXPECT_EQ(whole_length(part), 8);
}

/// Two triangles in one plane: their common side is no line.
TEST(Tessellation, OfAFaceTheBorderIsDrawn) {
  for (const char* face : {"TRIANGULATED_FACE('',#30,4,(),$,(),((1,2,3),(1,3,4)))",
                           "TRIANGULATED_FACE('',#30,4,((0.,0.,1.)),$,(3,2,1,4),((3,2,1),(3,1,4)))",
                           "COMPLEX_TRIANGULATED_FACE('',#30,4,(),$,(),((2,3,1,4)),())",
                           "COMPLEX_TRIANGULATED_FACE('',#30,4,(),$,(),(),((1,2,3,4)))",
                           "TRIANGULATED_SURFACE_SET('',#30,4,(),(),((1,2,3),(1,3,4)))",
                           "COMPLEX_TRIANGULATED_SURFACE_SET('',#30,4,(),(),((2,3,1,4)),())"}) {
    const DrawnPart part =
        draw_items("#20", "#20=TESSELLATED_SHELL('',(#21),$);\n#21=" + std::string(face) + ";\n");
    EXPECT_EQ(part.dropped, 0u) << face;
    ASSERT_THAT(records_of(part), ElementsAre(21u)) << face;
    EXPECT_EQ(part.lines[0].count, 5u) << face;
    EXPECT_EQ(whole_length(part), 8) << face;
  }
}

/// A pyramid in one set: all its sides bend.
TEST(Tessellation, SharpBendsAreDrawn) {
  const DrawnPart part = draw_items(
      "#20",
      "#20=TESSELLATED_GEOMETRIC_SET('',(#21));\n#21=TRIANGULATED_SURFACE_SET('',#30,5,(),(),"
      "((1,3,2),(1,4,3),(1,2,5),(2,3,5),(3,4,5),(4,1,5)));\n");
  EXPECT_NEAR(whole_length(part), 8 + 4 * std::sqrt(11), 1e-12);
}

TEST(Tessellation, FacesThatMeetShareOneLine) {
  const DrawnPart part =
      draw_items("#20",
                 "#20=TESSELLATED_SOLID('',(#21,#22),$);\n"
                 "#21=TRIANGULATED_FACE('',#30,3,(),$,(),((1,2,3)));\n"
                 "#22=TRIANGULATED_FACE('',#31,3,(),$,(),((1,2,3)));\n"
                 "#31=COORDINATES_LIST('',3,((0.,0.,0.),(2.,2.,0.),(0.,2.,0.)));\n");
  EXPECT_NEAR(whole_length(part), 8 + std::sqrt(8), 1e-12);
}

TEST(Tessellation, EdgesAreDrawnOnceThoughFacesEndThere) {
  const DrawnPart part = draw_items("#20",
                                    "#20=TESSELLATED_SHELL('',(#21,#22),$);\n"
                                    "#21=TRIANGULATED_FACE('',#30,4,(),$,(),((1,2,3),(1,3,4)));\n"
                                    "#22=TESSELLATED_EDGE('',#30,$,(1,2,3));\n");
  EXPECT_THAT(records_of(part), ElementsAre(22u, 21u));
  EXPECT_EQ(whole_length(part), 8);
}

TEST(Tessellation, OfWhatIsDrawnExactlyIsNotDrawn) {
  const std::string exact =
      "#40=GEOMETRIC_CURVE_SET('',(#41));\n#41=POLYLINE('',(#42,#43));\n"
      "#42=CARTESIAN_POINT('',(0.,0.,0.));\n#43=CARTESIAN_POINT('',(2.,0.,0.));\n";
  const std::string edge =
      "#20=TESSELLATED_WIRE('',(#21),#40);\n"
      "#21=TESSELLATED_EDGE('',#30,#41,(1,2));\n";
  EXPECT_THAT(records_of(draw_items("#20,#40", exact + edge)), ElementsAre(41u));
  EXPECT_THAT(records_of(draw_items("#20", exact + edge)), ElementsAre(21u));
}

TEST(Tessellation, RepositionedItemsAreElsewhere) {
  for (const char* set :
       {"#20=(GEOMETRIC_REPRESENTATION_ITEM()REPOSITIONED_TESSELLATED_ITEM(#44)"
        "REPRESENTATION_ITEM('')TESSELLATED_GEOMETRIC_SET((#21))TESSELLATED_ITEM());\n",
        "#20=REPOSITIONED_TESSELLATED_GEOMETRIC_SET('',(#21),#44);\n"}) {
    const DrawnPart part =
        draw_items("#20", set + std::string("#21=TESSELLATED_CURVE_SET('',#30,((1,2)));\n"
                                            "#44=AXIS2_PLACEMENT_3D('',#45,$,$);\n"
                                            "#45=CARTESIAN_POINT('',(5.,6.,7.));\n"));
    ASSERT_EQ(part.points.size(), 2u);
    EXPECT_EQ(part.points[0], (Point3{5, 6, 7}));
  }
}

TEST(Tessellation, OfNumbersBeyondTheListIsDropped) {
  for (const char* item :
       {"TESSELLATED_CURVE_SET('',#30,((1,6)))", "TESSELLATED_CURVE_SET('',#30,((0,1)))",
        "TESSELLATED_CURVE_SET('',#99,((0,1)))", "TESSELLATED_CURVE_SET('',#30,((1,-2)))",
        "TRIANGULATED_FACE('',#30,5,(),$,(),((1,2,6)))",
        "TRIANGULATED_FACE('',#30,5,(),$,(9),((1,1,1)))",
        "TRIANGULATED_FACE('',#30,5,(),$,(),((1,2)))", "TRIANGULATED_FACE('',#30,5)"}) {
    const DrawnPart part = draw_items("#20", "#20=" + std::string(item) + ";\n");
    EXPECT_EQ(part.dropped, 1u) << item;
    EXPECT_THAT(part.lines, IsEmpty()) << item;
  }
}

/// Two facets of a solid with a common side.
TEST(FacetedSolids, EachSideIsDrawnOnce) {
  const DrawnPart part =
      draw(drawn_product("#20") +
           "#20=FACETED_BREP('',#21);\n#21=CLOSED_SHELL('',(#22,#23));\n"
           "#22=FACE_SURFACE('',(#24),$,.T.);\n#23=FACE_SURFACE('',(#25),$,.T.);\n"
           "#24=FACE_OUTER_BOUND('',#26,.T.);\n#25=FACE_OUTER_BOUND('',#27,.T.);\n"
           "#26=POLY_LOOP('',(#31,#32,#33));\n#27=POLY_LOOP('',(#31,#33,#34));\n"
           "#31=CARTESIAN_POINT('',(0.,0.,0.));\n#32=CARTESIAN_POINT('',(2.,0.,0.));\n"
           "#33=CARTESIAN_POINT('',(2.,2.,0.));\n#34=CARTESIAN_POINT('',(0.,2.,0.));\n")
          .parts.at(0);
  EXPECT_THAT(records_of(part), ElementsAre(26u, 27u));
  EXPECT_NEAR(whole_length(part), 8 + std::sqrt(8), 1e-12);
}

}  // namespace
}  // namespace Kessel::test
