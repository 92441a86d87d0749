// velkstep split: what it prints, writes and returns.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

class SplitCommand : public testing::Test {
 protected:
  /// Expects that the command fails with this one line.
  void expect_failure(const std::string& in, const std::string& outdir, const std::string& line) {
    const ProcessRun run = run_velkstep({"split", in, "-o", outdir});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errors, line);
  }

  fs::path write_box() { return folder_.write("in.stp", exchange_file(BOX_WITH_LID)); }

  ScratchFolder folder_;
};

TEST_F(SplitCommand, WritesTheFilesAndPrintsThemOnePerLine) {
  write_box();
  const ProcessRun run = run_velkstep({"split", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/#1_part.stp\nout/#4_part.stp\n");
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(without_time_stamps(read_file("out/#1_part.stp")),
            output_file("#1_part.stp", BOX_RECORDS));
  EXPECT_EQ(without_time_stamps(read_file("out/#4_part.stp")),
            output_file("#4_part.stp", LID_RECORDS));
  EXPECT_EQ(read_file("out/roots.txt"), "#1_part.stp\n");
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(SplitCommand, PrintsTheRootsFileFirst) {
  folder_.write("in.stp", exchange_file("#1=PRODUCT('lid','lid','',());\n"
                                        "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
                                        "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
                                        "#4=PRODUCT('box','box','',());\n"
                                        "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
                                        "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
                                        "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#6,#3,$);\n"));
  const ProcessRun run = run_velkstep({"split", "in.stp", "./out/."});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/#4_part.stp\nout/#1_part.stp\n");
  EXPECT_EQ(run.errors, "");
}

TEST_F(SplitCommand, OnePartIsNothingToSplit) {
  folder_.write("in.stp", exchange_file(LID_ALONE));
  const ProcessRun run = run_velkstep({"split", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 3);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.errors, ONLY_ONE_PART);
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(SplitCommand, NoPartsAreNothingToSplit) {
  folder_.write("in.stp", exchange_file("#1=PRODUCT('lid','lid','',());\n"));
  const ProcessRun run = run_velkstep({"split", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 3);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.errors, NO_ROOT);
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(SplitCommand, PartsWithoutARootAreWrittenWithTheLibrarysSentence) {
  folder_.write("in.stp", exchange_file(CYCLE));
  const ProcessRun run = run_velkstep({"split", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/#1_part.stp\nout/#4_part.stp\n");
  EXPECT_EQ(run.errors, NO_ROOT);
}

TEST_F(SplitCommand, InputThatCannotBeOpened) {
  expect_failure("missing.stp", "out", "velkstep: missing.stp: No such file or directory\n");
  expect_failure("missing/in.stp", "out", "velkstep: missing/in.stp: No such file or directory\n");
  expect_failure("", "out", "velkstep: : No such file or directory\n");
  write_box();
  expect_failure("in.stp/in.stp", "out", "velkstep: in.stp/in.stp: Not a directory\n");
  EXPECT_FALSE(fs::exists("out"));
}

TEST_F(SplitCommand, InputWhoseNameCannotBeLookedUp) {
  const std::string longest(300, 'a');
  expect_failure(longest, "out", "velkstep: " + longest + ": File name too long\n");
  fs::create_symlink("loop", "loop");
  expect_failure("loop", "out", "velkstep: loop: Too many levels of symbolic links\n");
}

TEST_F(SplitCommand, InputThatIsAFolder) {
  expect_failure(".", "out", "velkstep: .: is a folder\n");
}

TEST_F(SplitCommand, PipeIsReadOnceAndSplitAllTheSame) {
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  std::thread writer([] { std::ofstream("pipe") << exchange_file(BOX_WITH_LID); });
  const ProcessRun run = run_velkstep({"split", "pipe", "out"});
  writer.join();
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/#1_part.stp\nout/#4_part.stp\n");
}

TEST_F(SplitCommand, InputThatIsADevice) {
  expect_failure("/dev/null", "out", "velkstep: /dev/null: is neither a file nor a pipe\n");
}

TEST_F(SplitCommand, OutputFolderThatIsAFile) {
  write_box();
  folder_.write("out", "text");
  expect_failure("in.stp", "out", "velkstep: out: cannot be created: Not a directory\n");
  expect_failure("in.stp", "out/sub", "velkstep: out/sub: cannot be created: Not a directory\n");
  EXPECT_EQ(read_file("out"), "text");
}

TEST_F(SplitCommand, ExceptionOfTheLibraryIsOneLine) {
  folder_.write("in.stp", exchange_file("#3=PRODUCT_DEFINITION('d','',#2000000,$);\n"));
  expect_failure("in.stp", "out",
                 "velkstep: in.stp: a record refers to an instance far beyond the highest number; "
                 "velkstep check finds it\n");
}

TEST_F(SplitCommand, ReferenceBlockWithNothingToPointAtFollowsTheLibrarysSentences) {
  std::string records(BOX_WITH_LID);
  records.replace(records.find("(#8,#10)"), 8, "(#8)");
  folder_.write("in.stp", exchange_file(records));
  expect_failure(
      "in.stp", "out",
      "Got an out of range in 'get_child' while fetching child nb 1\n"
      "Got an out of range in 'get_child' while fetching child nb 1\n"
      "velkstep: in.stp: an assembly's file would lack the definition or shape of a component "
      "to which it must refer\n");
}

TEST_F(SplitCommand, StandardOutputThatIsFullIsAFailure) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  write_box();
  const ProcessRun run = run_velkstep({"split", "in.stp", "out"}, {.standard_output = "/dev/full"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors, "velkstep: standard output: cannot be written: No space left on device\n");
  EXPECT_FALSE(fs::exists("out"));
}

TEST_F(SplitCommand, NamesAfterProducts) {
  folder_.write("in.stp", exchange_file("#1=PRODUCT('box/A','','',());\n"
                                        "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
                                        "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
                                        "#4=PRODUCT('\\X2\\76D6\\X0\\','','',());\n"
                                        "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
                                        "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
                                        "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#6,$);\n"));
  EXPECT_EQ(run_velkstep({"split", "--names=product", "in.stp", "ascii"}).out,
            "ascii/box_A.stp\nascii/U76D6.stp\n");
  EXPECT_EQ(run_velkstep({"split", "--names=product-unicode", "in.stp", "unicode"}).out,
            "unicode/box_A.stp\nunicode/盖.stp\n");
  EXPECT_EQ(run_velkstep({"split", "--names=record", "in.stp", "record"}).out,
            "record/#1_part.stp\nrecord/#4_part.stp\n");
  EXPECT_EQ(run_velkstep({"split", "--names=other", "in.stp", "other"}).exit_code, 2);
}

}  // namespace
}  // namespace Kessel::test
