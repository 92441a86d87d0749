// velkstep verify: what it prints and returns.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

class VerifyCommand : public testing::Test {
 protected:
  VerifyCommand() {
    folder_.write("in.stp", exchange_file(BOX_WITH_LID));
    EXPECT_EQ(run_velkstep({"split", "--quiet", "in.stp", "out"}).exit_code, 0);
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
    std::string text = read_file("out/#4_part.stp");
    const std::size_t at = text.find("(#8),#7)");
    folder_.write("out/#4_part.stp", text.replace(at, 8, "(#7),#7)"));
  }

  ScratchFolder folder_;
};

TEST_F(VerifyCommand, SplitAsItShouldBe) {
  expect({"in.stp", "out"}, 0, "2 files with 30 records, all as they should be\n");
  expect({"--json", "in.stp", "out"}, 0,
         "{\"format\":1,\"input\":\"in.stp\",\"output\":\"out\",\"assemblies\":\"classic\","
         "\"names\":\"record\",\"files\":2,\"records\":30,\"findings\":[]}\n");
}

TEST_F(VerifyCommand, StylesAreThoseOfTheSplit) {
  const std::vector<std::string> styles = {"--assemblies=nested", "--names=product"};
  std::vector<std::string> words = {"split", "--quiet", "in.stp", "nested"};
  words.insert(words.end(), styles.begin(), styles.end());
  EXPECT_EQ(run_velkstep(words).exit_code, 0);
  expect({"in.stp", "nested", styles[0], styles[1]}, 0,
         "2 files with 30 records, all as they should be\n");
  EXPECT_EQ(run_velkstep({"verify", "in.stp", "nested"}).exit_code, 1);
}

TEST_F(VerifyCommand, Errors) {
  damage();
  expect({"in.stp", "out/"}, 1, "out/#4_part.stp:14: error: #6 refers to #7 in place of #8.\n");
}

TEST_F(VerifyCommand, WarningsOnly) {
  folder_.write("out/other.stp", "");
  fs::remove("out/roots.txt");
  expect({"in.stp", "out"}, 4,
         "out/roots.txt: warning: There is no \"roots.txt\" that holds the root file's name.\n"
         "out/other.stp: warning: The file does not belong to the split.\n");
}

TEST_F(VerifyCommand, FindingsOnTheInputAndTheFolder) {
  expect({"missing.stp", "out"}, 1, "missing.stp: error: The file cannot be opened.\n");
  expect({"in.stp", "nowhere"}, 1,
         "nowhere: error: The folder cannot be read: No such file or directory.\n");
  folder_.write("lid.stp", exchange_file(LID_ALONE));
  expect({"lid.stp", "out"}, 4,
         "lid.stp: warning: There is nothing to split: there is only one part.\n");
}

TEST_F(VerifyCommand, StandardInput) {
  expect({"-", "out"}, 0, "2 files with 30 records, all as they should be\n",
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
                  {"assemblies", "classic"},
                  {"names", "record"},
                  {"files", 2},
                  {"records", 30},
                  {"findings",
                   {{{"kind", "missing_root_list"},
                     {"severity", "warning"},
                     {"sentence", "There is no \"roots.txt\" that holds the root file's name."},
                     {"file", "roots.txt"},
                     {"offset", nullptr},
                     {"line", nullptr},
                     {"instance", nullptr},
                     {"count", 1}},
                    {{"kind", "wrong_reference"},
                     {"severity", "error"},
                     {"sentence", "#6 refers to #7 in place of #8."},
                     {"file", "#4_part.stp"},
                     {"offset", read_file("out/#4_part.stp").find("#6=")},
                     {"line", 14},
                     {"instance", 6},
                     {"count", 1}}}}}));
}

TEST_F(VerifyCommand, JsonHasNoFileForTheInput) {
  const ProcessRun run = run_velkstep({"verify", "--json", "missing.stp", "out"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(Json::parse(run.out)["findings"][0]["file"], nullptr);
}

TEST_F(VerifyCommand, NamesInTheFolderDoNotReachTheTerminalAsTheyAre) {
  folder_.write("out/\x1B[31m\xFF.stp", "");
  expect({"in.stp", "out"}, 4,
         "out/\uFFFD[31m\uFFFD.stp: warning: The file does not belong to the split.\n");
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
