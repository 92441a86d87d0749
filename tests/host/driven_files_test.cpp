// Hosts that drive a File themselves, and change it between its steps.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "kessel/encoding.h"
#include "kessel/file.h"
#include "kessel/splitter.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

class DrivenFile : public testing::Test {
 protected:
  ~DrivenFile() override { Part::free_statics(); }

  static std::unique_ptr<File> read(const std::string& text) {
    std::ofstream("in.stp", std::ios::binary) << text;
    return std::unique_ptr<File>(File::from("in.stp", decode_step_to_utf8));
  }

  /// The output file `path`, once all are closed.
  static std::string text_of(const std::string& path) {
    Part::free_statics();
    return without_time_stamps(read_file(path));
  }

  ScratchFolder folder_;
};

TEST_F(DrivenFile, RecordsOfAPartThatIsInNoListGoIntoItsOwnFile) {
  Part own("PRODUCT_DEFINITION");
  own.path = "own.txt";
  Part other("PRODUCT_DEFINITION");
  other.path = "other.txt";
  other.list_position = 1;  // As the lid's.
  const auto file = read(exchange_file(BOX_WITH_LID));
  file->at(4)->part_numbers[&own] = ++own.last_instance_number;
  file->at(11)->part_numbers.emplace(&own, ++own.last_instance_number);
  file->at(11)->part_numbers.emplace(&other, 7);
  file->extract_parts("out");
  EXPECT_EQ(text_of("own.txt"),
            "#1=PRODUCT('lid','lid','',());\n"
            "#2=MANIFOLD_SOLID_BREP('',$);\n");
  EXPECT_EQ(text_of("other.txt"), "#7=MANIFOLD_SOLID_BREP('',$);\n");
  EXPECT_THAT(text_of("out/#4_part.stp"), HasSubstr("=MANIFOLD_SOLID_BREP('',$);\n"));
  EXPECT_THAT(text_of("out/#4_part.stp"), HasSubstr("=PRODUCT('lid','lid','',());\n"));
}

TEST_F(DrivenFile, PartOfAnotherFileKeepsItsOwnFile) {
  const auto first = read(exchange_file(BOX_WITH_LID));
  const auto second = read(exchange_file(BOX_WITH_LID));
  Part* const foreign = second->parts()[1];
  ASSERT_EQ(foreign->path, "#4_part_(2)_.stp");
  first->at(11)->part_numbers[foreign] = 3;
  first->extract_parts("out");
  EXPECT_EQ(text_of("#4_part_(2)_.stp"), "#3=MANIFOLD_SOLID_BREP('',$);\n");
  EXPECT_FALSE(std::filesystem::exists("out/#4_part_(2)_.stp"));
}

TEST_F(DrivenFile, SecondExtractionSucceedsWhereWhiteSpaceFollowsTheLastSemicolon) {
  const auto file = read(exchange_file(BOX_WITH_LID));
  file->extract_parts("first");
  Part::free_statics();
  file->extract_parts("second");
  EXPECT_THAT(text_of("second/#4_part.stp"), HasSubstr("=MANIFOLD_SOLID_BREP('',$);\n"));
  EXPECT_THAT(text_of("second/#1_part.stp"), HasSubstr("END-ISO-10303-21;\n"));
}

TEST_F(DrivenFile, SecondExtractionThrowsWhereTheLastSemicolonEndsTheInput) {
  std::string text = exchange_file(BOX_WITH_LID);
  text.pop_back();
  ASSERT_EQ(text.back(), ';');
  const auto file = read(text);
  file->extract_parts("first");
  EXPECT_THAT([&] { file->extract_parts("second"); },
              ThrowsMessage<std::runtime_error>("Unable to change pos indicator"));
  EXPECT_FALSE(std::filesystem::exists("second"));
}

TEST_F(DrivenFile, SecondExtractionSucceedsWhereTheDataEndsBeforeTheInput) {
  std::string text = exchange_file(BOX_WITH_LID);
  text.insert(text.find("ENDSEC;\nEND-"), ";;");
  text.pop_back();
  const auto file = read(text);
  file->extract_parts("first");
  Part::free_statics();
  file->extract_parts("second");
  EXPECT_THAT(text_of("second/#4_part.stp"), HasSubstr("=MANIFOLD_SOLID_BREP('',$);\n"));
}

TEST_F(DrivenFile, ExtractionThatFailedCanBeTriedAgain) {
  const auto file = read(exchange_file(BOX_WITH_LID));
  const std::ofstream in_the_way("first");
  EXPECT_THROW(file->extract_parts("first"), std::filesystem::filesystem_error);
  file->extract_parts("second");
  EXPECT_THAT(text_of("second/#4_part.stp"), HasSubstr("=MANIFOLD_SOLID_BREP('',$);\n"));
}

TEST_F(DrivenFile, ShortReferencesThatBecomeLongOnesFit) {
  std::string references;
  for (int i = 0; i < 1'990; ++i) references += "#1";
  std::string records(BOX_WITH_LID);
  const auto file = read(exchange_file(records + "#60=ID_ATTRIBUTE(" + references + ");\n"));
  for (Part* part : file->parts()) part->last_instance_number = 4'000'000'000;
  file->extract_parts("out");

  const std::string text = text_of("out/#1_part.stp");
  const std::size_t begin = text.find("=ID_ATTRIBUTE(");
  ASSERT_NE(begin, std::string::npos);
  const std::string product = std::to_string(file->at(1)->part_numbers.at(file->parts()[0]));
  ASSERT_EQ(product.size(), 10u);
  std::string expected = "=ID_ATTRIBUTE(";
  for (int i = 0; i < 1'990; ++i) expected += "#" + product;
  EXPECT_EQ(text.substr(begin, text.find('\n', begin) - begin), expected + ");");
}

TEST_F(DrivenFile, NumberZeroIsWrittenLikeAnyOther) {
  Part own("PRODUCT_DEFINITION");
  own.path = "own.txt";
  const auto file = read(exchange_file(BOX_WITH_LID));
  EXPECT_EQ(file->at(4)->part_numbers[&own], 0u);
  file->at(5)->part_numbers[&own] = 1;
  file->extract_parts("out");
  EXPECT_EQ(text_of("own.txt"),
            "#0=PRODUCT('lid','lid','',());\n"
            "#1=PRODUCT_DEFINITION_FORMATION('','',#0);\n");
}

TEST_F(DrivenFile, FolderAsInputCannotBeRead) {
  std::filesystem::create_directory("folder");
  EXPECT_THAT([] { Kessel::Run("folder", "out"); },
              ThrowsMessage<std::invalid_argument>("Failed to open input file."));
  EXPECT_THAT([] { File::from("folder", decode_step_to_utf8); },
              ThrowsMessage<std::invalid_argument>("Failed to open input file."));
  EXPECT_FALSE(std::filesystem::exists("out"));
}

}  // namespace
}  // namespace Kessel::test
