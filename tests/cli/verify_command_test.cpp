// velkstep verify: what it prints and returns.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "join/marked_split.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

class VerifyCommand : public testing::Test {
 protected:
  VerifyCommand() {
    folder_.write("in.stp", whole_file(INPUT));
    fs::create_directory("out");
    folder_.write("out/root.stp", whole_file(MARKED_ROOT));
    folder_.write("out/part.stp", whole_file(MARKED_PART));
    folder_.write("out/roots.txt", "root.stp\n");
  }

  /// Expects that the command prints just this on standard output.
  static void expect(const std::vector<std::string>& arguments, int exit_code,
                     const std::string& out, const ProcessSetting& setting = {}) {
    std::vector<std::string> words = {"verify"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const ProcessRun run = run_velkstep(words, setting);
    EXPECT_EQ(run.exit_code, exit_code);
    EXPECT_EQ(run.out, out);
    EXPECT_EQ(run.errors, "");
  }

  void damage() {
    std::string text = read_file("out/part.stp");
    folder_.write("out/part.stp", text.replace(text.find("'its'"), 5, "'our'"));
  }

  ScratchFolder folder_;
};

TEST_F(VerifyCommand, SplitAsItShouldBe) {
  expect({"in.stp", "out"}, 0, "2 files with 41 records, all as they should be\n");
  expect({"--json", "in.stp", "out"}, 0,
         "{\"format\":1,\"input\":\"in.stp\",\"output\":\"out\",\"files\":2,\"records\":41,"
         "\"findings\":[]}\n");
}

TEST_F(VerifyCommand, Errors) {
  damage();
  expect({"in.stp", "out/"}, 1,
         "out/part.stp:18:1: error: #10, the input's #20: parameter 1 of MANIFOLD_SOLID_BREP is "
         "\"'our'\" in place of \"'its'\".\n");
}

TEST_F(VerifyCommand, WhatIsMissingIsShownInTheInput) {
  std::string text = read_file("out/root.stp");
  const std::size_t at = text.find("#18=NEXT_ASSEMBLY_USAGE_OCCURRENCE");
  folder_.write("out/root.stp", text.erase(at, text.find('\n', at) + 1 - at));
  expect({"in.stp", "out"}, 1,
         "in.stp:24:1: error: #17 (NEXT_ASSEMBLY_USAGE_OCCURRENCE) is in no file.\n");
}

TEST_F(VerifyCommand, WarningsOnly) {
  folder_.write("out/other.stp", whole_file("#1=A();\n"));
  expect({"in.stp", "out"}, 4,
         "out/other.stp: warning: The file does not belong to the split: no other refers to it.\n");
}

TEST_F(VerifyCommand, TextBehindTheEndOfAFile) {
  folder_.write("in.stp", whole_file(INPUT) + "stray");
  folder_.write("out/part.stp", whole_file(MARKED_PART) + "\nand this");
  const auto line_behind = [](const std::string& text) {
    return std::to_string(std::count(text.begin(), text.end(), '\n') + 1);
  };
  const std::string said =
      ":1: warning: Text stands behind \"END-ISO-10303-21;\"; it is left out.\n";
  expect({"in.stp", "out"}, 4,
         "out/part.stp:" + line_behind(whole_file(MARKED_PART) + "\n") + said +
             "in.stp:" + line_behind(whole_file(INPUT)) + said);
}

TEST_F(VerifyCommand, FindingsOnTheInputAndTheFolder) {
  expect({"missing.stp", "out"}, 1,
         "missing.stp: error: The file cannot be opened: No such file or "
         "directory. Check its name.\n");
  expect({"in.stp", "nowhere"}, 1,
         "nowhere: error: The folder cannot be read: No such file or directory. Name a folder that "
         "a split wrote.\n");
}

TEST_F(VerifyCommand, FolderAboveThatOfTheSplit) {
  fs::create_directory("all");
  fs::rename("out", "all/in");
  const ProcessRun run = run_velkstep({"verify", "in.stp", "all"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_NE(run.out.find("all: error: There is no exchange file in the folder. Did you mean "
                         "all/in?\n"),
            std::string::npos)
      << run.out;
}

TEST_F(VerifyCommand, StandardInput) {
  expect({"-", "out"}, 0, "2 files with 41 records, all as they should be\n",
         {.standard_input = "in.stp"});
}

TEST_F(VerifyCommand, JsonHoldsEverythingThatIsKnown) {
  damage();
  fs::remove("out/roots.txt");
  const ProcessRun run = run_velkstep({"verify", "--json", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(Json::parse(run.out),
            Json({{"format", 1},
                  {"input", "in.stp"},
                  {"output", "out"},
                  {"files", 2},
                  {"records", 41},
                  {"findings",
                   {{{"kind", "missing_root_list"},
                     {"severity", "warning"},
                     {"sentence", "There is no \"roots.txt\" that holds the root file's name."},
                     {"file", "roots.txt"},
                     {"offset", nullptr},
                     {"line", nullptr},
                     {"column", nullptr},
                     {"instance", nullptr},
                     {"count", 1}},
                    {{"kind", "changed_record"},
                     {"severity", "error"},
                     {"sentence",
                      "#10, the input's #20: parameter 1 of MANIFOLD_SOLID_BREP is \"'our'\" in "
                      "place of \"'its'\"."},
                     {"file", "part.stp"},
                     {"offset", read_file("out/part.stp").find("#10=")},
                     {"line", 18},
                     {"column", 1},
                     {"instance", 10},
                     {"count", 1}}}}}));
}

TEST_F(VerifyCommand, JsonHasNoFileForTheInput) {
  const ProcessRun run = run_velkstep({"verify", "--json", "missing.stp", "out"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(Json::parse(run.out)["findings"][0]["file"], nullptr);
}

TEST_F(VerifyCommand, NamesInTheFolderDoNotReachTheTerminalAsTheyAre) {
  folder_.write("out/\x1B[31m\xFF.stp", whole_file("#1=A();\n"));
  expect({"in.stp", "out"}, 4,
         "out/\uFFFD[31m\uFFFD.stp: warning: The file does not belong to the split: no other "
         "refers to it.\n");
}

TEST_F(VerifyCommand, NothingIsWritten) {
  const auto names = [] {
    std::vector<std::string> all;
    for (const auto& entry : fs::recursive_directory_iterator(".")) {
      all.push_back(entry.path().string());
    }
    return all.size();
  };
  const std::size_t before = names();
  run_velkstep({"verify", "in.stp", "out"});
  EXPECT_EQ(names(), before);
}

}  // namespace
}  // namespace Kessel::test
