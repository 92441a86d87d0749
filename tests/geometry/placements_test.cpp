// Where components are, in which units, and walks along them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "geometry/drawn_text.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A second product, definition #101, with a line of length 1 along x from its origin, in a
/// representation #106 with the context `context`; placements #31 at the origin, #32 at (1,2,3),
/// turned around z by a quarter, #33 at (10,0,0); and #7's own product (drawn_product) with them.
std::string two_products(const std::string& items = "#32,#33", const std::string& context = "#7") {
  return drawn_product(items) +
         "#101=PRODUCT_DEFINITION('','',#103,$);\n#102=PRODUCT('two','two','',());\n"
         "#103=PRODUCT_DEFINITION_FORMATION('','',#102);\n"
         "#104=PRODUCT_DEFINITION_SHAPE('','',#101);\n"
         "#105=SHAPE_DEFINITION_REPRESENTATION(#104,#106);\n"
         "#106=SHAPE_REPRESENTATION('',(#31,#107)," +
         context +
         ");\n"
         "#107=GEOMETRIC_CURVE_SET('',(#108));\n#108=POLYLINE('',(#21,#22));\n"
         "#21=CARTESIAN_POINT('',(0.,0.,0.));\n#22=CARTESIAN_POINT('',(1.,0.,0.));\n"
         "#23=CARTESIAN_POINT('',(1.,2.,3.));\n#24=CARTESIAN_POINT('',(10.,0.,0.));\n"
         "#25=DIRECTION('',(0.,0.,1.));\n#26=DIRECTION('',(0.,1.,0.));\n"
         "#31=AXIS2_PLACEMENT_3D('',#21,$,$);\n#32=AXIS2_PLACEMENT_3D('',#23,#25,#26);\n"
         "#33=AXIS2_PLACEMENT_3D('',#24,$,$);\n"
         "#15=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#13,#9))"
         "REPRESENTATION_CONTEXT('',''));\n";
}

/// A usage #200 of the second product in the first, placed by the relationship #203.
const std::string USAGE =
    "#200=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#1,#101,$);\n"
    "#201=PRODUCT_DEFINITION_SHAPE('','',#200);\n"
    "#202=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#203,#201);\n";

std::string relationship(const std::string& first, const std::string& second,
                         const std::string& way) {
  return USAGE + "#203=(REPRESENTATION_RELATIONSHIP('',''," + first + "," + second +
         ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#204)"
         "SHAPE_REPRESENTATION_RELATIONSHIP());\n#204=" +
         way + ";\n";
}

struct PlacementCase {
  const char* name;
  std::string records;
  Point3 begin;  ///< of the component's line, in the assembly
  Point3 end;
};

void PrintTo(const PlacementCase& one, std::ostream* out) {
  *out << one.name;
}

