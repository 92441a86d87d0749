// The block of records by which an assembly's file points at a component's file.
#include "writer/external_reference.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "support/split_run.h"
#include "writer/hand_made_store.h"

namespace Kessel::test {
namespace {

/// An assembly that shares with a leaf the link #30 between the shape #20 of the definition #10 and
/// the representation #40. In the assembly's file the definition is #5, the representation #8, and
/// 40 numbers are taken.
class ExternalReference : public testing::Test {
 protected:
  ExternalReference() {
    store_.add_record(10, {}, "PRODUCT_DEFINITION");
    store_.add_record(20, {10});
    store_.add_record(40);
    store_.hold(10, assembly_, 5);
    store_.hold(40, assembly_, 8);
    assembly_->last_instance_number = 40;
    link_.part_numbers.emplace(assembly_, 9);
    link_.part_numbers.emplace(leaf_, 3);
    link_.add_reference(20);
    link_.add_reference(40);
  }

  std::string block(const Entity& link, Part* target) {
    ReachabilitySearch search(store_.slots());
    const Part* component = first_leaf(link);
    return make_external_reference(store_.slots(), search, target, link,
                                   component == nullptr ? "" : component->get_encoded_filename());
  }
  std::string block(const Entity& link) { return block(link, assembly_); }
  std::string block() { return block(link_); }

  /// The text of the std::out_of_range that `block` throws, or "no exception".
  std::string exception_of(const Entity& link) {
    try {
      block(link);
    } catch (const std::out_of_range& error) {
      return error.what();
    }
    return "no exception";
  }

