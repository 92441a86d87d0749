// One assembly of three levels, split into files whose whole text was worked out by hand.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "naive/naive_splitter.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

// A cart has two axles and a spare wheel, an axle has a wheel and a pin:
//
//   cart #12 -+- axle #22, twice -+- wheel #32
//             |                   +- pin #42
//             +- wheel #32
//
// Wheel and pin have geometry, cart and axle have placements only. The cart and the wheel share a
// complex context and its units, the cart and the pin a simple context. Both styles use one colour
// and one presentation record lists both. An approval covers the wheel and the cart, a composite
// table belongs to the pin, one category names wheel and pin.
constexpr std::string_view INPUT = R"(ISO-10303-21;
HEADER;
FILE_DESCRIPTION(('a cart'),'2;1');
FILE_NAME('cart.stp','2020-01-01T00:00:00',('Doe'),('Works'),'hand','hand','');
FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));
ENDSEC;
DATA;
#1=APPLICATION_CONTEXT('design');
#2=APPLICATION_PROTOCOL_DEFINITION('','automotive_design',2000,#1);
#3=PRODUCT_CONTEXT('',#1,'mechanical');
#4=PRODUCT_DEFINITION_CONTEXT('part definition',#1,'design');
#10=PRODUCT('cart','cart','',(#3));
#11=PRODUCT_DEFINITION_FORMATION('','',#10);
#12=PRODUCT_DEFINITION('design','',#11,#4);
#20=PRODUCT('axle','axle','',(#3));
#21=PRODUCT_DEFINITION_FORMATION('','',#20);
#22=PRODUCT_DEFINITION('design','',#21,#4);
#30=PRODUCT('wheel','wheel','',(#3));
#31=PRODUCT_DEFINITION_FORMATION('','',#30);
#32=PRODUCT_DEFINITION('design','',#31,#4);
#40=PRODUCT('pin','pin','',(#3));
#41=PRODUCT_DEFINITION_FORMATION('','',#40);
#42=PRODUCT_DEFINITION('design','',#41,#4);
#50=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','front axle','',#12,#22,$);
#51=NEXT_ASSEMBLY_USAGE_OCCURRENCE('2','rear axle','',#12,#22,$);
#52=NEXT_ASSEMBLY_USAGE_OCCURRENCE('3','spare wheel','',#12,#32,$);
#53=NEXT_ASSEMBLY_USAGE_OCCURRENCE('4','wheel','',#22,#32,$);
#54=NEXT_ASSEMBLY_USAGE_OCCURRENCE('5','pin','',#22,#42,$);
#60=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));
#61=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));
#62=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(0.0174532925),#61);
#63=DIMENSIONAL_EXPONENTS(0.,0.,0.,0.,0.,0.,0.);
#64=(CONVERSION_BASED_UNIT('degree',#62)NAMED_UNIT(#63)PLANE_ANGLE_UNIT());
#65=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#60,#64))
REPRESENTATION_CONTEXT('space','3D'));
#66=GEOMETRIC_REPRESENTATION_CONTEXT('flat','2D',2);
#70=PRODUCT_DEFINITION_SHAPE('','',#12);
#71=PRODUCT_DEFINITION_SHAPE('','',#22);
#72=PRODUCT_DEFINITION_SHAPE('','',#32);
#73=PRODUCT_DEFINITION_SHAPE('','',#42);
#74=SHAPE_DEFINITION_REPRESENTATION(#70,#80);
#75=SHAPE_DEFINITION_REPRESENTATION(#71,#81);
#76=SHAPE_DEFINITION_REPRESENTATION(#72,#82);
#77=SHAPE_DEFINITION_REPRESENTATION(#73,#83);
#80=SHAPE_REPRESENTATION('cart',(#84),#65);
#81=SHAPE_REPRESENTATION('axle',(#85),#65);
#82=ADVANCED_BREP_SHAPE_REPRESENTATION('wheel',(#84,#90),#65);
#83=SHAPE_REPRESENTATION('pin',(#92),#66);
#84=AXIS2_PLACEMENT_3D('',#87,$,$);
#85=AXIS2_PLACEMENT_3D('left',#88,$,$);
#87=CARTESIAN_POINT('',(0.,0.,0.));
#88=CARTESIAN_POINT('',(0.,5.,0.));
#90=MANIFOLD_SOLID_BREP('wheel',#91);
#91=CLOSED_SHELL('',());
#92=GEOMETRIC_CURVE_SET('pin',(#88));
#95=ITEM_DEFINED_TRANSFORMATION('','',#84,#85);
#96=(REPRESENTATION_RELATIONSHIP('','',#82,#81)
REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#95)SHAPE_REPRESENTATION_RELATIONSHIP());
#97=PRODUCT_DEFINITION_SHAPE('','',#53);
#98=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#96,#97);
#100=COLOUR_RGB('',0.,0.,1.);
#101=PRESENTATION_STYLE_ASSIGNMENT((#100));
#102=STYLED_ITEM('wheel; blue',(#101),#90);
#103=STYLED_ITEM('pin',(#101),#92);
#104=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(#102,#103),#65);
#110=APPROVAL_STATUS('approved');
#111=APPROVAL(#110,'release');
#112=APPLIED_APPROVAL_ASSIGNMENT(#111,(#32,#12));
#113=PERSON('p','Doe',$,$,$,$);
#114=APPROVAL_ROLE('reviewer');
#115=APPROVAL_PERSON_ORGANIZATION(#113,#111,#114);
#120=COMPOSITE_ASSEMBLY_TABLE('lay-up','',#42,(#121));
#121=PLY_LAMINATE_SEQUENCE_DEFINITION('ply 1',#123);
#122=LAID_ORIENTATION_ANGLE('45',#123);
#123=REPRESENTATION_ITEM('ply');
#130=PRODUCT_RELATED_PRODUCT_CATEGORY('part','',(#30,#40));
#140=LOOSE_NOTE('see #30');
#142=NAME_TAG('#30',#30);
ENDSEC;
END-ISO-10303-21;
)";

