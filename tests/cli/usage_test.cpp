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
    "  3  nothing to split, with --classic: the file holds one part or none\n"
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
    expect_line(run.out, "  split                       Split each IN into one file per part");
    expect_line(run.out,
                "  report                      Split each IN, and write a page about its parts, "
                "report.html");
    expect_line(run.out,
                "  tree                        Show how the parts of each IN are put together");
    expect_line(run.out,
                "  info                        Show what the header of each IN says, and count "
                "what it holds");
    expect_line(run.out, "  check                       Say what is wrong or unusual in each IN");
    expect_line(
        run.out,
        "  verify                      Check the files that IN was split into under OUTDIR");
    expect_line(
        run.out,
        "  join                        Join ROOT and the files that it refers to into one file");
    expect_line(run.out,
                "  shrink                      Write IN again, without what it says twice");
    expect_line(run.out,
                "  extract                     Write a part or sub-assembly of IN, with all below "
                "it, as one file");
    EXPECT_TRUE(run.out.ends_with(EXIT_CODES)) << run.out;
  }
}

TEST(Usage, HelpOfCheckNamesItsArgumentsAndExitCodes) {
  const ProcessRun run = run_velkstep({"check", "--help"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  expect_line(run.out, "Usage: velkstep check [OPTIONS] IN...");
  expect_line(run.out,
              "  IN TEXT ... REQUIRED        The exchange files to check; - reads standard input");
  expect_line(run.out, "  --json                      Print one line of JSON for each file");
  EXPECT_TRUE(run.out.ends_with(EXIT_CODES)) << run.out;
}

TEST(Usage, HelpOfSplitNamesItsArgumentsAndExitCodes) {
  const ProcessRun run = run_velkstep({"split", "--help"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  expect_line(run.out, "Usage: velkstep split [OPTIONS] IN...");
  for (const char* option : {"-o,--output OUTDIR", "-j,--jobs N=0", "-f,--force", "-q,--quiet"}) {
    EXPECT_NE(run.out.find(std::string("\n  ") + option + " "), std::string::npos) << option;
  }
  EXPECT_TRUE(run.out.ends_with(EXIT_CODES)) << run.out;
}

TEST(Usage, WrongUsageIsExplainedAndEndsWithTwo) {
  const ScratchFolder folder;
  const struct {
    std::vector<std::string> arguments;
    const char* reason;
  } CASES[] = {
      {{}, ": a command is required"},
      {{"splt", "in.stp", "out"}, ": splt: did you mean split?"},
      {{"vreify", "in.stp", "out"}, ": vreify: did you mean verify?"},
      {{"bake", "in.stp"}, ": bake: no such command"},
      {{"help"}, ": help: did you mean --help?"},
      {{"in.stp"}, ": in.stp: no such command; velkstep split in.stp splits that file"},
      {{"--verson"}, ": --verson: did you mean --version?"},
      {{"split"}, " split: IN is required"},
      {{"split", "--forse", "in.stp"}, " split: --forse: did you mean --force?"},
      {{"split", "--asemblies=lean", "in.stp"}, " split: --asemblies: did you mean --assemblies?"},
      {{"split", "--whatever", "in.stp", "out"}, " split: --whatever: no such option"},
      {{"split", "--assemblies=nestd", "in.stp"},
       " split: --assemblies: nestd: did you mean nested?"},
      {{"split", "--names=other", "in.stp"},
       " split: --names: other: none of record, product, product-unicode"},
      {{"split", "in"},
       " split: in: its name does not tell what to call its folder; -o OUTDIR "
       "names one"},
      {{"split", "-"},
       " split: standard input has no name for a folder; -o OUTDIR names one for it alone"},
      {{"split", "a/in.stp", "b/in.STEP.gz", "c.stp", "-oout"},
       " split: a/in.stp and b/in.STEP.gz would both go into out/in; split them one by one, each "
       "with its own -o OUTDIR"},
      {{"split", "a.stp", "b.stp", "."}, " split: . is a folder; -o . puts the files there"},
      {{"check"}, " check: IN is required"},
      {{"check", "-", "-"}, " check: standard input can be read only once"},
      {{"check", "--jobs=many", "a.stp"}, " check: --jobs: is not a number of 0 or more: many"},
      {{"tree", "--depth=-1", "a.stp"}, " tree: --depth: is not a number of 0 or more: -1"},
      {{"verify", "in.stp"}, " verify: OUTDIR is required"},
      {{"verify", "in.stp", "out", "more"},
       " verify: The following argument was not expected: more"},
      {{"diff", "in.stp"}, " diff: B is required"},
      {{"split", "--reading=classic", "--assemblies=lean", "in.stp", "out"},
       " split: --reading=classic: needs --assemblies=classic"},
      {{"report", "--assemblies=nested", "--reading=classic", "in.stp", "out"},
       " report: --reading=classic: needs --assemblies=classic"},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.reason);
    const ProcessRun run = run_velkstep(row.arguments);
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_EQ(run.out, "");
    const std::string reason = row.reason;
    const std::string name = "velkstep" + reason.substr(0, reason.find(':'));
    EXPECT_EQ(run.errors, "velkstep" + reason + "\n" + name + " --help says how to use it.\n");
    EXPECT_TRUE(std::filesystem::is_empty("."));
  }
}

}  // namespace
}  // namespace Kessel::test
