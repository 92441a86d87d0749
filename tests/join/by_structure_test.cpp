// Files without marks: other systems', or those of a split that somebody has saved again.
#include <gtest/gtest.h>

#include "join/joined_folder.h"

namespace Kessel::test {
namespace {

const std::string COMMON =
    "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n#2=REPRESENTATION_CONTEXT('','');\n";

// The assembly #10 with its component #20, which is placed by #30.
const std::string ASSEMBLY_FILE = COMMON + product(10, "whole", "(#31)", "#2") +
                                  product(20, "part", "(#32)", "#3") +
                                  "#3=REPRESENTATION_CONTEXT('','external');\n"
                                  "#27=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','','',#10,#20,$);\n"
                                  "#30=ITEM_DEFINED_TRANSFORMATION('','',#31,#32);\n"
                                  "#31=AXIS2_PLACEMENT_3D('there',$,$,$);\n"
                                  "#32=AXIS2_PLACEMENT_3D('',#33,$,$);\n"
                                  "#33=CARTESIAN_POINT('',(0.,0.,0.));\n";

const std::string PART_FILE = COMMON + product(10, "part", "(#20,#21)", "#2") +
                              "#20=AXIS2_PLACEMENT_3D('',#22,$,$);\n"
                              "#21=MANIFOLD_SOLID_BREP('its',$);\n"
                              "#22=CARTESIAN_POINT('',(0.,0.,0.));\n";

const std::string WHOLE_BEGIN =
    "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
    "#2=REPRESENTATION_CONTEXT('','');\n"
    "#3=PRODUCT_DEFINITION('design','',#4,#1);\n"
    "#4=PRODUCT_DEFINITION_FORMATION('','',#5);\n"
    "#5=PRODUCT('whole','whole','',());\n"
    "#6=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
    "#7=SHAPE_DEFINITION_REPRESENTATION(#6,#8);\n";

const std::string JOINED_FILE = WHOLE_BEGIN +
                                "#8=SHAPE_REPRESENTATION('',(#11),#2);\n"
                                "#9=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','','',#3,#14,$);\n"
                                "#10=ITEM_DEFINED_TRANSFORMATION('','',#11,#20);\n"
                                "#11=AXIS2_PLACEMENT_3D('there',$,$,$);\n"
                                "#12=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
                                "#13=REPRESENTATION_CONTEXT('','');\n"
                                "#14=PRODUCT_DEFINITION('design','',#15,#12);\n"
                                "#15=PRODUCT_DEFINITION_FORMATION('','',#16);\n"
                                "#16=PRODUCT('part','part','',());\n"
                                "#17=PRODUCT_DEFINITION_SHAPE('','',#14);\n"
                                "#18=SHAPE_DEFINITION_REPRESENTATION(#17,#19);\n"
                                "#19=SHAPE_REPRESENTATION('',(#20,#21),#13);\n"
                                "#20=AXIS2_PLACEMENT_3D('',#22,$,$);\n"
                                "#21=MANIFOLD_SOLID_BREP('its',$);\n"
                                "#22=CARTESIAN_POINT('',(0.,0.,0.));\n";

TEST(JoinByStructure, PlaceholdersGoWithoutResidue) {
  JoinedFolder folder;
  folder.file("root.stp", ASSEMBLY_FILE + reference_block(40, "part.stp", "#25", "#20"));
  folder.file("part.stp", PART_FILE);
  EXPECT_EQ(folder.data(), JOINED_FILE);
  EXPECT_TRUE(folder.joined().warnings.empty());
}

TEST(JoinByStructure, ReferenceByTheDefinitionAloneOrTheShapeAlone) {
  JoinedFolder folder;
  folder.file("part.stp", PART_FILE);
  folder.file("root.stp", ASSEMBLY_FILE +
                              "#40=DOCUMENT_TYPE('');\n"
                              "#41=DOCUMENT_FILE('part.stp','','',#40,'',$);\n"
                              "#42=APPLIED_DOCUMENT_REFERENCE(#41,'',(#20));\n");
  EXPECT_EQ(folder.data(), JOINED_FILE);
  folder.file("root.stp", ASSEMBLY_FILE +
                              "#40=DOCUMENT_TYPE('');\n"
                              "#41=DOCUMENT_FILE('part.stp','','',#40,'',$);\n"
                              "#42=PROPERTY_DEFINITION('external definition','',#41);\n"
                              "#43=PROPERTY_DEFINITION_REPRESENTATION(#42,#25);\n");
  folder.options.replace = true;
  EXPECT_EQ(folder.data(), JOINED_FILE);
}

TEST(JoinByStructure, DocumentsOfADefinition) {
  JoinedFolder folder;
  folder.file("part.stp", PART_FILE);
  std::string root = ASSEMBLY_FILE +
                     "#40=DOCUMENT_TYPE('cad_filename');\n"
                     "#41=DOCUMENT('part.stp','','',#40);\n";
  const std::string definition = "#20=PRODUCT_DEFINITION('design','',#21,#1)";
  root.replace(root.find(definition), definition.size(),
               "#20=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('design','',#21,#1,(#41))");
  folder.file("root.stp", root);
  EXPECT_EQ(folder.data(), JOINED_FILE);
}

TEST(JoinByStructure, DocumentInAComplexInstance) {
  JoinedFolder folder;
  folder.file("part.stp", PART_FILE);
  folder.file("root.stp", ASSEMBLY_FILE +
                              "#40=DOCUMENT_TYPE('');\n"
                              "#41=(CHARACTERIZED_OBJECT('','')DOCUMENT('part.stp','','',#40)"
                              "DOCUMENT_FILE());\n"
                              "#42=APPLIED_DOCUMENT_REFERENCE(#41,'',(#20));\n");
  EXPECT_EQ(folder.data(), JOINED_FILE);
}

TEST(JoinByStructure, OtherDocumentsStay) {
  JoinedFolder folder;
  folder.file("root.stp",
              "#1=PRODUCT_DEFINITION('','',#2,$);\n"
              "#2=PRODUCT_DEFINITION_FORMATION('','',#3);\n"
              "#3=PRODUCT('p','p','',());\n"
              "#4=DOCUMENT_TYPE('');\n"
              "#5=DOCUMENT_FILE('drawing.pdf','','',#4,'',$);\n"
              "#6=APPLIED_DOCUMENT_REFERENCE(#5,'',(#1));\n"
              "#7=DOCUMENT_FILE('norm.stp','','',#4,'',$);\n");
  EXPECT_EQ(folder.data(),
            "#1=PRODUCT_DEFINITION('','',#2,$);\n"
            "#2=PRODUCT_DEFINITION_FORMATION('','',#3);\n"
            "#3=PRODUCT('p','p','',());\n"
            "#4=DOCUMENT_TYPE('');\n"
            "#5=DOCUMENT_FILE('drawing.pdf','','',#4,'',$);\n"
            "#6=APPLIED_DOCUMENT_REFERENCE(#5,'',(#1));\n"
            "#7=DOCUMENT_FILE('norm.stp','','',#4,'',$);\n");
}

TEST(JoinByStructure, FolderOfTheSourceComesFirst) {
  JoinedFolder folder;
  folder.file("part.stp", "#1=WRONG();\n");
  std::filesystem::create_directory(folder.folder() / "parts");
  folder.file("parts/part.stp", PART_FILE);
  std::string root = ASSEMBLY_FILE + reference_block(40, "part.stp", "#25", "#20");
  root.replace(root.find("IDENTIFIER('')"), 14, "IDENTIFIER('parts')");
  folder.file("root.stp", root);
  EXPECT_EQ(folder.data(), JOINED_FILE);
}

TEST(JoinByStructure, PlacementThatTheComponentLacksIsAddedToItsShape) {
  JoinedFolder folder;
  std::string part = PART_FILE;
  part.replace(part.find("(0.,0.,0.)"), 10, "(0.,0.,5.)");
  folder.file("part.stp", part);
  folder.file("root.stp", ASSEMBLY_FILE + reference_block(40, "part.stp", "#25", "#20"));
  EXPECT_EQ(folder.data(), WHOLE_BEGIN +
                               "#8=SHAPE_REPRESENTATION('',(#11),#2);\n"
                               "#9=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','','',#3,#16,$);\n"
                               "#10=ITEM_DEFINED_TRANSFORMATION('','',#11,#12);\n"
                               "#11=AXIS2_PLACEMENT_3D('there',$,$,$);\n"
                               "#12=AXIS2_PLACEMENT_3D('',#13,$,$);\n"
                               "#13=CARTESIAN_POINT('',(0.,0.,0.));\n"
                               "#14=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
                               "#15=REPRESENTATION_CONTEXT('','');\n"
                               "#16=PRODUCT_DEFINITION('design','',#17,#14);\n"
                               "#17=PRODUCT_DEFINITION_FORMATION('','',#18);\n"
                               "#18=PRODUCT('part','part','',());\n"
                               "#19=PRODUCT_DEFINITION_SHAPE('','',#16);\n"
                               "#20=SHAPE_DEFINITION_REPRESENTATION(#19,#21);\n"
                               "#21=SHAPE_REPRESENTATION('',(#22,#23,#12),#15);\n"
                               "#22=AXIS2_PLACEMENT_3D('',#24,$,$);\n"
                               "#23=MANIFOLD_SOLID_BREP('its',$);\n"
                               "#24=CARTESIAN_POINT('',(0.,0.,5.));\n");
}

// Two assemblies' files refer to one part, and to parts that say the same.
TEST(JoinByStructure, EachFileIsReadOnceAndDefinitionsAreKeptApartByFile) {
  JoinedFolder folder;
  folder.file("root.stp", "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n" +
                              product(10, "whole", "()", "$") + product(20, "part", "()", "$") +
                              product(30, "part", "()", "$") + product(40, "part", "()", "$") +
                              reference_block(50, "a.stp", "#25", "#20") +
                              reference_block(70, "b.stp", "#35", "#30") +
                              reference_block(90, "./a.stp", "#45", "#40") +
                              "#110=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#10,#20,$);\n"
                              "#111=NEXT_ASSEMBLY_USAGE_OCCURRENCE('2','','',#10,#30,$);\n"
                              "#112=NEXT_ASSEMBLY_USAGE_OCCURRENCE('3','','',#10,#40,$);\n"
                              "#113=PRODUCT_RELATED_PRODUCT_CATEGORY('part',$,(#22,#32,#42));\n");
  const std::string part =
      "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n" + product(10, "part", "()", "$");
  folder.file("a.stp", part);
  folder.file("b.stp", part);
  EXPECT_EQ(folder.data(),
            "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
            "#2=PRODUCT_DEFINITION('design','',#3,#1);\n"
            "#3=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
            "#4=PRODUCT('whole','whole','',());\n"
            "#5=PRODUCT_DEFINITION_SHAPE('','',#2);\n"
            "#6=SHAPE_DEFINITION_REPRESENTATION(#5,#7);\n"
            "#7=SHAPE_REPRESENTATION('',(),$);\n"
            "#8=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#2,#13,$);\n"
            "#9=NEXT_ASSEMBLY_USAGE_OCCURRENCE('2','','',#2,#20,$);\n"
            "#10=NEXT_ASSEMBLY_USAGE_OCCURRENCE('3','','',#2,#13,$);\n"
            "#11=PRODUCT_RELATED_PRODUCT_CATEGORY('part',$,(#15,#22));\n"
            "#12=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
            "#13=PRODUCT_DEFINITION('design','',#14,#12);\n"
            "#14=PRODUCT_DEFINITION_FORMATION('','',#15);\n"
            "#15=PRODUCT('part','part','',());\n"
            "#16=PRODUCT_DEFINITION_SHAPE('','',#13);\n"
            "#17=SHAPE_DEFINITION_REPRESENTATION(#16,#18);\n"
            "#18=SHAPE_REPRESENTATION('',(),$);\n"
            "#19=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
            "#20=PRODUCT_DEFINITION('design','',#21,#19);\n"
            "#21=PRODUCT_DEFINITION_FORMATION('','',#22);\n"
            "#22=PRODUCT('part','part','',());\n"
            "#23=PRODUCT_DEFINITION_SHAPE('','',#20);\n"
            "#24=SHAPE_DEFINITION_REPRESENTATION(#23,#25);\n"
            "#25=SHAPE_REPRESENTATION('',(),$);\n");
  EXPECT_EQ(folder.joined().inputs.size(), 3u);
}

TEST(JoinByStructure, OfSeveralProductsTheOneWithTheIdIsMeant) {
  JoinedFolder folder;
  folder.file("root.stp", "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n" +
                              product(20, "b", "()", "$") +
                              reference_block(50, "two.stp", "#25", "#20") +
                              "#110=PRODUCT_RELATED_PRODUCT_CATEGORY('part',$,(#22));\n");
  folder.file("two.stp", "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n" + product(10, "a", "()", "$") +
                             product(20, "b", "()", "$"));
  EXPECT_EQ(folder.data(),
            "#1=PRODUCT_RELATED_PRODUCT_CATEGORY('part',$,(#11));\n"
            "#2=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
            "#3=PRODUCT_DEFINITION('design','',#4,#2);\n"
            "#4=PRODUCT_DEFINITION_FORMATION('','',#5);\n"
            "#5=PRODUCT('a','a','',());\n"
            "#6=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
            "#7=SHAPE_DEFINITION_REPRESENTATION(#6,#8);\n"
            "#8=SHAPE_REPRESENTATION('',(),$);\n"
            "#9=PRODUCT_DEFINITION('design','',#10,#2);\n"
            "#10=PRODUCT_DEFINITION_FORMATION('','',#11);\n"
            "#11=PRODUCT('b','b','',());\n"
            "#12=PRODUCT_DEFINITION_SHAPE('','',#9);\n"
            "#13=SHAPE_DEFINITION_REPRESENTATION(#12,#14);\n"
            "#14=SHAPE_REPRESENTATION('',(),$);\n");
}

/// A product with a version: definition #n, version #n+1, PRODUCT #n+2, shape up to #n+5.
std::string versioned(int n, const std::string& id, const std::string& name,
                      const std::string& version) {
  const auto at = [n](int i) { return "#" + std::to_string(n + i); };
  return at(0) + "=PRODUCT_DEFINITION('design',''," + at(1) + ",#1);\n" + at(1) +
         "=PRODUCT_DEFINITION_FORMATION('" + version + "',''," + at(2) + ");\n" + at(2) +
         "=PRODUCT('" + id + "','" + name + "','',());\n" + at(3) +
         "=PRODUCT_DEFINITION_SHAPE('',''," + at(0) + ");\n" + at(4) +
         "=SHAPE_DEFINITION_REPRESENTATION(" + at(3) + "," + at(5) + ");\n" + at(5) +
         "=SHAPE_REPRESENTATION('" + std::to_string(n) + "',(),$);\n";
}

TEST(JoinByStructure, OfSeveralProductsWithOneIdNameAndVersionTell) {
  const struct {
    std::string first;
    std::string second;
    int meant;  ///< which of them the root's "b", "bolt", "v1" means
    bool is_doubtful;
  } cases[] = {
      {versioned(10, "b", "nut", "v1"), versioned(20, "b", "bolt", "v1"), 20, false},
      {versioned(10, "b", "bolt", "v2"), versioned(20, "b", "bolt", "v1"), 20, false},
      {versioned(10, "b", "bolt", "v1"), versioned(20, "c", "bolt", "v1"), 10, false},
      {versioned(10, "b", "bolt", "v1"), versioned(20, "b", "bolt", "v1"), 10, true},
      {versioned(10, "b", "nut", "v1"), versioned(20, "b", "screw", "v1"), 10, true},
      {versioned(10, "b", "nut", "v2"), versioned(20, "b", "screw", "v1"), 20, false},
  };
  const std::string context = "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n";
  for (const auto& [first, second, meant, is_doubtful] : cases) {
    JoinedFolder folder;
    folder.options.replace = true;
    folder.file("root.stp", context + versioned(30, "b", "bolt", "v1") +
                                reference_block(50, "two.stp", "#35", "#30") +
                                reference_block(70, "two.stp", "#35", "#30") +
                                "#110=PRODUCT_RELATED_PRODUCT_CATEGORY('part',$,(#32));\n");
    folder.file("two.stp", context + first + second);
    const std::string data = folder.data();
    const std::string category = "CATEGORY('part',$,(#";
    const std::string product = data.substr(data.find(category) + category.size());
    const std::string number = product.substr(0, product.find(')'));
    // Products stand in their order, behind the category and the context.
    EXPECT_EQ(number, meant == 10 ? "5" : "11") << data;
    const auto& warnings = folder.joined().warnings;
    ASSERT_EQ(warnings.size(), is_doubtful ? 1u : 0u) << first << second;
    if (!is_doubtful) continue;
    EXPECT_EQ(warnings[0].kind, FindingKind::unknown_component);
    EXPECT_EQ(warnings[0].severity, Severity::warning);
    EXPECT_EQ(warnings[0].file, "two.stp");
    EXPECT_EQ(warnings[0].sentence,
              "The file holds several products that a reference to it may mean; #10 is taken.");
  }
}

}  // namespace
}  // namespace Kessel::test
