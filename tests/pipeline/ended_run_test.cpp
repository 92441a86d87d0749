// How far a run gets that an exception ends: what it has printed and written by then.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

#include "support/split_run.h"

namespace Kessel::test {
namespace {

/// A file of two parts, with the products #1 and #4, and more records.
std::string two_parts_and(const std::string& records) {
  return "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n"
         "#1=PRODUCT('a','a','',());\n"
         "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
         "#3=PRODUCT_DEFINITION('','',#2,$);\n"
         "#4=PRODUCT('b','b','',());\n"
         "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
         "#6=PRODUCT_DEFINITION('','',#5,$);\n" +
         records + "ENDSEC;\nEND-ISO-10303-21;\n";
}

const std::string SUBSCRIPT = "out_of_range: invalid vector subscript";

// The search for a product goes on behind a shape: only the search for the shape ends there.
TEST(EndedRun, ReferenceBeyondTheStoreBehindTheShapeOfAMappedItemEndsDiscovery) {
  const SplitRun run =
      split_text(two_parts_and("#11=MAPPED_ITEM('',#12,$);\n"
                               "#12=REPRESENTATION_MAP(#13);\n"
                               "#13=ADVANCED_BREP_SHAPE_REPRESENTATION('',(#14));\n"
                               "#14=MANIFOLD_SOLID_BREP('',#1048576);\n"));
  EXPECT_EQ(run.exception, SUBSCRIPT);
  EXPECT_EQ(run.roots_txt, std::nullopt);
  EXPECT_EQ(run.messages, "");
  EXPECT_EQ(run.files, (std::map<std::string, std::string>{}));
}

// A product ends all searches: only association looks at what lies behind it.
TEST(EndedRun, ReferenceBeyondTheStoreBehindAProductEndsAssociation) {
  const SplitRun run =
      split_text(two_parts_and("#11=PRODUCT('c','c','',(#1048576));\n"
                               "#12=PRODUCT_DEFINITION_FORMATION('','',#11);\n"
                               "#13=PRODUCT_DEFINITION('','',#12,$);\n"));
  EXPECT_EQ(run.exception, SUBSCRIPT);
  EXPECT_EQ(run.roots_txt, "Root.stp\n");
  EXPECT_EQ(run.messages, "");
  EXPECT_EQ(run.files, (std::map<std::string, std::string>{}));
}

// For the first category, #11, the run reaches the relationship that is too short and says so. For
// the second one, #12, the relationship before that ends the run.
TEST(EndedRun, ShortRelationshipBehindTheOneThatEndsTheRunIsNotReportedAgain) {
  const SplitRun run =
      split_text(two_parts_and("#11=PRODUCT_RELATED_PRODUCT_CATEGORY('','',(#1));\n"
                               "#12=PRODUCT_RELATED_PRODUCT_CATEGORY('','',(#4));\n"
                               "#21=PRODUCT_CATEGORY_RELATIONSHIP('','',#1048576,#12);\n"
                               "#22=PRODUCT_CATEGORY_RELATIONSHIP('','',#11);\n"));
  EXPECT_EQ(run.exception, SUBSCRIPT);
  EXPECT_EQ(run.messages, "Got an out of range in 'get_child' while fetching child nb 1\n");
  EXPECT_EQ(run.roots_txt, "Root.stp\n");
  EXPECT_EQ(run.files, (std::map<std::string, std::string>{}));
}

}  // namespace
}  // namespace Kessel::test
