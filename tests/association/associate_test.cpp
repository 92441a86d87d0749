// The whole association: who holds which record, and under which number.
#include <gtest/gtest.h>

#include "association/associate.h"
#include "association/numbers_text.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

// Two products; the first has a shape with a solid. Neither uses the other, so a root is generated.
const std::string TWO_LEAVES =
    "#1=PRODUCT('a','a','',());\n"
    "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "#3=PRODUCT_DEFINITION('','',#2,$);\n"
    "#4=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
    "#5=SHAPE_DEFINITION_REPRESENTATION(#4,#6);\n"
    "#6=ADVANCED_BREP_SHAPE_REPRESENTATION('',(#7,#8),#9);\n"
    "#7=AXIS2_PLACEMENT_3D('',#10,$,$);\n"
    "#8=MANIFOLD_SOLID_BREP('',#11);\n"
    "#9=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('',''));\n"
    "#10=CARTESIAN_POINT('',(0.,0.,0.));\n"
    "#11=CLOSED_SHELL('',());\n"
    "#21=PRODUCT('b','b','',());\n"
    "#22=PRODUCT_DEFINITION_FORMATION('','',#21);\n"
    "#23=PRODUCT_DEFINITION('','',#22,$);\n";

// The assembly #3 uses the assembly #13, which uses the leaf #23; #40 to #49 place #13 in #3.
const std::string THREE_LEVELS =
    "#1=PRODUCT('a','a','',());\n"
    "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "#3=PRODUCT_DEFINITION('','',#2,$);\n"
    "#11=PRODUCT('b','b','',());\n"
    "#12=PRODUCT_DEFINITION_FORMATION('','',#11);\n"
    "#13=PRODUCT_DEFINITION('','',#12,$);\n"
    "#21=PRODUCT('c','c','',());\n"
    "#22=PRODUCT_DEFINITION_FORMATION('','',#21);\n"
    "#23=PRODUCT_DEFINITION('','',#22,$);\n"
    "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#3,#13,$);\n"
    "#31=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#13,#23,$);\n"
    "#40=PRODUCT_DEFINITION_SHAPE('','',#30);\n"
    "#41=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#42,#40);\n"
    "#42=(REPRESENTATION_RELATIONSHIP('','',#43,#44)"
    "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#45)SHAPE_REPRESENTATION_RELATIONSHIP());\n"
    "#43=SHAPE_REPRESENTATION('',(#46));\n"
    "#44=SHAPE_REPRESENTATION('',(#47));\n"
    "#45=ITEM_DEFINED_TRANSFORMATION('','',#46,#47);\n"
    "#46=AXIS2_PLACEMENT_3D('');\n"
    "#47=AXIS2_PLACEMENT_3D('');\n";

/// An associated store; nothing may be printed.
std::unique_ptr<Store> associate(const std::string& data) {
  std::unique_ptr<Store> file = read_structure(data);
  EXPECT_EQ(printed_by([&] { associate_entities(*file); }), "");
  return file;
}

/// The holders of some records, each in parentheses.
std::string holders(const Store& file, std::initializer_list<unsigned> numbers) {
  std::string text;
  for (const unsigned number : numbers) text += '(' + holders_of(file, *file.at(number)) + ')';
  return text;
}

TEST(Associate, TwoLeavesUnderAGeneratedRoot) {
  // The root's file gets products, shapes and contexts, and no geometry.
  EXPECT_EQ(numbers_of(*associate(TWO_LEAVES)),
            "#1: #3=3 root=5\n"
            "#2: #3=2 root=4\n"
            "#3: #3=1 root=1\n"
            "#4: #3=4 root=8\n"
            "#5: #3=5 root=9\n"
            "#6: #3=6 root=10\n"
            "#7: #3=7 root=11\n"
            "#8: #3=10\n"
            "#9: #3=9 root=13\n"
            "#10: #3=8 root=12\n"
            "#11: #3=11\n"
            "#21: #23=3 root=7\n"
            "#22: #23=2 root=6\n"
            "#23: #23=1 root=2\n"
            "root: root=3\n"
            "last: #3=11 #23=3 root=13\n");
}