const PlacementCase PLACEMENTS[] = {
    {"item_defined",
     two_products() + relationship("#106", "#6", "ITEM_DEFINED_TRANSFORMATION('','',#31,#32)"),
     {1, 2, 3},
     {1, 3, 3}},
    // From the one placement to the other: what is at (10,0,0) comes to (1,2,3).
    {"from_another_origin",
     two_products("#32") + relationship("#106", "#6", "ITEM_DEFINED_TRANSFORMATION('','',#33,#32)"),
     {1, -8, 3},
     {1, -7, 3}},
    {"assembly_first",
     two_products() + relationship("#6", "#106", "ITEM_DEFINED_TRANSFORMATION('','',#32,#31)"),
     {1, 2, 3},
     {1, 3, 3}},
    // The placements are those of the other representation each.
    {"items_exchanged",
     two_products() + relationship("#106", "#6", "ITEM_DEFINED_TRANSFORMATION('','',#32,#31)"),
     {1, 2, 3},
     {1, 3, 3}},
    {"operator",
     two_products() +
         relationship("#106", "#6",
                      "CARTESIAN_TRANSFORMATION_OPERATOR_3D('','',$,#26,$,#23,2.,#25)"),
     {1, 2, 3},
     {1, 4, 3}},
    {"operator_complex",
     two_products() +
         relationship("#106", "#6",
                      "(CARTESIAN_TRANSFORMATION_OPERATOR(#26,$,#23,2.)"
                      "CARTESIAN_TRANSFORMATION_OPERATOR_3D(#25)FUNCTIONALLY_DEFINED_TRANSFORMATION"
                      "('',$)GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM(''))"),
     {1, 2, 3},
     {1, 4, 3}},
    {"inches_in_millimetres",
     two_products("#32", "#15") +
         relationship("#106", "#6", "ITEM_DEFINED_TRANSFORMATION('','',#31,#32)"),
     {1, 2, 3},
     {1, 27.4, 3}},
    {"mapped_item",
     two_products("#205") + "#200=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#1,#101,$);\n#205=MAPPED_"
                            "ITEM('',#206,#32);\n"
                            "#206=REPRESENTATION_MAP(#31,#106);\n",
     {1, 2, 3},
     {1, 3, 3}},
    {"mapped_item_of_the_usage",
     two_products("#31") +
         "#200=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#1,#101,$);\n#205=MAPPED_ITEM('',#206,#32);"
         "\n"
         "#206=REPRESENTATION_MAP(#31,#106);\n#201=PRODUCT_DEFINITION_SHAPE('','',#200);\n"
         "#207=SHAPE_DEFINITION_REPRESENTATION(#201,#208);\n"
         "#208=SHAPE_REPRESENTATION('',(#205),#7);\n",
     {1, 2, 3},
     {1, 3, 3}},
    {"mapped_item_in_inches",
     two_products("#205", "#15") + "#200=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#1,#101,$);\n#205="
                                   "MAPPED_ITEM('',#206,#32);\n"
                                   "#206=REPRESENTATION_MAP(#31,#106);\n",
     {1, 2, 3},
     {1, 27.4, 3}},
};

class Placed : public testing::TestWithParam<PlacementCase> {};

TEST_P(Placed, IsWhereTheFileSays) {
  const Drawing drawing = draw(GetParam().records);
  ASSERT_EQ(drawing.parts.size(), 2u);
  EXPECT_THAT(drawing.parts[0].lines, IsEmpty());
  ASSERT_EQ(drawing.parts[0].components.size(), 1u);
  const PlacedComponent& component = drawing.parts[0].components[0];
  EXPECT_EQ(component.part, 1u);
  EXPECT_EQ(component.usage, 200u);
  EXPECT_TRUE(component.is_placed);
  ASSERT_EQ(drawing.parts[1].points.size(), 2u);
  EXPECT_LE(distance(component.matrix.apply(drawing.parts[1].points[0]), GetParam().begin), 1e-12);
  EXPECT_LE(distance(component.matrix.apply(drawing.parts[1].points[1]), GetParam().end), 1e-12);
}

