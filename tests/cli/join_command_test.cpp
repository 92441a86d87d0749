// velkstep join: what it prints, writes and returns.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "join/marked_split.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

class JoinCommand : public testing::Test {
 protected:
  JoinCommand() {
    fs::create_directory("parts");
    folder_.write("parts/root.stp", whole_file(MARKED_ROOT));
    folder_.write("parts/part.stp", whole_file(MARKED_PART));
  }

  static void expect(std::vector<std::string> arguments, int exit_code, const std::string& out,
                     const std::string& errors) {
    arguments.insert(arguments.begin(), "join");
    const ProcessRun run = run_velkstep(arguments);
    EXPECT_EQ(run.exit_code, exit_code);
    EXPECT_EQ(run.out, out);
    EXPECT_EQ(run.errors, errors);
  }

  ScratchFolder folder_;
};

TEST_F(JoinCommand, SaysHowMuchItWas) {
  expect({"parts/root.stp", "-o", "one.stp"}, 0, "one.stp: 20 records from 2 files\n", "");
  const std::string text = read_file("one.stp");
  EXPECT_NE(text.find("DATA;\n" + INPUT + "ENDSEC;\n"), std::string::npos) << text;
  EXPECT_EQ(names_in("."), (std::set<std::string>{"one.stp", "parts"}));
}

TEST_F(JoinCommand, QuietSaysNothing) {
  expect({"--quiet", "parts/root.stp", "--output=one.stp"}, 0, "", "");
  EXPECT_TRUE(fs::exists("one.stp"));
}

