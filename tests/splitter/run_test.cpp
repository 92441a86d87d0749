// Whole runs through the entry point of hosts: what they return, write and print.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
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

/// The box with its lid, the lid's records and product definition before the box's.
std::string lid_before_box() {
  return exchange_file(
      "#1=PRODUCT('lid','lid','',());\n"
      "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
      "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
      "#4=PRODUCT('box','box','',());\n"
      "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
      "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
      "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#6,#3,$);\n");
}

/// Two products that nothing joins.
std::string box_beside_lid() {
  return exchange_file(
      "#1=PRODUCT('box','box','',());\n"
      "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
      "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
      "#4=PRODUCT('lid','lid','',());\n"
      "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
      "#6=PRODUCT_DEFINITION('d','',#5,$);\n");
}

TEST(Run, WritesEveryPartAndReturnsTheFilesWithTheRootFirst) {
  const SplitRun run = split_text(exchange_file(BOX_WITH_LID));
  EXPECT_THAT(run.result, ElementsAre("out/#1_part.stp", "out/#4_part.stp"));
  EXPECT_THAT(
      run.files,
      ElementsAre(std::pair("out/#1_part.stp", output_file("out/#1_part.stp", BOX_RECORDS)),
                  std::pair("out/#4_part.stp", output_file("out/#4_part.stp", LID_RECORDS))));
  EXPECT_EQ(run.roots_txt, "#1_part.stp\n");
  EXPECT_EQ(run.messages, "");
  EXPECT_EQ(run.exception, "");
}

TEST(Run, RootIsFirstInTheResultEvenWhenItIsNotFirstInTheFile) {
  const SplitRun run = split_text(lid_before_box());
  EXPECT_THAT(run.result, ElementsAre("out/#4_part.stp", "out/#1_part.stp"));
  EXPECT_EQ(run.roots_txt, "#4_part.stp\n");
}

TEST(Run, GeneratedRootIsFirstInTheResult) {
  const SplitRun run = split_text(box_beside_lid());
  EXPECT_THAT(run.result, ElementsAre("out/Root.stp", "out/#1_part.stp", "out/#4_part.stp"));
  EXPECT_EQ(run.roots_txt, "Root.stp\n");
  EXPECT_EQ(run.files.at("out/Root.stp"), output_file("out/Root.stp",
                                                      "#5=PRODUCT('box','box','',());\n"
                                                      "#4=PRODUCT_DEFINITION_FORMATION('','',#5);\n"
                                                      "#1=PRODUCT_DEFINITION('d','',#4,$);\n"
                                                      "#7=PRODUCT('lid','lid','',());\n"
                                                      "#6=PRODUCT_DEFINITION_FORMATION('','',#7);\n"
                                                      "#2=PRODUCT_DEFINITION('d','',#6,$);\n"));
}

TEST(Run, PathsAreJoinedWithTheOutputFolderAndNormalised) {
  const struct {
    const char* outdir;
    const char* expected;
  } CASES[] = {
      {"out", "out/#1_part.stp"},
      {"out/", "out/#1_part.stp"},
      {"./out//sub/.", "out/sub/#1_part.stp"},
      {"a/../out", "out/#1_part.stp"},
      {".", "#1_part.stp"},
      {"..", "../#1_part.stp"},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.outdir);
    const ScratchFolder folder;
    fs::create_directories("here/a");
    fs::current_path("here");
    const fs::path in = folder.write("in.stp", exchange_file(BOX_WITH_LID));
    const std::vector<fs::path> result = Kessel::Run(in, row.outdir);
    ASSERT_EQ(result.size(), 2u);
    EXPECT_EQ(result[0].string(), row.expected);
    EXPECT_TRUE(fs::is_regular_file(result[0]));
  }
}

TEST(Run, AbsoluteOutputFolderGivesAbsolutePaths) {
  const ScratchFolder folder;
  const fs::path in = folder.write("in.stp", exchange_file(BOX_WITH_LID));
  EXPECT_THAT(Kessel::Run(in, folder / "out"),
              ElementsAre(folder / "out/#1_part.stp", folder / "out/#4_part.stp"));
}

TEST(Run, HeaderNamesTheFileAsItWasAskedForNotNormalised) {
  const SplitRun run = split_text(exchange_file(BOX_WITH_LID), "./out//sub");
  EXPECT_EQ(run.files.at("out/sub/#4_part.stp"),
            output_file("./out//sub/#4_part.stp", LID_RECORDS));
}

TEST(Run, RootsTxtGoesToTheWorkingFolderAndReplacesAnOlderOne) {
  const ScratchFolder folder;
  folder.write("roots.txt", "a much longer text of an earlier run\n");
  Kessel::Run(folder.write("in.stp", exchange_file(BOX_WITH_LID)), folder / "elsewhere");
  EXPECT_EQ(read_file("roots.txt"), "#1_part.stp\n");
  EXPECT_FALSE(fs::exists("elsewhere/roots.txt"));
}

