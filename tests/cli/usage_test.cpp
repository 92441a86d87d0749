// What the command prints about itself, and how it takes arguments that make no sense.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/run_process.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

TEST(Usage, VersionIsPrinted) {
  const ProcessRun run = run_velkstep({"--version"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "velkstep " VELKSTEP_VERSION "\n");
  EXPECT_EQ(run.errors, "");
}

const std::string EXIT_CODES =
    "\n"
    "Exit codes:\n"
    "  0  done\n"
    "  1  failed; one line on standard error says why\n"
    "  2  wrong usage\n"
    "  3  nothing to split: the file holds one part or none\n"
    "  4  check, verify: warnings, but no errors\n";

/// Expects that `text` has `line` as one of its lines.
void expect_line(const std::string& text, const std::string& line) {
  EXPECT_NE(("\n" + text).find("\n" + line + "\n"), std::string::npos) << line << "\nin\n" << text;
}

TEST(Usage, HelpNamesTheSubcommandsAndExitCodes) {
  for (const char* flag : {"--help", "-h"}) {
    const ProcessRun run = run_velkstep({flag});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.errors, "");
    expect_line(run.out, "Usage: velkstep [OPTIONS] SUBCOMMAND");
    expect_line(run.out,
                "  split                       Split IN into one file per part under OUTDIR");
    expect_line(run.out,
                "  report                      Split IN, and write a page about its parts, "
                "OUTDIR/report.html");
    expect_line(run.out, "  tree                        Show how the parts of IN are put together");
    expect_line(run.out,
                "  info                        Show what the header of each IN says, and count "
                "what it holds");
    expect_line(run.out, "  check                       Say what is wrong or unusual in IN");
    expect_line(
        run.out,
        "  verify                      Check the files that IN was split into under OUTDIR");
    expect_line(
        run.out,
        "  join                        Join ROOT and the files that it refers to into one file");
    expect_line(run.out,
                "  shrink                      Write IN again, without what it says twice");
    EXPECT_TRUE(run.out.ends_with(EXIT_CODES)) << run.out;
  }
}

TEST(Usage, HelpOfCheckNamesItsArgumentsAndExitCodes) {
  const ProcessRun run = run_velkstep({"check", "--help"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  expect_line(run.out, "Usage: velkstep check [OPTIONS] IN");
  expect_line(run.out,
              "  IN TEXT REQUIRED            The exchange file to check; - reads standard input");
  expect_line(run.out, "  --json                      Print one line of JSON");
  EXPECT_TRUE(run.out.ends_with(EXIT_CODES)) << run.out;
}

TEST(Usage, HelpOfSplitNamesItsArgumentsAndExitCodes) {
  const ProcessRun run = run_velkstep({"split", "--help"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  expect_line(run.out, "Usage: velkstep split [OPTIONS] IN OUTDIR");
  expect_line(run.out,
              "  IN TEXT REQUIRED            The exchange file to split; - reads standard input");
  expect_line(run.out, "  OUTDIR TEXT REQUIRED        The folder for the files; created as needed");
  EXPECT_TRUE(run.out.ends_with(EXIT_CODES)) << run.out;
}

TEST(Usage, WrongUsageIsExplainedAndEndsWithTwo) {
  const ScratchFolder folder;
  const struct {
    std::vector<std::string> arguments;
    const char* reason;
  } CASES[] = {
      {{}, "A subcommand is required"},
      {{"cut", "in.stp", "out"}, "A subcommand is required"},
      {{"split"}, "IN is required"},
      {{"split", "in.stp"}, "OUTDIR is required"},
      {{"check"}, "IN is required"},
      {{"check", "in.stp", "out"}, "The following argument was not expected: out"},
      {{"verify", "in.stp"}, "OUTDIR is required"},
      {{"diff", "in.stp"}, "B is required"},
      {{"split", "in.stp", "out", "more"}, "The following argument was not expected: more"},
      {{"split", "--fast", "in.stp", "out"}, "The following argument was not expected: --fast"},
      {{"split", "--reading=classic", "--assemblies=lean", "in.stp", "out"},
       "--reading=classic: needs --assemblies=classic"},
      {{"report", "--assemblies=nested", "--reading=classic", "in.stp", "out"},
       "--reading=classic: needs --assemblies=classic"},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.reason);
    const ProcessRun run = run_velkstep(row.arguments);
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errors, std::string(row.reason) + "\nRun with --help for more information.\n");
    EXPECT_TRUE(std::filesystem::is_empty("."));
  }
}

}  // namespace
}  // namespace Kessel::test
