// What becomes one because it says the same, and what stays as it is.
#include <gtest/gtest.h>

#include "join/joined_folder.h"

namespace Kessel::test {
namespace {

/// A root without records of its own beside what refers to "part.stp".
std::string root_with(const std::string& records) {
  return "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n" + product(2, "part", "()", "$") +
         "#8=APPLIED_DOCUMENT_REFERENCE(#9,'',(#2));\n#9=DOCUMENT_FILE('part.stp','','',$,'',$);"
         "\n" +
         records;
}

std::string part_with(const std::string& records) {
  return "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n" + product(2, "part", "()", "$") + records;
}

const std::string PART_JOINED_BEHIND_FIVE =
    "#6=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
    "#7=PRODUCT_DEFINITION('design','',#8,#6);\n"
    "#8=PRODUCT_DEFINITION_FORMATION('','',#9);\n"
    "#9=PRODUCT('part','part','',());\n"
    "#10=PRODUCT_DEFINITION_SHAPE('','',#7);\n"
    "#11=SHAPE_DEFINITION_REPRESENTATION(#10,#12);\n"
    "#12=SHAPE_REPRESENTATION('',(),$);\n";

TEST(JoinValues, EqualOnesOfDifferentFilesBecomeOne) {
  JoinedFolder folder;
  folder.file("root.stp", root_with("#10=COLOUR_RGB('',1.,0.,0.);\n"
                                    "#11=FILL_AREA_STYLE_COLOUR('',#10);\n"
                                    "#12=FILL_AREA_STYLE('',(#11));\n"
                                    "#13=STYLED_ITEM('',(#12),$);\n"
                                    "#14=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"));
  folder.file("part.stp", part_with("#10=STYLED_ITEM('',(#12,#22),$);\n"
                                    "#11=FILL_AREA_STYLE_COLOUR('',#13);\n"
                                    "#12=FILL_AREA_STYLE('',(#11));\n"
                                    "#13=COLOUR_RGB('',1.,0.,0.);\n"
                                    "#21=FILL_AREA_STYLE_COLOUR('',#23);\n"
                                    "#22=FILL_AREA_STYLE('',(#21));\n"
                                    "#23=COLOUR_RGB('',0.,1.,0.);\n"
                                    "#24=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"));
  EXPECT_EQ(folder.data(),
            "#1=COLOUR_RGB('',1.,0.,0.);\n"
            "#2=FILL_AREA_STYLE_COLOUR('',#1);\n"
            "#3=FILL_AREA_STYLE('',(#2));\n"
            "#4=STYLED_ITEM('',(#3),$);\n"
            "#5=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n" +
                PART_JOINED_BEHIND_FIVE +
                "#13=STYLED_ITEM('',(#3,#15),$);\n"
                "#14=FILL_AREA_STYLE_COLOUR('',#16);\n"
                "#15=FILL_AREA_STYLE('',(#14));\n"
                "#16=COLOUR_RGB('',0.,1.,0.);\n");
}

TEST(JoinValues, MembersOfOneSetStayTwo) {
  JoinedFolder folder;
  folder.file("root.stp", root_with("#10=PERSON('1','Doe',$,$,$,$);\n"
                                    "#11=NOBODYS(#10);\n#12=A();\n#13=B();\n#14=C();\n"));
  folder.file("part.stp", part_with("#10=PERSON('1','Doe',$,$,$,$);\n"
                                    "#11=PERSON('1','Doe',$,$,$,$);\n"
                                    "#12=GROUP_OF((#10,#11));\n"));
  EXPECT_EQ(folder.data(),
            "#1=PERSON('1','Doe',$,$,$,$);\n#2=NOBODYS(#1);\n#3=A();\n#4=B();\n#5=C();\n" +
                PART_JOINED_BEHIND_FIVE +
                "#13=PERSON('1','Doe',$,$,$,$);\n"
                "#14=GROUP_OF((#1,#13));\n");
}

TEST(JoinValues, ContextsAndWhatHasIdentityStayApart) {
  JoinedFolder folder;
  const std::string records =
      "#10=APPLICATION_CONTEXT('x');\n"
      "#11=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('',''));\n"
      "#12=APPROVAL(#13,'level');\n"
      "#13=APPROVAL_STATUS('approved');\n"
      "#14=CARTESIAN_POINT('',(0.,0.,0.));\n";
  folder.file("root.stp", root_with(records));
  folder.file("part.stp", part_with(records));
  EXPECT_EQ(folder.data(),
            "#1=APPLICATION_CONTEXT('x');\n"
            "#2=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('',''));\n"
            "#3=APPROVAL(#4,'level');\n"
            "#4=APPROVAL_STATUS('approved');\n"
            "#5=CARTESIAN_POINT('',(0.,0.,0.));\n" +
                PART_JOINED_BEHIND_FIVE +
                "#13=APPLICATION_CONTEXT('x');\n"
                "#14=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('',''));\n"
                "#15=APPROVAL(#4,'level');\n"
                "#16=CARTESIAN_POINT('',(0.,0.,0.));\n");
}

TEST(JoinValues, ValuesOfWhatIsDifferentAreDifferent) {
  JoinedFolder folder;
  folder.file("root.stp", root_with("#10=CURVE_STYLE('',#11,$,$);\n#11=FONT('a');\n"
                                    "#12=A();\n#13=B();\n#14=C();\n"));
  folder.file("part.stp", part_with("#10=CURVE_STYLE('',#11,$,$);\n#11=FONT('a');\n"));
  EXPECT_EQ(folder.data(),
            "#1=CURVE_STYLE('',#2,$,$);\n#2=FONT('a');\n#3=A();\n#4=B();\n#5=C();\n" +
                PART_JOINED_BEHIND_FIVE + "#13=CURVE_STYLE('',#14,$,$);\n#14=FONT('a');\n");
}

TEST(JoinValues, ValuesThatReferToEachOtherInACircleEnd) {
  JoinedFolder folder;
  folder.file("root.stp", root_with("#10=DATE_AND_TIME(#11,#12);\n#11=DATE_AND_TIME(#10,#11);\n"
                                    "#12=DATE_AND_TIME(#10,#11);\n#13=B();\n#14=C();\n"));
  folder.file("part.stp", part_with("#10=DATE_AND_TIME(#10,#10);\n"));
  EXPECT_EQ(folder.data(),
            "#1=DATE_AND_TIME(#2,#3);\n#2=DATE_AND_TIME(#1,#2);\n#3=DATE_AND_TIME(#1,#2);\n"
            "#4=B();\n#5=C();\n" +
                PART_JOINED_BEHIND_FIVE + "#13=DATE_AND_TIME(#13,#13);\n");
}

TEST(JoinValues, OneFileAloneStaysAsItIs) {
  JoinedFolder folder;
  folder.file(
      "root.stp",
      "#7=COLOUR_RGB('',1.,0.,0.);\n#5=COLOUR_RGB('',1.,0.,0.);\n#5=COLOUR_RGB('',1.,0.,0.);\n"
      "/* said */ #9 = A ( #5 , #7, #6 , #6,#8);\n");
  // A record that is there twice is taken once. Numbers that no record has stay without one.
  EXPECT_EQ(folder.data(),
            "#1=COLOUR_RGB('',1.,0.,0.);\n#2=COLOUR_RGB('',1.,0.,0.);\n"
            "#3=A ( #2 , #1, #4 , #4,#5);\n");
}

}  // namespace
}  // namespace Kessel::test
