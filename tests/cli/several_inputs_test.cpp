// Commands that take several inputs: side by side, in the order of the inputs.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "cli/run_process.h"
#include "shapes.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

using Arguments = std::vector<std::string>;

Arguments joined(Arguments words, const Arguments& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

class SeveralInputs : public testing::Test {
 protected:
  SeveralInputs() {
    folder_.write("box.stp", exchange_file(BOX_WITH_LID));
    fs::create_directory("b");
    std::ofstream large("b/large.STEP", std::ios::binary);
    bench::write_file(large, *bench::find_shape("small-parts"), 40, 1);
    large.close();
    folder_.write("cut.p21", "ISO-10303-21;\nHEADER;\n");
    const std::string box = exchange_file(BOX_WITH_LID);
    folder_.write("again.step", box);
    folder_.write("unended.stp", box.substr(0, box.find("END-ISO")));
  }

  /// Expects that `command` prints and leaves for these inputs at once what it does for one after
  /// the other, `gap` between what it prints for two, and sums up.
  void expect_one_by_one(const Arguments& command, const Arguments& inputs,
                         const std::string& summary, const std::string& gap = "") {
    SCOPED_TRACE(testing::PrintToString(command));
    std::string out;
    std::string errors;
    int worst = 0;
    for (const std::string& in : inputs) {
      const ProcessRun run = run_velkstep(joined(command, {in}));
      out += (out.empty() || run.out.empty() ? "" : gap) + run.out;
      errors += run.errors;
      if (run.exit_code != 0) worst = run.exit_code == 1 || worst == 1 ? 1 : run.exit_code;
    }
    for (const char* jobs : {"-j1", "-j3", "--jobs=0"}) {
      const ProcessRun run = run_velkstep(joined(joined(command, {jobs}), inputs));
      EXPECT_EQ(run.exit_code, worst);
      EXPECT_EQ(run.out, out);
      EXPECT_EQ(run.errors, errors + summary);
    }
  }

  ScratchFolder folder_;
};

TEST_F(SeveralInputs, AreLookedAtAsOneByOne) {
  const Arguments inputs = {"b/large.STEP", "box.stp", "missing.stp", "cut.p21", "again.step"};
  const std::string failed = "velkstep: 5 inputs: 3 done, 2 failed\n";
  expect_one_by_one({"info"}, inputs, failed, "\n");
  expect_one_by_one({"info", "--json"}, inputs, failed);
  expect_one_by_one({"tree", "--json"}, inputs, failed);
  expect_one_by_one({"tree", "--dot"}, inputs, failed);
  expect_one_by_one({"check"}, {"box.stp", "cut.p21", "unended.stp"},
                    "velkstep: 3 inputs: 1 done, 1 with warnings, 1 failed\n");
  expect_one_by_one({"check", "--json"}, {"unended.stp", "box.stp"},
                    "velkstep: 2 inputs: 1 done, 1 with warnings\n");
}

TEST_F(SeveralInputs, TreesAndListsTellWhoseTheyAre) {
  const std::string tree = run_velkstep({"tree", "box.stp"}).out;
  EXPECT_EQ(run_velkstep({"tree", "box.stp", "cut.p21", "again.step"}).out,
            "box.stp\n" + tree + "\nagain.step\n" + tree);
  const std::string list = run_velkstep({"tree", "--bom", "box.stp"}).out;
  EXPECT_EQ(run_velkstep({"tree", "--bom", "box.stp", "again.step"}).out,
            "box.stp\n" + list + "\nagain.step\n" + list);
  EXPECT_EQ(run_velkstep({"tree", "--bom", "--csv", "cut.p21", "box.stp", "again.step"}).out,
            "input,quantity,name,id,kind,number,file\r\n"
            "box.stp,1,lid,lid,part,6,lid.stp\r\n"
            "again.step,1,lid,lid,part,6,lid.stp\r\n");
}

TEST_F(SeveralInputs, AreSplitIntoFoldersOfTheirNames) {
  const Arguments inputs = {"b/large.STEP", "box.stp", "cut.p21", "again.step"};
  Arguments errors;
  std::string out;
  for (const std::string in : {"b/large.STEP", "box.stp", "again.step"}) {
    const std::string stem = fs::path(in).stem();
    out += run_velkstep({"split", in, "one/" + stem}).out;
  }
  for (std::size_t at = 0; (at = out.find("one/", at)) != std::string::npos;) out.erase(at, 4);
  const std::string said =
      "velkstep: cut.p21:3:1: The HEADER section is not closed by \"ENDSEC;\". The file may be cut "
      "off or damaged: copy or export it again.\n"
      "velkstep: 4 inputs: 3 done, 1 failed\n";

  const ProcessRun here = run_velkstep(joined({"split"}, inputs));
  EXPECT_EQ(here.exit_code, 1);
  EXPECT_EQ(here.out, out);
  EXPECT_EQ(here.errors, said);
  const ProcessRun there = run_velkstep(joined({"split", "-q", "-o", "all/of them"}, inputs));
  EXPECT_EQ(there.exit_code, 1);
  EXPECT_EQ(there.out, "");
  EXPECT_EQ(there.errors, said.substr(0, said.find('\n') + 1));
  EXPECT_EQ(names_in("all/of them"), (std::set<std::string>{"again", "box", "large"}));
  for (const char* stem : {"again", "box", "large"}) {
    const FolderTree one = tree_of("one/" + std::string(stem));
    EXPECT_TRUE(differences(tree_of(stem), one).empty());
    EXPECT_TRUE(differences(tree_of("all/of them/" + std::string(stem)), one).empty());
  }

  // Each as safe as alone.
  const ProcessRun again = run_velkstep({"split", "box.stp", "again.step"});
  EXPECT_EQ(again.exit_code, 1);
  EXPECT_EQ(again.out, "");
  EXPECT_EQ(again.errors,
            "velkstep: box/roots.txt: is there already; --force replaces it\n"
            "velkstep: again/roots.txt: is there already; --force replaces it\n"
            "velkstep: 2 inputs: 2 failed\n");
  EXPECT_EQ(run_velkstep({"split", "-qf", "box.stp", "again.step"}).exit_code, 0);
}

TEST_F(SeveralInputs, SecondThatIsNoFileIsTheFolder) {
  fs::create_directory("there");
  EXPECT_EQ(run_velkstep({"split", "-q", "box.stp", "new"}).exit_code, 0);
  EXPECT_TRUE(fs::is_directory("new"));
  EXPECT_EQ(run_velkstep({"split", "-q", "box.stp", "new.step"}).exit_code, 2);
  EXPECT_FALSE(fs::exists("new.step")) << "a second input was mistyped";
  fs::create_directory("new.step");
  EXPECT_EQ(run_velkstep({"split", "-q", "box.stp", "new.step"}).exit_code, 0);
  EXPECT_EQ(run_velkstep({"split", "-q", "box.stp", "there"}).exit_code, 0);
  EXPECT_FALSE(fs::is_empty("there"));
  EXPECT_EQ(run_velkstep({"split", "-q", "-", "piped"}, {.standard_input = "box.stp"}).exit_code,
            0);
  EXPECT_EQ(differences(tree_of("piped"), tree_of("there")),
            std::set<std::string>{"velkstep-split.json"})
      << "which says what was split";
}

TEST_F(SeveralInputs, OneGoesIntoAFolderOfItsName) {
  fs::copy("box.stp", "a.b.STPZ");
  EXPECT_EQ(run_velkstep({"split", "-q", "b/large.STEP"}).exit_code, 0);
  EXPECT_EQ(run_velkstep({"split", "-q", "a.b.STPZ"}).exit_code, 0);
  EXPECT_TRUE(fs::exists("large/roots.txt"));
  EXPECT_TRUE(fs::exists("a.b/roots.txt"));
}

TEST_F(SeveralInputs, ReportsAndTheirJsonAreOneLineForEach) {
  const ProcessRun pages = run_velkstep({"report", "box.stp", "again.step", "-o", "pages"});
  EXPECT_EQ(pages.exit_code, 0);
  EXPECT_EQ(pages.out, "pages/box/report.html\npages/again/report.html\n");
  EXPECT_EQ(pages.errors, "velkstep: 2 inputs: 2 done\n");
  EXPECT_TRUE(fs::exists("pages/again/report.html"));

  const ProcessRun json = run_velkstep({"report", "--json", "box.stp", "again.step", "-o", "json"});
  std::string expected;
  for (const std::string in : {"box.stp", "again.step"}) {
    const std::string stem = fs::path(in).stem();
    std::string line = run_velkstep({"split", "--json", in, "-o", "split/" + stem}).out;
    line.replace(line.find("split/"), 6, "json/");
    line.insert(line.find("\"files\":"), "\"report\":\"report.html\",");
    expected += line;
  }
  EXPECT_EQ(json.out, expected);
}

TEST_F(SeveralInputs, SlowFirstOneKeepsItsPlace) {
  ASSERT_EQ(::mkfifo("pipe.stp", 0600), 0);
  std::thread writer([] {
    std::ofstream pipe("pipe.stp");
    // The second and third inputs have long ended when the first begins.
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    pipe << exchange_file(BOX_WITH_LID);
  });
  const ProcessRun run =
      run_velkstep({"split", "-j2", "pipe.stp", "box.stp", "again.step", "-o", "out"});
  writer.join();
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out.substr(0, 9), "out/pipe/");
  EXPECT_EQ(run.errors, "velkstep: 3 inputs: 3 done\n");
}