TEST(Run, SecondRunIntoTheSameFolderAppends) {
  const ScratchFolder folder;
  const fs::path in = folder.write("in.stp", exchange_file(BOX_WITH_LID));
  Kessel::Run(in, "out");
  Kessel::Run(in, "out");
  const std::string once = output_file("out/#4_part.stp", LID_RECORDS);
  EXPECT_EQ(without_time_stamps(read_file("out/#4_part.stp")), once + once);
}

TEST(Run, SecondRunInTheSameProcessStartsWithFreshNames) {
  const ScratchFolder folder;
  const fs::path in = folder.write("in.stp", exchange_file(BOX_WITH_LID));
  Kessel::Run(in, "first");
  EXPECT_THAT(Part::_filenames, IsEmpty());
  EXPECT_TRUE(Part::_opened_files.empty());
  EXPECT_THAT(Kessel::Run(in, "second"), ElementsAre("second/#1_part.stp", "second/#4_part.stp"));
}

TEST(Run, OnePartPrintsItsMessageOnceAndWritesNothing) {
  const SplitRun run = split_text(exchange_file(LID_ALONE));
  EXPECT_EQ(run.messages, ONLY_ONE_PART);
  EXPECT_THAT(run.result, IsEmpty());
  EXPECT_THAT(run.files, IsEmpty());
  EXPECT_EQ(run.roots_txt, std::nullopt);
  EXPECT_EQ(run.exception, "");
}

TEST(Run, NoPartsPrintThatThereIsNoRootAndWriteNothing) {
  const SplitRun run = split_text(exchange_file("#1=PRODUCT('lid','lid','',());\n"));
  EXPECT_EQ(run.messages, NO_ROOT);
  EXPECT_THAT(run.result, IsEmpty());
  EXPECT_THAT(run.files, IsEmpty());
  EXPECT_EQ(run.roots_txt, std::nullopt);
  EXPECT_EQ(run.exception, "");
}

TEST(Run, PartsInACycleHaveNoRootAndFilesWithoutRecords) {
  // Nothing seeds an assembly without a root above it.
  const SplitRun run = split_text(exchange_file(CYCLE));
  EXPECT_EQ(run.messages, NO_ROOT);
  EXPECT_THAT(run.result, ElementsAre("out/#1_part.stp", "out/#4_part.stp"));
  EXPECT_THAT(run.files,
              ElementsAre(std::pair("out/#1_part.stp", output_file("out/#1_part.stp", "")),
                          std::pair("out/#4_part.stp", output_file("out/#4_part.stp", ""))));
  EXPECT_EQ(run.roots_txt, std::nullopt);
}

TEST(Run, LeafBelowACycleIsWrittenWithoutARoot) {
  const SplitRun run =
      split_text(exchange_file(std::string(CYCLE) +
                               "#10=PRODUCT('shell','shell','',());\n"
                               "#11=PRODUCT_DEFINITION_FORMATION('','',#10);\n"
                               "#12=PRODUCT_DEFINITION('d','',#11,$);\n"
                               "#13=NEXT_ASSEMBLY_USAGE_OCCURRENCE('3','','',#6,#12,$);\n"));
  EXPECT_EQ(run.messages, NO_ROOT);
  EXPECT_THAT(run.result, ElementsAre("out/#1_part.stp", "out/#4_part.stp", "out/#10_part.stp"));
  // The usage, which nothing else claims, goes with the one part that it refers to.
  EXPECT_EQ(run.files.at("out/#10_part.stp"),
            output_file("out/#10_part.stp",
                        "#3=PRODUCT('shell','shell','',());\n"
                        "#2=PRODUCT_DEFINITION_FORMATION('','',#3);\n"
                        "#1=PRODUCT_DEFINITION('d','',#2,$);\n"
                        "#4=NEXT_ASSEMBLY_USAGE_OCCURRENCE('3','','',#1,$);\n"));
}

TEST(Run, PartWithoutANameAmongOthersStaysInTheResult) {
  const SplitRun run =
      split_text(exchange_file("#1=PRODUCT('box','box','',());\n"
                               "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
                               "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
                               "#6=PRODUCT_DEFINITION('d','',#5,#1);\n"
                               "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#6,$);\n"));
  EXPECT_THAT(run.result, ElementsAre("out/#1_part.stp", "out/"));
}

TEST(MarkerFunction, ReturnsOne) {
  EXPECT_EQ(TARNWELL_KBF2_INTERNAL_VelkStepSplitter(), 1);
}

}  // namespace
}  // namespace Kessel::test
