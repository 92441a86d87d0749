// Compressed inputs: every command reads them as it reads what is in them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// Makes zip archives: NAME, then pairs of an entry's name and the file that it holds.
constexpr const char* ZIP =
    "python3 -c 'import sys, zipfile\n"
    "with zipfile.ZipFile(sys.argv[1], \"w\", zipfile.ZIP_DEFLATED) as archive:\n"
    "  for name, file in zip(sys.argv[2::2], sys.argv[3::2]): archive.write(file, name)' ";

const std::string CUT_ARCHIVE =
    "The archive cannot be unpacked: truncated gzip input. Copy it again, or unpack it by other "
    "means.";

class CompressedInput : public testing::Test {
 protected:
  CompressedInput() {
    folder_.write("in.stp", exchange_file(BOX_WITH_LID));
    folder_.write("other.stp", exchange_file(CYCLE));
  }

  static void make(const std::string& command) { ASSERT_EQ(run_in_shell(command).status, 0); }

  static void expect_same_tree(const std::string& archive) {
    const ProcessRun plain = run_velkstep({"tree", "in.stp"});
    const ProcessRun unpacked = run_velkstep({"tree", archive});
    EXPECT_EQ(unpacked.errors, "");
    EXPECT_EQ(unpacked.out, plain.out);
    EXPECT_EQ(unpacked.exit_code, 0);
  }

  static void expect_refused(const std::string& archive, const std::string& reason) {
    const ProcessRun run = run_velkstep({"tree", archive});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errors, "velkstep: " + archive + ": " + reason + "\n");
  }

  ScratchFolder folder_;
};

TEST_F(CompressedInput, GzipWhateverItIsCalled) {
  make("gzip -k in.stp && cp in.stp.gz in.stpz && cp in.stp.gz plain");
  for (const char* name : {"in.stp.gz", "in.stpz", "plain"}) expect_same_tree(name);
}

TEST_F(CompressedInput, GzipOnStandardInput) {
  make("gzip -k in.stp");
  const ProcessRun run = run_velkstep({"tree", "-"}, {.standard_input = "in.stp.gz"});
  EXPECT_EQ(run.out, run_velkstep({"tree", "in.stp"}).out);
  EXPECT_EQ(run.errors, "");
}

TEST_F(CompressedInput, ZipWithOneExchangeFile) {
  make(std::string(ZIP) + "one.zip a/in.STEP in.stp && " + ZIP +
       "more.zip notes.txt other.stp __MACOSX/in.stp other.stp in.stp in.stp && " + ZIP +
       "unnamed.zip model in.stp");
  for (const char* name : {"one.zip", "more.zip", "unnamed.zip"}) expect_same_tree(name);
}

TEST_F(CompressedInput, ZipAsTheStandardHasIt) {
  make(std::string(ZIP) + "all.zip part.stp other.stp ISO-10303.p21 in.stp");
  expect_same_tree("all.zip");
}

TEST_F(CompressedInput, ZipThatDoesNotSayWhichFileIsMeant) {
  make(std::string(ZIP) + "two.zip a.stp in.stp b.stp other.stp");
  expect_refused("two.zip",
                 "The archive holds 2 files, not one exchange file: a.stp, b.stp. Unpack it, and "
                 "name one of them.");
  make(std::string(ZIP) + "none.zip");
  expect_refused("none.zip", "The archive holds no file. Name one that holds an exchange file.");
}

TEST_F(CompressedInput, EveryCommandReadsIt) {
  make("gzip -k in.stp");
  EXPECT_EQ(run_velkstep({"check", "in.stp.gz"}).out, run_velkstep({"check", "in.stp"}).out);
  EXPECT_EQ(run_velkstep({"info", "in.stp.gz"}).errors, "");
  EXPECT_EQ(run_velkstep({"split", "--quiet", "in.stp", "plain"}).exit_code, 0);
  EXPECT_EQ(run_velkstep({"split", "--quiet", "in.stp.gz", "unpacked"}).exit_code, 0);
  EXPECT_EQ(run_in_shell("diff -r -I FILE_NAME -x velkstep-split.json plain unpacked").status, 0);
  EXPECT_EQ(run_velkstep({"verify", "in.stp.gz", "unpacked"}).exit_code,
            run_velkstep({"verify", "in.stp", "unpacked"}).exit_code);
  EXPECT_EQ(run_velkstep({"diff", "in.stp.gz", "in.stp"}).exit_code, 0);
  EXPECT_EQ(run_velkstep({"diff", "other.stp", "in.stp.gz"}).exit_code, 1);
}

TEST_F(CompressedInput, DamagedArchiveIsAnError) {
  make("gzip -c in.stp | head -c 200 > cut.gz");
  expect_refused("cut.gz", CUT_ARCHIVE);
}

TEST_F(CompressedInput, CheckFindsWhatOthersRefuse) {
  make("gzip -c in.stp | head -c 200 > cut.gz");
  const ProcessRun text = run_velkstep({"check", "cut.gz"});
  EXPECT_EQ(text.exit_code, 1);
  EXPECT_EQ(text.out, "cut.gz: error: " + CUT_ARCHIVE + "\n");
  const ProcessRun json = run_velkstep({"check", "--json", "cut.gz"});
  EXPECT_NE(json.out.find("\"kind\":\"compressed\",\"severity\":\"error\""), std::string::npos)
      << json.out;
  EXPECT_EQ(run_velkstep({"verify", "cut.gz", "out"}).out, text.out);
}

TEST_F(CompressedInput, NothingCompressedIsAnEmptyFile) {
  make(": | gzip > nothing.gz");
  expect_refused("nothing.gz", "The file is empty. Copy or export it again.");
  EXPECT_EQ(run_velkstep({"check", "nothing.gz"}).out,
            "nothing.gz: error: The file is empty. Copy or export it again.\n");
}

TEST_F(CompressedInput, SmallArchiveDoesNotBecomeAHugeFile) {
  make("head -c 300000000 /dev/zero | gzip -9 > bomb.gz");
  ASSERT_LT(fs::file_size("bomb.gz"), 1'000'000u);
  expect_refused("bomb.gz",
                 "The archive becomes larger than 268435456 bytes; unpack it first if it should.");
}

TEST_F(CompressedInput, NothingStaysBehind) {
  make("gzip -k in.stp");
  fs::create_directory("temporary");
  run_velkstep({"tree", "in.stp.gz"}, {.environment = {{"TMPDIR", "temporary"}}});
  EXPECT_TRUE(fs::is_empty("temporary"));
}

}  // namespace
}  // namespace Kessel::test