TEST_F(SeveralInputs, ProgressCountsThem) {
  const ProcessRun run =
      run_velkstep({"split", "-j1", "--progress=always", "box.stp", "again.step", "-o", "out"});
  EXPECT_EQ(run.errors.find("\r[                              ] 0 of 2 inputs\x1b[K"), 0u)
      << run.errors;
  EXPECT_TRUE(run.errors.ends_with("\r\x1b[Kvelkstep: 2 inputs: 2 done\n")) << run.errors;
}

TEST_F(SeveralInputs, SignalToStopEndsAllAndUndoesWhatIsNotFinished) {
  ASSERT_EQ(::mkfifo("pipe.stp", 0600), 0);
  const int keeps_pipe_open = ::open("pipe.stp", O_RDWR | O_CLOEXEC);  // Nobody writes into it.
  const ShellRun run =
      run_in_shell("'" VELKSTEP_COMMAND
                   "' split -q -j2 box.stp pipe.stp -o out & "
                   "until [ -e out/box/roots.txt ]; do sleep 0.02; done; kill -TERM $!; wait $!");
  ::close(keeps_pipe_open);
  EXPECT_EQ(WEXITSTATUS(run.status), 128 + SIGTERM);
  EXPECT_EQ(names_in("out"), std::set<std::string>{"box"}) << "what was finished stays";
}