  HandMadeStore store_;
  Part* assembly_ = store_.add_part(ASSEMBLY_PART, "out/top.stp");
  Part* leaf_ = store_.add_part(LEAF_PART, "out/leaf.stp");
  Entity link_;
};

TEST_F(ExternalReference, ElevenRecordsNameTheLeafsFileAndAttachItToTheAssemblysRecords) {
  EXPECT_EQ(block(),
            "#41=DOCUMENT_TYPE('geometry');\n"
            "#42=DOCUMENT_FILE('leaf.stp','','',#41,'',$);\n"
            "#43=DOCUMENT_REPRESENTATION_TYPE('digital',#42);\n"
            "#44=EXTERNAL_SOURCE(IDENTIFIER(''));\n"
            "#45=IDENTIFICATION_ROLE('external document id and location',$);\n"
            "#46=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('leaf.stp',#45,#44,(#42));\n"
            "#47=PROPERTY_DEFINITION('external definition','',#42);\n"
            "#48=PROPERTY_DEFINITION_REPRESENTATION(#47,#8);\n"
            "#49=APPLIED_DOCUMENT_REFERENCE(#42,'',(#5));\n"
            "#50=OBJECT_ROLE('mandatory',$);\n"
            "#51=ROLE_ASSOCIATION(#50,#49);\n");
  EXPECT_EQ(assembly_->last_instance_number, 51u);
}

TEST_F(ExternalReference, NextBlockGoesOnBehindTheFirst) {
  block();
  EXPECT_EQ(block().substr(0, 31), "#52=DOCUMENT_TYPE('geometry');\n");
  EXPECT_EQ(assembly_->last_instance_number, 62u);
}

TEST_F(ExternalReference, EachAssemblyNumbersItsOwnBlock) {
  Part* other = store_.add_part(ASSEMBLY_PART);
  store_.hold(10, other, 1);
  store_.hold(40, other, 2);
  other->last_instance_number = 7;
  EXPECT_EQ(block(link_, other),
            "#8=DOCUMENT_TYPE('geometry');\n"
            "#9=DOCUMENT_FILE('leaf.stp','','',#8,'',$);\n"
            "#10=DOCUMENT_REPRESENTATION_TYPE('digital',#9);\n"
            "#11=EXTERNAL_SOURCE(IDENTIFIER(''));\n"
            "#12=IDENTIFICATION_ROLE('external document id and location',$);\n"
            "#13=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('leaf.stp',#12,#11,(#9));\n"
            "#14=PROPERTY_DEFINITION('external definition','',#9);\n"
            "#15=PROPERTY_DEFINITION_REPRESENTATION(#14,#2);\n"
            "#16=APPLIED_DOCUMENT_REFERENCE(#9,'',(#1));\n"
            "#17=OBJECT_ROLE('mandatory',$);\n"
            "#18=ROLE_ASSOCIATION(#17,#16);\n");
  EXPECT_EQ(other->last_instance_number, 18u);
  EXPECT_EQ(assembly_->last_instance_number, 40u);
}

/// The file name in a block, which stands twice.
std::string named_file(const std::string& text) {
  const auto between = [&](const std::string& before, const std::string& behind) {
    const std::size_t begin = text.find(before) + before.size();
    return text.substr(begin, text.find(behind, begin) - begin);
  };
  const std::string file = between("DOCUMENT_FILE('", "','','',#");
  EXPECT_EQ(between("APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('", "',#"), file);
  return file;
}

TEST_F(ExternalReference, FileNameIsWrittenInTheExchangeEncoding) {
  leaf_->path = "out/it's \u4e2d \\.stp";
  EXPECT_EQ(named_file(block()), R"(it''s \X2\4E2D\X0\ \\.stp)");
}

TEST_F(ExternalReference, FirstLeafInTheOrderOfTheListIsNamed) {
  Part* later = store_.add_part(LEAF_PART, "out/later.stp");
  Entity link;
  link.part_numbers.emplace(later, 1);
  link.part_numbers.emplace(leaf_, 1);
  link.part_numbers.emplace(assembly_, 1);
  link.add_reference(20);
  link.add_reference(40);
  EXPECT_EQ(named_file(block(link)), "leaf.stp");
}

TEST_F(ExternalReference, LinkThatOnlyAssembliesHoldNamesAnEmptyFile) {
  leaf_->part_kind = ASSEMBLY_PART;
  EXPECT_EQ(named_file(block()), "");
}

/// The definition that the block's document reference names.
std::string named_definition(const std::string& text) {
  const std::size_t begin = text.find(",'',(") + 5;
  return text.substr(begin, text.find("));", begin) - begin);
}

TEST_F(ExternalReference, DefinitionIsTheFirstOfTheMostWantedTypeThatTheShapeLeadsTo) {
  HandMadeStore& s = store_;
  s.add_record(50, {}, "MAPPED_ITEM");
  s.add_record(51, {}, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS");
  s.add_record(52, {}, "PRODUCT_DEFINITION");
  s.hold(50, assembly_, 100);
  s.hold(51, assembly_, 101);
  s.hold(52, assembly_, 102);
  s.add_record(60, {50, 61});
  s.add_record(61, {51, 62});
  s.add_record(62, {52});
  s.add_record(63, {50, 51});
  s.add_record(64, {50});
  const auto definition_behind = [&](std::uint32_t shape) {
    Entity link;
    link.add_reference(shape);
    link.add_reference(40);
    return named_definition(block(link));
  };
  EXPECT_EQ(definition_behind(60), "#102");  // Farther away, but a product definition.
  EXPECT_EQ(definition_behind(63), "#101");
  EXPECT_EQ(definition_behind(64), "#100");
  EXPECT_EQ(definition_behind(52), "#102");  // The shape may be the definition itself.
}

TEST_F(ExternalReference, RepresentationThatTheAssemblyLacksEndsTheRunAfterSevenNumbers) {
  store_.add_record(41);
  Entity link;
  link.add_reference(20);
  link.add_reference(41);
  EXPECT_EQ(exception_of(link), "invalid map<K, T> key");
  EXPECT_EQ(assembly_->last_instance_number, 47u);
}

TEST_F(ExternalReference, RepresentationWithoutARecordEndsTheRun) {
  Entity link;
  link.add_reference(20);
  link.add_reference(42);
  EXPECT_EQ(exception_of(link), "invalid map<K, T> key");
  EXPECT_EQ(assembly_->last_instance_number, 47u);
}

TEST_F(ExternalReference, LinkWithoutARepresentationIsReportedAndEndsTheRun) {
  Entity link;
  link.add_reference(20);
  std::string exception;
  EXPECT_EQ(printed_by([&] { exception = exception_of(link); }),
            "Got an out of range in 'get_child' while fetching child nb 1\n");
  EXPECT_EQ(exception, "invalid map<K, T> key");
  EXPECT_EQ(assembly_->last_instance_number, 47u);
}

TEST_F(ExternalReference, DefinitionThatTheAssemblyLacksEndsTheRunAfterEightNumbers) {
  store_.add_record(11, {}, "PRODUCT_DEFINITION");
  Entity link;
  link.add_reference(11);
  link.add_reference(40);
  EXPECT_EQ(exception_of(link), "invalid map<K, T> key");
  EXPECT_EQ(assembly_->last_instance_number, 48u);
}

TEST_F(ExternalReference, ShapeThatLeadsToNoDefinitionEndsTheRun) {
  store_.add_record(21, {40});
  Entity link;
  link.add_reference(21);
  link.add_reference(40);
  EXPECT_EQ(exception_of(link), "invalid map<K, T> key");
  EXPECT_EQ(assembly_->last_instance_number, 48u);
}

TEST_F(ExternalReference, NumbersBeyondTheStoreEndTheRun) {
  Entity shape_beyond;
  shape_beyond.add_reference(2'000'000);
  shape_beyond.add_reference(40);
  EXPECT_EQ(exception_of(shape_beyond), "invalid vector subscript");
  EXPECT_EQ(assembly_->last_instance_number, 48u);

  Entity representation_beyond;
  representation_beyond.add_reference(20);
  representation_beyond.add_reference(2'000'000);
  EXPECT_EQ(exception_of(representation_beyond), "invalid vector subscript");
  EXPECT_EQ(assembly_->last_instance_number, 55u);

  store_.add_record(22, {2'000'000});
  Entity search_beyond;
  search_beyond.add_reference(22);
  search_beyond.add_reference(40);
  EXPECT_EQ(exception_of(search_beyond), "invalid vector subscript");
  EXPECT_EQ(assembly_->last_instance_number, 63u);
}

}  // namespace
}  // namespace Kessel::test
