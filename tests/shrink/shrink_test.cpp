// What becomes one, record by record, and how the result looks.
#include <gtest/gtest.h>

#include "shrink/shrunk_file.h"

namespace Kessel::test {
namespace {

TEST(Shrink, EqualValuesBecomeTheFirstOfThem) {
  ShrunkFile file;
  EXPECT_EQ(file.records("#9=VERTEX_POINT('',#7);\n"
                         "#7=CARTESIAN_POINT('',(1.,2.,3.));\n"
                         "#3=CARTESIAN_POINT('',(1.,2.,3.));\n"
                         "#4=VERTEX_POINT('',#3);\n"
                         "#5=VERTEX_POINT('',#6);\n"
                         "#6=CARTESIAN_POINT('',(1.,2.,4.));\n"),
            "#9=VERTEX_POINT('',#7);\n"
            "#7=CARTESIAN_POINT('',(1.,2.,3.));\n"
            "#4=VERTEX_POINT('',#7);\n"
            "#5=VERTEX_POINT('',#6);\n"
            "#6=CARTESIAN_POINT('',(1.,2.,4.));\n");
  EXPECT_EQ(file.figures.records_before, 6u);
  EXPECT_EQ(file.figures.records_after, 5u);
  EXPECT_EQ(file.figures.unreachable, 0u);
  EXPECT_EQ(file.figures.bytes_before, std::filesystem::file_size("in.stp"));
  EXPECT_EQ(file.figures.bytes_after, std::filesystem::file_size("out.stp"));
}

TEST(Shrink, WhatTheyReferToBecomesOneFirst) {
  ShrunkFile file;
  EXPECT_EQ(file.records("#1=FACE_SURFACE('',(),#2,.T.);\n"
                         "#2=PLANE('',#3);\n"
                         "#3=AXIS2_PLACEMENT_3D('',#4,#5,$);\n"
                         "#4=CARTESIAN_POINT('',(0.,0.,0.));\n"
                         "#5=DIRECTION('',(0.,0.,1.));\n"
                         "#11=FACE_SURFACE('',(),#12,.T.);\n"
                         "#12=PLANE('',#13);\n"
                         "#13=AXIS2_PLACEMENT_3D('',#14,#15,$);\n"
                         "#14=CARTESIAN_POINT('',(0.,0.,0.));\n"
                         "#15=DIRECTION('',(0.,0.,1.));\n"),
            "#1=FACE_SURFACE('',(),#2,.T.);\n"
            "#2=PLANE('',#3);\n"
            "#3=AXIS2_PLACEMENT_3D('',#4,#5,$);\n"
            "#4=CARTESIAN_POINT('',(0.,0.,0.));\n"
            "#5=DIRECTION('',(0.,0.,1.));\n"
            "#11=FACE_SURFACE('',(),#2,.T.);\n");
}

TEST(Shrink, WordsCountByWhatTheySay) {
  ShrunkFile file;
  EXPECT_EQ(file.records("#1=COLOUR_RGB('f\\X\\FC',1.,0.5,0.);\n"
                         "#2 = COLOUR_RGB( 'f\\X2\\00FC\\X0\\', 1.0, /* half */ 5.E-1, -0. );\n"
                         "#3=COLOUR_RGB('f\\X\\FC',1.,0.5,1);\n"
                         "#4=A(#1,#3);\n#5 = A(  #2, #3);\n"),
            "#1=COLOUR_RGB('f\\X\\FC',1.,0.5,0.);\n"
            "#3=COLOUR_RGB('f\\X\\FC',1.,0.5,1);\n"
            "#4=A(#1,#3);\n#5=A(  #1, #3);\n");
}

TEST(Shrink, ComplexInstances) {
  ShrunkFile file;
  EXPECT_EQ(file.records("#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
                         "#2=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
                         "#3=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT($,.METRE.));\n"
                         "#4=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.),#1);\n"
                         "#5=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.),#2);\n"
                         "#6=A(#4);\n#7=A(#5);\n#8=A(#3);\n"),
            "#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
            "#3=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT($,.METRE.));\n"
            "#4=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.),#1);\n"
            "#6=A(#4);\n#7=A(#4);\n#8=A(#3);\n");
}

/// Records in which two say the same and must stay two.
struct Never {
  std::string name;
  std::string records;
};

const std::string TWO_POINTS =
    "#1=CARTESIAN_POINT('',(0.,0.,0.));\n#2=CARTESIAN_POINT('',(0.,0.,0.));\n";
const std::string TWO_COLOURS = "#1=COLOUR_RGB('',1.,0.,0.);\n#2=COLOUR_RGB('',1.,0.,0.);\n";

const std::vector<Never> NEVER = {
    {"Contexts",
     "#1=REPRESENTATION_CONTEXT('','');\n#2=REPRESENTATION_CONTEXT('','');\n"
     "#3=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('',''));\n"
     "#4=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('',''));\n"
     "#5=APPLICATION_CONTEXT('');\n#6=APPLICATION_CONTEXT('');\n"},
    {"Products", "#1=PRODUCT('','','',());\n#2=PRODUCT('','','',());\n"},
    {"Representations", "#1=SHAPE_REPRESENTATION('',(),$);\n#2=SHAPE_REPRESENTATION('',(),$);\n"},
    {"Topology",
     "#1=VERTEX_POINT('',#3);\n#2=VERTEX_POINT('',#3);\n#3=CARTESIAN_POINT('',(0.,0.));\n"
     "#4=EDGE_CURVE('',#1,#2,$,.T.);\n#5=EDGE_CURVE('',#1,#2,$,.T.);\n"
     "#6=EDGE_LOOP('',(#4));\n#7=EDGE_LOOP('',(#4));\n"},
    {"UnknownTypes", "#1=WIDGET('');\n#2=WIDGET('');\n"},
    {"StyledItems",
     "#1=STYLED_ITEM('',(),#3);\n#2=STYLED_ITEM('',(),#3);\n#3=MANIFOLD_SOLID_BREP('',$);\n"},
    {"ItemsOfARepresentation", TWO_POINTS + "#3=SHAPE_REPRESENTATION('',(#1),$);\n"
                                            "#4=SHAPE_REPRESENTATION('',(#2),$);\n"},
    {"ItemsOfOneOfWhichOneIsUsedElsewhere",
     TWO_POINTS + "#3=SHAPE_REPRESENTATION('',(#1),$);\n#4=VERTEX_POINT('',#2);\n"},
    {"TargetsOfStyles", TWO_POINTS + "#3=STYLED_ITEM('',(),#1);\n#4=STYLED_ITEM('',(),#2);\n"},
    {"TargetsOfOverridingStyles", TWO_POINTS + "#3=OVER_RIDING_STYLED_ITEM('',(),#1,$);\n"
                                               "#4=OVER_RIDING_STYLED_ITEM('',(),#2,$);\n"},
    {"TargetsOfLayers", TWO_POINTS + "#3=PRESENTATION_LAYER_ASSIGNMENT('','',(#1));\n"
                                     "#4=PRESENTATION_LAYER_ASSIGNMENT('x','',(#2));\n"},
    {"TargetsOfInvisibility", TWO_POINTS + "#3=INVISIBILITY((#1));\n#4=VERTEX_POINT('',#2);\n"},
    {"TargetsOfItemIdentification", TWO_POINTS +
                                        "#3=ITEM_IDENTIFIED_REPRESENTATION_USAGE('','',$,$,#1);\n"
                                        "#4=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',$,$,#2);\n"},
    {"TargetsOfTransformations",
     "#1=AXIS2_PLACEMENT_3D('',$,$,$);\n#2=AXIS2_PLACEMENT_3D('',$,$,$);\n"
     "#3=ITEM_DEFINED_TRANSFORMATION('','',#1,#2);\n"},
    {"TargetsOfMaps", TWO_POINTS + "#3=REPRESENTATION_MAP(#1,$);\n#4=MAPPED_ITEM('',$,#2);\n"},
    {"MembersOfGeometricSets", TWO_POINTS + "#3=GEOMETRIC_SET('',(#1));\n"
                                            "#4=GEOMETRIC_CURVE_SET('',(#2));\n"},
    {"GeometryOfUnknownTypes", TWO_POINTS + "#3=WIDGET(#1);\n#4=WIDGET(#2);\n"},
    {"TargetsOfAttributes",
     TWO_COLOURS + "#3=NAME_ATTRIBUTE('light',#1);\n#4=ID_ATTRIBUTE('dark',#2);\n"},
    {"MembersOfOneSet", TWO_COLOURS + "#3=PRESENTATION_STYLE_ASSIGNMENT((#1,#2));\n"},
    {"MembersOfOneSetInOtherOrder", TWO_COLOURS + "#3=PRESENTATION_STYLE_ASSIGNMENT((#1,#2));\n"
                                                  "#4=PRESENTATION_STYLE_ASSIGNMENT((#2,#1));\n"},
    {"MembersOfOneSetOfAnUnknownType", TWO_COLOURS + "#3=WIDGET((#1),(('',#2)));\n"},
    {"PointsOfAPolyLoop", TWO_POINTS + "#3=POLY_LOOP('',(#1,#2));\n"},
    {"Circles",
     "#1=DATE_AND_TIME(#1,$);\n#2=DATE_AND_TIME(#2,$);\n"
     "#3=DATE_AND_TIME(#4,$);\n#4=DATE_AND_TIME(#3,$);\n"},
    {"ReferencesToNothing",
     "#1=VECTOR('',#98,1.);\n#2=VECTOR('',#99,1.);\n#3=VECTOR('',#99,1.);\n"},
    {"OtherTexts",
     "#1=DIRECTION('',(0.,1.));\n#2=DIRECTION('',(1.,0.));\n"
     "#3=DIRECTION('x',(0.,1.));\n#4=VECTOR('',#1,1.);\n#5=VECTOR('',#2,1.);\n"
     "#6=DIRECTION('',(0,1));\n"},
};

class NeverOne : public testing::TestWithParam<Never> {};

TEST_P(NeverOne, StaysAsItIs) {
  ShrunkFile file;
  EXPECT_EQ(file.records(GetParam().records), GetParam().records);
  EXPECT_EQ(file.figures.records_after, file.figures.records_before);
}

INSTANTIATE_TEST_SUITE_P(Rules, NeverOne, testing::ValuesIn(NEVER),
                         [](const auto& test) { return test.param.name; });

TEST(Shrink, MembersOfOneSetThatBecomeEqualByOthers) {
  ShrunkFile file;
  EXPECT_EQ(file.records("#1=FILL_AREA_STYLE_COLOUR('',#11);\n"
                         "#2=FILL_AREA_STYLE_COLOUR('',#12);\n"
                         "#3=FILL_AREA_STYLE('',(#1,#2));\n"
                         "#4=FILL_AREA_STYLE_COLOUR('',#12);\n"
                         "#5=FILL_AREA_STYLE('',(#4));\n"
                         "#11=COLOUR_RGB('',1.,0.,0.);\n"
                         "#12=COLOUR_RGB('',1.,0.,0.);\n"),
            "#1=FILL_AREA_STYLE_COLOUR('',#11);\n"
            "#2=FILL_AREA_STYLE_COLOUR('',#11);\n"
            "#3=FILL_AREA_STYLE('',(#1,#2));\n"
            "#5=FILL_AREA_STYLE('',(#1));\n"
            "#11=COLOUR_RGB('',1.,0.,0.);\n");
}

TEST(Shrink, PointsOfPolylinesAndSplinesMayRepeat) {
  ShrunkFile file;
  EXPECT_EQ(file.records(TWO_POINTS + "#3=POLYLINE('',(#1,#4,#2));\n"
                                      "#4=CARTESIAN_POINT('',(0.,0.,1.));\n"
                                      "#5=CARTESIAN_POINT('',(0.,0.,0.));\n"
                                      "#6=B_SPLINE_SURFACE('',1,1,((#1,#4),(#2,#5)),.T.,.F.);\n"),
            "#1=CARTESIAN_POINT('',(0.,0.,0.));\n"
            "#3=POLYLINE('',(#1,#4,#1));\n"
            "#4=CARTESIAN_POINT('',(0.,0.,1.));\n"
            "#6=B_SPLINE_SURFACE('',1,1,((#1,#4),(#1,#1)),.T.,.F.);\n");
}

TEST(Shrink, SectionsStayAsTheyAre) {
  ShrunkFile file;
  EXPECT_EQ(file.sections("ANCHOR;\n<red> = #6;\n<its red>=#8 {tag:#7};\nENDSEC;\n"
                          "REFERENCE;\n#1 = <a.stp#x>;\n#2=<a.stp#x>;\n<b>=<c>;\nENDSEC;\n"
                          "DATA('one',('AUTOMOTIVE_DESIGN'));\n"
                          "#6=COLOUR_RGB('',1.,0.,0.);\n/* lost */\n#7=COLOUR_RGB('',1.,0.,0.);\n"
                          "ENDSEC;\nDATA('two',('AUTOMOTIVE_DESIGN'));\n"
                          "#8=COLOUR_RGB('',1.,0.,0.);\n#9=COLOUR_RGB('',1.,0.,0.);\n"
                          "#10=COLOUR_RGB('',1.,0.,0.);\n#11=A(#10,#1,#2);\n#12=B(#9);\n"
                          "ENDSEC;\n"),
            "ANCHOR;\n<red> = #6;\n<its red>=#8 {tag:#7};\nENDSEC;\n"
            "REFERENCE;\n#1 = <a.stp#x>;\n#2=<a.stp#x>;\n<b>=<c>;\nENDSEC;\n"
            "DATA('one',('AUTOMOTIVE_DESIGN'));\n"
            "#6=COLOUR_RGB('',1.,0.,0.);\n#7=COLOUR_RGB('',1.,0.,0.);\n"
            "ENDSEC;\nDATA('two',('AUTOMOTIVE_DESIGN'));\n"
            "#8=COLOUR_RGB('',1.,0.,0.);\n#9=COLOUR_RGB('',1.,0.,0.);\n"
            "#11=A(#9,#1,#2);\n#12=B(#9);\n"
            "ENDSEC;\n");
}

TEST(Shrink, NumbersFromOne) {
  ShrunkFile file;
  file.options.renumber = true;
  EXPECT_EQ(file.sections("ANCHOR;\n<red>=#60;\nENDSEC;\nREFERENCE;\n#50=<a.stp#x>;\nENDSEC;\n"
                          "DATA;\n#5=COLOUR_RGB('',1.,0.,0.);\n#7=A(#9,#50,#404,#403,#404);\n"
                          "#9=COLOUR_RGB('',1.,0.,0.);\n#60=B(#5,#0);\nENDSEC;\n"),
            "ANCHOR;\n<red>=#4;\nENDSEC;\nREFERENCE;\n#1=<a.stp#x>;\nENDSEC;\n"
            "DATA;\n#2=COLOUR_RGB('',1.,0.,0.);\n#3=A(#2,#1,#5,#6,#5);\n#4=B(#2,#0);\nENDSEC;\n");
}

TEST(Shrink, RecordsThatAreThereTwiceAreTakenOnce) {
  ShrunkFile file;
  std::vector<std::string> warnings;
  file.options.warning = [&](const Finding& finding) { warnings.push_back(finding.sentence); };
  EXPECT_EQ(file.records("#1=A(#2);\n#2=B();\n#1=A(#2);\n#3=C(#9);\n"),
            "#1=A(#2);\n#2=B();\n#3=C(#9);\n");
  EXPECT_EQ(file.figures.records_before, 4u);
  EXPECT_EQ(file.figures.records_after, 3u);
  EXPECT_EQ(warnings.size(), 2u);
}

TEST(Shrink, NumbersOfAnySize) {
  ShrunkFile file;
  EXPECT_EQ(file.records("#18446744073709551615=COLOUR_RGB('',1.,0.,0.);\n"
                         "#5000000000=COLOUR_RGB('',1.,0.,0.);\n#1=A(#5000000000);\n"
                         "#0007=A(#0000000018446744073709551615);\n"),
            "#18446744073709551615=COLOUR_RGB('',1.,0.,0.);\n#1=A(#18446744073709551615);\n"
            "#7=A(#0000000018446744073709551615);\n");
}

TEST(Shrink, WhatIsUnreachableStaysUnlessAskedFor) {
  const std::string reached =
      "#1=PRODUCT('','','',());\n"
      "#2=STYLED_ITEM('',(#3),#4);\n"
      "#3=PRESENTATION_STYLE_ASSIGNMENT(());\n"
      "#4=MANIFOLD_SOLID_BREP('',#5);\n"
      "#5=CLOSED_SHELL('',());\n"
      "#6=WIDGET(#7);\n"
      "#7=CARTESIAN_POINT('',(0.,0.));\n"
      "#8=SHAPE_REPRESENTATION('',(),#9);\n"
      "#9=REPRESENTATION_CONTEXT('','');\n";
  const std::string unreachable =
      "#10=COLOUR_RGB('',1.,0.,0.);\n"
      "#11=MANIFOLD_SOLID_BREP('',#12);\n"
      "#12=CLOSED_SHELL('',(#13,#5));\n"
      "#13=ADVANCED_FACE('',(),#14,.T.);\n"
      "#14=PLANE('',$);\n"
      "#15=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('',''));\n"
      "#16=DATE_AND_TIME(#17,$);\n"
      "#17=DATE_AND_TIME(#16,$);\n"
      "#18=COLOUR_RGB('',1.,0.,0.);\n";
  ShrunkFile file;
  EXPECT_EQ(file.records(reached + unreachable),
            reached + unreachable.substr(0, unreachable.find("#18")));
  EXPECT_EQ(file.figures.unreachable, 0u);
  file.options.drop_unreachable = true;
  EXPECT_EQ(file.records(reached + unreachable), reached);
  EXPECT_EQ(file.figures.unreachable, 8u);
  EXPECT_EQ(file.figures.records_before, 18u);
  EXPECT_EQ(file.figures.records_after, 9u);
}

}  // namespace
}  // namespace Kessel::test
