// Whose colours lines have.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <set>
#include <vector>

#include "geometry/drawn_text.h"

namespace Kessel::test {
namespace {

/// A solid #20 with two faces #41 and #42 that share the edge #50, the first with the edge #51 of
/// its own; a polyline #60 in a set #61. Colours: #71 red, #72 green by name, #73 blue for curves.
const std::string COLOURED_RECORDS =
    drawn_product("#20,#61") +
    "#20=MANIFOLD_SOLID_BREP('',#40);\n#40=CLOSED_SHELL('',(#41,#42));\n"
    "#41=ADVANCED_FACE('',(#43),$,.T.);\n#42=ADVANCED_FACE('',(#44),$,.T.);\n"
    "#43=FACE_BOUND('',#45,.T.);\n#44=FACE_BOUND('',#46,.T.);\n#45=EDGE_LOOP('',(#47,#48));\n"
    "#46=EDGE_LOOP('',(#49));\n#47=ORIENTED_EDGE('',*,*,#50,.T.);\n"
    "#48=ORIENTED_EDGE('',*,*,#51,.T.);\n#49=ORIENTED_EDGE('',*,*,#50,.F.);\n"
    "#50=EDGE_CURVE('',#31,#32,#33,.T.);\n#51=EDGE_CURVE('',#31,#34,#33,.T.);\n"
    "#31=VERTEX_POINT('',#21);\n#32=VERTEX_POINT('',#22);\n#34=VERTEX_POINT('',#23);\n"
    "#21=CARTESIAN_POINT('',(0.,0.,0.));\n#22=CARTESIAN_POINT('',(1.,0.,0.));\n"
    "#23=CARTESIAN_POINT('',(2.,0.,0.));\n#33=LINE('',#21,#35);\n#35=VECTOR('',#36,1.);\n"
    "#36=DIRECTION('',(1.,0.,0.));\n#60=POLYLINE('',(#22,#23));\n"
    "#61=GEOMETRIC_CURVE_SET('',(#60));\n"
    "#71=PRESENTATION_STYLE_ASSIGNMENT((#74));\n#72=PRESENTATION_STYLE_ASSIGNMENT((#75));\n"
    "#73=PRESENTATION_STYLE_ASSIGNMENT((#76));\n#74=SURFACE_STYLE_USAGE(.BOTH.,#77);\n"
    "#75=SURFACE_STYLE_USAGE(.BOTH.,#78);\n#76=CURVE_STYLE('',#99,$,#86);\n"
    "#77=SURFACE_SIDE_STYLE('',(#89,#79));\n#78=SURFACE_SIDE_STYLE('',(#80));\n"
    "#79=SURFACE_STYLE_FILL_AREA(#81);\n#80=SURFACE_STYLE_RENDERING(.NORMAL_SHADING.,#85);\n"
    "#81=FILL_AREA_STYLE('',(#82));\n#82=FILL_AREA_STYLE_COLOUR('',#84);\n"
    "#84=COLOUR_RGB('',1.,0.,0.);\n#85=DRAUGHTING_PRE_DEFINED_COLOUR('green');\n"
    "#86=COLOUR_RGB('',0.,0.,0.5);\n#89=SURFACE_STYLE_BOUNDARY(#76);\n";

struct ColourCase {
  const char* name;
  const char* styles;
  std::int32_t shared;  ///< of the edge #50
  std::int32_t own;     ///< of the edge #51
  std::int32_t wire;    ///< of the curve #60
};

void PrintTo(const ColourCase& one, std::ostream* out) {
  *out << one.name;
}

constexpr std::int32_t RED = 0xFF0000;
constexpr std::int32_t GREEN = 0x00FF00;
constexpr std::int32_t BLUE = 0x000080;
constexpr std::int32_t NONE = NO_COLOUR;

const ColourCase COLOURS[] = {
    {"none", "", NONE, NONE, NONE},
    {"of_the_solid", "#90=STYLED_ITEM('',(#71),#20);\n", RED, RED, NONE},
    {"of_the_shell", "#90=STYLED_ITEM('',(#72),#40);\n", GREEN, GREEN, NONE},
    {"of_a_face", "#90=STYLED_ITEM('',(#71),#41);\n", RED, RED, NONE},
    {"of_the_second_face", "#90=STYLED_ITEM('',(#71),#42);\n", RED, NONE, NONE},
    {"of_a_face_in_a_solid", "#90=STYLED_ITEM('',(#71),#20);\n#91=STYLED_ITEM('',(#72),#42);\n",
     GREEN, RED, NONE},
    {"of_the_first_of_two_faces",
     "#90=STYLED_ITEM('',(#71),#42);\n#91=STYLED_ITEM('',(#72),#41);\n", GREEN, GREEN, NONE},
    {"over_riding",
     "#90=OVER_RIDING_STYLED_ITEM('',(#72),#20,#91);\n#91=STYLED_ITEM('',(#71),#20);\n", GREEN,
     GREEN, NONE},
    {"of_the_representation", "#90=STYLED_ITEM('',(#71),#6);\n", RED, RED, RED},
    {"of_the_representation_and_a_curve",
     "#90=STYLED_ITEM('',(#71),#6);\n#91=STYLED_ITEM('',(#73),#60);\n", RED, RED, BLUE},
    {"of_a_set", "#90=STYLED_ITEM('',(#73),#61);\n", NONE, NONE, BLUE},
    {"of_an_edge", "#90=STYLED_ITEM('',(#73),#50);\n", BLUE, NONE, NONE},
    {"of_an_edge_and_its_solid", "#90=STYLED_ITEM('',(#73),#50);\n#91=STYLED_ITEM('',(#71),#20);\n",
     RED, RED, NONE},
    {"of_surfaces_before_curves", "#90=STYLED_ITEM('',(#73,#71),#20);\n", RED, RED, NONE},
    {"in_a_circle",
     "#90=STYLED_ITEM('',(#91),#20);\n#91=PRESENTATION_STYLE_ASSIGNMENT((#92,#71));\n"
     "#92=PRESENTATION_STYLE_ASSIGNMENT((#91));\n",
     RED, RED, NONE},
    {"without_a_style", "#90=STYLED_ITEM('',(),#20);\n#91=STYLED_ITEM('',(#99),#41);\n", NONE, NONE,
     NONE},
    {"of_another_name",
     "#90=STYLED_ITEM('',(#91),#20);\n#91=CURVE_STYLE('',$,$,#92);\n"
     "#92=DRAUGHTING_PRE_DEFINED_COLOUR('mauve');\n",
     NONE, NONE, NONE},
    {"beyond_all_bounds",
     "#90=STYLED_ITEM('',(#91),#20);\n#91=CURVE_STYLE('',$,$,#92);\n#92=COLOUR_RGB('',9.,-1.,0.);"
     "\n",
     RED, RED, NONE},
};

class Coloured : public testing::TestWithParam<ColourCase> {};

TEST_P(Coloured, ByWhatSaysMost) {
  const DrawnPart part = draw(COLOURED_RECORDS + GetParam().styles).parts.at(0);
  std::map<std::uint64_t, std::int32_t> colours;
  for (const DrawnLine& line : part.lines) colours[line.record] = line.colour;
  EXPECT_EQ(colours, (std::map<std::uint64_t, std::int32_t>{
                         {50, GetParam().shared}, {51, GetParam().own}, {60, GetParam().wire}}));
}

INSTANTIATE_TEST_SUITE_P(Styles, Coloured, testing::ValuesIn(COLOURS),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(Colours, OfOneUsageAreThoseOfItsComponent) {
  const Drawing drawing =
      draw(COLOURED_RECORDS +
           "#101=PRODUCT_DEFINITION('','',#103,$);\n#102=PRODUCT('two','two','',());\n"
           "#103=PRODUCT_DEFINITION_FORMATION('','',#102);\n"
           "#200=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#101,#1,$);\n"
           "#201=PRODUCT_DEFINITION_SHAPE('','',#200);\n"
           "#202=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#203,#201);\n"
           "#90=CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(#72),#6,#91,(#202));\n"
           "#91=STYLED_ITEM('',(#71),#20);\n");
  ASSERT_EQ(drawing.parts.size(), 2u);
  const DrawnLine edge = drawing.parts[0].lines.at(1);
  EXPECT_EQ(edge.record, 50u);
  EXPECT_EQ(edge.colour, RED);
  EXPECT_EQ(drawing.parts[1].components.at(0).colour, GREEN);
}

/// The product #1 of COLOURED_RECORDS as a component of "two" (#101, usage #200, placement #202),
/// of which "three" (#301) has two, by the usages #400 and #410 with the placements #402 and #412.
const std::string NESTED_RECORDS =
    COLOURED_RECORDS +
    "#101=PRODUCT_DEFINITION('','',#103,$);\n#102=PRODUCT('two','two','',());\n"
    "#103=PRODUCT_DEFINITION_FORMATION('','',#102);\n"
    "#200=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#101,#1,$);\n"
    "#201=PRODUCT_DEFINITION_SHAPE('','',#200);\n"
    "#202=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#203,#201);\n"
    "#301=PRODUCT_DEFINITION('','',#303,$);\n#302=PRODUCT('three','three','',());\n"
    "#303=PRODUCT_DEFINITION_FORMATION('','',#302);\n"
    "#400=NEXT_ASSEMBLY_USAGE_OCCURRENCE('a','','',#301,#101,$);\n"
    "#401=PRODUCT_DEFINITION_SHAPE('','',#400);\n"
    "#402=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#403,#401);\n"
    "#410=NEXT_ASSEMBLY_USAGE_OCCURRENCE('b','','',#301,#101,$);\n"
    "#411=PRODUCT_DEFINITION_SHAPE('','',#410);\n"
    "#412=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#413,#411);\n";

/// In the context of the placements `placements`, the style `style` holds for the item #6.
std::string in_context(int number, const std::string& style, const std::string& placements) {
  return "#" + std::to_string(number) + "=CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(" + style +
         "),#6,#91,(" + placements + "));\n";
}

struct PlacedCase {
  const char* name;
  std::string styles;
  std::vector<std::int32_t> colours;  ///< of "one" wherever it is shown in "three"
};

void PrintTo(const PlacedCase& one, std::ostream* out) {
  *out << one.name;
}

const PlacedCase PLACED[] = {
    {"none", "", {NONE, NONE}},
    {"in_its_assembly", in_context(90, "#72", "#202"), {GREEN, GREEN}},
    {"above_its_assembly", in_context(90, "#71", "#412"), {NONE, RED}},
    {"by_the_whole_way", in_context(90, "#73", "#402,#202"), {BLUE, NONE}},
    {"by_the_way_from_below", in_context(90, "#73", "#202,#402"), {BLUE, NONE}},
    {"the_upper_one_counts",
     in_context(90, "#72", "#202") + in_context(92, "#71", "#402"),
     {RED, GREEN}},
    {"the_longer_way_counts",
     in_context(90, "#72", "#202") + in_context(92, "#71", "#402") +
         in_context(93, "#73", "#402,#202"),
     {BLUE, GREEN}},
    {"a_way_that_is_none", in_context(90, "#73", "#402,#412"), {NONE, NONE}},
    {"hidden_at_one_place", in_context(90, "", "#402,#202") + "#94=INVISIBILITY((#90));\n", {NONE}},
    {"hidden_in_its_assembly", in_context(90, "#71", "#202") + "#94=INVISIBILITY((#90));\n", {}},
    {"hidden_with_its_assembly",
     in_context(90, "#71", "#412") + "#94=INVISIBILITY((#90));\n",
     {NONE}},
};

class PlacedStyles : public testing::TestWithParam<PlacedCase> {};

TEST_P(PlacedStyles, HoldWhereTheyAreSaid) {
  const Drawing drawing = draw(NESTED_RECORDS + GetParam().styles);
  std::vector<std::int32_t> colours;
  Box3 box;
  visit_places(drawing, 2, 10, [&](const PlacedPart& place) {
    if (place.part != 0) return;
    colours.push_back(place.colour);
    for (const Point3& point : drawing.parts[0].points) box.add(place.matrix.apply(point));
  });
  EXPECT_EQ(colours, GetParam().colours);
  EXPECT_EQ(whole_box(drawing, 2).high, box.high);
}

INSTANTIATE_TEST_SUITE_P(Contexts, PlacedStyles, testing::ValuesIn(PLACED),
                         [](const auto& test) { return std::string(test.param.name); });

struct HiddenCase {
  const char* name;
  const char* records;
  std::set<std::uint64_t> shown;  ///< of the edges #50 and #51 and the curve #60
};

void PrintTo(const HiddenCase& one, std::ostream* out) {
  *out << one.name;
}

const HiddenCase HIDDEN[] = {
    {"nothing", "#91=INVISIBILITY(());\n", {50, 51, 60}},
    {"a_styled_solid", "#90=STYLED_ITEM('',(#71),#20);\n#91=INVISIBILITY((#90));\n", {60}},
    {"a_styled_item_without_style",
     "#90=STYLED_ITEM('',(),#61);\n#91=INVISIBILITY((#90));\n",
     {50, 51}},
    {"a_face", "#90=STYLED_ITEM('',(#71),#41);\n#91=INVISIBILITY((#90));\n", {50, 60}},
    {"a_representation", "#91=INVISIBILITY((#6));\n", {}},
    {"a_layer",
     "#90=PRESENTATION_LAYER_ASSIGNMENT('','',(#20));\n#91=INVISIBILITY((#90));\n",
     {60}},
    {"a_layer_of_styled_items",
     "#88=STYLED_ITEM('',(#71),#61);\n#90=PRESENTATION_LAYER_ASSIGNMENT('','',(#88));\n"
     "#91=INVISIBILITY((#90));\n",
     {50, 51}},
    {"in_one_presentation_only",
     "#90=STYLED_ITEM('',(#71),#20);\n"
     "#91=(CONTEXT_DEPENDENT_INVISIBILITY(#99)INVISIBILITY((#90)));\n",
     {50, 51, 60}},
};

class HiddenItems : public testing::TestWithParam<HiddenCase> {};

TEST_P(HiddenItems, AreNotDrawn) {
  const DrawnPart part = draw(COLOURED_RECORDS + GetParam().records).parts.at(0);
  std::set<std::uint64_t> shown;
  for (const DrawnLine& line : part.lines) shown.insert(line.record);
  EXPECT_EQ(shown, GetParam().shown);
  EXPECT_EQ(part.dropped, 0u);
}

INSTANTIATE_TEST_SUITE_P(Records, HiddenItems, testing::ValuesIn(HIDDEN),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace Kessel::test
