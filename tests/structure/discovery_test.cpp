// Which records become parts.
#include <gtest/gtest.h>

#include "structure/discovery.h"
#include "structure/literal_file.h"
#include "structure/process_parts.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

std::unique_ptr<Store> discover(const std::string& data) {
  std::unique_ptr<Store> file = read_records(data);
  EXPECT_EQ(printed_by([&] { find_and_create_parts(*file); }), "");
  return file;
}

TEST(Discovery, FileWithoutCandidatesHasNoPartsAndNoRoot) {
  const auto file = read_records(
      "#1=PRODUCT('p','p','',());\n"
      "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
      "#3=PRODUCT_DEFINITION_SHAPE('','',#1);\n");
  const ScratchFolder folder;
  EXPECT_EQ(printed_by([&] { process_parts(*file, refuse_to_decode); }),
            "No root part found. It implies not part in the file or a cyclic part tree.\n"
            "Stopping the algorithm.\n");
  EXPECT_EQ(parts_of(*file), "");
  EXPECT_EQ(file->root, nullptr);
}

TEST(Discovery, DefinitionThatLeadsToAProductIsAPartWithoutAnyShape) {
  EXPECT_EQ(parts_of(*discover("#1=PRODUCT('p','p','',());\n"
                               "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
                               "#3=PRODUCT_DEFINITION('','',#2,$);\n")),
            "#3 ");
}

TEST(Discovery, EveryCandidateTypeBecomesAPartOverEveryTargetType) {
  for (const std::string candidate :
       {"PRODUCT_DEFINITION", "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS", "MAPPED_ITEM"}) {
    for (const std::string target : {"PRODUCT", "ADVANCED_BREP_SHAPE_REPRESENTATION",
                                     "GEOMETRICALLY_BOUNDED_SURFACE_SHAPE_REPRESENTATION"}) {
      SCOPED_TRACE(candidate + " over " + target);
      const auto file = discover("#1=" + candidate + "('',#2);\n#2=LINK(#4,#3);\n#3=" + target +
                                 "('');\n#4=LINK();\n");
      EXPECT_EQ(parts_of(*file), "#1 ");
      EXPECT_EQ(file->at(1)->type(), candidate);
    }
  }
}

TEST(Discovery, CandidateThatLeadsToNoneOfTheTargetsStaysARecord) {
  const auto file = discover(
      "#1=PRODUCT_DEFINITION('kept','',#2,#3,#4,#99);\n"
      "#2=SHAPE_REPRESENTATION('');\n"
      "#3=PRODUCT_DEFINITION_SHAPE('');\n"
      "#4=MANIFOLD_SURFACE_SHAPE_REPRESENTATION('');\n");
  EXPECT_EQ(parts_of(*file), "");
  EXPECT_EQ(dynamic_cast<Part*>(file->at(1)), nullptr);
  EXPECT_EQ(file->at(1)->attribute(), "kept");
}

TEST(Discovery, OtherTypesAreNoCandidates) {
  EXPECT_EQ(parts_of(*discover("#1=PRODUCT_DEFINITION_SHAPE('',#3);\n"
                               "#2=STYLED_ITEM('',#3);\n"
                               "#3=PRODUCT('p','p','',());\n")),
            "");
}

TEST(Discovery, PartsAscendByRecordNumberWhateverTheOrderAndType) {
  const auto file = discover(
      "#9=PRODUCT_DEFINITION('',#1);\n"
      "#4=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('',#1);\n"
      "#2=MAPPED_ITEM('',#1);\n"
      "#5=PRODUCT_DEFINITION('',#1);\n"
      "#3=PRODUCT_DEFINITION('',#1);\n"
      "#1=PRODUCT('p','p','',());\n");
  EXPECT_EQ(parts_of(*file), "#2 #3 #4 #5 #9 ");
  std::uint32_t position = 0;
  for (const Part* part : file->parts) EXPECT_EQ(part->list_position, position++);
}

