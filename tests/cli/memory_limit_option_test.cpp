// --memory-limit: what is refused, and how sizes are given.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::MatchesRegex;

/// "LIMIT" stands for the limit in bytes.
std::string sentence(const std::string& limit) {
  return "With instance #4294967295 the records up to here need [0-9,]+ bytes of memory, and the "
         "limit is " +
         limit + "\\.";
}

/// An input of a few bytes, for whose highest number a table of 8 MiB is made.
const std::string ADVICE = " With a larger --memory-limit, or without, it is read\\.";

class MemoryLimitOption : public testing::Test {
 protected:
  MemoryLimitOption() {
    folder_.write("in.stp", exchange_file(std::string(BOX_WITH_LID) + "#4294967295=A();\n"));
  }

  static ProcessRun with_limit(const std::string& limit, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin() + 1, {"--memory-limit", limit});
    return run_velkstep(arguments);
  }

  ScratchFolder folder_;
};

TEST_F(MemoryLimitOption, SplitAndReportRefuseTheInputAndLeaveTheFolderAsItWas) {
  fs::create_directory("out");
  folder_.write("out/notes.txt", "mine");
  const FolderTree before = tree_of(folder_.path());
  for (const char* const command : {"split", "report"}) {
    for (const char* const outdir : {"out", "new"}) {
      const ProcessRun run = with_limit("8MB", {command, "--classic", "in.stp", outdir});
      EXPECT_EQ(run.exit_code, 1);
      EXPECT_EQ(run.out, "");
      EXPECT_THAT(run.errors,
                  MatchesRegex("velkstep: in.stp:20:1: " + sentence("8,000,000") + ADVICE + "\n"));
      EXPECT_EQ(tree_of(folder_.path()), before);
      // The columns of the other styles hold any number, but not any name.
      const ProcessRun nested = with_limit("1kB", {command, "in.stp", outdir});
      EXPECT_EQ(nested.exit_code, 1);
      EXPECT_EQ(nested.out, "");
      EXPECT_THAT(nested.errors,
                  MatchesRegex("velkstep: in.stp.*: .* limit is 1,000[.;].*" + ADVICE + "\n"));
      EXPECT_EQ(tree_of(folder_.path()), before);
    }
  }
}

TEST_F(MemoryLimitOption, SplitAndReportDoWithEnough) {
  EXPECT_EQ(with_limit("9MB", {"split", "in.stp", "out"}).exit_code, 0);
  EXPECT_EQ(with_limit("9MB", {"report", "in.stp", "page"}).exit_code, 0);
  EXPECT_EQ(read_file("out/roots.txt"), "box.stp\n");
}

/// Two products whose names take nine million bytes.
std::string long_names() {
  const std::string name(4'500'000, 'x');
  return exchange_file("#1=PRODUCT('" + name + "','','',());\n#2=PRODUCT('" + name +
                       "','','',());\n");
}

TEST_F(MemoryLimitOption, CheckRefusesWhatNeedsMore) {
  folder_.write("names.stp", long_names());
  const ProcessRun refused = with_limit("8MB", {"check", "names.stp"});
  EXPECT_EQ(refused.exit_code, 1);
  EXPECT_EQ(refused.errors, "");
  EXPECT_THAT(refused.out,
              MatchesRegex("names.stp: error: The records need at least 9,00[0-9],[0-9]+ bytes of "
                           "memory, and the limit is 8,000,000\\." +
                           ADVICE + "\n"));
  EXPECT_EQ(with_limit("10MB", {"check", "names.stp"}).out,
            run_velkstep({"check", "names.stp"}).out);
}

