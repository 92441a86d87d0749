// velkstep picture: what it prints, writes and returns.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class PictureCommand : public testing::Test {
 protected:
  static ProcessRun run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"picture", VELKSTEP_EXAMPLE});
    return run_velkstep(arguments);
  }

  const ScratchFolder folder_;
};

TEST_F(PictureCommand, DrawsTheWholeOrAPart) {
  const ProcessRun whole = run({"-o", "lamp.svg"});
  EXPECT_EQ(whole.exit_code, 0);
  EXPECT_THAT(whole.out, StartsWith("lamp.svg: Desk lamp, "));
  EXPECT_EQ(whole.errors, "");
  EXPECT_THAT(read_file("lamp.svg"), HasSubstr("<title>Desk lamp</title>"));
  const ProcessRun part = run({"--part", "Desk lamp/Boom/Arm", "--view=top", "-o", "arm.svg"});
  EXPECT_EQ(part.out, "arm.svg: Arm, 16 lines\n");
  EXPECT_EQ(run({"--quiet", "--part=#640", "--view=top", "-o", "same.svg"}).out, "");
  EXPECT_EQ(read_file("same.svg"), read_file("arm.svg"));
  EXPECT_EQ(names_in("."), (std::set<std::string>{"arm.svg", "lamp.svg", "same.svg"}));
}

TEST_F(PictureCommand, SaysAsJsonWhatItDrew) {
  const ProcessRun whole = run({"--json", "--part", "Arm", "--view=top", "-o", "arm.svg"});
  EXPECT_EQ(nlohmann::json::parse(whole.out),
            nlohmann::json({{"format", 1},
                            {"input", VELKSTEP_EXAMPLE},
                            {"output", "arm.svg"},
                            {"record", 640},
                            {"name", "Arm"},
                            {"view", "top"},
                            {"places", 3},
                            {"lines", 16},
                            {"left_out", 0},
                            {"dropped", 0},
                            {"elsewhere", 0},
                            {"bytes", read_file("arm.svg").size()}}));
}

TEST_F(PictureCommand, ReplacesOnlyWithForce) {
  EXPECT_EQ(run({"-o", "lamp.svg"}).exit_code, 0);
  const std::string before = read_file("lamp.svg");
  const ProcessRun again = run({"--part", "Arm", "-o", "lamp.svg"});
  EXPECT_EQ(again.exit_code, 1);
  EXPECT_THAT(again.errors, StartsWith("velkstep: lamp.svg: is there already"));
  EXPECT_EQ(read_file("lamp.svg"), before);
  EXPECT_EQ(run({"--force", "--part", "Arm", "-o", "lamp.svg"}).exit_code, 0);
  EXPECT_NE(read_file("lamp.svg"), before);
}

TEST_F(PictureCommand, RefusesWhatItCannotDraw) {
  const ProcessRun unknown = run({"--part", "Wheel", "-o", "a.svg"});
  EXPECT_EQ(unknown.exit_code, 1);
  EXPECT_THAT(unknown.errors, HasSubstr("There is no part called \"Wheel\""));
  EXPECT_EQ(run({"--view=left", "-o", "a.svg"}).exit_code, 2);
  EXPECT_EQ(run({}).exit_code, 2);
  EXPECT_EQ(run({"-o", "no/such/folder/a.svg"}).exit_code, 1);
  EXPECT_EQ(run_velkstep({"picture", "missing.stp", "-o", "a.svg"}).exit_code, 1);
  EXPECT_EQ(names_in("."), std::set<std::string>());
}

TEST_F(PictureCommand, FollowsReferencesWhereAsked) {
  ASSERT_EQ(run_velkstep({"split", "-q", VELKSTEP_EXAMPLE, "-o", "lamp"}).exit_code, 0);
  const std::string root = "lamp/Desk lamp.stp";
  const ProcessRun empty = run_velkstep({"picture", root, "-o", "empty.svg"});
  EXPECT_EQ(empty.exit_code, 0);
  EXPECT_EQ(empty.out, "empty.svg: Desk lamp, 0 lines\n");
  EXPECT_EQ(empty.errors,
            "velkstep: lamp/Desk lamp.stp: the shapes of 3 parts are in other files, so empty.svg "
            "is empty; --follow reads them, too\n");
  EXPECT_EQ(run({"-o", "whole.svg"}).exit_code, 0);
  ASSERT_EQ(std::system("gzip lamp/Boom.stp && mv lamp/Boom.stp.gz lamp/Boom.stp"), 0);
  const ProcessRun followed = run_velkstep({"picture", root, "--follow", "-o", "same.svg"});
  EXPECT_EQ(followed.errors, "");
  EXPECT_EQ(read_file("same.svg"), read_file("whole.svg"));
  std::filesystem::current_path("lamp");  // From which standard input sees the others.
  const ProcessRun piped = run_velkstep({"picture", "-", "--follow", "-o", "piped.svg"},
                                        {.standard_input = "Desk lamp.stp"});
  EXPECT_EQ(piped.errors, "");
  EXPECT_EQ(read_file("piped.svg"), read_file("../whole.svg"));
}

}  // namespace
}  // namespace Kessel::test