TEST(Discovery, PartTakesItsRecordsPlaceInTheStore) {
  const auto file = discover(
      "#1=PRODUCT('p','p','',());\n"
      "#2=PRODUCT_DEFINITION('design','',#1,#5,#1);\n");
  ASSERT_EQ(file->parts.size(), 1u);
  const Part* part = file->parts.front();
  EXPECT_EQ(file->at(2), part);
  EXPECT_EQ(file->get("PRODUCT_DEFINITION"), std::vector<Entity*>{file->at(2)});
  EXPECT_EQ(part->type(), "PRODUCT_DEFINITION");
  EXPECT_EQ(part->attribute(), "");
  EXPECT_EQ(part->get_references(), (std::vector<unsigned>{1, 5, 1}));
  EXPECT_TRUE(part->part_numbers.empty());
}

TEST(Discovery, DefinitionThatOnlyLeadsRoundInACircleStaysARecord) {
  EXPECT_EQ(parts_of(*discover("#1=PRODUCT_DEFINITION('',#2);\n"
                               "#2=PRODUCT_DEFINITION('',#1);\n"
                               "#3=PRODUCT_DEFINITION('',#2,#4);\n"
                               "#4=PRODUCT('p','p','',());\n")),
            "#3 ");
}

TEST(Discovery, NumberThatIsListedUnderTwoCandidateTypesIsOnePart) {
  const auto file = discover(
      "#1=PRODUCT('p','p','',());\n"
      "#2=MAPPED_ITEM('',#1);\n"
      "#2=PRODUCT_DEFINITION('',#1);\n");
  EXPECT_EQ(parts_of(*file), "#2 ");
  EXPECT_EQ(file->at(2)->type(), "PRODUCT_DEFINITION");
}

TEST(Discovery, NumberWhoseNewerRecordIsNoDefinitionCountsAsThatRecord) {
  const auto file = discover(
      "#1=PRODUCT('p','p','',());\n"
      "#2=PRODUCT_DEFINITION('',#1);\n"
      "#2=CARTESIAN_POINT('');\n"
      "#3=PRODUCT_DEFINITION('');\n"
      "#3=CARTESIAN_POINT('',#1);\n");
  EXPECT_EQ(parts_of(*file), "#3 ");
  EXPECT_EQ(file->at(3)->type(), "");
}

TEST(Discovery, ReferenceBeyondTheStoreThrows) {
  const auto file = read_records(
      "#1=PRODUCT('p','p','',());\n"
      "#2=PRODUCT_DEFINITION('',#3,#1);\n"
      "#3=PRODUCT_DEFINITION_FORMATION('','',#1048576);\n"
      "#4=PRODUCT_DEFINITION_FORMATION('','',#1048575);\n"
      "#5=PRODUCT_DEFINITION('',#4,#6);\n"
      "#6=PRODUCT_DEFINITION_FORMATION('','',#1048576);\n");
  EXPECT_EQ(out_of_range_text([&] { find_and_create_parts(*file); }), "invalid vector subscript");
}

TEST(Discovery, ReferenceBeyondTheStoreBehindTheProductDoesNotMatter) {
  EXPECT_EQ(parts_of(*discover("#1=PRODUCT('p','p','',(#1048576));\n"
                               "#2=PRODUCT_DEFINITION('',#1,#1048576);\n")),
            "#2 ");
}

TEST(Discovery, ReferenceBeyondTheStoreBehindAShapeThrowsBecauseTheProductIsSoughtFirst) {
  const auto file = read_records(
      "#1=MAPPED_ITEM('',#2);\n"
      "#2=ADVANCED_BREP_SHAPE_REPRESENTATION('',(#1048576));\n");
  EXPECT_EQ(out_of_range_text([&] { find_and_create_parts(*file); }), "invalid vector subscript");
}

}  // namespace
}  // namespace Kessel::test