// Who gets which number. R is the cart (the root: nothing uses it, and it has no geometry), W the
// wheel, P the pin; "#30 R13 W3" is: #30 joins the cart as 13 and the wheel as 3.
//
// parts          #12 R1, #22 R2, #32 R3 W1, #42 R4 P1: all join the root, leaves themselves too.
// The
//                axle joins nothing of its own, so no instance ever does: its file stays empty.
// definitions    down from #12: #11 R5, #10 R6, #3 R7, #1 R8, #4 R9; from #22: #21 R10, #20 R11;
//                from #32: #31 R12 W2, #30 R13 W3, #3 W4, #1 W5, #4 W6; from #42: #41 R14 P2,
//                #40 R15 P3, #3 P4, #1 P5, #4 P6
// composites     #120 R16 P7 from #42, and down: #121 R17 P8, #123 R18 P9
// usages         #50 R19, #51 R20, #52 R21, #53 R22, #54 R23, assemblies only
// category       #130 R24 W7 from #30, P10 from #40
// shapes         #70 R25, #71 R26, #72 R27 W8, #73 R28 P11, #97 R29 from the usage #53
// shape links    #74 R30, #80 R31, #75 R32, #81 R33, #76 R34 W9, #82 R35 W10, #77 R36 P12, #83 R37
//                P13: from the shape, then on to the representation
// placements     types in ascending order. ADVANCED_BREP_SHAPE_REPRESENTATION #82: #84 R38 W11, #87
// and contexts   R39 W12, #65 R40 W13, #60 R41 W14, #64 R42 W15, #62 R43 W16, #63 R44 W17, #61 R45
//                W18. SHAPE_REPRESENTATION #80: nothing new; #81: #85 R46, #88 R47; #83: #66 R48
//                P14
// geometry       leaves only: #90 W19, #91 W20 under #82; #92 P15, #88 P16 under #83
// usage shapes   #98 R49 from #97, on to #96 R50, and from there #95 R51
// styles         #102 W21 from #90, and down: #101 W22, #100 W23. #103 W24 from the style that the
//                wheel has by now, P17 from #92, and down: #101 P18, #100 P19, #92 W25, #88 W26
// presentation   #104 W27, P20, leaves only
// approval       #112 R52 W28 from #32, and down: #111 R53 W29, #110 R54 W30, #12 W31, #11 W32, #10
//                W33: the wheel gets the cart's definition, which is approved with it
// its person     #115 R55 W34 from #111, and down: #113 R56 W35, #114 R57 W36
// angle          #122 R58 P21 from #123
// the rest       #2 R59 W37 P22 from #1, #142 R60 W38 from #30; nothing reaches #140
//
// The cart's reference blocks take 61 to 71 for the wheel and 72 to 82 for the pin. Its links to
// its own shape and to the axle's are nobody else's, so they get none.

