// Runs that an exception ends: what reaches the host, and what is left behind.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "kessel/part.h"
#include "kessel/splitter.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

/// The box with a lid whose link names no representation: the box's file needs a reference block
/// that has nothing to point at.
std::string broken_link() {
  std::string records(BOX_WITH_LID);
  const std::string whole = "#9=SHAPE_DEFINITION_REPRESENTATION(#8,#10);";
  records.replace(records.find(whole), whole.size(), "#9=SHAPE_DEFINITION_REPRESENTATION(#8);");
  return exchange_file(records);
}

/// In a scratch folder; leaves the statics as the test found them, empty.
class RunExceptions : public testing::Test {
 protected:
  ~RunExceptions() override { Part::free_statics(); }

  void expect_nothing_written() const {
    EXPECT_FALSE(fs::exists("out"));
    EXPECT_TRUE(Part::_opened_files.empty());
  }

  ScratchFolder folder_;
};

TEST_F(RunExceptions, InputThatCannotBeOpened) {
  try {
    Kessel::Run("missing.stp", "out");
    ADD_FAILURE() << "no exception";
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "Failed to open input file.");
  }
  expect_nothing_written();
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(RunExceptions, ReferenceBeyondTheStore) {
  folder_.write("in.stp", exchange_file("#3=PRODUCT_DEFINITION('d','',#2000000,$);\n"));
  try {
    Kessel::Run("in.stp", "out");
    ADD_FAILURE() << "no exception";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid vector subscript");
  }
  expect_nothing_written();
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(RunExceptions, InputThatCannotBeRewound) {
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  std::thread writer([] { std::ofstream("pipe") << exchange_file(BOX_WITH_LID); });
  try {
    Kessel::Run("pipe", "out");
    ADD_FAILURE() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "Unable to change pos indicator");
  }
  writer.join();
  expect_nothing_written();
  EXPECT_EQ(read_file("roots.txt"), "#1_part.stp\n");  // The structure was found before.
}

TEST_F(RunExceptions, OutputFolderThatCannotBeMade) {
  folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  folder_.write("file", "text");
  try {
    Kessel::Run("in.stp", "file/out");
    ADD_FAILURE() << "no exception";
  } catch (const fs::filesystem_error& error) {
    EXPECT_STREQ(error.what(), "filesystem error: create_directories: Not a directory [file/out]");
    EXPECT_EQ(error.code(), std::errc::not_a_directory);
    EXPECT_EQ(error.path1(), "file/out");
  }
  EXPECT_EQ(read_file("file"), "text");
  EXPECT_TRUE(Part::_opened_files.empty());
}

TEST_F(RunExceptions, OutputFolderWhoseNameIsNotUtf8) {
  folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  try {
    Kessel::Run("in.stp", "out\xff");
    ADD_FAILURE() << "no exception";
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::errc::illegal_byte_sequence);
  }
  EXPECT_TRUE(Part::_opened_files.empty());
}

TEST_F(RunExceptions, ReferenceBlockWithNothingToPointAt) {
  folder_.write("in.stp", broken_link());
  std::string what;
  const std::string printed = printed_by([&] {
    try {
      Kessel::Run("in.stp", "out");
    } catch (const std::out_of_range& error) {
      what = error.what();
    }
  });
  EXPECT_EQ(what, "invalid map<K, T> key");
  // Once where parts with geometry are looked for, once for the block.
  EXPECT_EQ(printed,
            "Got an out of range in 'get_child' while fetching child nb 1\n"
            "Got an out of range in 'get_child' while fetching child nb 1\n");

  // What came before the link is in the files; no closing lines.
  EXPECT_EQ(without_time_stamps(read_file("out/#1_part.stp")),
            output_begin("out/#1_part.stp") +
                std::string(BOX_RECORDS.substr(0, BOX_RECORDS.find("#12=DOCUMENT_TYPE"))));
  EXPECT_EQ(without_time_stamps(read_file("out/#4_part.stp")),
            output_begin("out/#4_part.stp") +
                std::string(LID_RECORDS.substr(0, LID_RECORDS.find("#5=SHAPE_DEFINITION"))));
  EXPECT_TRUE(Part::_opened_files.empty()) << "pointers to freed parts";
}

TEST_F(RunExceptions, NamesStayTakenUntilTheStaticsAreFreed) {
  folder_.write("broken.stp", broken_link());
  folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  printed_by([] { EXPECT_THROW(Kessel::Run("broken.stp", "out"), std::out_of_range); });
  EXPECT_THAT(Part::_filenames, ElementsAre(std::pair("#1_part", 1), std::pair("#4_part", 1)));
  EXPECT_THAT(Kessel::Run("in.stp", "next"),
              ElementsAre("next/#1_part_(2)_.stp", "next/#4_part_(2)_.stp"));
  EXPECT_THAT(Kessel::Run("in.stp", "last"), ElementsAre("last/#1_part.stp", "last/#4_part.stp"));

  printed_by([] { EXPECT_THROW(Kessel::Run("broken.stp", "out"), std::out_of_range); });
  Part::free_statics();
  EXPECT_THAT(Part::_filenames, IsEmpty());
  EXPECT_THAT(Kessel::Run("in.stp", "free"), ElementsAre("free/#1_part.stp", "free/#4_part.stp"));
}

}  // namespace
}  // namespace Kessel::test
