// velkstep shrink, and --shrink of other commands: what they print, write and return.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

class ShrinkCommand : public testing::Test {
 protected:
  ShrinkCommand() { folder_.write("in.stp", exchange_file(RECORDS)); }

  static void expect(std::vector<std::string> arguments, int exit_code, const std::string& out,
                     const std::string& errors) {
    arguments.insert(arguments.begin(), "shrink");
    const ProcessRun run = run_velkstep(arguments);
    EXPECT_EQ(run.exit_code, exit_code);
    EXPECT_EQ(run.out, out);
    EXPECT_EQ(run.errors, errors);
  }

  static constexpr const char* RECORDS =
      "#1=COLOUR_RGB('',1.,0.,0.);\n#2=COLOUR_RGB('',1.,0.,0.);\n#5=A(#1);\n#6=A(#2);\n"
      "#7=COLOUR_RGB('',1.,1.,0.);\n";
  static constexpr const char* SHRUNK =
      "#1=COLOUR_RGB('',1.,0.,0.);\n#5=A(#1);\n#6=A(#1);\n#7=COLOUR_RGB('',1.,1.,0.);\n";
  ScratchFolder folder_;
};

TEST_F(ShrinkCommand, SaysHowMuchIsLeft) {
  const std::string sizes = std::to_string(fs::file_size("in.stp") - 28) + " of " +
                            std::to_string(fs::file_size("in.stp")) + " bytes";
  expect({"in.stp", "-o", "out.stp"}, 0, "out.stp: 4 of 5 records, " + sizes + "\n", "");
  EXPECT_EQ(read_file("out.stp"), exchange_file(SHRUNK));
  EXPECT_EQ(names_in("."), (std::set<std::string>{"in.stp", "out.stp"}));
}

TEST_F(ShrinkCommand, QuietSaysNothing) {
  expect({"--quiet", "in.stp", "--output=out.stp"}, 0, "", "");
  EXPECT_TRUE(fs::exists("out.stp"));
}

TEST_F(ShrinkCommand, UnreachableRecordsAndNumbersFromOne) {
  const ProcessRun run =
      run_velkstep({"shrink", "--drop-unreachable", "--renumber", "in.stp", "-o", "out.stp"});
  EXPECT_TRUE(run.out.starts_with("out.stp: 3 of 5 records, ")) << run.out;
  EXPECT_TRUE(run.out.ends_with(" bytes, 1 record unreachable\n")) << run.out;
  EXPECT_EQ(read_file("out.stp"),
            exchange_file("#1=COLOUR_RGB('',1.,0.,0.);\n#2=A(#1);\n#3=A(#1);\n"));
}

TEST_F(ShrinkCommand, Json) {
  folder_.write("in.stp", exchange_file(std::string(RECORDS) + "#9=B(#404);\n"));
  const ProcessRun run = run_velkstep({"shrink", "--json", "in.stp", "-o", "out.stp"});
  EXPECT_EQ(run.exit_code, 0);
  nlohmann::json json = nlohmann::json::parse(run.out);
  ASSERT_EQ(json["findings"].size(), 1u);
  EXPECT_EQ(json["findings"][0]["kind"], "missing_instance");
  EXPECT_EQ(run.errors, "velkstep: in.stp: 1 warning; velkstep check in.stp lists it\n");
  expect({"--quiet", "--force", "in.stp", "-o", "out.stp"}, 0, "", "");
  json.erase("findings");
  EXPECT_EQ(json, nlohmann::json({{"format", 1},
                                  {"input", "in.stp"},
                                  {"output", "out.stp"},
                                  {"records_before", 6},
                                  {"records_after", 5},
                                  {"unreachable", 0},
                                  {"bytes_before", fs::file_size("in.stp")},
                                  {"bytes_after", fs::file_size("out.stp")}}));
}

