// A small split with marks, by hand.
#pragma once

#include <string>

#include "join/joined_folder.h"

namespace Kessel::test {

/// An assembly #3 of one part. The input had a layer of a solid of each.
inline const std::string MARKED_ROOT =
    MARKED + "/*1*/#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n" +
    "/*2*/#2=REPRESENTATION_CONTEXT('','');\n" + product(3, "whole", "(#9,#10)", "#2") +
    "#9=AXIS2_PLACEMENT_3D('up',$,$,$);\n#10=MANIFOLD_SOLID_BREP('own',$);\n"
    "/*20*/#11=PRODUCT_DEFINITION('design','',#12,#1);\n"
    "/*21*/#12=PRODUCT_DEFINITION_FORMATION('','',#13);\n"
    "/*22*/#13=PRODUCT('part','part','',());\n"
    "/*23*/#14=PRODUCT_DEFINITION_SHAPE('','',#11);\n"
    "/*24*/#15=SHAPE_DEFINITION_REPRESENTATION(#14,#16);\n"
    "/*~25*/#16=SHAPE_REPRESENTATION('',(#17),#2);\n"
    "/*26*/#17=AXIS2_PLACEMENT_3D('o',$,$,$);\n"
    "#18=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','','',#3,#11,$);\n"
    "/*30*/#19=PRESENTATION_LAYER_ASSIGNMENT('l','',(#10));\n" +
    made_block(20, "part.stp", "#16", "#11");

inline const std::string MARKED_PART = MARKED +
                                       "/*1*/#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
                                       "/*2*/#2=REPRESENTATION_CONTEXT('','');\n"
                                       "/*20*/#3=PRODUCT_DEFINITION('design','',#4,#1);\n"
                                       "/*21*/#4=PRODUCT_DEFINITION_FORMATION('','',#5);\n"
                                       "/*22*/#5=PRODUCT('part','part','',());\n"
                                       "/*23*/#6=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
                                       "/*24*/#7=SHAPE_DEFINITION_REPRESENTATION(#6,#8);\n"
                                       "/*25*/#8=SHAPE_REPRESENTATION('',(#9,#10),#2);\n"
                                       "/*26*/#9=AXIS2_PLACEMENT_3D('o',$,$,$);\n"
                                       "#10=MANIFOLD_SOLID_BREP('its',$);\n"
                                       "/*30*/#11=PRESENTATION_LAYER_ASSIGNMENT('l','',(#10));\n";

inline const std::string INPUT =
    "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
    "#2=REPRESENTATION_CONTEXT('','');\n"
    "#3=PRODUCT_DEFINITION('design','',#4,#1);\n"
    "#4=PRODUCT_DEFINITION_FORMATION('','',#5);\n"
    "#5=PRODUCT('whole','whole','',());\n"
    "#6=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
    "#7=SHAPE_DEFINITION_REPRESENTATION(#6,#8);\n"
    "#8=SHAPE_REPRESENTATION('',(#9,#10),#2);\n"
    "#9=AXIS2_PLACEMENT_3D('up',$,$,$);\n"
    "#10=MANIFOLD_SOLID_BREP('own',$);\n"
    "#11=PRODUCT_DEFINITION('design','',#12,#1);\n"
    "#12=PRODUCT_DEFINITION_FORMATION('','',#13);\n"
    "#13=PRODUCT('part','part','',());\n"
    "#14=PRODUCT_DEFINITION_SHAPE('','',#11);\n"
    "#15=SHAPE_DEFINITION_REPRESENTATION(#14,#19);\n"
    "#16=AXIS2_PLACEMENT_3D('o',$,$,$);\n"
    "#17=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','','',#3,#11,$);\n"
    "#18=PRESENTATION_LAYER_ASSIGNMENT('l','',(#10,#20));\n"
    "#19=SHAPE_REPRESENTATION('',(#16,#20),#2);\n"
    "#20=MANIFOLD_SOLID_BREP('its',$);\n";

}  // namespace Kessel::test