std::string begin_of(std::string_view path) {
  return "ISO-10303-21;\n"
         "HEADER;\n"
         "FILE_DESCRIPTION(('a cart'),'2;1');\n"
         "FILE_NAME('" +
         std::string(path) +
         "','<time>',('Doe'),('Works'),'hand','hand','');\n"
         "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\n"
         "ENDSEC;\n"
         "\n"
         "DATA;\n";
}

const std::string END = "ENDSEC;\nEND-ISO-10303-21;\n";

const std::string CART = begin_of("out/#10_part.stp") + R"(#8=APPLICATION_CONTEXT('design');
#59=APPLICATION_PROTOCOL_DEFINITION('','automotive_design',2000,#8);
#7=PRODUCT_CONTEXT('',#8,'mechanical');
#9=PRODUCT_DEFINITION_CONTEXT('part definition',#8,'design');
#6=PRODUCT('cart','cart','',(#7));
#5=PRODUCT_DEFINITION_FORMATION('','',#6);
#1=PRODUCT_DEFINITION('design','',#5,#9);
#11=PRODUCT('axle','axle','',(#7));
#10=PRODUCT_DEFINITION_FORMATION('','',#11);
#2=PRODUCT_DEFINITION('design','',#10,#9);
#13=PRODUCT('wheel','wheel','',(#7));
#12=PRODUCT_DEFINITION_FORMATION('','',#13);
#3=PRODUCT_DEFINITION('design','',#12,#9);
#15=PRODUCT('pin','pin','',(#7));
#14=PRODUCT_DEFINITION_FORMATION('','',#15);
#4=PRODUCT_DEFINITION('design','',#14,#9);
#19=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','front axle','',#1,#2,$);
#20=NEXT_ASSEMBLY_USAGE_OCCURRENCE('2','rear axle','',#1,#2,$);
#21=NEXT_ASSEMBLY_USAGE_OCCURRENCE('3','spare wheel','',#1,#3,$);
#22=NEXT_ASSEMBLY_USAGE_OCCURRENCE('4','wheel','',#2,#3,$);
#23=NEXT_ASSEMBLY_USAGE_OCCURRENCE('5','pin','',#2,#4,$);
#41=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));
#45=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));
#43=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(0.0174532925),#45);
#44=DIMENSIONAL_EXPONENTS(0.,0.,0.,0.,0.,0.,0.);
#42=(CONVERSION_BASED_UNIT('degree',#43)NAMED_UNIT(#44)PLANE_ANGLE_UNIT());
#40=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#41,#42))
REPRESENTATION_CONTEXT('space','3D'));
#48=GEOMETRIC_REPRESENTATION_CONTEXT('flat','external',2);
#25=PRODUCT_DEFINITION_SHAPE('','',#1);
#26=PRODUCT_DEFINITION_SHAPE('','',#2);
#27=PRODUCT_DEFINITION_SHAPE('','',#3);
#28=PRODUCT_DEFINITION_SHAPE('','',#4);
#30=SHAPE_DEFINITION_REPRESENTATION(#25,#31);
#32=SHAPE_DEFINITION_REPRESENTATION(#26,#33);
#61=DOCUMENT_TYPE('geometry');
#62=DOCUMENT_FILE('#30_part.stp','','',#61,'',$);
#63=DOCUMENT_REPRESENTATION_TYPE('digital',#62);
#64=EXTERNAL_SOURCE(IDENTIFIER(''));
#65=IDENTIFICATION_ROLE('external document id and location',$);
#66=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('#30_part.stp',#65,#64,(#62));
#67=PROPERTY_DEFINITION('external definition','',#62);
#68=PROPERTY_DEFINITION_REPRESENTATION(#67,#35);
#69=APPLIED_DOCUMENT_REFERENCE(#62,'',(#3));
#70=OBJECT_ROLE('mandatory',$);
#71=ROLE_ASSOCIATION(#70,#69);
#34=SHAPE_DEFINITION_REPRESENTATION(#27,#35);
#72=DOCUMENT_TYPE('geometry');
#73=DOCUMENT_FILE('#40_part.stp','','',#72,'',$);
#74=DOCUMENT_REPRESENTATION_TYPE('digital',#73);
#75=EXTERNAL_SOURCE(IDENTIFIER(''));
#76=IDENTIFICATION_ROLE('external document id and location',$);
#77=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('#40_part.stp',#76,#75,(#73));
#78=PROPERTY_DEFINITION('external definition','',#73);
#79=PROPERTY_DEFINITION_REPRESENTATION(#78,#37);
#80=APPLIED_DOCUMENT_REFERENCE(#73,'',(#4));
#81=OBJECT_ROLE('mandatory',$);
#82=ROLE_ASSOCIATION(#81,#80);
#36=SHAPE_DEFINITION_REPRESENTATION(#28,#37);
#31=SHAPE_REPRESENTATION('cart',(#38),#40);
#33=SHAPE_REPRESENTATION('axle',(#46),#40);
#35=ADVANCED_BREP_SHAPE_REPRESENTATION('wheel',(#38),#40);
#37=SHAPE_REPRESENTATION('pin',(),#48);
#38=AXIS2_PLACEMENT_3D('',#39,$,$);
#46=AXIS2_PLACEMENT_3D('left',#47,$,$);
#39=CARTESIAN_POINT('',(0.,0.,0.));
#47=CARTESIAN_POINT('',(0.,5.,0.));
#51=ITEM_DEFINED_TRANSFORMATION('','',#38,#46);
#50=(REPRESENTATION_RELATIONSHIP('','',#35,#33)
REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#51)SHAPE_REPRESENTATION_RELATIONSHIP());
#29=PRODUCT_DEFINITION_SHAPE('','',#22);
#49=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#50,#29);
#54=APPROVAL_STATUS('approved');
#53=APPROVAL(#54,'release');
#52=APPLIED_APPROVAL_ASSIGNMENT(#53,(#3,#1));
#56=PERSON('p','Doe',$,$,$,$);
#57=APPROVAL_ROLE('reviewer');
#55=APPROVAL_PERSON_ORGANIZATION(#56,#53,#57);
#16=COMPOSITE_ASSEMBLY_TABLE('lay-up','',#4,(#17));
#17=PLY_LAMINATE_SEQUENCE_DEFINITION('ply 1',#18);
#58=LAID_ORIENTATION_ANGLE('45',#18);
#18=REPRESENTATION_ITEM('ply');
#24=PRODUCT_RELATED_PRODUCT_CATEGORY('part','',(#13,#15));
#60=NAME_TAG('#30',#13);
)" + END;