TEST_F(ShrinkCommand, ReadsStandardInputAndCompressedFiles) {
  ASSERT_EQ(run_in_shell("gzip -k in.stp").status, 0);
  expect({"--quiet", "in.stp.gz", "-o", "a.stp"}, 0, "", "");
  const ProcessRun run =
      run_velkstep({"shrink", "--quiet", "-", "-o", "b.stp"}, {.standard_input = "in.stp"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(read_file("a.stp"), exchange_file(SHRUNK));
  EXPECT_EQ(read_file("b.stp"), exchange_file(SHRUNK));
  fs::rename("in.stp.gz", "packed.stp");
  expect({"--force", "packed.stp", "-o", "packed.stp"}, 1, "",
         "velkstep: packed.stp: is the input; choose another name\n");
}

TEST_F(ShrinkCommand, WritesOverNothingUnlessForced) {
  folder_.write("out.stp", "precious");
  expect({"in.stp", "-o", "out.stp"}, 1, "",
         "velkstep: out.stp: is there already; --force replaces it\n");
  EXPECT_EQ(read_file("out.stp"), "precious");
  expect({"--force", "--quiet", "in.stp", "-o", "out.stp"}, 0, "", "");
  EXPECT_EQ(read_file("out.stp"), exchange_file(SHRUNK));
  expect({"--force", "in.stp", "-o", "./in.stp"}, 1, "",
         "velkstep: ./in.stp: is the input; choose another name\n");
}

TEST_F(ShrinkCommand, WhatCannotBeReadOrWritten) {
  expect({"missing.stp", "-o", "out.stp"}, 1, "",
         "velkstep: missing.stp: The file cannot be opened: No such file or directory. Check its "
         "name.\n");
  expect({"in.stp", "-o", "no/out.stp"}, 1, "",
         "velkstep: no/out.stp: cannot be written: No such file or directory; make its folder "
         "first, or "
         "name another\n");
  folder_.write("bad.stp", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=A(;\nENDSEC;\n");
  const ProcessRun run = run_velkstep({"shrink", "bad.stp", "-o", "out.stp"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_TRUE(run.errors.starts_with("velkstep: bad.stp:5:1: ")) << run.errors;
  EXPECT_EQ(run_velkstep({"shrink", "in.stp"}).exit_code, 2);
  EXPECT_EQ(names_in("."), (std::set<std::string>{"bad.stp", "in.stp"}));
}

TEST_F(ShrinkCommand, SplitAndJoinShrinkWhatTheyWrite) {
  folder_.write("box.stp", exchange_file(std::string(BOX_WITH_LID) +
                                         "#901=COLOUR_RGB('',1.,0.,0.);\n#902=WIDGET(#901);\n"
                                         "#903=COLOUR_RGB('',1.,0.,0.);\n#904=WIDGET(#903);\n"));
  EXPECT_EQ(run_velkstep({"split", "--shrink", "--assemblies=lean", "box.stp", "out"}).errors, "");
  EXPECT_EQ(run_velkstep({"verify", "box.stp", "out"}).exit_code, 0);
  const std::string name = read_file("out/roots.txt");
  const std::string root = "out/" + name.substr(0, name.find('\n'));
  EXPECT_EQ(run_velkstep({"join", root, "-o", "joined.stp"}).errors, "");
  EXPECT_EQ(run_velkstep({"join", "-q", "--shrink", "box.stp", "-o", "alone.stp"}).errors, "");
  for (const char* file : {"joined.stp", "alone.stp"}) {
    EXPECT_EQ(run_velkstep({"diff", "box.stp", file}).exit_code, 0) << file;
    const std::string text = read_file(file);
    const std::size_t colour = text.find("COLOUR_RGB");
    EXPECT_NE(colour, std::string::npos) << file;
    EXPECT_EQ(text.find("COLOUR_RGB", colour + 1), std::string::npos) << file;
  }
  EXPECT_EQ(run_velkstep({"split", "--shrink", "--assemblies=classic", "box.stp", "c"}).exit_code,
            2);
}

}  // namespace
}  // namespace Kessel::test
