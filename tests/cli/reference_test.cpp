// The manual page and the completions, given to the programs that they are for.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "cli/run_process.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

const std::string REFERENCE = VELKSTEP_REFERENCE;

/// Runs `command` and collects what it prints to both streams.
ShellRun run(const std::string& command) {
  return run_in_shell(command + " 2>&1");
}

bool have(const std::string& program) {
  return run("command -v " + program).status == 0;
}

/// What the words "velkstep `words`" are completed to in bash, a space behind each.
std::string completed_by_bash(const std::string& words) {
  return run("bash -c 'source " + REFERENCE + "/velkstep.bash; COMP_WORDS=(velkstep " + words +
             "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _velkstep; "
             "printf \"%s \" \"${COMPREPLY[@]}\"'")
      .out;
}

TEST(Completion, BashKnowsSubcommandsOptionsAndTheirWords) {
  if (!have("bash")) GTEST_SKIP() << "no bash";
  EXPECT_EQ(completed_by_bash("sp"), "split ");
  EXPECT_EQ(completed_by_bash("split --as"), "--assemblies ");
  EXPECT_EQ(completed_by_bash("split --assemblies n"), "nested ");
  EXPECT_EQ(completed_by_bash("verify --me"), "--memory-limit ");
  EXPECT_EQ(completed_by_bash("split --names = pro"), "product product-unicode ");
  EXPECT_EQ(completed_by_bash("split --names =").substr(0, 7), "record ");
}

TEST(Completion, BashKnowsFiles) {
  if (!have("bash")) GTEST_SKIP() << "no bash";
  const ScratchFolder folder;
  folder.write("a box.stp", "");
  EXPECT_EQ(completed_by_bash("split a"), "a box.stp ");
}

std::string completed_by_fish(const std::string& line) {
  return run("fish --no-config -c 'source " + REFERENCE + "/velkstep.fish; complete -C \"" + line +
             "\"' | cut -f 1 | tr '\\n' ' '")
      .out;
}

TEST(Completion, FishKnowsSubcommandsOptionsAndTheirWords) {
  if (!have("fish")) GTEST_SKIP() << "no fish";
  EXPECT_EQ(completed_by_fish("velkstep sp"), "split ");
  EXPECT_EQ(completed_by_fish("velkstep split --as"), "--assemblies ");
  EXPECT_EQ(completed_by_fish("velkstep split --assemblies n"), "nested ");
  EXPECT_EQ(completed_by_fish("velkstep --vers"), "--version ");
}

TEST(Completion, ZshAndFishAreToldWhatIsAPath) {
  const std::string zsh = read_file(REFERENCE + "/_velkstep");
  EXPECT_NE(zsh.find("    '*:IN...:_files' \\\n"), std::string::npos) << zsh;
  EXPECT_NE(zsh.find("    ':OUTDIR:_directories' \\\n"), std::string::npos) << zsh;
  EXPECT_NE(zsh.find("    '-o+[The folder for the files"), std::string::npos) << zsh;
  EXPECT_NE(zsh.find(":value:_directories' \\\n"), std::string::npos) << zsh;
  const std::string fish = read_file(REFERENCE + "/velkstep.fish");
  EXPECT_NE(fish.find(" -s o -l output -r -a '(__fish_complete_directories)' -d "),
            std::string::npos)
      << fish;
}

TEST(Completion, ZshCanReadItsFunction) {
  if (!have("zsh")) GTEST_SKIP() << "no zsh";
  const ShellRun checked = run("zsh -n " + REFERENCE + "/_velkstep");
  EXPECT_EQ(checked.status, 0);
  EXPECT_EQ(checked.out, "");
}

TEST(ManualPage, IsCleanRoff) {
  if (!have("groff")) GTEST_SKIP() << "no groff";
  EXPECT_EQ(run("groff -man -ww -z -Tutf8 " + REFERENCE + "/velkstep.1").out, "");
}

TEST(ManualPage, SaysWhatTheHelpSays) {
  if (!have("groff")) GTEST_SKIP() << "no groff";
  // One long line without formatting.
  const std::string page =
      run("groff -man -Tascii -P-cbou -rLL=2000n " + REFERENCE + "/velkstep.1").out;
  const std::string help = run_velkstep({"--help"}).out;
  std::size_t found = 0;
  for (const char* text : {"3", "nothing to split, with --classic: the file holds one part or none",
                           "Split each IN into one file per part"}) {
    EXPECT_NE(help.find(text), std::string::npos) << text;
    found += page.find(text) != std::string::npos ? 1 : 0;
  }
  EXPECT_EQ(found, 3u) << page;
  EXPECT_NE(page.find("--names record|product|product-unicode"), std::string::npos) << page;
  EXPECT_NE(page.find("--memory-limit SIZE"), std::string::npos) << page;
  EXPECT_NE(page.find("velkstep info [OPTIONS] IN...\n"), std::string::npos) << page;
  EXPECT_NE(page.find("velkstep join [OPTIONS] ROOT -o OUT\n"), std::string::npos) << page;
  EXPECT_NE(page.find("velkstep extract [OPTIONS] IN --part WHAT -o OUT\n"), std::string::npos)
      << page;
  EXPECT_NE(page.find("--depth N\n"), std::string::npos) << page;
  EXPECT_NE(page.find("--jobs N\n"), std::string::npos) << page;
  EXPECT_NE(page.find("--output OUT\n"), std::string::npos) << page;
  EXPECT_EQ(page.find("N:"), std::string::npos) << "a check is no part of a value's name";
  EXPECT_EQ(page.find('@'), std::string::npos) << "a mark was not replaced";
}

}  // namespace
}  // namespace Kessel::test
