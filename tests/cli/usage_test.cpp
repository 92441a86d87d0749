// What the command prints about itself, and how it takes arguments that make no sense.
#include <gtest/gtest.h>

#include <sstream>
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

const std::string USUAL_EXIT_CODES =
    "\n"
    "Exit codes:\n"
    "  0  done\n"
    "  1  failed; one line on standard error says why\n"
    "  2  wrong usage\n";
const std::string SPLIT_EXIT_CODES =
    USUAL_EXIT_CODES + "  3  nothing to split, with --classic: the file holds one part or none\n";
const std::string CHECK_EXIT_CODES =
    "\n"
    "Exit codes:\n"
    "  0  nothing was found\n"
    "  1  errors, or it failed\n"
    "  2  wrong usage\n"
    "  4  warnings, but no errors\n";

/// Expects that `text` has `line` as one of its lines.
void expect_line(const std::string& text, const std::string& line) {
  EXPECT_NE(("\n" + text).find("\n" + line + "\n"), std::string::npos) << line << "\nin\n" << text;
}

TEST(Usage, HelpNamesTheSubcommandsAndExitCodes) {
  for (const char* flag : {"--help", "-h"}) {
    const ProcessRun run = run_velkstep({flag});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.errors, "");
    expect_line(run.out, "Usage: velkstep [OPTIONS] COMMAND");
    for (const char* line :
         {"  split     Split each IN into one file per part",
          "  report    Split each IN, and write a page about its parts, report.html",
          "  tree      Show how the parts of each IN are put together",
          "  info      Show what the header of each IN says, and count what it holds",
          "  check     Say what is wrong or unusual in each IN",
          "  verify    Check the files that IN was split into under OUTDIR",
          "  join      Join ROOT and the files that it refers to into one file",
          "  shrink    Write IN again, without what it says twice",
          "  extract   Write a part or sub-assembly of IN, with all below it, as one file",
          "velkstep COMMAND --help has the options of a command."}) {
      expect_line(run.out, line);
    }
    EXPECT_TRUE(
        run.out.ends_with(SPLIT_EXIT_CODES + "  4  check, verify: warnings, but no errors\n"))
        << run.out;
  }
}

TEST(Usage, HelpOfEachCommandHasItsExitCodesAndNoOthers) {
  const std::pair<const char*, std::string> COMMANDS[] = {
      {"split", SPLIT_EXIT_CODES},
      {"report", SPLIT_EXIT_CODES},
      {"check", CHECK_EXIT_CODES},
      {"verify", CHECK_EXIT_CODES},
      {"tree", USUAL_EXIT_CODES},
      {"info", USUAL_EXIT_CODES},
      {"join", USUAL_EXIT_CODES},
      {"shrink", USUAL_EXIT_CODES},
      {"extract", USUAL_EXIT_CODES},
      {"picture", USUAL_EXIT_CODES},
      {"diff",
       "\nExit codes:\n  0  the files say the same\n  1  they do not\n"
       "  2  wrong usage, or a file cannot be read\n"}};
  for (const auto& [command, codes] : COMMANDS) {
    EXPECT_TRUE(run_velkstep({command, "--help"}).out.ends_with(codes)) << command;
  }
}

TEST(Usage, HelpOfCheckNamesItsArgumentsAndExitCodes) {
  const ProcessRun run = run_velkstep({"check", "--help"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  expect_line(run.out, "Usage: velkstep check [OPTIONS] IN...");
  expect_line(run.out,
              "  IN...                     The exchange files to check; - reads standard input");
  expect_line(run.out, "  --json                    Print one line of JSON for each file");
}

TEST(Usage, HelpOfSplitNamesItsArgumentsAndExitCodes) {
  const ProcessRun run = run_velkstep({"split", "--help"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  expect_line(run.out, "Usage: velkstep split [OPTIONS] IN...");
  for (const char* option : {"-o, --output OUTDIR", "-j, --jobs N", "-f, --force", "-q, --quiet"}) {
    EXPECT_NE(run.out.find(std::string("\n  ") + option + " "), std::string::npos) << option;
  }
}

TEST(Usage, HelpFitsATerminalAndShowsWhatMustBeThere) {
  const std::pair<const char*, const char*> USAGES[] = {
      {"split", "Usage: velkstep split [OPTIONS] IN..."},
      {"diff", "Usage: velkstep diff [OPTIONS] A B"},
      {"join", "Usage: velkstep join [OPTIONS] ROOT -o OUT"},
      {"picture", "Usage: velkstep picture [OPTIONS] IN -o OUT"},
      {"extract", "Usage: velkstep extract [OPTIONS] IN --part WHAT -o OUT"},
      {"verify", "Usage: velkstep verify [OPTIONS] IN OUTDIR"}};
  for (const auto& [command, usage] : USAGES) {
    const std::string help = run_velkstep({command, "--help"}).out;
    expect_line(help, usage);
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << line;
  }
  expect_line(run_velkstep({"tree", "--help"}).out,
              "  --depth N                 Levels to show below the root (default: 100). Not\n"
              "                            with --bom, --json");
}

}  // namespace
}  // namespace Kessel::test
