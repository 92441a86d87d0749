// Whose colours lines have.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

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

}  // namespace
}  // namespace Kessel::test
