// velkstep split when somebody lets it wait, or does not want what it prints.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "cli/run_process.h"
#include "shapes.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

const std::string VELKSTEP = VELKSTEP_COMMAND;

/// An input whose split has more to print than the pipes of these tests take.
class Waiting : public testing::Test {
 protected:
  Waiting() {
    std::ofstream out("in.stp", std::ios::binary);
    bench::write_file(out, *bench::find_shape("bodies"), 90, 1);
  }

  /// Runs `command` with its `stream` (1 or 2) in a pipe whose reader has gone before it begins.
  static ShellRun without_reader(const std::string& command, int stream) {
    const std::string other = stream == 1 ? "" : "2>&1 >list ";
    return run_in_shell("{ while [ ! -e gone ]; do sleep 0.01; done; " + command + " " + other +
                        "; echo $? >status; } | { exec <&-; touch gone; }; "
                        "while [ ! -s status ]; do sleep 0.01; done; cat status; rm gone status");
  }

  /// Expects that the files of the split in "out" are whole.
  static void expect_whole_files() {
    std::string root = read_file("out/roots.txt");
    root.pop_back();
    EXPECT_TRUE(names_in("out").contains(root)) << root;
    for (const std::string& name : names_in("out")) {
      if (name == "roots.txt" || name == "velkstep-split.json") continue;
      EXPECT_TRUE(read_file("out/" + name).ends_with("END-ISO-10303-21;\n")) << name;
    }
  }

  ScratchFolder folder_;
};

TEST_F(Waiting, CommandsThatWaitForAPipeCanBeStopped) {
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  for (const char* command : {"split", "report"}) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      const ProcessSetting setting = {.signal = signal, .signal_after = milliseconds(200)};
      EXPECT_EQ(run_velkstep({command, "pipe", "out"}, setting).exit_code, -signal) << "no writer";
      const int writer = ::open("pipe", O_RDWR | O_CLOEXEC);
      EXPECT_EQ(run_velkstep({command, "pipe", "out"}, setting).exit_code, -signal) << "no text";
      ::close(writer);
    }
  }
  EXPECT_EQ(names_in("."), (std::set<std::string>{"in.stp", "pipe"}));
}

TEST_F(Waiting, PrintingWhatNobodyReadsCanBeStopped) {
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  const int reader = ::open("pipe", O_RDWR | O_CLOEXEC);
  ASSERT_GT(::fcntl(reader, F_SETPIPE_SZ, 4096), 0);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const ProcessRun run = run_velkstep(
        {"split", "--json", "in.stp", "out"},
        {.standard_output = "pipe", .signal = signal, .signal_after = milliseconds(700)});
    EXPECT_EQ(run.exit_code, -signal);
    EXPECT_EQ(names_in("."), (std::set<std::string>{"in.stp", "pipe"}));
    char printed[4096];
    EXPECT_EQ(::read(reader, printed, sizeof printed), 4096) << "it has begun to print";
  }
  ::close(reader);
}

TEST_F(Waiting, FilesStayWhereTheReaderOfTheListHasGone) {
  const ShellRun run = without_reader(VELKSTEP + " split in.stp out", 1);
  EXPECT_EQ(run.out, "141\n");  // As shells say that SIGPIPE ended it.
  EXPECT_EQ(names_in("."), (std::set<std::string>{"in.stp", "out"}));
  expect_whole_files();
}

TEST_F(Waiting, NobodyNeedsToSeeTheProgress) {
  const ShellRun run = without_reader(VELKSTEP + " split --progress always in.stp out", 2);
  EXPECT_EQ(run.out, "0\n");
  EXPECT_EQ(names_in("."), (std::set<std::string>{"in.stp", "list", "out"}));
  expect_whole_files();
}

TEST_F(Waiting, ClosedStreamsAreNotTakenForFiles) {
  const ShellRun run = run_in_shell("cat in.stp | " + VELKSTEP +
                                    " split --progress always - out 2>&- >list; echo $?");
  EXPECT_EQ(run.out, "0\n");
  expect_whole_files();
  EXPECT_EQ(run_in_shell(VELKSTEP + " split in.stp out2 >&- 2>errors; echo $?").out, "1\n");
  EXPECT_EQ(read_file("errors"),
            "velkstep: standard output: cannot be written: Bad file descriptor; name another "
            "place\n");
  EXPECT_FALSE(fs::exists("out2"));
  EXPECT_EQ(
      run_in_shell(VELKSTEP + " split - out2 <&- 2>&1; echo $?").out,
      "velkstep: standard input: The file cannot be read: Bad file descriptor. Redirect it from "
      "a file, or name one.\n1\n");
}

}  // namespace
}  // namespace Kessel::test