TEST_F(MemoryLimitOption, LookingRefusesTheSame) {
  for (const char* const command : {"tree", "info"}) {
    const ProcessRun refused = with_limit("1kB", {command, "in.stp"});
    EXPECT_EQ(refused.exit_code, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_THAT(refused.errors,
                MatchesRegex("velkstep: in.stp.*limit is 1,000[.;].*" + ADVICE + "\n"));
    EXPECT_EQ(with_limit("9MB", {command, "in.stp"}).out, run_velkstep({command, "in.stp"}).out);
  }
  EXPECT_EQ(with_limit("1kB", {"tree", "--bom", "--sizes", "in.stp"}).exit_code, 1);
}

TEST_F(MemoryLimitOption, VerifyAndJoinRefuseTheSame) {
  fs::create_directory("out");
  fs::copy("in.stp", "out/in.stp");
  folder_.write("out/roots.txt", "in.stp\n");
  const ProcessRun refused = with_limit("1kB", {"verify", "in.stp", "out"});
  EXPECT_EQ(refused.exit_code, 1);
  EXPECT_EQ(refused.errors, "");
  EXPECT_THAT(refused.out, MatchesRegex("out/in.stp.* error: .*limit is 1,000[.;].*\n"));
  EXPECT_EQ(with_limit("900MB", {"verify", "in.stp", "out"}).exit_code, 0);
  const ProcessRun joined = with_limit("1kB", {"join", "in.stp", "-o", "one.stp"});
  EXPECT_EQ(joined.exit_code, 1);
  EXPECT_THAT(joined.errors, MatchesRegex("velkstep: in.stp.*limit is 1,000[.;].*\n"));
  EXPECT_FALSE(fs::exists("one.stp"));
}

TEST_F(MemoryLimitOption, SizesMayHaveUnits) {
  folder_.write("names.stp", long_names());
  const struct {
    const char* size;
    const char* bytes;
  } CASES[] = {{"1", "1"},
               {"8000000", "8,000,000"},
               {"8000000b", "8,000,000"},
               {"7MB", "7,000,000"},
               {"7 MB", "7,000,000"},
               {"7m", "7,000,000"},
               {"7MiB", "7,340,032"},
               {"7000kB", "7,000,000"},
               {"7000ki", "7,168,000"}};
  for (const auto& row : CASES) {
    EXPECT_THAT(with_limit(row.size, {"check", "names.stp"}).out,
                MatchesRegex(".*limit is " + std::string(row.bytes) + "[.;].*" + ADVICE + "\n"))
        << row.size;
  }
  for (const char* const enough : {"2GiB", "1TB", "15EiB", "9999999999999999999"}) {
    EXPECT_EQ(with_limit(enough, {"check", "names.stp"}).out,
              run_velkstep({"check", "names.stp"}).out);
  }
}

TEST_F(MemoryLimitOption, WrongSizesAreWrongUsage) {
  for (const char* const wrong :
       {"", "much", "-1", "1.5GB", "10XB", "MB", "5MB5", "16EiB", "18446744073709551616"}) {
    for (const char* const command : {"split", "report", "check", "verify"}) {
      std::vector<std::string> arguments = {command, "in.stp"};
      if (arguments.front() != "check") arguments.emplace_back("out");
      const ProcessRun run = with_limit(wrong, arguments);
      EXPECT_EQ(run.exit_code, 2) << wrong;
      EXPECT_EQ(run.out, "");
      EXPECT_THAT(run.errors, MatchesRegex("velkstep [^\n]+: --memory-limit: [^\n]+\n"
                                           "velkstep [a-z]+ --help says how to use it.\n"));
      EXPECT_FALSE(fs::exists("out"));
    }
  }
}

TEST_F(MemoryLimitOption, HelpNamesIt) {
  for (const char* const command : {"split", "report", "check", "verify"}) {
    const std::string help = run_velkstep({command, "--help"}).out;
    EXPECT_THAT(
        help,
        HasSubstr("\n  --memory-limit SIZE       Refuse an input whose records would take more\n"
                  "                            memory: bytes, or a size such as 500MB or "
                  "2GiB\n"));
  }
}

}  // namespace
}  // namespace Kessel::test
