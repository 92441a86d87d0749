// velkstep check: what it prints and returns.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

class CheckCommand : public testing::Test {
 protected:
  /// Expects that the command prints just this on standard output.
  void expect(const std::vector<std::string>& arguments, int exit_code, const std::string& out) {
    std::vector<std::string> words = {"check"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const ProcessRun run = run_velkstep(words);
    EXPECT_EQ(run.exit_code, exit_code);
    EXPECT_EQ(run.out, out);
    EXPECT_EQ(run.errors, "");
  }

  Json json_of(const std::string& name) {
    return Json::parse(run_velkstep({"check", name, "--json"}).out);
  }

  ScratchFolder folder_;
};

TEST_F(CheckCommand, CleanFile) {
  folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  expect({"in.stp"}, 0, "");
  expect({"--json", "in.stp"}, 0, "{\"format\":1,\"input\":\"in.stp\",\"findings\":[]}\n");
}

TEST_F(CheckCommand, WarningsOnly) {
  folder_.write("in.stp", exchange_file(std::string(CYCLE) + "#9=A('b;c',#10);\n"));
  expect({"in.stp"}, 4,
         "in.stp:15:1: warning: The component leads back to #6, the assembly that it is used in.\n"
         "in.stp:16:1: warning: #9 refers to #10, which is not there.\n");
  folder_.write("in.stp", exchange_file(LID_ALONE));
  expect({"in.stp"}, 4,
         "in.stp: warning: There is nothing to split: no product definition has a shape or a "
         "component.\n");
}

TEST_F(CheckCommand, ErrorsAndWarnings) {
  folder_.write("in.stp", exchange_file(std::string(CYCLE) + ";\n#9=A('b;c);\n"));
  expect(
      {"in.stp"}, 1,
      "in.stp:16:1: warning: Nothing stands in front of this \";\".\n"
      "in.stp:17:1: error: A string in this statement is not closed up to the end of the file. The "
      "file may be cut off or damaged: copy or export it again.\n");
}

TEST_F(CheckCommand, FileThatCannotBeRead) {
  expect({"missing.stp"}, 1,
         "missing.stp: error: The file cannot be opened: No such file or directory. Check its "
         "name.\n");
  expect({"."}, 1, ".: error: The file is a folder. It holds no STEP file: name one.\n");
}

TEST_F(CheckCommand, JsonHoldsEverythingThatIsKnown) {
  const std::string text = exchange_file(";\n#18446744073709551615=A(#10);\n");
  folder_.write("in.stp", text);
  const Json place = {{"offset", text.find("#1844")},
                      {"line", 9},
                      {"column", 1},
                      {"instance", 18'446'744'073'709'551'615U},
                      {"count", 1},
                      {"file", nullptr}};
  Json missing = {{"kind", "missing_instance"},
                  {"severity", "warning"},
                  {"sentence", "#18446744073709551615 refers to #10, which is not there."}};
  missing.update(place);
  EXPECT_EQ(json_of("in.stp"),
            Json({{"format", 1},
                  {"input", "in.stp"},
                  {"findings",
                   {{{"kind", "no_part"},
                     {"severity", "warning"},
                     {"sentence",
                      "There is nothing to split: no product definition has a shape or a "
                      "component."},
                     {"offset", nullptr},
                     {"line", nullptr},
                     {"column", nullptr},
                     {"instance", nullptr},
                     {"count", 1},
                     {"file", nullptr}},
                    {{"kind", "empty_statement"},
                     {"severity", "warning"},
                     {"sentence", "Nothing stands in front of this \";\"."},
                     {"offset", text.find("\n;\n") + 1},
                     {"line", 8},
                     {"column", 1},
                     {"instance", nullptr},
                     {"count", 1},
                     {"file", nullptr}},
                    missing}}}));
}

TEST_F(CheckCommand, JsonCountsWhatIsNotListed) {
  std::string records(BOX_WITH_LID);
  for (int i = 0; i < 1500; ++i) records += "A();\n";
  folder_.write("in.stp", exchange_file(records));
  const Json findings = json_of("in.stp")["findings"];
  ASSERT_EQ(findings.size(), 21u);
  EXPECT_EQ(findings[20]["count"], 1480);
}

TEST_F(CheckCommand, JsonTakesAnyBytes) {
  const std::string name = "in\xFF\xC3.stp";
  folder_.write(name, exchange_file(std::string(BOX_WITH_LID) + "\xE4\xFF\";#20=A('\xFF');\n"));
  const Json json = json_of(name);
  EXPECT_EQ(json["input"], "in\xEF\xBF\xBD\xEF\xBF\xBD.stp");
  ASSERT_EQ(json["findings"].size(), 2u);
  EXPECT_EQ(json["findings"][0]["kind"], "skipped_text");
  EXPECT_EQ(json["findings"][1]["kind"], "not_utf8");
}

TEST_F(CheckCommand, NothingIsWritten) {
  folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  run_velkstep({"check", "in.stp"});
  run_velkstep({"check", "--json", "in.stp"});
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(CheckCommand, StandardOutputThatIsFullIsAFailure) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  folder_.write("in.stp", exchange_file(LID_ALONE));
  const ProcessRun run = run_velkstep({"check", "in.stp"}, {.standard_output = "/dev/full"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors,
            "velkstep: standard output: cannot be written: No space left on device; make room, or "
            "name a place on another disk\n");
}

}  // namespace
}  // namespace Kessel::test