TEST_F(JoinCommand, Json) {
  const ProcessRun run = run_velkstep({"join", "--json", "parts/root.stp", "-o", "one.stp"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(nlohmann::json::parse(run.out),
            nlohmann::json({{"format", 1},
                            {"input", "parts/root.stp"},
                            {"output", "one.stp"},
                            {"records", 20},
                            {"bytes", fs::file_size("one.stp")},
                            {"inputs",
                             {{{"file", "parts/root.stp"}, {"records", 30}},
                              {{"file", "parts/part.stp"}, {"records", 11}}}},
                            {"findings", nlohmann::json::array()}}));
}

TEST_F(JoinCommand, WarningsGoToStandardErrorWithTheirFile) {
  std::string part = read_file("parts/part.stp");
  folder_.write("parts/part.stp", part.replace(part.find("'part','part'"), 13, "'part','Part'"));
  expect({"parts/root.stp", "-o", "one.stp"}, 0, "one.stp: 20 records from 2 files\n",
         "parts/part.stp: warning: #5 says something else than its copy in another file, which is "
         "taken. Undo the change in one of them if it is the wrong one.\n");
}

TEST_F(JoinCommand, WhatStandsForSomethingThatIsNotThereIsMentioned) {
  std::string part = read_file("parts/part.stp");
  for (const char* const number : {"20", "21", "22", "23", "24", "25", "26", "30"}) {
    part.replace(part.find(std::string("/*") + number + "*/") + 2, 1, "9");
  }
  folder_.write("parts/part.stp", part);
  const ProcessRun run = run_velkstep({"join", "parts/root.stp", "-o", "one.stp"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors,
            "parts/root.stp: warning: #16 stands for a record that no file holds; it is taken "
            "itself. Put the file that holds it beside the others.\n"
            "parts/part.stp: warning: #11 says something else than its copy in another file, which "
            "is taken. Undo the change in one of them if it is the wrong one.\n");
}

TEST_F(JoinCommand, MissingFiles) {
  fs::remove("parts/part.stp");
  expect({"parts/root.stp", "-o", "one.stp"}, 1, "",
         "velkstep: parts/root.stp: Files that are referred to are missing: \"part.stp\". "
         "--allow-missing keeps what refers to them.\n");
  EXPECT_EQ(names_in("."), std::set<std::string>{"parts"});
}

TEST_F(JoinCommand, BrokenComponentIsNamedWithItsLine) {
  folder_.write("parts/part.stp", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=A(;\nENDSEC;\n");
  const ProcessRun run = run_velkstep({"join", "parts/root.stp", "-o", "one.stp"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_TRUE(run.errors.starts_with("velkstep: parts/part.stp:5:1: ")) << run.errors;
}

TEST_F(JoinCommand, WritesOverNothingUnlessForced) {
  folder_.write("one.stp", "precious");
  expect({"parts/root.stp", "-o", "one.stp"}, 1, "",
         "velkstep: one.stp: is there already; --force replaces it\n");
  EXPECT_EQ(read_file("one.stp"), "precious");
  expect({"--force", "parts/root.stp", "-o", "one.stp"}, 0, "one.stp: 20 records from 2 files\n",
         "");
  EXPECT_NE(read_file("one.stp"), "precious");
}

TEST_F(JoinCommand, OutputThatCannotBeWritten) {
  expect({"parts/root.stp", "-o", "no/one.stp"}, 1, "",
         "velkstep: no/one.stp: cannot be written: No such file or directory; make its folder "
         "first, or "
         "name another\n");
}

TEST_F(JoinCommand, FilesOutsideOfTheFolderWantAnOption) {
  fs::create_directory("parts/in");
  std::string root = whole_file(MARKED_ROOT);
  for (std::size_t at = 0; (at = root.find("'part.stp'", at)) != std::string::npos; at += 12) {
    root.replace(at, 10, "'../part.stp'");
  }
  folder_.write("parts/in/root.stp", root);
  expect({"parts/in/root.stp", "-o", "one.stp"}, 1, "",
         "velkstep: parts/in/root.stp: References lead out of the folder of the file: "
         "\"../part.stp\". --follow-outside reads them.\n");
  expect({"--follow-outside", "parts/in/root.stp", "-o", "one.stp"}, 0,
         "one.stp: 20 records from 2 files\n", "");
}

TEST_F(JoinCommand, ReadsACompressedRootAndStandardInput) {
  expect({"--quiet", "parts/root.stp", "-o", "plain.stp"}, 0, "", "");
  ASSERT_EQ(run_in_shell("gzip -k parts/root.stp").status, 0);
  expect({"parts/root.stp.gz", "-o", "one.stp"}, 0, "one.stp: 20 records from 2 files\n", "");
  ASSERT_EQ(run_in_shell("cp parts/part.stp .").status, 0);
  const ProcessRun run =
      run_velkstep({"join", "--json", "-", "-o", "two.stp"}, {.standard_input = "parts/root.stp"});
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(nlohmann::json::parse(run.out)["inputs"][0]["file"], "standard input");
  for (const char* name : {"one.stp", "two.stp"}) {
    EXPECT_EQ(run_velkstep({"diff", "plain.stp", name}).exit_code, 0) << name;
  }
  ASSERT_EQ(run_in_shell("cp parts/root.stp.gz parts/packed.stp").status, 0);
  expect({"--force", "parts/packed.stp", "-o", "parts/packed.stp"}, 1, "",
         "velkstep: parts/packed.stp: is the input; choose another name\n");
  fs::remove("parts/part.stp");
  expect({"parts/root.stp.gz", "-o", "three.stp"}, 1, "",
         "velkstep: parts/root.stp.gz: Files that are referred to are missing: \"part.stp\". "
         "--allow-missing keeps what refers to them.\n");
}

// All files of a split with three levels, which refer to each other as they are called then.
TEST_F(JoinCommand, ReadsCompressedFilesOfAllLevels) {
  const std::string whole = PROJECT_FOLDER "/examples/bench-vice.step";
  ASSERT_EQ(run_velkstep({"split", "--quiet", whole, "-o", "vice"}).exit_code, 0);
  const char* const compress =
      "cd vice && for file in *.stp; do "
      "sed \"s/\\.stp'/.stpz'/g\" \"$file\" | gzip > \"${file}z\" && rm \"$file\"; done && "
      "gunzip < \"Bench vice.stpz\" > root.stp";
  ASSERT_EQ(run_in_shell(compress).status, 0);
  for (const char* root : {"vice/root.stp", "vice/Bench vice.stpz"}) {
    const ProcessRun run = run_velkstep({"join", "--json", "--force", root, "-o", "one.stp"});
    EXPECT_EQ(run.errors, "");
    const auto inputs = nlohmann::json::parse(run.out)["inputs"];
    ASSERT_EQ(inputs.size(), 5u);
    EXPECT_EQ(inputs[0]["file"], root);
    EXPECT_EQ(inputs[1]["file"], "vice/Jaw plate.stpz");
    EXPECT_EQ(run_velkstep({"diff", whole, "one.stp"}).out, "");
  }
  // What is unpacked of an input is not what must not be replaced.
  fs::create_symlink("Slide.stpz", "vice/link.stp");
  expect({"--force", "vice/root.stp", "-o", "vice/link.stp"}, 1, "",
         "velkstep: vice/link.stp: is the input, or a file that it refers to; name another\n");
  ASSERT_EQ(run_in_shell("cd vice && head -c 99 Slide.stpz > cut && mv cut Slide.stpz").status, 0);
  expect({"--force", "vice/root.stp", "-o", "one.stp"}, 1, "",
         "velkstep: vice/Slide.stpz: The archive cannot be unpacked: truncated gzip input. Copy "
         "it again, or unpack it by other means.\n");
}

TEST_F(JoinCommand, WrongUsage) {
  EXPECT_EQ(run_velkstep({"join", "parts/root.stp"}).exit_code, 2);
  EXPECT_EQ(run_velkstep({"join", "-o", "one.stp"}).exit_code, 2);
}

}  // namespace
}  // namespace Kessel::test