TEST_F(SeveralInputs, ProcessThatTheSystemEndsIsOneFailure) {
  ASSERT_EQ(::mkfifo("pipe.stp", 0600), 0);
  const int keeps_pipe_open = ::open("pipe.stp", O_RDWR | O_CLOEXEC);
  const std::pair<std::string, std::string> SIGNALS[] = {
      {"KILL", "Killed; with -j 1 it has all the memory for itself"},
      {"USR1", "User defined signal 1; run it alone to see more"}};
  for (const auto& [signal, words] : SIGNALS) {
    const ShellRun run =
        run_in_shell("'" VELKSTEP_COMMAND
                     "' check -j2 box.stp pipe.stp again.step 2>&1 & "
                     "until [ \"$killed\" ]; do for child in $(cat /proc/$!/task/$!/children); do "
                     "if ls -l /proc/$child/fd 2> /dev/null | grep -q pipe.stp; then "
                     "kill -" +
                     signal + " $child; killed=yes; fi; done; sleep 0.02; done; wait $!");
    EXPECT_EQ(WEXITSTATUS(run.status), 1);
    EXPECT_EQ(run.out, "velkstep: pipe.stp: was ended by the system: " + words +
                           "\nvelkstep: 3 inputs: 2 done, 1 failed\n");
  }
  ::close(keeps_pipe_open);
}

}  // namespace
}  // namespace Kessel::test