const std::string AXLE = begin_of("out/#20_part.stp") + END;

// The ";" inside a string is lost with the white space around it.
const std::string WHEEL = begin_of("out/#30_part.stp") + R"(#5=APPLICATION_CONTEXT('design');
#37=APPLICATION_PROTOCOL_DEFINITION('','automotive_design',2000,#5);
#4=PRODUCT_CONTEXT('',#5,'mechanical');
#6=PRODUCT_DEFINITION_CONTEXT('part definition',#5,'design');
#33=PRODUCT('cart','cart','',(#4));
#32=PRODUCT_DEFINITION_FORMATION('','',#33);
#31=PRODUCT_DEFINITION('design','',#32,#6);
#3=PRODUCT('wheel','wheel','',(#4));
#2=PRODUCT_DEFINITION_FORMATION('','',#3);
#1=PRODUCT_DEFINITION('design','',#2,#6);
#14=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));
#18=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));
#16=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(0.0174532925),#18);
#17=DIMENSIONAL_EXPONENTS(0.,0.,0.,0.,0.,0.,0.);
#15=(CONVERSION_BASED_UNIT('degree',#16)NAMED_UNIT(#17)PLANE_ANGLE_UNIT());
#13=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#14,#15))
REPRESENTATION_CONTEXT('space','3D'));
#8=PRODUCT_DEFINITION_SHAPE('','',#1);
#9=SHAPE_DEFINITION_REPRESENTATION(#8,#10);
#10=ADVANCED_BREP_SHAPE_REPRESENTATION('wheel',(#11,#19),#13);
#11=AXIS2_PLACEMENT_3D('',#12,$,$);
#12=CARTESIAN_POINT('',(0.,0.,0.));
#26=CARTESIAN_POINT('',(0.,5.,0.));
#19=MANIFOLD_SOLID_BREP('wheel',#20);
#20=CLOSED_SHELL('',());
#25=GEOMETRIC_CURVE_SET('pin',(#26));
#23=COLOUR_RGB('',0.,0.,1.);
#22=PRESENTATION_STYLE_ASSIGNMENT((#23));
#21=STYLED_ITEM('wheelblue',(#22),#19);
#24=STYLED_ITEM('pin',(#22),#25);
#27=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(#21,#24,#13),#13);
#30=APPROVAL_STATUS('approved');
#29=APPROVAL(#30,'release');
#28=APPLIED_APPROVAL_ASSIGNMENT(#29,(#1,#31));
#35=PERSON('p','Doe',$,$,$,$);
#36=APPROVAL_ROLE('reviewer');
#34=APPROVAL_PERSON_ORGANIZATION(#35,#29,#36);
#7=PRODUCT_RELATED_PRODUCT_CATEGORY('part','',(#3));
#38=NAME_TAG('#30',#3);
)" + END;