TEST(Associate, ThreeLevelsUnderTheTopAssembly) {
  // #43 and #44 are reached by no rule and follow what they refer to.
  EXPECT_EQ(numbers_of(*associate(THREE_LEVELS)),
            "#1: #3=5\n"
            "#2: #3=4\n"
            "#3: #3=1\n"
            "#11: #3=7\n"
            "#12: #3=6\n"
            "#13: #3=2\n"
            "#21: #3=9 #23=3\n"
            "#22: #3=8 #23=2\n"
            "#23: #3=3 #23=1\n"
            "#30: #3=10\n"
            "#31: #3=11\n"
            "#40: #3=12\n"
            "#41: #3=13\n"
            "#42: #3=14\n"
            "#43: #3=18\n"
            "#44: #3=19\n"
            "#45: #3=15\n"
            "#46: #3=16\n"
            "#47: #3=17\n"
            "last: #3=19 #13=0 #23=3\n");
}

TEST(Associate, NumbersDependOnAssociationAndNotOnTheNumbersOfTheInput) {
  // The first product of TWO_LEAVES without its shape, numbered the other way round.
  EXPECT_EQ(numbers_of(*associate("#90=PRODUCT('a','a','',());\n"
                                  "#80=PRODUCT_DEFINITION_FORMATION('','',#90);\n"
                                  "#70=PRODUCT_DEFINITION('','',#80,$);\n"
                                  "#60=PRODUCT_DEFINITION('','',#80,$);\n")),
            "#60: #60=1 root=1\n"
            "#70: #70=1 root=2\n"
            "#80: #60=2 #70=2 root=4\n"
            "#90: #60=3 #70=3 root=5\n"
            "root: root=3\n"
            "last: #60=3 #70=3 root=5\n");
}

TEST(Associate, GeometryOfARepresentationGoesToLeavesOnlyAndPlacementsToAll) {
  const auto file = associate(TWO_LEAVES);
  EXPECT_EQ(holders(*file, {6, 7, 9}), "(#3=6 root=10)(#3=7 root=11)(#3=9 root=13)");
  EXPECT_EQ(holders(*file, {8, 11}), "(#3=10)(#3=11)");
}

TEST(Associate, AnotherRuleMayGiveGeometryToAnAssembly) {
  // Styled items are gathered and spread without regard to the kind of part. The shape
  // representation relationship hands the root's part down to the solid.
  const auto file = associate(TWO_LEAVES + "#50=SHAPE_REPRESENTATION_RELATIONSHIP('','',#8,#6);\n");
  EXPECT_EQ(holders(*file, {50, 8, 11}), "(#3=12 root=14)(#3=10 root=15)(#3=11 root=16)");
}

TEST(Associate, ApplicationProtocolDefinitionGetsItsPartsLastOfAll) {
  // An attribute of the same formation is selected by its type, in a pass long behind that of the
  // protocol.
  const auto file = associate(TWO_LEAVES +
                              "#40=APPLICATION_PROTOCOL_DEFINITION('','',2000,#2);\n"
                              "#41=ID_ATTRIBUTE('',#2);\n");
  EXPECT_EQ(holders(*file, {41, 40}), "(#3=12 root=14)(#3=13 root=15)");
}

TEST(Associate, DocumentReferencesSpreadAgainWhatTheyGainedSinceTheirFirstPass) {
  // When document references are visited first, nobody holds the shape definition representation.
  const auto file = associate(TWO_LEAVES +
                              "#50=APPLIED_DOCUMENT_REFERENCE(#51,'',(#5));\n"
                              "#51=DOCUMENT('');\n");
  EXPECT_EQ(holders(*file, {50, 51}), "(#3=12 root=14)(#3=13 root=15)");
}

