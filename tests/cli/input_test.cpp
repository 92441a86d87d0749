// Where commands read from: files, pipes and standard input, and what they say when they cannot.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

const std::string BOX_TREE =
    "box  (assembly, #3, box.stp)\n"
    "└─ lid  (part, #6, lid.stp)\n";

TEST(Input, DashReadsStandardInput) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(BOX_WITH_LID));
  fs::create_directory("temporary");
  const ProcessSetting setting = {.standard_input = "in.stp",
                                  .environment = {{"TMPDIR", "temporary"}}};
  const ProcessRun tree = run_velkstep({"tree", "-"}, setting);
  EXPECT_EQ(tree.exit_code, 0);
  EXPECT_EQ(tree.out, BOX_TREE);
  EXPECT_EQ(tree.errors, "");
  const ProcessRun info = run_velkstep({"info", "-"}, setting);
  EXPECT_EQ(info.exit_code, 0);
  EXPECT_TRUE(info.out.starts_with("standard input\n")) << info.out;
  EXPECT_NE(info.out.find("\n  Size                " +
                          std::to_string(exchange_file(BOX_WITH_LID).size()) + " bytes\n"),
            std::string::npos)
      << info.out;
  EXPECT_TRUE(fs::is_empty("temporary"));
}

TEST(Input, StandardInputIsCalledSoInMessages) {
  const ScratchFolder folder;
  const ProcessRun run = run_velkstep({"tree", "-"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.errors, "velkstep: standard input: The file is empty. Copy or export it again.\n");
}

TEST(Input, PipeIsReadLikeAFile) {
  const ScratchFolder folder;
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  const auto run_with_pipe = [&](const std::vector<std::string>& arguments) {
    std::thread writer([&] { folder.write("pipe", exchange_file(BOX_WITH_LID)); });
    const ProcessRun run = run_velkstep(arguments);
    writer.join();
    EXPECT_EQ(run.exit_code, 0) << arguments.front() << ": " << run.errors;
    return run.out;
  };
  EXPECT_EQ(run_with_pipe({"tree", "pipe"}), BOX_TREE);
  EXPECT_EQ(run_with_pipe({"check", "pipe"}), "");
  EXPECT_EQ(run_with_pipe({"split", "pipe", "out"}), "out/box.stp\nout/lid.stp\n");
}

TEST(Input, VerifyReadsAPipe) {
  const ScratchFolder folder;
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  folder.write("whole.stp", exchange_file(LID_ALONE));
  std::filesystem::create_directory("out");
  std::filesystem::copy("whole.stp", "out/whole.stp");
  folder.write("out/roots.txt", "whole.stp\n");
  std::thread writer([&] { folder.write("pipe", exchange_file(LID_ALONE)); });
  const ProcessRun run = run_velkstep({"verify", "pipe", "out"});
  writer.join();
  EXPECT_EQ(run.exit_code, 0) << run.errors;
  EXPECT_TRUE(run.out.starts_with("1 file with ")) << run.out;
}

TEST(Input, ThatCannotBeReadIsNamedWithTheReason) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(BOX_WITH_LID));
  const std::string opened = "The file cannot be opened: ";
  const std::pair<const char*, std::string> CASES[] = {
      {"missing.stp", opened + "No such file or directory. Check its name."},
      {"in.stp/in.stp", opened + "Not a directory. Check its name."},
      {"", opened + "No such file or directory. Check its name."},
      {".", "The file is a folder. Name files in it, such as ./*.stp."},
      {"/dev/zero", "The file is neither a file nor a pipe. Copy it into a file first."},
  };
  for (const char* command : {"tree", "info"}) {
    for (const auto& [in, reason] : CASES) {
      const ProcessRun run = run_velkstep({command, in});
      EXPECT_EQ(run.exit_code, 1);
      EXPECT_EQ(run.out, "");
      EXPECT_EQ(run.errors,
                "velkstep: " + std::string(*in == '\0' ? "''" : in) + ": " + reason + "\n");
    }
  }
}

TEST(Input, FolderForTemporaryFilesThatIsMissing) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(BOX_WITH_LID));
  const ProcessRun run = run_velkstep(
      {"tree", "-"}, {.standard_input = "in.stp", .environment = {{"TMPDIR", "missing"}}});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors,
            "velkstep: standard input: no temporary file in missing: No such file or directory; "
            "TMPDIR names "
            "another folder for it\n");
}

/// A command that waits for more of its standard input.
class WaitingCommand {
 public:
  explicit WaitingCommand(const char* temporary) {
    EXPECT_EQ(::pipe2(pipe_.data(), O_CLOEXEC), 0);
    child_ = ::fork();
    if (child_ == 0) {
      ::dup2(pipe_[0], STDIN_FILENO);
      ::setenv("TMPDIR", temporary, 1);
      ::execl(VELKSTEP_COMMAND, VELKSTEP_COMMAND, "tree", "-", nullptr);
      ::_exit(127);
    }
    ::close(pipe_[0]);
  }
  ~WaitingCommand() { ::close(pipe_[1]); }

  /// Gives it so much to read that it must have copied most of it when this returns.
  void feed() const {
    const std::string text(std::size_t{1} << 20, ' ');
    EXPECT_EQ(::write(pipe_[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  /// Sends a signal and returns the one that ended the process.
  int end_with(int signal) const {
    ::kill(child_, signal);
    int status = 0;
    ::waitpid(child_, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }

 private:
  std::array<int, 2> pipe_ = {};
  pid_t child_ = -1;
};

TEST(Input, NothingIsLeftOfItHoweverTheProcessEnds) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGKILL}) {
    const ScratchFolder folder;
    fs::create_directory("temporary");
    const WaitingCommand command("temporary");
    command.feed();
    EXPECT_EQ(command.end_with(signal), signal);
    EXPECT_TRUE(fs::is_empty("temporary"));
  }
}

}  // namespace
}  // namespace Kessel::test
