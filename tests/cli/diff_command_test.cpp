// velkstep diff: what it prints and returns.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

class DiffCommand : public testing::Test {
 protected:
  void expect(const std::vector<std::string>& arguments, int exit_code, const std::string& out,
              const std::string& errors = "", const ProcessSetting& setting = {}) {
    std::vector<std::string> words = {"diff"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const ProcessRun run = run_velkstep(words, setting);
    EXPECT_EQ(run.exit_code, exit_code);
    EXPECT_EQ(run.out, out);
    EXPECT_EQ(run.errors, errors);
  }

  ScratchFolder folder_;
};

TEST_F(DiffCommand, TheSame) {
  folder_.write("a.stp", exchange_file("#1=A(#2);\n#2=B('x',1.);\n"));
  folder_.write("b.stp", exchange_file("#7=B('x',1.0E0); #3 = A ( #7 );\n"));
  expect({"a.stp", "b.stp"}, 0, "");
  expect({"--summary", "a.stp", "b.stp"}, 0, "the same: 2 records in A, 2 in B\n");
}

TEST_F(DiffCommand, Different) {
  folder_.write("a.stp", exchange_file("#1=A(#2);\n#2=B('x',1.);\n#3=C(#1);\n"));
  folder_.write("b.stp", exchange_file("#1=A(#4);\n#4=B('y',1.);\n#5=D(#1);\n"));
  expect({"a.stp", "b.stp"}, 1,
         "Of no one product:\n"
         "  ~ #2 B (#4 in B)\n"
         "      parameter 1: 'x' -> 'y'\n"
         "  - #3 C\n"
         "  + #5 D\n");
  expect({"--summary", "a.stp", "b.stp"}, 1,
         "Of no one product: 1 only in A, 1 only in B, 1 changed\n"
         "different: 1 only in A, 1 only in B, 1 changed\n");
}

TEST_F(DiffCommand, Json) {
  folder_.write("a.stp", exchange_file("#1=A(1.);\n"));
  folder_.write("b.stp", exchange_file("#2=A(2.);\n#3=A($);\n"));
  const ProcessRun run = run_velkstep({"diff", "--json", "a.stp", "b.stp"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_NE(run.out.find("\"same\":false,\"certain\":true,"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\"records_in_a\":1,\"records_in_b\":2,"), std::string::npos) << run.out;
  EXPECT_TRUE(run.out.ends_with("}\n"));
  expect({"--json", "--summary", "a.stp", "a.stp"}, 0,
         run_velkstep({"diff", "--json", "a.stp", "a.stp"}).out);
}

TEST_F(DiffCommand, Trouble) {
  folder_.write("a.stp", exchange_file("#1=A(1.);\n"));
  expect({"a.stp", "missing.stp"}, 2, "",
         "velkstep: missing.stp: The file cannot be opened: No such file or directory. Check its "
         "name.\n");
  expect({"-", "-"}, 2, "", "velkstep: standard input: cannot be both files; name one of them\n");
  ProcessSetting full;
  full.standard_output = "/dev/full";
  expect(
      {"--summary", "a.stp", "a.stp"}, 2, "",
      "velkstep: standard output: cannot be written: No space left on device; make room, or name "
      "a place on another disk\n",
      full);
}

TEST_F(DiffCommand, StandardInput) {
  folder_.write("a.stp", exchange_file("#1=A(1.);\n"));
  ProcessSetting setting;
  setting.standard_input = "a.stp";
  expect({"-", "a.stp"}, 0, "", "", setting);
  expect({"a.stp", "-"}, 0, "", "", setting);
}

}  // namespace
}  // namespace Kessel::test