TEST(Associate, DocumentReferencesSpreadBeforeRolesAreAssociated) {
  const auto file = associate(TWO_LEAVES +
                              "#50=APPLIED_DOCUMENT_REFERENCE(#51,'',(#3));\n"
                              "#51=DOCUMENT('');\n"
                              "#52=ROLE_ASSOCIATION(#53,#50);\n"
                              "#53=OBJECT_ROLE('',$);\n");
  EXPECT_EQ(holders(*file, {4, 50, 51, 52, 53}),
            "(#3=4 root=8)(#3=5 root=9)(#3=6 root=10)(#3=7 root=11)(#3=8 root=12)");
}

TEST(Associate, ContextDependentShapeRepresentationCountsAsShapeRepresentationFirst) {
  // Everything below #61 follows, which is more than the one level of its own pass.
  const auto file = associate(TWO_LEAVES +
                              "#12=SHAPE_DEFINITION_REPRESENTATION(#4,#60);\n"
                              "#60=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#61,#4);\n"
                              "#61=REPRESENTATION_RELATIONSHIP('','',#62);\n"
                              "#62=REPRESENTATION('',());\n");
  EXPECT_EQ(holders(*file, {60, 61, 62}), "(#3=8 root=12)(#3=14 root=16)(#3=15)");
}

// A usage whose component #50 leads to no product: it is no part, and #23 stays a leaf.
const std::string USAGE_OF_NO_PART =
    "#33=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#23,#50,$);\n"
    "#50=PRODUCT_DEFINITION('','',#51);\n"
    "#51=PRODUCT_DEFINITION_FORMATION('','');\n";

TEST(Associate, UsageSpreadsTheRootIntoADefinitionThatIsNoPart) {
  // The leaf's own part comes to the usage only when #50 belongs to the root already.
  EXPECT_EQ(holders(*associate(TWO_LEAVES + USAGE_OF_NO_PART), {33, 50, 51}),
            "(#23=4 root=8)(root=9)(root=10)");
}

TEST(Associate, WithoutARootUsagesFillADefinitionThatIsNoPart) {
  // #3 and #13 are each other's components, so no root is found.
  std::unique_ptr<Store> file;
  printed_by([&] {
    file = read_structure(THREE_LEVELS + USAGE_OF_NO_PART +
                          "#32=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#13,#3,$);\n");
  });
  ASSERT_EQ(file->root, nullptr);
  associate_entities(*file);
  EXPECT_EQ(holders(*file, {23, 22, 21, 33, 50, 51}), "(#23=1)(#23=2)(#23=3)(#23=4)(#23=5)(#23=6)");
  EXPECT_EQ(holders(*file, {1, 2, 3, 11, 12, 13}), "()()()()()()");
}

TEST(Associate, SecondRunAddsNothingAndRecognitionUsesUpNumbersAgain) {
  const auto file = associate(TWO_LEAVES);
  const std::string before = numbers_of(*file);
  associate_entities(*file);
  const std::string after = numbers_of(*file);
  EXPECT_EQ(last_numbers_of(*file), "#3=12 #23=4 root=16");
  EXPECT_EQ(after.substr(0, after.find("last:")), before.substr(0, before.find("last:")));
}

TEST(Associate, ReferenceBeyondTheStoreEndsItAndWhatWasGivenStays) {
  const auto file = read_structure(TWO_LEAVES +
                                   "#50=APPLIED_DATE_ASSIGNMENT(#3,(#1048576));\n"
                                   "#51=APPLIED_APPROVAL_ASSIGNMENT(#52,(#3));\n"
                                   "#52=APPROVAL('');\n");
  EXPECT_EQ(out_of_range_text([&] { associate_entities(*file); }), "invalid vector subscript");
  EXPECT_EQ(holders(*file, {11, 50, 51, 52}), "(#3=11)(#3=12 root=14)()()");
}

TEST(Associate, WithoutPartsNothingIsHeld) {
  const auto file = read_records(
      "#1=PRODUCT('a','a','',());\n"
      "#2=APPLIED_APPROVAL_ASSIGNMENT(#1);\n");
  associate_entities(*file);
  EXPECT_EQ(numbers_of(*file), "#1: \n#2: \nlast: \n");
}

}  // namespace
}  // namespace Kessel::test