INSTANTIATE_TEST_SUITE_P(Ways, Placed, testing::ValuesIn(PLACEMENTS),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(Placements, ThatTheFileDoesNotGiveAreTold) {
  const std::string usage = "#200=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#1,#101,$);\n";
  const Drawing drawing = draw(two_products("#32", "#15") + usage);
  ASSERT_EQ(drawing.parts.at(0).components.size(), 1u);
  EXPECT_FALSE(drawing.parts[0].components[0].is_placed);
  EXPECT_EQ(drawing.parts[0].components[0].matrix.rows,
            (std::array<double, 12>{25.4, 0, 0, 0, 0, 25.4, 0, 0, 0, 0, 25.4, 0}));
}

TEST(Placements, OfAZeroAxisAreNone) {
  const Drawing drawing = draw(
      two_products() + relationship("#106", "#6", "ITEM_DEFINED_TRANSFORMATION('','',#31,#40)") +
      "#40=AXIS2_PLACEMENT_3D('',#21,#41,$);\n#41=DIRECTION('',(0.,0.,0.));\n");
  EXPECT_FALSE(drawing.parts.at(0).components.at(0).is_placed);
}

TEST(MappedItems, OfNoUsageAreOwnLinesAtTheirPlace) {
  const Drawing drawing =
      draw(two_products("#205,#207", "#15") +
           "#205=MAPPED_ITEM('',#206,#32);\n"
           "#206=REPRESENTATION_MAP(#31,#106);\n#207=MAPPED_ITEM('',#206,#33);\n");
  ASSERT_EQ(drawing.parts.size(), 2u);
  const DrawnPart& part = drawing.parts[0];
  EXPECT_THAT(part.components, IsEmpty());
  ASSERT_EQ(part.lines.size(), 2u);
  EXPECT_LE(distance(part.points[0], {1, 2, 3}), 1e-12);
  EXPECT_LE(distance(part.points[1], {1, 27.4, 3}), 1e-12);
  EXPECT_LE(distance(part.points[2], {10, 0, 0}), 1e-12);
  EXPECT_EQ(part.lines[0].record, 108u);
}

TEST(MappedItems, AreDrawnAsFinelyAsTheyAreLarge) {
  const Drawing drawing =
      draw(drawn_product("#205,#207,#209") +
           "#205=MAPPED_ITEM('',#206,#31);\n#206=REPRESENTATION_MAP(#31,#300);\n"
           "#207=MAPPED_ITEM('',#206,#208);\n#209=MAPPED_ITEM('',#206,#31);\n"
           "#208=CARTESIAN_TRANSFORMATION_OPERATOR_3D('','','',$,$,#21,100.,$);\n"
           "#300=SHAPE_REPRESENTATION('',(#301),#7);\n#301=GEOMETRIC_CURVE_SET('',(#302));\n"
           "#302=CIRCLE('',#31,1.);\n#31=AXIS2_PLACEMENT_3D('',#21,$,$);\n"
           "#21=CARTESIAN_POINT('',(0.,0.,0.));\n");
  const DrawnPart& part = drawing.parts.at(0);
  EXPECT_EQ(part.dropped, 0u);
  ASSERT_EQ(part.lines.size(), 3u);
  EXPECT_NEAR(length_of(part, part.lines[1]), 200 * PI, 0.01 * 200 * PI);
  EXPECT_GT(part.lines[1].count, 2 * part.lines[0].count);
  EXPECT_EQ(part.lines[2].count, part.lines[0].count);
  EXPECT_EQ(part.box.high, (Point3{100, 100, 0}));
}

TEST(MappedItems, ThatGoInACircleEnd) {
  const Drawing drawing =
      draw(drawn_product("#205,#20") +
           "#205=MAPPED_ITEM('',#206,#31);\n"
           "#206=REPRESENTATION_MAP(#31,#6);\n#31=AXIS2_PLACEMENT_3D('',#21,$,$);\n"
           "#21=CARTESIAN_POINT('',(0.,0.,0.));\n#22=CARTESIAN_POINT('',(1.,0.,0.));\n"
           "#20=POLYLINE('',(#21,#22));\n");
  EXPECT_EQ(drawing.parts.at(0).lines.size(), 1u);
  EXPECT_EQ(drawing.parts.at(0).dropped, 1u);
}

/// Representations #300 to #300 + `levels`, each of which shows the next one twice.
TEST(MappedItems, OfManyLevelsAreDrawnAsFarAsThatIsSensible) {
  constexpr int LEVELS = 40;
  std::string records = drawn_product("#500,#600") +
                        "#31=AXIS2_PLACEMENT_3D('',#21,$,$);\n"
                        "#21=CARTESIAN_POINT('',(0.,0.,0.));\n";
  const auto number = [](int n) { return "#" + std::to_string(n); };
  for (int i = 0; i < LEVELS; ++i) {
    records += number(500 + i) + "=MAPPED_ITEM(''," + number(400 + i) + ",#31);\n" +
               number(600 + i) + "=MAPPED_ITEM(''," + number(400 + i) + ",#31);\n" +
               number(400 + i) + "=REPRESENTATION_MAP(#31," + number(300 + i) + ");\n" +
               number(300 + i) + "=SHAPE_REPRESENTATION('',(" + number(501 + i) + "," +
               number(601 + i) + "),#7);\n";
  }
  const Drawing drawing = draw(records);
  EXPECT_THAT(drawing.parts.at(0).lines, IsEmpty());
  EXPECT_GT(drawing.parts.at(0).dropped, 0u);
}

TEST(Units, AreThoseOfTheContext) {
  const DrawnPart in_inches = draw(drawn_product("", "#13,#10")).parts.at(0);
  EXPECT_EQ(in_inches.unit, "INCH");
  EXPECT_DOUBLE_EQ(in_inches.unit_metres, 0.0254);
  const DrawnPart in_nothing = draw(drawn_product("", "")).parts.at(0);
  EXPECT_EQ(in_nothing.unit, "");
  EXPECT_EQ(in_nothing.unit_metres, 0);
}

/// A drawing of parts that have a line from the origin to (1,0,0) each, but for the first one; part
/// i uses part i+1 twice, one of them moved by 10^i along x.
Drawing ladder(std::size_t count) {
  Drawing drawing;
  drawing.parts.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    DrawnPart& part = drawing.parts[i];
    if (i + 1 == count) {
      part.points = {{0, 0, 0}, {1, 0, 0}};
      part.lines = {{7, 0xFF0000, 0, 2}};
      for (const Point3& point : part.points) part.box.add(point);
      continue;
    }
    part.components.resize(2);
    for (PlacedComponent& component : part.components) component.part = i + 1;
    part.components[1].matrix.rows[3] = std::pow(10, i);
    part.components[1].colour = static_cast<std::int32_t>(i);
  }
  return drawing;
}