// The presentation record loses its context, which the pin lacks, with the comma.
const std::string PIN = begin_of("out/#40_part.stp") + R"(#5=APPLICATION_CONTEXT('design');
#22=APPLICATION_PROTOCOL_DEFINITION('','automotive_design',2000,#5);
#4=PRODUCT_CONTEXT('',#5,'mechanical');
#6=PRODUCT_DEFINITION_CONTEXT('part definition',#5,'design');
#3=PRODUCT('pin','pin','',(#4));
#2=PRODUCT_DEFINITION_FORMATION('','',#3);
#1=PRODUCT_DEFINITION('design','',#2,#6);
#14=GEOMETRIC_REPRESENTATION_CONTEXT('flat','2D',2);
#11=PRODUCT_DEFINITION_SHAPE('','',#1);
#12=SHAPE_DEFINITION_REPRESENTATION(#11,#13);
#13=SHAPE_REPRESENTATION('pin',(#15),#14);
#16=CARTESIAN_POINT('',(0.,5.,0.));
#15=GEOMETRIC_CURVE_SET('pin',(#16));
#19=COLOUR_RGB('',0.,0.,1.);
#18=PRESENTATION_STYLE_ASSIGNMENT((#19));
#17=STYLED_ITEM('pin',(#18),#15);
#20=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(#17));
#7=COMPOSITE_ASSEMBLY_TABLE('lay-up','',#1,(#8));
#8=PLY_LAMINATE_SEQUENCE_DEFINITION('ply 1',#9);
#21=LAID_ORIENTATION_ANGLE('45',#9);
#9=REPRESENTATION_ITEM('ply');
#10=PRODUCT_RELATED_PRODUCT_CATEGORY('part','',(#3));
)" + END;

const std::vector<std::string> FILES = {"out/#10_part.stp", "out/#20_part.stp", "out/#30_part.stp",
                                        "out/#40_part.stp"};

TEST(ThreeLevelAssembly, EveryFileIsAsWorkedOutByHand) {
  const SplitRun run = split_text(INPUT);
  EXPECT_EQ(run.exception, "");
  EXPECT_EQ(run.messages, "");
  EXPECT_EQ(run.result, FILES);
  EXPECT_EQ(run.roots_txt, "#10_part.stp\n");
  ASSERT_EQ(run.files.size(), 4u);
  EXPECT_EQ(run.files.at("out/#10_part.stp"), CART);
  EXPECT_EQ(run.files.at("out/#20_part.stp"), AXLE);
  EXPECT_EQ(run.files.at("out/#30_part.stp"), WHEEL);
  EXPECT_EQ(run.files.at("out/#40_part.stp"), PIN);
}

TEST(ThreeLevelAssembly, PlainSplitterAgreesWithTheHand) {
  const naive::Outcome outcome = naive::split(INPUT, "out", "<time>");
  EXPECT_EQ(outcome.exception, "");
  EXPECT_EQ(outcome.messages, "");
  EXPECT_EQ(outcome.result, FILES);
  EXPECT_EQ(outcome.roots_txt, "#10_part.stp\n");
  ASSERT_EQ(outcome.files.size(), 4u);
  EXPECT_EQ(outcome.files.at("out/#10_part.stp"), CART);
  EXPECT_EQ(outcome.files.at("out/#20_part.stp"), AXLE);
  EXPECT_EQ(outcome.files.at("out/#30_part.stp"), WHEEL);
  EXPECT_EQ(outcome.files.at("out/#40_part.stp"), PIN);
}

}  // namespace
}  // namespace Kessel::test
