// Files of one split, with the marks that it leaves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "join/joined_folder.h"
#include "join/marked_split.h"

namespace Kessel::test {
namespace {

TEST(JoinByMarks, RecordsOfOneNumberBecomeOne) {
  JoinedFolder folder;
  folder.file("root.stp", MARKED_ROOT);
  folder.file("part.stp", MARKED_PART);
  EXPECT_EQ(folder.data(), INPUT);
  EXPECT_EQ(folder.joined().records, 20u);
  EXPECT_EQ(folder.joined().bytes, read_file("out.stp").size());
  ASSERT_EQ(folder.joined().inputs.size(), 2u);
  EXPECT_EQ(folder.joined().inputs[0].path, folder.folder() / "root.stp");
  EXPECT_EQ(folder.joined().inputs[0].records, 30u);
  EXPECT_EQ(folder.joined().inputs[1].path, folder.folder() / "part.stp");
  EXPECT_EQ(folder.joined().inputs[1].records, 11u);
  EXPECT_TRUE(folder.joined().warnings.empty());
}

TEST(JoinByMarks, WhatStandsBehindANumberWithoutAnEqualsSignIsNoPartOfIt) {
  JoinedFolder folder;
  folder.file("root.stp", "#7 6A('x');\n#8=B(#7);\n");
  EXPECT_EQ(folder.data(), "#1 6A('x');\n#2=B(#1);\n");
}

TEST(JoinByMarks, WholeFile) {
  JoinedFolder folder;
  folder.file("root.stp", MARKED_ROOT);
  folder.file("part.stp", MARKED_PART);
  folder.data();
  EXPECT_EQ(without_time_stamps(read_file("out.stp")),
            "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
            "FILE_NAME('out.stp','<time>',('me'),(''),'','','');\n"
            "FILE_SCHEMA(('AP'));\nENDSEC;\nDATA;\n" +
                INPUT + "ENDSEC;\nEND-ISO-10303-21;\n");
}

/// A file of a split whose reference section has these lines.
std::string marked_file(const std::string& lines, const std::string& data) {
  return whole_file(data, "AP", "REFERENCE;\n" + lines + "ENDSEC;\n");
}

// The root has both lines of the input, the part the second one only.
TEST(JoinByMarks, LinesOfReferencesThatNameOneThingStayApart) {
  JoinedFolder folder;
  folder.folder().write("root.stp", marked_file("#90=<http://a#x>;\n/*901*/#91=<http://a#x>;\n",
                                                MARKED_ROOT + "#92=A(#90);\n/*93*/#93=B(#91);\n"));
  folder.folder().write("part.stp", marked_file("/*901*/#90=<http://a#x>;\n",
                                                MARKED_PART + "/*93*/#91=B(#90);\n#92=C(#90);\n"));
  const std::string data = folder.data();
  EXPECT_THAT(folder.joined().warnings, testing::IsEmpty());
  EXPECT_THAT(read_file("out.stp"),
              testing::HasSubstr("REFERENCE;\n#1=<http://a#x>;\n#2=<http://a#x>;\nENDSEC;\n"));
  EXPECT_THAT(data, testing::HasSubstr("=A(#1);\n"));
  EXPECT_THAT(data, testing::HasSubstr("=B(#2);\n"));
  EXPECT_THAT(data, testing::HasSubstr("=C(#2);\n"));
}

TEST(JoinByMarks, LineOfAReferenceThatNamesSomethingElseThanItsCopyIsAWarning) {
  JoinedFolder folder;
  folder.folder().write("root.stp",
                        marked_file("/*901*/#90=<http://a#x>;\n", MARKED_ROOT + "#92=A(#90);\n"));
  folder.folder().write("part.stp",
                        marked_file("/*901*/#90=<http://a#y>;\n", MARKED_PART + "#92=C(#90);\n"));
  folder.data();
  ASSERT_EQ(folder.joined().warnings.size(), 1u);
  EXPECT_EQ(folder.joined().warnings.front().kind, FindingKind::copies_differ);
  EXPECT_EQ(folder.joined().warnings.front().file, "part.stp");
  EXPECT_EQ(folder.joined().warnings.front().instance, 90u);
}

TEST(JoinByMarks, MarksOfReferencesInFilesOfNoSplitMeanNothing) {
  JoinedFolder folder;
  folder.folder().write("root.stp", marked_file("/*1*/#90=<http://a#x>;\n/*1*/#91=<http://b#x>;\n",
                                                "#92=A(#90,#91);\n"));
  EXPECT_EQ(folder.data(), "#3=A(#1,#2);\n");
}

TEST(JoinByMarks, CopyThatSaysSomethingElseIsAWarning) {
  JoinedFolder folder;
  folder.file("root.stp", MARKED_ROOT);
  std::string part = MARKED_PART;
  part.replace(part.find("'part','part'"), 13, "'part','Part'");
  folder.file("part.stp", part);
  EXPECT_EQ(folder.data(), INPUT);
  ASSERT_EQ(folder.joined().warnings.size(), 1u);
  const Finding& warning = folder.joined().warnings.front();
  EXPECT_EQ(warning.kind, FindingKind::copies_differ);
  EXPECT_EQ(warning.file, "part.stp");
  EXPECT_EQ(warning.instance, 5u);
  EXPECT_EQ(warning.sentence,
            "#5 says something else than its copy in another file, which is taken.");
}

TEST(JoinByMarks, CopyThatRefersToSomethingElseIsAWarning) {
  JoinedFolder folder;
  folder.file("root.stp", MARKED_ROOT);
  std::string part = MARKED_PART;
  part.replace(part.find("'',#3)"), 6, "'',#4)");
  folder.file("part.stp", part);
  EXPECT_EQ(folder.data(), INPUT);
  ASSERT_EQ(folder.joined().warnings.size(), 1u);
  EXPECT_EQ(folder.joined().warnings.front().kind, FindingKind::copies_differ);
  EXPECT_EQ(folder.joined().warnings.front().instance, 6u);
}

TEST(JoinByMarks, StandInWithoutItsRecordStaysWithWhatItNeeds) {
  JoinedFolder folder;
  folder.file("root.stp", MARKED +
                              "/*~5*/#1=SHAPE_REPRESENTATION('',(#2),#3);\n"
                              "/*~*/#2=AXIS2_PLACEMENT_3D('',#4,$,$);\n"
                              "#3=REPRESENTATION_CONTEXT('','');\n"
                              "/*~*/#4=CARTESIAN_POINT('',(0.,0.,0.));\n"
                              "/*~*/#5=CARTESIAN_POINT('',(1.,0.,0.));\n");
  EXPECT_EQ(folder.data(),
            "#1=SHAPE_REPRESENTATION('',(#2),#3);\n"
            "#2=AXIS2_PLACEMENT_3D('',#4,$,$);\n"
            "#3=REPRESENTATION_CONTEXT('','');\n"
            "#4=CARTESIAN_POINT('',(0.,0.,0.));\n");
  ASSERT_EQ(folder.joined().warnings.size(), 1u);
  EXPECT_EQ(folder.joined().warnings.front().kind, FindingKind::stand_in_left);
  EXPECT_EQ(folder.joined().warnings.front().sentence,
            "#1 stands for a record that no file holds; it is taken itself.");
}

TEST(JoinByMarks, FilesOfDifferentSplitsAreJoinedByStructure) {
  JoinedFolder folder;
  folder.file("root.stp", MARKED_ROOT);
  std::string part = MARKED_PART;
  part.replace(part.find("0123456789abcdef"), 16, "fedcba9876543210");
  folder.file("part.stp", part);
  // Contexts and layers of two splits are not the same ones, whatever their numbers.
  EXPECT_EQ(folder.data(),
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
            "#11=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','','',#3,#15,$);\n"
            "#12=PRESENTATION_LAYER_ASSIGNMENT('l','',(#10));\n"
            "#13=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
            "#14=REPRESENTATION_CONTEXT('','');\n"
            "#15=PRODUCT_DEFINITION('design','',#16,#13);\n"
            "#16=PRODUCT_DEFINITION_FORMATION('','',#17);\n"
            "#17=PRODUCT('part','part','',());\n"
            "#18=PRODUCT_DEFINITION_SHAPE('','',#15);\n"
            "#19=SHAPE_DEFINITION_REPRESENTATION(#18,#20);\n"
            "#20=SHAPE_REPRESENTATION('',(#21,#22),#14);\n"
            "#21=AXIS2_PLACEMENT_3D('o',$,$,$);\n"
            "#22=MANIFOLD_SOLID_BREP('its',$);\n"
            "#23=PRESENTATION_LAYER_ASSIGNMENT('l','',(#22));\n");
}

TEST(JoinByMarks, RepeatedItemsOfAListStay) {
  JoinedFolder folder;
  folder.file("root.stp", MARKED +
                              "/*1*/#1=PRESENTATION_LAYER_ASSIGNMENT('l','',(#2,#2));\n"
                              "#2=MANIFOLD_SOLID_BREP('own',$);\n");
  EXPECT_EQ(folder.data(),
            "#1=PRESENTATION_LAYER_ASSIGNMENT('l','',(#2,#2));\n"
            "#2=MANIFOLD_SOLID_BREP('own',$);\n");
}

}  // namespace
}  // namespace Kessel::test