TEST(Places, AreToldWithTheirWays) {
  const Drawing drawing = ladder(3);
  std::vector<std::string> places;
  EXPECT_TRUE(visit_places(drawing, 0, 100, [&](const PlacedPart& place) {
    std::string text = std::to_string(place.part) + " at " +
                       std::to_string(static_cast<int>(place.matrix.rows[3])) + " colour " +
                       std::to_string(place.colour) + " way";
    for (const std::size_t step : place.path) text += " " + std::to_string(step);
    places.push_back(text);
  }));
  EXPECT_THAT(places, ElementsAre("0 at 0 colour -1 way", "1 at 0 colour -1 way 0",
                                  "2 at 0 colour -1 way 0 0", "2 at 10 colour 1 way 0 1",
                                  "1 at 1 colour 0 way 1", "2 at 1 colour 0 way 1 0",
                                  "2 at 11 colour 0 way 1 1"));
}

TEST(Places, EndAtTheLimitAtCyclesAndWithoutLines) {
  Drawing drawing = ladder(3);
  int count = 0;
  const auto add = [&](const PlacedPart&) { ++count; };
  EXPECT_FALSE(visit_places(drawing, 0, 6, add));
  EXPECT_EQ(count, 6);
  EXPECT_TRUE(visit_places(drawing, 0, 7, add));
  drawing.parts[1].components.push_back({.part = 0, .closes_cycle = true});
  count = 0;
  EXPECT_TRUE(visit_places(drawing, 0, 7, add));
  EXPECT_EQ(count, 7);
  drawing.parts[2].lines.clear();
  count = 0;
  EXPECT_TRUE(visit_places(drawing, 0, 7, add));
  EXPECT_TRUE(visit_places(drawing, 5, 7, add));
  EXPECT_EQ(count, 0);
}

TEST(WholeBox, IsAroundEveryPlace) {
  const Box3 box = whole_box(ladder(4), 0);
  EXPECT_EQ(box.low, (Point3{0, 0, 0}));
  EXPECT_EQ(box.high, (Point3{112, 0, 0}));
  EXPECT_TRUE(whole_box(Drawing(), 0).is_empty());
}

TEST(WholeBox, OfALadderThatExplodesIsFoundAllTheSame) {
  const Box3 box = whole_box(ladder(61), 0);
  EXPECT_EQ(box.low[0], 0);
  EXPECT_NEAR(box.high[0], 1.1111111111111111e59, 1e50);
}

TEST(WholeBox, IsTightWhereComponentsAreTurned) {
  Drawing drawing;
  drawing.parts.resize(2);
  drawing.parts[1].points = {{-1, 0, 0}, {1, 0, 0}, {0, -1, 0}, {0, 1, 0}};
  drawing.parts[1].lines = {{1, NO_COLOUR, 0, 2}, {2, NO_COLOUR, 2, 2}};
  PlacedComponent turned{.part = 1};
  const double half = std::sqrt(0.5);
  turned.matrix.rows = {half, -half, 0, 0, half, half, 0, 0, 0, 0, 1, 0};
  drawing.parts[0].components = {turned};
  EXPECT_NEAR(whole_box(drawing, 0).high[0], half, 1e-15);
}

}  // namespace
}  // namespace Kessel::test
